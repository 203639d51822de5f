#include "look/field.h"

#include "host/drawing/shapes.h"
#include "host/drawing/uif_std.h"
#include "look/face.h"

#include <algorithm>

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

void drawBehindCorners(CanvasRenderer& renderer, IntBox const& box, Palette const& palette) {
    int const radius = std::min<int>(UifStd::getCornerRadius(), std::min(box.width(), box.height()));
    IntBox const corners[] = {{box.x1, box.y1, box.x1 + radius, box.y1 + radius},
                              {box.x2 - radius, box.y1, box.x2, box.y1 + radius},
                              {box.x1, box.y2 - radius, box.x1 + radius, box.y2},
                              {box.x2 - radius, box.y2 - radius, box.x2, box.y2}};
    renderer.renderBoxes(corners, palette.window(eWindowNormal));
}

} // namespace wainscot::ControlLook
