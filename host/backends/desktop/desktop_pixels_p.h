#pragma once

#include "host/drawing/surface.h"

#include <SDL_surface.h>

#include <vector>

namespace wainscot {

/// Copies the boxes (logical, of `surface`) into the window's pixels, clipped to both. Converts them when the
/// window has another pixel format. Appends the device rectangles that have changed to `changed`.
void copyBoxes(Surface const& surface, std::vector<IntBox> const& boxes, SDL_Surface& target,
               std::vector<SDL_Rect>& changed);

} // namespace wainscot
