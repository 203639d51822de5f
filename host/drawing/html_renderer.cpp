#include "host/drawing/html_layout_p.h"
#include "host/drawing/render_target_p.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace wainscot {
namespace {

int rounded(double x) {
    constexpr double most = 1 << 30;
    return static_cast<int>(std::lround(std::clamp(x, -most, most)));
}

int clamped(std::int64_t value) {
    using Limits = std::numeric_limits<int>;
    return static_cast<int>(std::clamp<std::int64_t>(value, Limits::min(), Limits::max()));
}

/// Draws one line from `start`, its place on the baseline; only the part between two columns.
class LinePainter {
public:
    LinePainter(CanvasRenderer& renderer, HTMLRenderer::Paragraphs const& text,
                HTMLRenderer::Layout const& layout)
        : renderer_(renderer), text_(text), layout_(layout), seen_(RenderTarget(renderer).visibleBox()) {}

    IntBox const& seen() const { return seen_; }

    void draw(HTMLRenderer::Layout::Line const& line, XY<int> const& start) {
        double const left = double(seen_.x1) - start.x - layout_.overhang;
        double const right = double(seen_.x2) - start.x + layout_.overhang;
        for (LineBreaker::Fragment const& fragment : HTMLRenderer::Layout::fragmentsFrom(line, left)) {
            if (fragment.x >= right) return;
            drawFragment(line, fragment, start);
        }
    }

private:
    void drawFragment(HTMLRenderer::Layout::Line const& line, LineBreaker::Fragment const& fragment,
                      XY<int> const& start) {
        HTMLRenderer::Span const& span = text_[line.paragraph].spans[fragment.span];
        XY<int> const at = start + XY<int>(rounded(fragment.x), 0);
        LightweightString<wchar_t> const part = span.text.substr(fragment.start, fragment.length);
        renderer_.renderPrimitive(
            Glib::TextDescription(part, at, layout_.fontOf(line, fragment), span.colour));
        if (span.url.empty()) return;
        // No underline under the blank at which the line was broken.
        double const end = std::min(fragment.x + fragment.width, line.broken.width);
        XY<int> const below(0, -2);
        renderer_.renderPrimitive(
            Glib::LineDescription(at + below, start + XY<int>(rounded(end), -2), span.colour));
    }

    CanvasRenderer& renderer_;
    HTMLRenderer::Paragraphs const& text_;
    HTMLRenderer::Layout const& layout_;
    IntBox seen_;
};

} // namespace

void HTMLRenderer::render(CanvasRenderer& renderer, Paragraphs const& text, Glib::FontDesc const& font,
                          IntBox const& area) {
    if (!renderer.isDrawing()) return;
    Layout const& layout = text.layout(font, area.width());
    LinePainter painter(renderer, text, layout);
    std::int64_t const top = area.y2;
    std::int64_t const end = std::min(top - area.y1, top - painter.seen().y1 + layout.overhang);
    for (Layout::Line const& line : layout.linesBelow(top - painter.seen().y2 - layout.overhang)) {
        if (line.top >= end) return;
        painter.draw(line, {area.x1, clamped(top - line.top - line.broken.ascent)});
    }
}

int HTMLRenderer::calcMaxWidth(Paragraphs const& text, Glib::FontDesc const& font) {
    return rounded(std::ceil(text.layout(font, 0).widest));
}

int HTMLRenderer::calcNumDisplayLines(Paragraphs const& text, Glib::FontDesc const& font, int width) {
    return clamped(static_cast<std::int64_t>(text.layout(font, width).lines.size()));
}

int HTMLRenderer::calcHeight(Paragraphs const& text, Glib::FontDesc const& font, int width) {
    Layout const& layout = text.layout(font, width);
    return layout.lines.empty() ? 0 : clamped(layout.lines.back().bottom());
}

LightweightString<wchar_t> HTMLRenderer::getURLAtPosition(Paragraphs const& text, Glib::FontDesc const& font,
                                                          IntBox const& area, XY<int> const& place) {
    if (!area.contains(place)) return {};
    Layout const& layout = text.layout(font, area.width());
    // A row of pixels lies above its y.
    std::int64_t const row = std::int64_t(area.y2) - place.y - 1;
    std::span<Layout::Line const> const lines = layout.linesBelow(row);
    if (lines.empty() || lines.front().top > row) return {};
    double const x = double(place.x) - area.x1;
    std::span<LineBreaker::Fragment const> const fragments = Layout::fragmentsFrom(lines.front(), x);
    if (fragments.empty() || fragments.front().x > x) return {};
    return text[lines.front().paragraph].spans[fragments.front().span].url;
}

} // namespace wainscot
