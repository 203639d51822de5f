#pragma once

#include "host/objects/glob.h"

namespace wainscot {

/// Moves the pixels that an area of an object (its own coordinates) shows, instead of painting them again,
/// and damages what comes into sight. False, and nothing is done, where that would not show what painting
/// would: something lies over the area or in it, part of it waits to be painted, it shows through, or the way
/// is no whole number of device pixels. The caller damages the area then.
///
/// The object is opaque in that area, and paints the same pixels there, moved.
WAINSCOT_API bool scrollPixels(Glob& glob, IntBox const& area, XY<int> by);

} // namespace wainscot
