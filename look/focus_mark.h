#pragma once

#include "host/drawing/canvas_renderer.h"
#include "host/drawing/palette.h"
#include "look/face.h"

namespace wainscot::ControlLook {

/// The mark of the keyboard focus along the edges of a control: two pixels in the palette's `eMarkFocus`, and
/// inside them one in the colour of the ground, so that it stands out from a face of any colour.
WAINSCOT_API void drawFocusMark(CanvasRenderer& renderer, IntBox const& box, Palette const& palette,
                                unsigned int radius = cornerRadius());

/// How much it covers along each edge, in pixels.
WAINSCOT_API int focusMarkThickness();

} // namespace wainscot::ControlLook
