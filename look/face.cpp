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
/// A little more than is promised: what is shown is rounded.
constexpr double edgeContrast = 3.1;
/// The mark of the chosen is this share of the face's height thick, its edge included, and no thinner than
/// that.
constexpr int markShare = 8;
constexpr int leastMark = 3;

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
    if (face.state.isDefault && face.colour == palette.button()) return palette.doIt();
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

/// The lower edge of what is chosen is thicker, so that it does not differ by its colour alone.
void drawFace(CanvasRenderer& renderer, Face const& face, Palette const& palette) {
    IntBox upper = face.box;
    if (face.state.isChosen && face.box.height() > 4 * leastMark) {
        Colour const mark = face.state.isActive ? palette.mark(eMarkAccent) : palette.text(eTextDisabled);
        Glib::drawRoundedRectFilled(renderer, mark, face.box, cornerRadius());
        upper.y1 += std::max(leastMark, face.box.height() / markShare);
    }
    Glib::drawRoundedRectFilled(renderer, faceColour(face, palette), upper, cornerRadius());
}

void drawEdge(CanvasRenderer& renderer, Face const& face, Palette const& palette) {
    Glib::drawRoundedRectOutline(renderer, edgeColour(face, palette), face.box, 1, cornerRadius());
}

} // namespace wainscot::ControlLook
