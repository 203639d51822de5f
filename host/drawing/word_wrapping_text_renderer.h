#pragma once

#include "host/drawing/canvas_renderer.h"

#include <functional>
#include <vector>

namespace wainscot::Glib {

/// Text of several lines in one font, wrapped at words to a width. Line feeds in the text end lines.
class WAINSCOT_API WordWrappingTextRenderer {
public:
    /// A width below 1 means no wrapping.
    WordWrappingTextRenderer(Qv::Ptr<iFont> font, int width);

    struct Line {
        /// Characters of the text; blanks at the end of a wrapped line are not shown and not in it.
        std::size_t start;
        std::size_t length;
        int width;
    };

    /// Breaks a text into lines and keeps them; gives how many there are, at least 1.
    std::size_t analyse(LightweightString<wchar_t> const& text);
    std::vector<Line> const& lines() const { return lines_; }
    /// The size of the text last analysed.
    XY<int> size() const;

    /// Analyses a text and hands each line to `visit`, from the top, until it answers false.
    void processString(
        LightweightString<wchar_t> const& text,
        std::function<bool(LightweightString<wchar_t> const& line, std::size_t index)> const& visit);
    /// Draws the text that was analysed last, or `text` when it differs, from the top of `area`; lines that
    /// do not fit are cut off at its bottom.
    void renderString(CanvasRenderer& renderer, LightweightString<wchar_t> const& text, IntBox const& area,
                      Colour const& colour, TextAlignment alignment = eAlignLeft);

private:
    LightweightString<wchar_t> lineAt(std::size_t index) const;

    Qv::Ptr<iFont> font_;
    int width_;
    LightweightString<wchar_t> text_;
    std::vector<Line> lines_;
};

} // namespace wainscot::Glib
