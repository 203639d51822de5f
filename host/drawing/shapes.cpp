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

void drawLitFrame(CanvasRenderer& renderer, Colour const& upper, Colour const& lower, IntBox const& box,
                  int inset, int width, unsigned sides) {
    if (!renderer.isDrawing() || box.isEmpty() || width <= 0) return;
    RenderTarget const target(renderer);
    IntBox outer = target.deviceBox(box);
    int const from = deviceThickness(inset, target.scale());
    int const thickness = std::max(1, deviceThickness(inset + width, target.scale()) - from);
    auto const has = [sides](FrameSides side) { return (sides & side) != 0; };
    outer = {outer.x1 + (has(leftSide) ? from : 0), outer.y1 + (has(topSide) ? from : 0),
             outer.x2 - (has(rightSide) ? from : 0), outer.y2 - (has(bottomSide) ? from : 0)};
    int const line = std::min({thickness, outer.width(), outer.height()});
    if (line <= 0) return;
    int const top = outer.y1 + (has(topSide) ? line : 0);
    int const bottom = std::max(top, outer.y2 - (has(bottomSide) ? line : 0));
    auto const paint = [&](FrameSides side, IntBox const& part, Colour const& colour) {
        if (has(side)) target.fill(part, colour, target.opacity(1.0));
    };
    paint(topSide, {outer.x1, outer.y1, outer.x2, outer.y1 + line}, upper);
    paint(leftSide, {outer.x1, top, outer.x1 + line, bottom}, upper);
    paint(bottomSide, {outer.x1, outer.y2 - line, outer.x2, outer.y2}, lower);
    paint(rightSide, {outer.x2 - line, top, outer.x2, bottom}, lower);
    target.painted(box);
}

void drawGripLines(CanvasRenderer& renderer, Colour const& colour, IntBox const& box, bool upright, int from,
                   int margin, int count) {
    if (!renderer.isDrawing() || box.isEmpty()) return;
    RenderTarget const target(renderer);
    IntBox const device = target.deviceBox(box);
    int const first = deviceThickness(from, target.scale());
    int const aside = deviceThickness(margin, target.scale());
    int const line = deviceThickness(1, target.scale());
    for (int i = 0; i < count; ++i) {
        int const at = first + 2 * i * line;
        IntBox const lower =
            upright ? IntBox(device.x1 + aside, device.y1 + at, device.x2 - aside, device.y1 + at + line)
                    : IntBox(device.x1 + at, device.y1 + aside, device.x1 + at + line, device.y2 - aside);
        IntBox const upper = upright ? IntBox(lower.x1, device.y2 - at - line, lower.x2, device.y2 - at)
                                     : IntBox(device.x2 - at - line, lower.y1, device.x2 - at, lower.y2);
        for (IntBox const& part : {lower, upper})
            if (!part.isEmpty()) target.fill(part, colour, target.opacity(1.0));
    }
    target.painted(box);
}

void drawFocusRect(CanvasRenderer& renderer, IntBox const& box, Colour const& colour, unsigned int radius) {
    drawRoundedRectOutline(renderer, colour, box, focusWidth, radius);
}

} // namespace wainscot::Glib
