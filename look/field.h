#pragma once

#include "host/drawing/canvas_renderer.h"
#include "host/drawing/palette.h"
#include "look/control_state.h"

/// The field in which something is entered.
namespace wainscot::ControlLook {

/// The recessed ground of a field and the edge round it, which is stronger under the pointer.
WAINSCOT_API void drawField(CanvasRenderer& renderer, IntBox const& box, ControlState const& state,
                            Palette const& palette);
/// The corners of the box that the field leaves free, in the colour of the window behind it.
WAINSCOT_API void drawBehindCorners(CanvasRenderer& renderer, IntBox const& box, Palette const& palette);
/// The ground alone: what stands in the field is read on it.
WAINSCOT_API Colour fieldColour(ControlState const& state, Palette const& palette);

} // namespace wainscot::ControlLook
