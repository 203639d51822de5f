#include "host/drawing/word_widths_p.h"

#include "host/drawing/font_p.h"
#include "host/drawing/text_boundaries_p.h"
#include "host/drawing/text_shaper_p.h"

namespace wainscot {

std::optional<double> WordWidths::width(std::wstring_view block) {
    double total = 0;
    std::uint32_t script = HB_SCRIPT_LATIN;
    for (std::size_t start = 0; start < block.size();) {
        std::size_t const blank = block.find(L' ', start);
        std::size_t const end = blank == block.npos ? block.size() : blank + 1;
        Word const& next = word(block.substr(start, end - start), script);
        if (start > 0 && !next.standsAlone) return std::nullopt;
        total += next.width;
        script = next.script;
        start = end;
    }
    return total;
}

WordWidths::Word const& WordWidths::word(std::wstring_view text, std::uint32_t script) {
    key_.assign(1, static_cast<wchar_t>(script));
    key_ += text;
    auto const known = known_.find(key_);
    if (known != known_.end()) return known->second;
    if (known_.size() >= most) known_.clear();
    return known_.emplace(key_, measured(text, script)).first->second;
}

WordWidths::Word WordWidths::measured(std::wstring_view text, std::uint32_t script) const {
    Word word{shaped(text, script), script, false};
    double const withBlank = shaped(L' ' + std::wstring(text), script);
    word.standsAlone = withBlank == word.width + shaped(L" ", script);
    for (wchar_t const c : text) {
        hb_script_t const own = TextShaper::scriptOf(TextBoundaries::shapedAs(static_cast<std::uint32_t>(c)));
        if (!TextShaper::takesPartInAnyScript(own)) word.script = own;
    }
    return word;
}

double WordWidths::shaped(std::wstring_view text, std::uint32_t script) const {
    BlockContext context;
    context.stretches.push_back({static_cast<std::uint32_t>(text.size()), false});
    context.script = script;
    return static_cast<double>(TextShaper(font_, text, &context).shape()->width());
}

} // namespace wainscot
