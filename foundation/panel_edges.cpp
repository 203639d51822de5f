#include "foundation/panel_edges_p.h"

#include "host/drawing/shapes.h"
#include "look/frame.h"

#include <algorithm>
#include <cmath>

namespace wainscot {

namespace {

/// The largest scale of a border.
constexpr float maxScale = 64.0F;
constexpr int fadeSteps = 8;

int scaled(int width, float scale) {
    if (width <= 0 || !(scale > 0.0F)) return 0;
    return std::max(1, static_cast<int>(std::lround(static_cast<float>(width) * std::min(scale, maxScale))));
}

} // namespace

int PanelEdges::lineWidth(float scale) {
    return scaled(1, scale);
}

bool PanelEdges::hasTitleGround(Border::eType type) {
    return type != Border::none && type != Border::group && type != Border::sunken;
}

PanelEdges::PanelEdges(Border const& border, float scale, Colour const& ground, Palette const& palette) {
    auto const [light, shade, dimLight, dimShade, line] = ControlLook::frameColours(ground, palette);
    int const full = scaled(border.getSize(), scale);
    int const thin = std::min(lineWidth(scale), full);
    if (full == 0) return;
    switch (border.getType()) {
    case Border::none:
        break;
    case Border::line:
        add(0, full, line, line);
        break;
    case Border::group:
        add(0, thin, line, line);
        break;
    case Border::window:
    case Border::raised:
        add(0, thin, shade, shade);
        add(thin, thin, light, dimLight);
        break;
    case Border::dialog:
        add(0, thin, shade, shade);
        add(thin, thin, light, dimLight);
        add(full - thin, thin, line, line);
        break;
    case Border::sunken:
        add(0, thin, shade, light);
        add(thin, thin, dimShade, ground);
        break;
    }
}

void PanelEdges::add(int inset, int width, Colour const& upper, Colour const& lower) {
    if (inset >= 0 && width > 0) rings_[numRings_++] = {inset, width, upper, lower};
}

int PanelEdges::width() const {
    int reach = 0;
    for (std::size_t i = 0; i < numRings_; ++i) reach = std::max(reach, rings_[i].inset + rings_[i].width);
    return reach;
}

void PanelEdges::draw(CanvasRenderer& renderer, IntBox const& box, unsigned int radius) const {
    if (radius == 0) return drawSquare(renderer, box, Surround::allEdges);
    for (std::size_t i = 0; i < numRings_; ++i) drawRound(renderer, box, rings_[i], radius);
}

void PanelEdges::drawSquare(CanvasRenderer& renderer, IntBox const& box, unsigned int edges) const {
    for (std::size_t i = 0; i < numRings_; ++i) drawStraight(renderer, box, rings_[i], edges);
}

/// A round corner has no mitre at which the light could change: the light fades along the sides.
void PanelEdges::drawRound(CanvasRenderer& renderer, IntBox const& box, Ring const& ring,
                           unsigned int radius) {
    IntBox const outer = box.inset(ring.inset);
    if (outer.isEmpty()) return;
    unsigned int const corner = radius - std::min(radius, static_cast<unsigned int>(ring.inset));
    Glib::drawRoundedRectOutline(renderer, ring.lower, box, ring.width, corner, 1.0, ring.inset);
    if (ring.upper == ring.lower) return;
    for (int step = 0; step < fadeSteps; ++step) {
        IntBox const slice(outer.x1, outer.y2 - outer.height() * (step + 1) / fadeSteps, outer.x2,
                           outer.y2 - outer.height() * step / fadeSteps);
        renderer.setClipRect(slice);
        Glib::drawRoundedRectOutline(renderer, ring.upper, box, ring.width, corner,
                                     1.0 - static_cast<double>(step) / (fadeSteps - 1), ring.inset);
    }
    renderer.clearClipRect();
}

void PanelEdges::drawStraight(CanvasRenderer& renderer, IntBox const& box, Ring const& ring,
                              unsigned int edges) {
    static_assert(unsigned(Surround::left) == Glib::leftSide &&
                  unsigned(Surround::bottom) == Glib::bottomSide &&
                  unsigned(Surround::right) == Glib::rightSide && unsigned(Surround::top) == Glib::topSide);
    Glib::drawLitFrame(renderer, ring.upper, ring.lower, box, ring.inset, ring.width, edges);
}

} // namespace wainscot
