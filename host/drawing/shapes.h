#pragma once

#include "host/drawing/canvas_renderer.h"

/// Composite shapes, shared by all widgets. Edges lie inside the boxes; boxes too small for what is asked
/// are filled as far as they go.
namespace wainscot::Glib {

/// The four sides of a box, `width` thick, inside it.
WAINSCOT_API void drawFrame(CanvasRenderer& renderer, Colour const& colour, IntBox const& box,
                            unsigned short width);
/// A box filled with `fill` inside an edge of `edge`, `edgeWidth` thick.
WAINSCOT_API void drawOutlinedRect(CanvasRenderer& renderer, Colour const& fill, Colour const& edge,
                                   IntBox const& box, int edgeWidth = 1);
/// The mark of the keyboard focus.
WAINSCOT_API void drawFocusRect(CanvasRenderer& renderer, IntBox const& box, Colour const& colour);

} // namespace wainscot::Glib
