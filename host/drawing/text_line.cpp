#include "host/drawing/text_line_p.h"

namespace wainscot {
namespace {

/// The sum of the blocks; nothing when the line must be ordered.
std::optional<double> plainWidth(Font const& font, std::wstring_view text) {
    std::optional<double> width = 0;
    forEachBlock(text, [&](std::wstring_view block, std::size_t) {
        std::optional<double> const own = font.plainWidth(block);
        width = own ? std::optional(*width + *own) : std::nullopt;
        return width.has_value();
    });
    return width;
}

std::optional<double> plainGapInBlock(Font const& font, std::wstring_view block, std::size_t index) {
    TextLayoutPtr const layout = TextLayouts::get(font, block);
    return layout->mayTurn() ? std::nullopt : std::optional<double>(layout->gap(index));
}

std::optional<double> plainGap(Font const& font, std::wstring_view text, std::size_t index) {
    std::optional<double> x = 0;
    std::size_t end = 0;
    forEachBlock(text, [&](std::wstring_view block, std::size_t start) {
        end = start + block.size();
        bool const isLast = index < end || end == text.size();
        std::optional<double> const step =
            isLast ? plainGapInBlock(font, block, index - start) : font.plainWidth(block);
        x = step ? std::optional(*x + *step) : std::nullopt;
        return step && !isLast;
    });
    return x && Bidi::startsPlainly(text, end) ? x : std::nullopt;
}

std::optional<std::size_t> plainNearestStop(Font const& font, std::wstring_view text, double x) {
    double left = 0;
    std::size_t end = 0;
    std::optional<std::size_t> found;
    forEachBlock(text, [&](std::wstring_view block, std::size_t start) {
        end = start + block.size();
        std::optional<double> const width = font.plainWidth(block);
        if (!width) return false;
        if (end < text.size() && x >= left + *width) {
            left += *width;
            return true;
        }
        found = start + TextLayouts::get(font, block)->nearestStop(static_cast<float>(x - left));
        return false;
    });
    return found && Bidi::startsPlainly(text, end) ? found : std::nullopt;
}

} // namespace

TextLine::TextLine(Font const& font, std::wstring_view text) : font_(font), text_(text) {
    std::optional<double> const plain =
        text.size() <= TextLayout::maxLength ? font.exactWidth(text) : plainWidth(font, text);
    if (!plain) ordered_.emplace(font, text);
    width_ = plain ? *plain : ordered_->width();
}

double TextLine::gap(Font const& font, std::wstring_view text, std::size_t index) {
    if (text.empty()) return 0;
    if (text.size() <= TextLayout::maxLength)
        return static_cast<double>(TextLayouts::get(font, text)->gap(index));
    std::optional<double> const plain = plainGap(font, text, index);
    return plain ? *plain : BidiLine(font, text).gap(index);
}

std::size_t TextLine::nearestStop(Font const& font, std::wstring_view text, double x) {
    if (text.empty()) return 0;
    if (text.size() <= TextLayout::maxLength)
        return TextLayouts::get(font, text)->nearestStop(static_cast<float>(x));
    std::optional<std::size_t> const plain = plainNearestStop(font, text, x);
    return plain ? *plain : BidiLine(font, text).nearestStop(x);
}

} // namespace wainscot
