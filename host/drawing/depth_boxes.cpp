#include "host/drawing/shapes.h"

#include <algorithm>

namespace wainscot {
namespace {

constexpr double weightPerDepth = 0.09;
constexpr int deepest = 4;
/// What a recessed ground keeps of dark surroundings, and how much white it adds to light ones.
constexpr double recessedOnDark = 0.68;
constexpr double recessedOnLight = 0.8;

Colour lit(Colour const& colour, double weight) {
    return Colour::mix(Colour(1, 1, 1), colour, weight);
}

Colour shaded(Colour const& colour, double weight) {
    return Colour::mix(Colour(), colour, 2 * weight);
}

/// Opposite edges never overlap.
int fittingEdge(IntBox const& box, int edgeWidth) {
    return std::clamp(edgeWidth, 0, std::min(box.width(), box.height()) / 2);
}

} // namespace

namespace Glib {

void drawDepthBox(CanvasRenderer& renderer, Colour const& colour, IntBox const& box, int edgeWidth,
                  int depth) {
    if (box.isEmpty()) return;
    drawRoundedRectFilled(renderer, colour, box, 0, 1.0, fittingEdge(box, edgeWidth));
    drawDepthEdge(renderer, colour, box, edgeWidth, depth);
}

void drawDepthEdge(CanvasRenderer& renderer, Colour const& colour, IntBox const& box, int edgeWidth,
                   int depth) {
    if (box.isEmpty()) return;
    int const edge = fittingEdge(box, edgeWidth);
    if (edge == 0) return;
    double const weight = weightPerDepth * std::abs(std::clamp(depth, -deepest, deepest));
    Colour const above = depth >= 0 ? lit(colour, weight) : shaded(colour, weight);
    Colour const below = depth >= 0 ? shaded(colour, weight) : lit(colour, weight);
    drawLitFrame(renderer, above, below, box, 0, edge);
}

void drawIndentBox(CanvasRenderer& renderer, Colour const& colour, IntBox const& box, int edgeWidth) {
    drawDepthBox(renderer, getIndentBoxColour(colour), box, edgeWidth, indentDepth);
}

} // namespace Glib

Colour getIndentBoxColour(Colour const& surroundings) {
    bool const isDark = surroundings.brightness() < 0.5;
    return isDark ? Colour::scale(surroundings, recessedOnDark) : lit(surroundings, recessedOnLight);
}

void indent_box(Canvas* canvas, IntBox const& box, Colour const& surroundings) {
    CanvasRenderer renderer(canvas, box);
    Glib::drawIndentBox(renderer, surroundings, box);
}

} // namespace wainscot
