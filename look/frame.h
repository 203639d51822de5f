#pragma once

#include "host/drawing/palette.h"

namespace wainscot::ControlLook {

/// The lines of which frames round panels are made.
struct FrameColours {
    /// What catches the light, and what lies in the shade.
    Colour light;
    Colour shade;
    /// Between the light and the ground, on the sides that face away.
    Colour dimLight;
    Colour dimShade;
    /// What only divides.
    Colour line;
};

/// Those round a body of that colour, `palette` being one that fits it.
WAINSCOT_API FrameColours frameColours(Colour const& ground, Palette const& palette);

} // namespace wainscot::ControlLook
