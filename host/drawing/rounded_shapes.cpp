#include "host/drawing/corner_masks_p.h"
#include "host/drawing/coverage_blend_p.h"
#include "host/drawing/render_target_p.h"
#include "host/drawing/shapes.h"

#include <algorithm>
#include <array>

namespace wainscot::Glib {
namespace {

/// Masks of larger radii cost too much; nothing on a screen needs them.
constexpr int largestRadius = 512;

/// A rounded box in device pixels.
struct RoundedBox {
    IntBox box;
    int radius;

    RoundedBox(IntBox const& outline, int wanted)
        : box(outline), radius(std::clamp(std::min({wanted, outline.width() / 2, outline.height() / 2}), 0,
                                          largestRadius)) {}
};

void fillCorners(RenderTarget const& target, RoundedBox const& shape, CornerMasks::Mask const& mask,
                 Colour const& colour, double alpha) {
    IntBox const& box = shape.box;
    std::uint32_t const ink = CoverageBlend::premultiplied(colour, alpha);
    for (bool const right : {false, true}) {
        for (bool const low : {false, true}) {
            int const x = right ? box.x2 - shape.radius : box.x1;
            int const y = low ? box.y2 - shape.radius : box.y1;
            target.fillMasked({mask.corners[CornerMasks::Mask::corner(right, low)].data(), mask.stride},
                              IntBox::sized({x, y}, {shape.radius, shape.radius}), ink);
        }
    }
}

/// The boxes between the corners.
std::array<IntBox, 3> bodyOf(RoundedBox const& shape) {
    IntBox const& b = shape.box;
    int const r = shape.radius;
    return {IntBox(b.x1 + r, b.y1, b.x2 - r, b.y1 + r), IntBox(b.x1, b.y1 + r, b.x2, b.y2 - r),
            IntBox(b.x1 + r, b.y2 - r, b.x2 - r, b.y2)};
}

/// The four straight parts of an edge.
std::array<IntBox, 4> sidesOf(RoundedBox const& shape, int edge) {
    IntBox const& b = shape.box;
    // When the edge is thicker than the corners' radius, the sides above and below reach to the ends.
    int const r = std::max(shape.radius, edge);
    int const ends = shape.radius;
    return {IntBox(b.x1 + ends, b.y1, b.x2 - ends, b.y1 + edge),
            IntBox(b.x1 + ends, b.y2 - edge, b.x2 - ends, b.y2),
            IntBox(b.x1, b.y1 + r, b.x1 + edge, b.y2 - r), IntBox(b.x2 - edge, b.y1 + r, b.x2, b.y2 - r)};
}

void fillRounded(RenderTarget const& target, RoundedBox const& shape, Colour const& colour, double alpha) {
    auto const body = bodyOf(shape);
    target.fill(body.data(), body.size(), colour, alpha);
    if (shape.radius > 0) fillCorners(target, shape, CornerMasks::disc(shape.radius), colour, alpha);
}

int usableEdge(RenderTarget const& target, IntBox const& device, int edgeWidth) {
    return std::min(deviceThickness(edgeWidth, target.scale()),
                    std::min(device.width(), device.height()) / 2);
}

int deviceRadius(RenderTarget const& target, unsigned int radius) {
    return deviceThickness(static_cast<int>(std::min<unsigned>(radius, largestRadius)), target.scale());
}

/// An edge with a square corner that is thicker than the radius is completed by the squares in the corners.
void strokeRounded(RenderTarget const& target, RoundedBox const& shape, int edge, Colour const& colour,
                   double alpha, bool overFill) {
    auto const sides = sidesOf(shape, edge);
    target.fill(sides.data(), sides.size(), colour, alpha);
    if (shape.radius == 0) return;
    fillCorners(target, shape,
                overFill ? CornerMasks::disc(shape.radius) : CornerMasks::ring(shape.radius, edge), colour,
                alpha);
    if (edge <= shape.radius) return;
    int const r = shape.radius;
    IntBox const& b = shape.box;
    std::array<IntBox, 4> const rest{
        IntBox(b.x1, b.y1 + r, b.x1 + r, b.y1 + edge), IntBox(b.x2 - r, b.y1 + r, b.x2, b.y1 + edge),
        IntBox(b.x1, b.y2 - edge, b.x1 + r, b.y2 - r), IntBox(b.x2 - r, b.y2 - edge, b.x2, b.y2 - r)};
    target.fill(rest.data(), rest.size(), colour, alpha);
}

/// A device box without `inset` logical pixels on all sides; measured from its own edges.
IntBox insetBy(IntBox const& device, int inset, double scale) {
    return device.inset(deviceThickness(inset, scale));
}

/// The lower-left corner stays where it is.
IntBox markBox(RenderTarget const& target, IntBox const& box) {
    IntBox const device = target.deviceBox(box);
    XY<int> const size{deviceEdge(box.width(), target.scale()), deviceEdge(box.height(), target.scale())};
    return IntBox::sized({device.x1, device.y2 - size.y}, size);
}

void paintRounded(RenderTarget const& target, IntBox const& device, Colour const& fill, Colour const& edge,
                  int edgeWidth, unsigned int radius) {
    double const alpha = target.opacity(1.0);
    int const thickness = edgeWidth > 0 ? usableEdge(target, device, edgeWidth) : 0;
    RoundedBox const outer(device, deviceRadius(target, radius));
    RoundedBox const inner(device.inset(thickness), outer.radius - thickness);
    // The fill is drawn over a full corner of the edge's colour, so that no ground shines through where the
    // two meet; where the result is translucent that would darken the corner, and the ring is drawn instead.
    if (thickness > 0) strokeRounded(target, outer, thickness, edge, alpha, alpha >= 1.0);
    if (!inner.box.isEmpty()) fillRounded(target, inner, fill, alpha);
}

} // namespace

void drawRoundedRectFilled(CanvasRenderer& renderer, Colour const& fill, IntBox const& box,
                           unsigned int radius, double opacity, int inset) {
    if (!renderer.isDrawing() || box.isEmpty()) return;
    RenderTarget const target(renderer);
    IntBox const device = insetBy(target.deviceBox(box), inset, target.scale());
    if (device.isEmpty() || !target.isVisible(device)) return;
    fillRounded(target, RoundedBox(device, deviceRadius(target, radius)), fill, target.opacity(opacity));
    target.painted(box);
}

void drawRoundedRectOutline(CanvasRenderer& renderer, Colour const& edge, IntBox const& box, int edgeWidth,
                            unsigned int radius, double opacity, int inset) {
    if (!renderer.isDrawing() || box.isEmpty() || edgeWidth <= 0) return;
    RenderTarget const target(renderer);
    IntBox const device = insetBy(target.deviceBox(box), inset, target.scale());
    if (device.isEmpty() || !target.isVisible(device)) return;
    strokeRounded(target, RoundedBox(device, deviceRadius(target, radius)),
                  usableEdge(target, device, edgeWidth), edge, target.opacity(opacity), false);
    target.painted(box);
}

void drawRoundedRect(CanvasRenderer& renderer, Colour const& fill, Colour const& edge, IntBox const& box,
                     int edgeWidth, unsigned int radius) {
    if (edgeWidth <= 0) return drawRoundedRectFilled(renderer, fill, box, radius);
    if (!renderer.isDrawing() || box.isEmpty()) return;
    RenderTarget const target(renderer);
    IntBox const device = target.deviceBox(box);
    if (!target.isVisible(device)) return;
    paintRounded(target, device, fill, edge, edgeWidth, radius);
    target.painted(box);
}

void drawRoundedMark(CanvasRenderer& renderer, Colour const& fill, Colour const& edge, IntBox const& box,
                     int edgeWidth, unsigned int radius, int inset) {
    if (!renderer.isDrawing() || box.isEmpty()) return;
    RenderTarget const target(renderer);
    IntBox const device = insetBy(markBox(target, box), inset, target.scale());
    if (device.isEmpty() || !target.isVisible(device)) return;
    paintRounded(target, device, fill, edge, edgeWidth, radius);
    target.painted(box);
}

} // namespace wainscot::Glib
