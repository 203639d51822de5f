#include "look/field.h"

#include "host/drawing/shapes.h"
#include "look/face.h"

namespace wainscot::ControlLook {

Colour fieldColour(ControlState const& state, Palette const& palette) {
    return palette.window(state.isActive ? eWindowRecessed : eWindowNormal);
}

void drawField(CanvasRenderer& renderer, IntBox const& box, ControlState const& state,
               Palette const& palette) {
    Colour const edge = !state.isActive   ? palette.separator()
                        : state.isHovered ? palette.mark(eMarkNormal)
                                          : palette.mark(eMarkEdge);
    Glib::drawRoundedRect(renderer, fieldColour(state, palette), edge, box, 1, cornerRadius());
}

} // namespace wainscot::ControlLook
