#include "look/mark.h"

#include "host/drawing/shapes.h"
#include "look/face.h"

#include <algorithm>

namespace wainscot::ControlLook {

namespace {

/// How much smaller the corners of a box inside a control are than those of faces.
constexpr unsigned int cornerStep = 1;
/// How far inside its box a dot is, as a share of the box.
constexpr double dotInset = 0.3;
/// What is left of the colour of signs that are not chosen.
constexpr double unlitShare = 0.35;

unsigned int radiusOf(IntBox const& box, MarkShape shape) {
    if (shape == MarkShape::round) return static_cast<unsigned>(box.width() / 2);
    return cornerRadius() - std::min(cornerStep, cornerRadius());
}

Colour edgeOf(ControlState const& state, Palette const& palette) {
    if (!state.isActive) return palette.text(eTextDisabled);
    if (state.isHovered || state.isPressed) return palette.mark(eMarkNormal);
    return palette.mark(state.isChosen ? eMarkAccent : eMarkEdge);
}

Colour groundOf(ControlState const& state, Palette const& palette) {
    if (!state.isActive) return palette.window(eWindowNormal);
    if (!state.isChosen && !state.isPressed) return palette.window(eWindowRecessed);
    return faceColour({{},
                       state.isChosen ? palette.doIt() : palette.button(),
                       {.isHovered = state.isHovered, .isPressed = state.isPressed}},
                      palette);
}

} // namespace

Colour markColour(ControlState const& state, Palette const& palette) {
    return palette.text(state.isActive ? eTextSelected : eTextDisabled);
}

Colour signColour(ControlState const& state, Palette const& palette) {
    Colour const lit = state.isActive ? palette.mark(eMarkNormal) : palette.text(eTextDisabled);
    return state.isChosen ? lit : Colour::mix(lit, palette.window(eWindowNormal), unlitShare);
}

void drawMarkBox(CanvasRenderer& renderer, IntBox const& box, MarkShape shape, ControlState const& state,
                 Palette const& palette) {
    Glib::drawRoundedMark(renderer, groundOf(state, palette), edgeOf(state, palette), box, 1,
                          radiusOf(box, shape));
}

void drawMarkEdge(CanvasRenderer& renderer, IntBox const& box, MarkShape shape, Palette const& palette) {
    Glib::drawRoundedRectOutline(renderer, palette.mark(eMarkNormal), box, 1, radiusOf(box, shape));
}

void drawDot(CanvasRenderer& renderer, IntBox const& box, Colour const& colour) {
    int const inset = static_cast<int>(box.width() * dotInset);
    unsigned const radius = static_cast<unsigned>(std::max(box.inset(inset).width() / 2, 0));
    Glib::drawRoundedMark(renderer, colour, colour, box, 0, radius, inset);
}

void drawMixedBar(CanvasRenderer& renderer, IntBox const& box, Colour const& colour) {
    int const inset = box.width() / 4;
    int const middle = box.y1 + box.height() / 2;
    IntBox const bar(box.x1 + inset, middle - 1, box.x2 - inset, middle + 1);
    renderer.renderPrimitive(Glib::RectDescription(bar, colour));
}

} // namespace wainscot::ControlLook
