#include "look/face.h"

#include "host/base/host_value.h"
#include "host/drawing/shapes.h"
#include "host/drawing/uif_std.h"
#include "host/services/preferences.h"
#include "look/ink.h"

#include <algorithm>

namespace wainscot::ControlLook {

namespace {

// Shares of white or black in faces that answer the pointer.
constexpr double hoverOnDark = 0.12;
constexpr double hoverOnLight = 0.07;
constexpr double pressOnDark = 0.35;
constexpr double pressOnLight = 0.17;
/// What a chosen face has of the accent.
constexpr double chosenOnDark = 0.5;
constexpr double chosenOnLight = 0.2;
/// What an inactive face of the accent keeps of it, so that weak text still reads on it.
constexpr double inactiveAccentShare = 0.15;
/// What the edge of a face under the pointer has of the colour of marks.
constexpr double hoverEdgeShare = 0.5;
constexpr double edgeContrast = 3.0;
/// The mark of the chosen is this share of the face's height thick, and no thinner than two pixels.
constexpr int markShare = 12;

struct Settings {
    bool isCurved = true;
};

constinit HostValue<Settings> settings;

Colour hovered(Colour const& face) {
    return isDark(face) ? Colour::mix(Colour(1, 1, 1), face, hoverOnDark)
                        : Colour::mix(Colour(), face, hoverOnLight);
}

Colour pressed(Colour const& face) {
    return Colour::mix(Colour(), face, isDark(face) ? pressOnDark : pressOnLight);
}

/// The colour that stands for the state as long as nobody is pressing.
Colour restingColour(Face const& face, Palette const& palette) {
    if (!face.state.isChosen || face.isColourOfState) return face.colour;
    return Colour::mix(palette.doIt(), face.colour, isDark(face.colour) ? chosenOnDark : chosenOnLight);
}

/// Of coloured faces the edge is the same colour, as much of it as is told from the ground.
Colour restingEdge(Face const& face, Palette const& palette) {
    if (face.state.isDefault || face.state.isChosen) return palette.mark(eMarkAccent);
    bool const isPlain = face.colour == palette.button() || face.colour == palette.window(eWindowNormal);
    if (isPlain) return palette.mark(eMarkEdge);
    return Palette::readable(face.colour, palette.window(eWindowNormal), edgeContrast);
}

/// The lower edge is thicker: what is chosen does not differ by its colour alone.
void drawChosenMark(CanvasRenderer& renderer, Face const& face, Palette const& palette) {
    int const inset = static_cast<int>(UifStd::getCornerRadius()) + 1;
    int const thickness = std::max(2, face.box.height() / markShare);
    IntBox const bar(face.box.x1 + inset, face.box.y1 + 1, face.box.x2 - inset, face.box.y1 + 1 + thickness);
    if (bar.isEmpty() || face.box.height() < 4 * thickness) return;
    Colour const colour = face.state.isActive ? palette.mark(eMarkAccent) : palette.text(eTextDisabled);
    renderer.renderPrimitive(Glib::RectDescription(bar, colour));
}

} // namespace

bool isCurved() {
    return settings.get().isCurved;
}

void readPreferences() {
    settings.edit().isCurved = config_int("curved_buttons", 1) != 0;
}

unsigned int cornerRadius() {
    return isCurved() ? UifStd::getCornerRadius() : 0;
}

Colour faceColour(Face const& face, Palette const& palette) {
    Colour const colour = restingColour(face, palette);
    if (!face.state.isActive) {
        Colour const& ground = palette.window(eWindowNormal);
        return face.state.isDefault ? Colour::mix(colour, ground, inactiveAccentShare)
                                    : weakened(colour, ground);
    }
    if (face.state.isPressed) return face.isColourOfState ? colour : pressed(colour);
    return face.state.isHovered ? hovered(colour) : colour;
}

Colour edgeColour(Face const& face, Palette const& palette) {
    if (face.edge) return *face.edge;
    if (!face.state.isActive) return weakened(palette.mark(eMarkEdge), palette.window(eWindowNormal));
    Colour const edge = restingEdge(face, palette);
    // A face that is drawn as it is may have the colour that it has at rest.
    bool const answers = face.state.isHovered || face.state.isPressed;
    return answers ? Colour::mix(palette.mark(eMarkNormal), edge, hoverEdgeShare) : edge;
}

void drawFace(CanvasRenderer& renderer, Face const& face, Palette const& palette) {
    Glib::drawRoundedRectFilled(renderer, faceColour(face, palette), face.box, cornerRadius());
    if (face.state.isChosen) drawChosenMark(renderer, face, palette);
}

void drawEdge(CanvasRenderer& renderer, Face const& face, Palette const& palette) {
    Glib::drawRoundedRectOutline(renderer, edgeColour(face, palette), face.box, 1, cornerRadius());
}

} // namespace wainscot::ControlLook
