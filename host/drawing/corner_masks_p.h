#pragma once

#include <cstdint>
#include <vector>

/// How far round corners cover the device pixels in which they lie. Masks are made once and kept.
namespace wainscot::CornerMasks {

/// Coverage of a square of `radius` pixels, row by row from the top, for the upper left corner.
using Mask = std::vector<std::uint8_t>;

/// The quarter of a disc.
Mask const& disc(int radius);
/// The quarter of a ring of that thickness; the disc when it has no hole.
Mask const& ring(int radius, int thickness);

} // namespace wainscot::CornerMasks
