#include "host/objects/surround.h"

#include "host/drawing/palette.h"
#include "host/drawing/shapes.h"

#include <algorithm>
#include <array>

namespace wainscot {

void Surround::setShadow(int size, double opacity, unsigned edges) {
    shadowEdges_ = edges & allEdges;
    shadowSize_ = std::clamp(size, 0, maxExtent - frameWidth());
    shadowOpacity_ = opacity > 0.0 ? static_cast<float>(std::min(opacity, 1.0)) : 0.0F;
}

int Surround::frameWidth() const {
    if (frame_.style == WidgetSurround::Style::none) return 0;
    return frame_.width == 0 ? 1 : std::min<int>(frame_.width, maxExtent);
}

int Surround::extent() const {
    return std::min(frameWidth() + shadowSize_, maxExtent);
}

int Surround::extentAt(Edge edge) const {
    bool const hasShadow = shadowSize_ > 0 && (shadowEdges_ & edge) != 0;
    return hasShadow ? extent() : frameWidthAt(edge);
}

void Surround::draw(CanvasRenderer& renderer, IntBox const& box, Palette const& palette) const {
    if (shadowSize_ > 0) drawShadow(renderer, box.inset(-frameWidth()));
    if (frameWidth() > 0) drawFrame(renderer, box, palette);
}

/// Many faint layers, each a little larger than the one above, add up to a soft edge; light comes from above.
void Surround::drawShadow(CanvasRenderer& renderer, IntBox const& box) const {
    auto const reachAt = [&](Edge edge) { return (shadowEdges_ & edge) != 0 ? shadowSize_ : 0; };
    renderer.setClipRect(
        {box.x1 - reachAt(left), box.y1 - reachAt(bottom), box.x2 + reachAt(right), box.y2 + reachAt(top)});
    int const sink = shadowSize_ / 3;
    double const layer = static_cast<double>(shadowOpacity_) / shadowSize_;
    for (int reach = shadowSize_ - sink; reach > 0; --reach) {
        IntBox const cast = box.inset(-reach).translated({0, -sink});
        Glib::drawRoundedRectFilled(renderer, Colour(0, 0, 0), cast, static_cast<unsigned>(reach), layer);
    }
}

void Surround::drawFrame(CanvasRenderer& renderer, IntBox const& box, Palette const& palette) const {
    bool const sunken = frame_.style == WidgetSurround::Style::inset;
    Colour const light = sunken ? palette.mark(eMarkEdge) : palette.separator();
    Colour const dark = sunken ? getIndentBoxColour(palette.window(eWindowNormal)) : palette.separator();
    IntBox const outer = box.inset(-frameWidth());
    struct Side {
        Edge edge;
        IntBox box;
        Colour colour;
    };
    std::array<Side, 4> const sides = {{{left, {outer.x1, outer.y1, box.x1, outer.y2}, dark},
                                        {right, {box.x2, outer.y1, outer.x2, outer.y2}, light},
                                        {bottom, {outer.x1, outer.y1, outer.x2, box.y1}, light},
                                        {top, {outer.x1, box.y2, outer.x2, outer.y2}, dark}}};
    for (Side const& side : sides)
        if ((edges_ & side.edge) != 0) renderer.renderPrimitive(Glib::RectDescription(side.box, side.colour));
}

} // namespace wainscot
