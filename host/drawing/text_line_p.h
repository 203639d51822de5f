#pragma once

#include "host/drawing/bidi_line_p.h"
#include "host/drawing/font_p.h"

#include <optional>
#include <span>
#include <string_view>

namespace wainscot {

/// One line of text of any length, measured. The blocks of a line from left to right stand side by side; any
/// other line is ordered as a whole. Places are exact, from the left end of the line.
class TextLine {
public:
    /// The font and the text must outlive the line.
    TextLine(Font const& font, std::wstring_view text);

    double width() const { return width_; }

    /// Calls `visit(glyphs, x)` with the glyphs that may be seen between two places; their places are
    /// relative to `x`.
    template <class Visit>
    void forEachVisible(double left, double right, Visit visit) const {
        if (ordered_) return ordered_->forEachVisible(left, right, visit);
        double next = 0;
        forEachBlock(text_, [&](std::wstring_view block, std::size_t) {
            double const x = next;
            next += font_.blockWidth(block);
            if (next >= left && x <= right)
                visit(std::span<PlacedGlyph const>(TextLayouts::get(font_, block)->glyphs()), x);
            return x <= right;
        });
    }

    /// The gap before character `index`. Looks no further than it must.
    static double gap(Font const& font, std::wstring_view text, std::size_t index);
    /// The stop nearest to `x`. Looks no further than it must.
    static std::size_t nearestStop(Font const& font, std::wstring_view text, double x);

private:
    Font const& font_;
    std::wstring_view text_;
    double width_ = 0;
    std::optional<BidiLine> ordered_;
};

} // namespace wainscot
