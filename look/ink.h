#pragma once

#include "host/drawing/palette.h"
#include "look/control_state.h"

/// The colours of what is written and of what is weakened.
namespace wainscot::ControlLook {

/// The label of a control in that state.
WAINSCOT_API Colour textColour(ControlState const& state, Palette const& palette);
/// A colour of a text, brought so far from a ground that somebody has chosen that it reads: 4.5:1, or 2.5:1
/// in a control that cannot be used.
WAINSCOT_API Colour inkOn(Colour const& ink, Colour const& ground, bool isActive = true);
/// What is left of a colour on its ground in a control that cannot be used.
WAINSCOT_API Colour weakened(Colour const& colour, Colour const& ground);
/// Whether light is what stands out from a ground.
WAINSCOT_API bool isDark(Colour const& ground);

} // namespace wainscot::ControlLook
