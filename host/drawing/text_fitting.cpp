#include "host/drawing/font_p.h"
#include "host/drawing/text_boundaries_p.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace wainscot {
namespace {

using Text = LightweightString<wchar_t>;

std::wstring withoutControls(std::wstring_view text) {
    std::wstring kept;
    kept.reserve(text.size());
    std::copy_if(text.begin(), text.end(), std::back_inserter(kept),
                 [](wchar_t c) { return !TextBoundaries::isControl(c); });
    return kept;
}

/// How much of the text is certainly wider than `width`, or all of it; the rest cannot matter. Blocks are
/// measured until there is enough, so that the cost depends on the width, not on the text.
std::size_t enoughFor(Font const& font, std::wstring_view text, double width) {
    double reached = 0;
    std::size_t length = 0;
    forEachBlock(text, [&](std::wstring_view block, std::size_t start) {
        TextLayoutPtr const layout = TextLayouts::get(font, block);
        reached += static_cast<double>(layout->width());
        // Such blocks may be a little wider by themselves than in their line.
        if (layout->mayTurn() && block.size() < text.size()) reached -= 2.0 * font.size();
        length = start + block.size();
        return reached <= width;
    });
    return length;
}

std::vector<std::size_t> stopsOf(std::wstring_view text) {
    std::vector<bool> const inside = TextBoundaries::gapsInsideClusters(text);
    std::vector<std::size_t> stops;
    for (std::size_t i = 0; i <= text.size(); ++i)
        if (inside.empty() || !inside[i]) stops.push_back(i);
    return stops;
}

bool fits(Font const& font, std::wstring_view text, unsigned short width) {
    return static_cast<int>(std::lround(font.exactWidth(text))) <= width;
}

/// The longest of the candidates 0..count-1 that fits, each being wider than the one before; empty when none
/// does.
template <class Make>
std::wstring longestFitting(Font const& font, std::size_t count, unsigned short width, Make make) {
    std::size_t low = 0;
    std::size_t high = count;
    while (low < high) {
        std::size_t const middle = (low + high) / 2;
        if (fits(font, make(middle), width))
            low = middle + 1;
        else
            high = middle;
    }
    return low == 0 ? std::wstring() : make(low - 1);
}

std::wstring cutAtEnd(Font const& font, std::wstring_view text, unsigned short width) {
    text = text.substr(0, enoughFor(font, text, width));
    std::vector<std::size_t> const stops = stopsOf(text);
    return longestFitting(font, stops.size(), width, [&](std::size_t i) {
        std::wstring candidate(text.substr(0, stops[i]));
        // No blank before the ellipsis: it would look like a word of its own.
        while (!candidate.empty() && TextBoundaries::isBlank(candidate.back())) candidate.pop_back();
        return candidate += Glib::ellipsis;
    });
}

std::wstring cutAtStart(Font const& font, std::wstring_view text, unsigned short width) {
    // Characters are seldom narrower than a quarter of a pixel, so no more could fit.
    text = text.substr(text.size() - std::min<std::size_t>(text.size(), 4U * width + 64U));
    std::vector<std::size_t> const stops = stopsOf(text);
    return longestFitting(font, stops.size(), width, [&](std::size_t i) {
        return Glib::ellipsis + std::wstring(text.substr(stops[stops.size() - 1 - i]));
    });
}

} // namespace

namespace Glib {

Text fitTextToWidth(Qv::Ptr<iFont> const& font, Text const& text, unsigned short width, bool* wasCut) {
    if (wasCut) *wasCut = false;
    if (!font) return {};
    Font const& shaped = Font::of(*font);
    std::wstring_view const all = text.view();
    bool const hasControls = std::any_of(all.begin(), all.end(), TextBoundaries::isControl);
    std::wstring const cleaned = hasControls ? withoutControls(all) : std::wstring();
    std::wstring_view const shown = hasControls ? std::wstring_view(cleaned) : all;
    if (enoughFor(shaped, shown, width + 0.5) == shown.size() && fits(shaped, shown, width))
        return hasControls ? Text(shown) : text;
    if (wasCut) *wasCut = true;
    return Text(std::wstring_view(cutAtEnd(shaped, shown, width)));
}

} // namespace Glib

Text clipStringToFit(Text const& text, unsigned short width, bool keepEnd, Qv::Ptr<iFont> const& font) {
    if (!font || !keepEnd) return Glib::fitTextToWidth(font, text, width);
    Font const& shaped = Font::of(*font);
    std::wstring const shown = withoutControls(text.view());
    if (enoughFor(shaped, shown, width + 0.5) == shown.size() && fits(shaped, shown, width))
        return Text(std::wstring_view(shown));
    return Text(std::wstring_view(cutAtStart(shaped, shown, width)));
}

} // namespace wainscot
