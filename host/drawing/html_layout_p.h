#pragma once

#include "host/drawing/html_renderer.h"
#include "host/drawing/line_breaker_p.h"

#include <cstdint>
#include <span>
#include <vector>

namespace wainscot {

/// A parsed text broken into lines for one width and font. Heights go downwards from the top of the text.
struct HTMLRenderer::Layout {
    Layout(Paragraphs const& text, Glib::FontDesc const& wantedFont, int wantedWidth);

    struct Line {
        std::uint32_t paragraph;
        std::int64_t top;
        LineBreaker::Line broken;

        int height() const { return broken.ascent + broken.descent; }
        std::int64_t bottom() const { return top + height(); }
    };

    /// The lines from the first one that ends below `height`.
    std::span<Line const> linesBelow(std::int64_t height) const;
    Qv::Ptr<iFont> const& fontOf(Line const& line, LineBreaker::Fragment const& fragment) const {
        return spans[line.paragraph][fragment.span].font;
    }
    /// The fragments from the first one that ends to the right of `x`.
    static std::span<LineBreaker::Fragment const> fragmentsFrom(Line const& line, double x);

    Glib::FontDesc font;
    int width;
    /// What of the neighbouring lines may reach into a line, and beyond the ends of fragments.
    int overhang;
    std::vector<std::vector<LineBreaker::Span>> spans;
    std::vector<Line> lines;
    double widest = 0;
};

} // namespace wainscot
