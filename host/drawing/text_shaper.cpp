#include "host/drawing/text_shaper_p.h"

#include "host/drawing/bidi_levels_p.h"
#include "host/drawing/symbols_p.h"
#include "host/drawing/text_boundaries_p.h"

#include <algorithm>
#include <string>
#include <utility>

namespace wainscot {
namespace {

/// From the fixed-point units of the shaper to pixels.
constexpr float pixels(hb_position_t position) {
    return static_cast<float>(position) / 64.0F;
}

bool isSimple(std::uint32_t c) {
    return (c >= 0x20 && c < 0x7F) || (c >= 0xA0 && c < 0x250 && c != 0xAD);
}

bool hasInk(std::uint32_t c) {
    return c != ' ' && c != 0xA0 && c != 0x200B;
}

/// Characters that keep the face of the character before them.
bool followsItsBase(std::uint32_t c) {
    return TextShaper::scriptOf(c) == HB_SCRIPT_INHERITED || c == 0x200D || (c >= 0xFE00 && c <= 0xFE0F) ||
           c == 0x200B;
}

bool isDecimalNumber(std::uint32_t c) {
    return hb_unicode_general_category(hb_unicode_funcs_get_default(), c) ==
           HB_UNICODE_GENERAL_CATEGORY_DECIMAL_NUMBER;
}

} // namespace

hb_script_t TextShaper::scriptOf(std::uint32_t character) {
    return hb_unicode_script(hb_unicode_funcs_get_default(), character);
}

bool TextShaper::takesPartInAnyScript(hb_script_t script) {
    return script == HB_SCRIPT_COMMON || script == HB_SCRIPT_INHERITED || script == HB_SCRIPT_UNKNOWN;
}

TextShaper::TextShaper(Font const& font, std::wstring_view text, BlockContext const* context)
    : font_(font), source_(text), context_(context), layout_(std::make_shared<TextLayout>()) {
    sanitise();
    layout_->inside_ = TextBoundaries::gapsInsideClusters(text);
}

TextShaper::~TextShaper() {
    hb_buffer_destroy(buffer_);
}

void TextShaper::sanitise() {
    text_.reserve(source_.size());
    simple_ = context_ == nullptr;
    for (wchar_t const c : source_) {
        std::uint32_t const character = TextBoundaries::shapedAs(static_cast<std::uint32_t>(c));
        // Characters that the pairs know need no look into the face.
        bool const known = font_.pairs() && PairAdvances::takesPart(character);
        simple_ = simple_ && (known || (isSimple(character) && font_.faceFor(character) == 0));
        mayTurn_ = mayTurn_ || Bidi::mayTurn(character);
        text_.push_back(character);
    }
}

TextLayoutPtr TextShaper::shape() {
    begin();
    if (!shapeByPairs()) shapeRuns();
    return finish();
}

TextLayoutPtr TextShaper::shapeInFull() {
    begin();
    shapeRuns();
    return finish();
}

void TextShaper::begin() {
    layout_->gaps_.assign(text_.size() + 1, 0.0F);
    layout_->glyphs_.reserve(text_.size());
    if (simple_)
        runs_.push_back({0, text_.size(), 0, HB_SCRIPT_LATIN, false, false});
    else
        findRuns();
    if (context_)
        splitRunsAsInContext();
    else if (mayTurn_)
        orderRuns();
}

void TextShaper::shapeRuns() {
    for (Run const& run : runs_) {
        shapeRun(run);
        if (context_ && run.endsPart) endPart();
    }
}

TextLayoutPtr TextShaper::finish() {
    layout_->mayTurn_ = mayTurn_;
    layout_->width_ = static_cast<float>(x_);
    layout_->gaps_.back() = paragraphTurned_ ? 0.0F : layout_->width_;
    return layout_;
}

void TextShaper::findRuns() {
    hb_script_t script = context_ ? static_cast<hb_script_t>(context_->script) : HB_SCRIPT_LATIN;
    std::uint16_t face = 0;
    for (std::size_t i = 0; i < text_.size(); ++i) {
        std::uint32_t const c = text_[i];
        hb_script_t const own = scriptOf(c);
        if (!takesPartInAnyScript(own)) script = own;
        if (i == 0 || !followsItsBase(c)) face = font_.faceFor(c);
        bool const continues = !runs_.empty() && runs_.back().face == face && runs_.back().script == script;
        if (continues)
            runs_.back().end = i + 1;
        else
            runs_.push_back({i, i + 1, face, script, false, false});
    }
}

/// Splits the runs by direction and brings them into the order in which they stand on the line.
void TextShaper::orderRuns() {
    BidiLevels const levels(source_);
    paragraphTurned_ = levels.isRightToLeft();
    std::vector<std::uint8_t> embedding;
    for (BidiLevels::Run const& run : levels.runs()) embedding.push_back(run.level);
    std::vector<Run> ordered;
    for (std::int32_t const i : BidiLevels::fromLeftToRight(embedding)) {
        BidiLevels::Run const& run = levels.runs()[static_cast<std::size_t>(i)];
        addRuns(ordered, run.start, run.end, run.isRightToLeft());
    }
    runs_ = std::move(ordered);
}

/// The line orders the parts of a block among those of other blocks.
void TextShaper::splitRunsAsInContext() {
    std::vector<Run> split;
    std::size_t start = 0;
    for (BlockContext::Stretch const& stretch : context_->stretches) {
        addRuns(split, start, start + stretch.length, stretch.rightToLeft);
        split.back().endsPart = true;
        start += stretch.length;
    }
    runs_ = std::move(split);
}

/// Adds the runs of a stretch of one direction, from left to right.
void TextShaper::addRuns(std::vector<Run>& ordered, std::size_t start, std::size_t end,
                         bool rightToLeft) const {
    auto const place = static_cast<std::ptrdiff_t>(ordered.size());
    auto run = std::partition_point(runs_.begin(), runs_.end(), [&](Run const& r) { return r.end <= start; });
    for (; run != runs_.end() && run->start < end; ++run) {
        Run const part{
            std::max(run->start, start), std::min(run->end, end), run->face, run->script, rightToLeft, false};
        if (!rightToLeft && hb_script_get_horizontal_direction(part.script) == HB_DIRECTION_RTL)
            addAgainstItsScript(ordered, part);
        else
            ordered.push_back(part);
    }
    if (rightToLeft) std::reverse(ordered.begin() + place, ordered.end());
}

/// Adds a run from left to right in a script from right to left. The shaper turns such a run, except where it
/// finds numbers and no letters. So that this does not depend on how far the run goes, letters and numbers
/// get runs of their own, and characters that belong to any script are taken out of this one.
void TextShaper::addAgainstItsScript(std::vector<Run>& ordered, Run const& run) const {
    bool wasNumber = false;
    for (std::size_t i = run.start; i < run.end; ++i) {
        std::uint32_t const c = text_[i];
        if (i == run.start || !followsItsBase(c)) {
            hb_script_t const script = takesPartInAnyScript(scriptOf(c)) ? HB_SCRIPT_LATIN : run.script;
            bool const number = script == run.script && isDecimalNumber(c);
            if (i == run.start || ordered.back().script != script || number != wasNumber)
                ordered.push_back({i, i, run.face, script, false, false});
            wasNumber = number;
        }
        ordered.back().end = i + 1;
    }
}

void TextShaper::endPart() {
    std::vector<TextLayout::Part>& parts = layout_->parts_;
    float const left = parts.empty() ? 0 : parts.back().left + parts.back().width;
    std::uint32_t const firstGlyph = parts.empty() ? 0 : parts.back().endGlyph;
    parts.push_back({left, static_cast<float>(x_) - left, firstGlyph,
                     static_cast<std::uint32_t>(layout_->glyphs_.size())});
}

/// Lays out plain text from its pairs; only stretches whose characters change each other are shaped. False
/// when the text is not of that kind.
bool TextShaper::shapeByPairs() {
    PairAdvances* pairs = simple_ ? font_.pairs() : nullptr;
    if (!pairs || !std::all_of(text_.begin(), text_.end(), PairAdvances::takesPart)) return false;
    std::size_t const last = text_.size() - 1;
    auto const step = [&](std::size_t i) {
        return i == last ? pairs->lastAdvance(text_[i]) : pairs->advance(text_[i], text_[i + 1]);
    };
    auto const isEntangled = [&](std::size_t i) { return i < last && step(i) == PairAdvances::entangled; };
    for (std::size_t i = 0; i <= last;) {
        // The character before an entangled pair depends on the glyph of that pair.
        std::size_t end = i;
        while (isEntangled(end) || isEntangled(end + 1)) ++end;
        if (end > i) {
            // The character after it is shaped too, for its effect on the stretch, and placed afterwards.
            std::size_t const shown = std::min(end + 1, text_.size());
            shapeStretch({i, std::min(shown + 1, text_.size()), 0, HB_SCRIPT_LATIN, false, false}, shown);
            i = shown;
            continue;
        }
        if (hasInk(text_[i]))
            layout_->glyphs_.push_back({pairs->glyph(text_[i]), 0, static_cast<float>(x_), 0.0F});
        layout_->gaps_[i] = static_cast<float>(x_);
        x_ += static_cast<double>(pixels(step(i)));
        ++i;
    }
    return true;
}

void TextShaper::shapeRun(Run const& run) {
    if (run.face == Symbols::face)
        placeSymbols(run);
    else
        shapeStretch(run, run.end);
}

void TextShaper::placeSymbols(Run const& run) {
    for (std::size_t i = run.start; i < run.end; ++i) {
        layout_->glyphs_.push_back({Symbols::glyphOf(text_[i]), Symbols::face, static_cast<float>(x_), 0.0F});
        placeGaps(run, i, i + 1, x_, x_ + font_.size());
        x_ += font_.size();
    }
}

/// Shapes a run and places the characters before `shown`.
void TextShaper::shapeStretch(Run const& run, std::size_t shown) {
    hb_font_t* shaper = font_.sizedFace(run.face).shaper;
    if (!buffer_) buffer_ = hb_buffer_create();
    hb_buffer_clear_contents(buffer_);
    addToBuffer(run);
    hb_buffer_set_direction(buffer_, run.rightToLeft ? HB_DIRECTION_RTL : HB_DIRECTION_LTR);
    hb_buffer_set_script(buffer_, run.script);
    hb_buffer_set_language(buffer_, hb_language_get_default());
    hb_shape(shaper, buffer_, nullptr, 0);
    placeGlyphs(run, shown);
}

/// Adds the text beside the run too, since letters may join across its ends.
void TextShaper::addToBuffer(Run const& run) {
    auto const add = [&](std::vector<std::uint32_t> const& text, std::size_t start) {
        hb_buffer_add_utf32(buffer_, text.data(), static_cast<int>(text.size()), static_cast<unsigned>(start),
                            static_cast<int>(run.end - run.start));
    };
    if (!context_ || (context_->before.empty() && context_->after.empty())) return add(text_, run.start);
    std::vector<std::uint32_t> text(context_->before.begin(), context_->before.end());
    text.insert(text.end(), text_.begin(), text_.end());
    text.insert(text.end(), context_->after.begin(), context_->after.end());
    add(text, context_->before.size() + run.start);
    unsigned count = 0;
    hb_glyph_info_t* infos = hb_buffer_get_glyph_infos(buffer_, &count);
    for (unsigned i = 0; i < count; ++i)
        infos[i].cluster -= static_cast<std::uint32_t>(context_->before.size());
}

void TextShaper::placeGlyphs(Run const& run, std::size_t shown) {
    unsigned count = 0;
    hb_glyph_info_t const* infos = hb_buffer_get_glyph_infos(buffer_, &count);
    hb_glyph_position_t const* positions = hb_buffer_get_glyph_positions(buffer_, &count);
    std::size_t previous = run.end;
    for (unsigned i = 0; i < count;) {
        std::size_t const cluster = infos[i].cluster;
        if (cluster >= shown) return;
        double const left = x_;
        for (; i < count && infos[i].cluster == cluster; ++i) {
            if (hasInk(text_[cluster]))
                layout_->glyphs_.push_back({infos[i].codepoint, run.face,
                                            static_cast<float>(x_) + pixels(positions[i].x_offset),
                                            pixels(positions[i].y_offset)});
            x_ += static_cast<double>(pixels(positions[i].x_advance));
        }
        // The characters of a cluster end where the next one, in reading order, begins.
        std::size_t end = run.end;
        if (!run.rightToLeft && i < count) end = infos[i].cluster;
        if (run.rightToLeft) end = std::exchange(previous, cluster);
        placeGaps(run, cluster, end, left, x_);
    }
}

/// Shares the width of a cluster among the grapheme clusters in it, as in a ligature.
void TextShaper::placeGaps(Run const& run, std::size_t first, std::size_t last, double left, double right) {
    std::size_t stops = 0;
    for (std::size_t i = first; i < last; ++i) stops += i == first || layout_->isStop(i) ? 1 : 0;
    std::size_t passed = 0;
    for (std::size_t i = first; i < last; ++i) {
        if (i > first && layout_->isStop(i)) ++passed;
        double const share = static_cast<double>(passed) / static_cast<double>(stops);
        double const x = run.rightToLeft ? right - share * (right - left) : left + share * (right - left);
        layout_->gaps_[i] = static_cast<float>(x);
    }
}

} // namespace wainscot
