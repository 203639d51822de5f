#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

/// How far round corners cover the device pixels in which they lie. Masks are made once and kept.
namespace wainscot::CornerMasks {

/// Coverage of the four squares of `radius` pixels, row by row from the top.
struct Mask {
    /// Bytes from one row to the next: a multiple of four, the rest of a row is clear.
    int stride = 0;
    /// By `corner(right, low)`.
    std::array<std::vector<std::uint8_t>, 4> corners;

    static std::size_t corner(bool right, bool low) { return (right ? 1U : 0U) + (low ? 2U : 0U); }
};

/// The quarter of a disc.
Mask const& disc(int radius);
/// The quarter of a ring of that thickness; the disc when it has no hole.
Mask const& ring(int radius, int thickness);

} // namespace wainscot::CornerMasks
