#include "foundation/rect.h"

#include "host/base/configb.h"
#include "host/drawing/canvas_renderer.h"
#include "host/drawing/shapes.h"

#include <algorithm>
#include <cmath>

namespace wainscot {

namespace {

/// No object of the tree has larger corners.
constexpr double maxRadius = 32767.0;

} // namespace

rect::rect(GlobCreationInfo const& info) : MenuGlob(info) {}

rect::rect(unsigned short width, unsigned short height, Palette const& palette, bool opaque, Canvas* canvas)
    : MenuGlob(width, height, palette, opaque, canvas) {}

rect::rect(configb const& settings, unsigned short width, unsigned short height)
    : MenuGlob(settings, width, height) {
    double radius = 0.0;
    if (settings.in("radius", radius)) set_radius(radius);
}

void rect::setcol(Colour const& colour, bool redraw) {
    setCol(colour, redraw);
}

void rect::set_radius(double radius) {
    radius_ = std::isfinite(radius) ? static_cast<float>(std::clamp(radius, 0.0, maxRadius)) : 0.0F;
    makeDirty();
}

void rect::drawBackground() {
    if (!isOpaque()) return;
    CanvasRenderer renderer(canvas(), canvasArea());
    Glib::drawRoundedRectFilled(renderer, getCol(), canvasArea(),
                                static_cast<unsigned int>(std::lround(radius_)));
}

} // namespace wainscot
