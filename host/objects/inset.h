#pragma once

#include "host/drawing/colour.h"
#include "host/objects/glob.h"

namespace wainscot {

/// How thick the edge of an inset is, in logical pixels.
inline constexpr int insetEdgeWidth = 1;

/// Draws an object's whole box as sunken into surroundings of that colour: an edge inside the box, lit from
/// below, and with `fill` the recessed ground within it. Meant for `draw()`; elsewhere it draws at once. Does
/// nothing for null and dead objects.
WAINSCOT_API void drawInset(Glob* glob, Colour const& surroundings, bool fill);

} // namespace wainscot
