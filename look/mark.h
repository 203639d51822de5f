#pragma once

#include "host/drawing/canvas_renderer.h"
#include "host/drawing/palette.h"
#include "look/control_state.h"

/// The boxes and marks of what is ticked or chosen.
namespace wainscot::ControlLook {

enum class MarkShape { square, round };

/// The colour of a tick, bar or dot in a box of that state.
WAINSCOT_API Colour markColour(ControlState const& state, Palette const& palette);
/// The colour of one of several signs that are filled up to a value, such as the stars of a rating; chosen =
/// within the value.
WAINSCOT_API Colour signColour(ControlState const& state, Palette const& palette);
/// The box in which such a mark stands: filled with the accent while it is chosen. `box` is square.
WAINSCOT_API void drawMarkBox(CanvasRenderer& renderer, IntBox const& box, MarkShape shape,
                              ControlState const& state, Palette const& palette);
/// The edge that a box or light has round it while it answers the pointer, alone.
WAINSCOT_API void drawMarkEdge(CanvasRenderer& renderer, IntBox const& box, MarkShape shape,
                               Palette const& palette);
/// The mark of one of several, in the middle of its box.
WAINSCOT_API void drawDot(CanvasRenderer& renderer, IntBox const& box, Colour const& colour);
/// The mark of what is neither ticked nor clear, in the middle of its box.
WAINSCOT_API void drawMixedBar(CanvasRenderer& renderer, IntBox const& box, Colour const& colour);

} // namespace wainscot::ControlLook
