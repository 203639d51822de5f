#include "host/drawing/word_widths_p.h"

#include "host/drawing/font_p.h"
#include "host/drawing/text_boundaries_p.h"
#include "host/drawing/text_shaper_p.h"

namespace wainscot {

namespace {

/// In the fixed-point units of the shaper.
constexpr double unitsPerPixel = 64.0;

bool isLetter(wchar_t c) {
    return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z');
}

} // namespace

std::optional<double> WordWidths::width(std::wstring_view block) {
    double total = 0;
    std::uint32_t script = HB_SCRIPT_LATIN;
    for (std::size_t start = 0; start < block.size();) {
        std::size_t const blank = block.find(L' ', start);
        std::size_t const end = blank == block.npos ? block.size() : blank + 1;
        Word const next = word(block.substr(start, end - start), script);
        if (!next.standsAlone) return std::nullopt;
        total += next.width;
        script = next.script;
        start = end;
    }
    return total;
}

WordWidths::Word WordWidths::word(std::wstring_view text, std::uint32_t script) {
    if (script == HB_SCRIPT_LATIN || isLetter(text.front()))
        if (std::optional<Word> const plain = byPairs(text, script)) return *plain;
    key_.assign(1, static_cast<wchar_t>(script));
    key_ += text;
    auto const known = known_.find(key_);
    if (known != known_.end()) return known->second;
    if (known_.size() >= most) known_.clear();
    return known_.emplace(key_, shaped(text, script)).first->second;
}

/// Nothing for a word that must be shaped. Another script before it ends the run with the blank.
std::optional<WordWidths::Word> WordWidths::byPairs(std::wstring_view text, std::uint32_t script) const {
    PairAdvances& pairs = *font_.pairs();
    std::int32_t const width = pairs.width(text);
    if (width == PairAdvances::entangled) return std::nullopt;
    bool const standsAlone =
        script != HB_SCRIPT_LATIN ||
        pairs.advance(L' ', static_cast<std::uint32_t>(text.front())) == pairs.lastAdvance(L' ');
    return Word{width / unitsPerPixel, HB_SCRIPT_LATIN, standsAlone};
}

/// Shaped with a blank before it, to see whether the two change each other.
WordWidths::Word WordWidths::shaped(std::wstring_view text, std::uint32_t script) const {
    std::wstring const withBlank = L' ' + std::wstring(text);
    BlockContext context;
    context.stretches.push_back({static_cast<std::uint32_t>(withBlank.size()), false});
    context.script = script;
    TextLayoutPtr const layout = TextShaper(font_, withBlank, &context).shape();
    double const blank = font_.pairs()->lastAdvance(L' ') / unitsPerPixel;
    Word word{static_cast<double>(layout->width()) - blank, script,
              static_cast<double>(layout->gap(1)) == blank && layout->isStop(1)};
    for (wchar_t const c : text) {
        hb_script_t const own = TextShaper::scriptOf(TextBoundaries::shapedAs(static_cast<std::uint32_t>(c)));
        if (!TextShaper::takesPartInAnyScript(own)) word.script = own;
    }
    return word;
}

} // namespace wainscot
