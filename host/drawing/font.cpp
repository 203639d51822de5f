#include "host/drawing/font_p.h"

#include "host/drawing/bidi_levels_p.h"
#include "host/drawing/symbols_p.h"
#include "host/drawing/text_line_p.h"
#include "host/drawing/text_seek.h"
#include "host/drawing/text_shaper_p.h"

#include <algorithm>
#include <cmath>
#include <hb-ot.h>

namespace wainscot {
namespace {

constexpr int fractions = 64;

/// More characters than texts of several scripts hold.
constexpr std::size_t mostFallbacks = 16384;

constinit std::uint32_t lastId = 0;

int rounded(double value) {
    constexpr double most = 1 << 30;
    return static_cast<int>(std::lround(std::clamp(value, -most, most)));
}

std::size_t clampedIndex(int index, std::size_t length) {
    return index < 0 ? 0 : std::min(static_cast<std::size_t>(index), length);
}

/// Without any installed font an empty face is used: all texts measure 0 and draw nothing.
hb_font_t* makeShaper(FontFace* face, unsigned short size) {
    hb_font_t* shaper = hb_font_create(face ? face->shaped() : hb_face_get_empty());
    int const scale = size * fractions;
    hb_font_set_scale(shaper, scale, scale);
    return shaper;
}

/// Characters without ink need no other face.
bool isIgnorable(std::uint32_t c) {
    return c < 0x20 || (c >= 0x7F && c < 0xA0) || c == 0xAD || (c >= 0x200B && c <= 0x200F) ||
           (c >= 0x2028 && c <= 0x202E) || (c >= 0x2060 && c <= 0x206F) || (c >= 0xFE00 && c <= 0xFE0F) ||
           c == 0xFEFF;
}

} // namespace

Font::Font(Glib::FontDesc desc, FontFace* face)
    : desc_(std::move(desc)), id_(++lastId),
      ascent_(std::max(1, rounded(face ? face->ascent() * desc_.size : desc_.size))),
      descent_(std::max(0, rounded(face ? face->descent() * desc_.size : 0))) {
    addFace(face);
    if (face && face->isPairwise()) pairs_ = std::make_unique<PairAdvances>(faces_[0].shaper);
}

Font::~Font() {
    for (SizedFace const& sized : faces_) hb_font_destroy(sized.shaper);
}

bool Font::isFixedPitch() const {
    return faces_[0].face && faces_[0].face->isFixedPitch();
}

std::uint16_t Font::addFace(FontFace* face) const {
    for (std::size_t i = 0; i < faces_.size(); ++i)
        if (faces_[i].face == face) return static_cast<std::uint16_t>(i);
    faces_.push_back({face, makeShaper(face, desc_.size)});
    return static_cast<std::uint16_t>(faces_.size() - 1);
}

std::uint16_t Font::faceFor(std::uint32_t character) const {
    if (Symbols::isSymbol(character)) return Symbols::face;
    FontFace const* own = faces_[0].face;
    if (!own || own->hasGlyph(character) || isIgnorable(character)) return 0;
    auto const known = fallbacks_.find(character);
    if (known != fallbacks_.end()) return known->second;
    if (fallbacks_.size() >= mostFallbacks) fallbacks_.clear();
    FontFace* other = FontFinder::findFallback(character, desc_.style);
    std::uint16_t const index = other ? addFace(other) : std::uint16_t(0);
    return fallbacks_[character] = index;
}

std::optional<double> Font::widthByPairs(std::wstring_view block) const {
    std::int32_t const width = pairs_ ? pairs_->width(block) : PairAdvances::entangled;
    if (width == PairAdvances::entangled) return std::nullopt;
    return static_cast<double>(width) / fractions;
}

double Font::blockWidth(std::wstring_view block) const {
    if (std::optional<double> const width = widthByPairs(block)) return *width;
    return static_cast<double>(TextShaper(*this, block).shape()->width());
}

std::optional<double> Font::plainWidth(std::wstring_view block) const {
    // No character of a pair can turn its line.
    if (std::optional<double> const width = widthByPairs(block)) return width;
    if (Bidi::mayTurn(block)) return std::nullopt;
    if (pairs_) {
        if (!words_) words_ = std::make_unique<WordWidths>(*this);
        if (std::optional<double> const width = words_->width(block)) return width;
    }
    return static_cast<double>(TextShaper(*this, block).shape()->width());
}

double Font::exactWidth(std::wstring_view text) const {
    if (text.size() > TextLayout::maxLength) return TextLine(*this, text).width();
    return text.empty() ? 0 : static_cast<double>(TextLayouts::get(*this, text)->width());
}

int Font::textWidth(LightweightString<wchar_t> const& text) const {
    return rounded(exactWidth(text.view()));
}

int Font::prefixWidth(LightweightString<wchar_t> const& text, int index) const {
    return rounded(TextLine::gap(*this, text.view(), clampedIndex(index, text.size())));
}

int Font::characterAtX(LightweightString<wchar_t> const& text, int x) const {
    return static_cast<int>(TextLine::nearestStop(*this, text.view(), x));
}

int Font::seek(LightweightString<wchar_t> const& text, int current, eCharSeekMethod method, int index) const {
    return static_cast<int>(Glib::seekInText(text.view(), clampedIndex(current, text.size()), method, index));
}

} // namespace wainscot
