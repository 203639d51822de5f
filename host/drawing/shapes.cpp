#include "host/drawing/shapes.h"

#include "host/drawing/render_target_p.h"

#include <algorithm>
#include <array>

namespace wainscot::Glib {
namespace {

/// The four sides inside a device box: the long ones below and above, the others between them.
std::array<IntBox, 4> sidesOf(IntBox const& box, int width) {
    int const across = std::min(width, (box.width() + 1) / 2);
    int const along = std::min(width, (box.height() + 1) / 2);
    int const inner1 = box.y1 + along;
    int const inner2 = std::max(inner1, box.y2 - along);
    return {IntBox(box.x1, box.y1, box.x2, inner1), IntBox(box.x1, inner2, box.x2, box.y2),
            IntBox(box.x1, inner1, box.x1 + across, inner2),
            IntBox(std::max(box.x1 + across, box.x2 - across), inner1, box.x2, inner2)};
}

} // namespace

void drawFrame(CanvasRenderer& renderer, Colour const& colour, IntBox const& box, unsigned short width) {
    if (!renderer.isDrawing() || box.isEmpty() || width == 0) return;
    RenderTarget const target(renderer);
    auto const sides = sidesOf(target.deviceBox(box), deviceThickness(width, target.scale()));
    target.fill(sides.data(), sides.size(), colour, target.opacity(1.0));
    target.painted(box);
}

void drawOutlinedRect(CanvasRenderer& renderer, Colour const& fill, Colour const& edge, IntBox const& box,
                      int edgeWidth) {
    if (!renderer.isDrawing() || box.isEmpty()) return;
    RenderTarget const target(renderer);
    IntBox const device = target.deviceBox(box);
    IntBox const inner = device.inset(deviceThickness(edgeWidth, target.scale()));
    if (!inner.isEmpty()) target.fill(inner, fill, target.opacity(1.0));
    if (edgeWidth > 0)
        drawFrame(renderer, edge, box, static_cast<unsigned short>(std::min(edgeWidth, 0xFFFF)));
    target.painted(box);
}

void drawFocusRect(CanvasRenderer& renderer, IntBox const& box, Colour const& colour) {
    drawFrame(renderer, colour, box, 1);
}

} // namespace wainscot::Glib
