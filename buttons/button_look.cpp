#include "buttons/button_look.h"

#include "host/base/host_value.h"
#include "host/drawing/shapes.h"
#include "host/drawing/uif_std.h"
#include "host/services/preferences.h"

#include <algorithm>

namespace wainscot::ButtonLook {

namespace {

constexpr double hoverFactor = 1.12;
constexpr double downFactor = 0.78;
constexpr double lightFactor = 1.18;
constexpr double shadeFactor = 0.62;
/// What an inactive face keeps of itself; the rest is the ground behind it.
constexpr double inactiveShare = 0.45;

/// What a thumb's face has of the colour of edges.
constexpr double thumbEdgeShare = 0.3;

struct Settings {
    bool isCurved = true;
};

constinit HostValue<Settings> settings;

unsigned int radius() {
    return isCurved() ? UifStd::getCornerRadius() : 0;
}

/// The line along the upper edge that catches the light, or lies in the shade.
void drawLight(CanvasRenderer& renderer, IntBox const& box, Colour const& colour) {
    int const inset = static_cast<int>(radius()) + 1;
    if (box.width() <= 2 * inset || box.height() < 4) return;
    renderer.renderPrimitive(
        Glib::LineDescription({box.x1 + inset, box.y2 - 2}, {box.x2 - inset, box.y2 - 2}, colour));
}

} // namespace

bool isCurved() {
    return settings.get().isCurved;
}

void readPreferences() {
    settings.edit().isCurved = config_int("curved_buttons", 1) != 0;
}

Colour faceColour(Face const& face, Palette const& palette) {
    if (!face.isActive) return Colour::mix(face.colour, palette.window(eWindowNormal), inactiveShare);
    if (face.isDown) return face.isDownColour ? face.colour : Colour::scale(face.colour, downFactor);
    return face.isHovered ? palette.scale(face.colour, hoverFactor) : face.colour;
}

Colour thumbColour(Palette const& palette) {
    return Colour::mix(palette.mark(eMarkEdge), palette.button(), thumbEdgeShare);
}

void drawFace(CanvasRenderer& renderer, Face const& face, Palette const& palette) {
    Colour const colour = faceColour(face, palette);
    Glib::drawRoundedRectFilled(renderer, colour, face.box, radius());
    if (isCurved() && face.isActive && !face.isDown)
        drawLight(renderer, face.box, Colour::scale(colour, lightFactor));
    // It may have the colour that it has at rest.
    if (face.isActive && face.isDown && face.isDownColour)
        drawLight(renderer, face.box, Colour::scale(colour, shadeFactor));
}

void drawEdge(CanvasRenderer& renderer, Face const& face, Palette const& palette) {
    Colour const derived = Colour::scale(faceColour(face, palette), shadeFactor);
    Glib::drawRoundedRectOutline(renderer, face.edge ? *face.edge : derived, face.box, 1, radius());
}

/// A bar along the lower edge, so that what is latched does not merely look darker.
void drawLatchMark(CanvasRenderer& renderer, Face const& face, Palette const& palette) {
    int const inset = static_cast<int>(UifStd::getCornerRadius()) + 1;
    int const thickness = std::max(2, face.box.height() / 12);
    IntBox const bar(face.box.x1 + inset, face.box.y1 + 2, face.box.x2 - inset, face.box.y1 + 2 + thickness);
    if (bar.isEmpty() || face.box.height() < 4 * thickness) return;
    Colour const colour = face.isActive ? palette.mark(eMarkFocus) : palette.text(eTextDisabled);
    renderer.renderPrimitive(Glib::RectDescription(bar, colour));
}

} // namespace wainscot::ButtonLook
