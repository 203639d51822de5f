#include "host/drawing/html_renderer.h"

#include "host/drawing/line_breaker_p.h"

#include <algorithm>
#include <cmath>

namespace wainscot {
namespace {

/// A paragraph broken into lines.
struct BrokenParagraph {
    HTMLRenderer::Paragraph const* source;
    std::vector<LineBreaker::Span> spans;
    std::vector<LineBreaker::Line> lines;
};

BrokenParagraph breakParagraph(HTMLRenderer::Paragraph const& paragraph, Glib::FontDesc const& font,
                               int width) {
    BrokenParagraph broken{&paragraph, {}, {}};
    for (HTMLRenderer::Span const& span : paragraph.spans)
        broken.spans.push_back(
            {span.text.view(), Glib::loadFont({font.name, font.size, font.style | span.style})});
    broken.lines = LineBreaker(broken.spans, width).breakLines();
    return broken;
}

/// Half a line between paragraphs.
int gapBetween(Glib::FontDesc const& font) {
    return Glib::loadFont(font)->lineHeight() / 2;
}

int rounded(double x) {
    constexpr double most = 1 << 30;
    return static_cast<int>(std::lround(std::clamp(x, -most, most)));
}

int heightOf(LineBreaker::Line const& line) {
    return line.ascent + line.descent;
}

/// Walks the lines from the top of an area: `visit(paragraph, line, baseline)` tells whether to go on.
template <class Visit>
void forEachLine(HTMLRenderer::Paragraphs const& text, Glib::FontDesc const& font, IntBox const& area,
                 Visit visit) {
    int top = area.y2;
    for (HTMLRenderer::Paragraph const& paragraph : text) {
        BrokenParagraph const broken = breakParagraph(paragraph, font, area.width());
        for (LineBreaker::Line const& line : broken.lines) {
            if (!visit(broken, line, Coordinate::difference(top, line.ascent))) return;
            top = Coordinate::difference(top, heightOf(line));
        }
        top = Coordinate::difference(top, gapBetween(font));
    }
}

void drawLine(CanvasRenderer& renderer, BrokenParagraph const& paragraph, LineBreaker::Line const& line,
              XY<int> const& start) {
    for (LineBreaker::Fragment const& fragment : line.fragments) {
        HTMLRenderer::Span const& span = paragraph.source->spans[fragment.span];
        XY<int> const at = start + XY<int>(rounded(fragment.x), 0);
        LightweightString<wchar_t> const part = span.text.substr(fragment.start, fragment.length);
        renderer.renderPrimitive(
            Glib::TextDescription(part, at, paragraph.spans[fragment.span].font, span.colour));
        if (span.url.empty()) continue;
        // Not under the blank at which the line was broken.
        double const end = std::min(fragment.x + fragment.width, line.width);
        XY<int> const below(0, -2);
        renderer.renderPrimitive(
            Glib::LineDescription(at + below, start + XY<int>(rounded(end), -2), span.colour));
    }
}

} // namespace

void HTMLRenderer::render(CanvasRenderer& renderer, Paragraphs const& text, Glib::FontDesc const& font,
                          IntBox const& area) {
    forEachLine(text, font, area,
                [&](BrokenParagraph const& paragraph, LineBreaker::Line const& line, int baseline) {
                    if (baseline <= Coordinate::difference(area.y1, line.ascent)) return false;
                    drawLine(renderer, paragraph, line, {area.x1, baseline});
                    return true;
                });
}

int HTMLRenderer::calcMaxWidth(Paragraphs const& text, Glib::FontDesc const& font) {
    double widest = 0;
    for (Paragraph const& paragraph : text)
        for (LineBreaker::Line const& line : breakParagraph(paragraph, font, 0).lines)
            widest = std::max(widest, line.width);
    return rounded(std::ceil(widest));
}

int HTMLRenderer::calcNumDisplayLines(Paragraphs const& text, Glib::FontDesc const& font, int width) {
    std::size_t lines = 0;
    for (Paragraph const& paragraph : text) lines += breakParagraph(paragraph, font, width).lines.size();
    return static_cast<int>(lines);
}

int HTMLRenderer::calcHeight(Paragraphs const& text, Glib::FontDesc const& font, int width) {
    int height = 0;
    for (Paragraph const& paragraph : text) {
        if (height > 0) height = Coordinate::sum(height, gapBetween(font));
        for (LineBreaker::Line const& line : breakParagraph(paragraph, font, width).lines)
            height = Coordinate::sum(height, heightOf(line));
    }
    return height;
}

LightweightString<wchar_t> HTMLRenderer::getURLAtPosition(Paragraphs const& text, Glib::FontDesc const& font,
                                                          IntBox const& area, XY<int> const& place) {
    LightweightString<wchar_t> found;
    if (!area.contains(place)) return found;
    forEachLine(text, font, area,
                [&](BrokenParagraph const& paragraph, LineBreaker::Line const& line, int baseline) {
                    if (place.y >= Coordinate::sum(baseline, line.ascent)) return false;
                    if (place.y < Coordinate::difference(baseline, line.descent)) return true;
                    for (LineBreaker::Fragment const& fragment : line.fragments) {
                        double const x = double(place.x) - area.x1 - fragment.x;
                        if (x >= 0 && x < fragment.width) found = paragraph.source->spans[fragment.span].url;
                    }
                    return false;
                });
    return found;
}

} // namespace wainscot
