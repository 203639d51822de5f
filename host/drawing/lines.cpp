#include "host/drawing/path_image_p.h"
#include "host/drawing/render_target_p.h"

#include <cstdlib>

namespace wainscot {
namespace {

/// The box of a vertical or horizontal line, in device thickness, so that a line never vanishes.
IntBox straightLine(RenderTarget const& target, Glib::LineDescription const& line) {
    IntBox box = target.deviceBox(IntBox(line.from, line.to));
    int const thickness = deviceThickness(line.width, target.scale());
    if (line.from.x == line.to.x)
        box.x2 = box.x1 + thickness;
    else
        box.y1 = box.y2 - thickness;
    return box;
}

} // namespace

void CanvasRenderer::renderPrimitive(Glib::LineDescription const& line) {
    if (!surface_ || line.width == 0 || line.from == line.to) return;
    RenderTarget const target(*this);
    double const alpha = target.opacity(line.opacity);
    if (alpha <= 0) return;
    if (line.from.x == line.to.x || line.from.y == line.to.y)
        target.fill(straightLine(target, line), line.colour, alpha);
    else
        drawSlantedLine(target, line, antialias_);
    painted(IntBox(line.from, line.to).inset(-line.width));
}

void CanvasRenderer::renderPrimitive(Glib::EllipseDescription const& ellipse) {
    if (!surface_ || ellipse.box.isEmpty()) return;
    RenderTarget const target(*this);
    if (target.opacity(ellipse.opacity) <= 0) return;
    drawEllipse(target, ellipse, antialias_);
    painted(ellipse.box);
}

} // namespace wainscot
