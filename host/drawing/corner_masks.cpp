#include "host/drawing/corner_masks_p.h"

#include <algorithm>
#include <cairo.h>
#include <map>
#include <numbers>

namespace wainscot::CornerMasks {
namespace {

/// Enough for every radius that a program uses. The limit matters when radii change all the time.
constexpr std::size_t mostMasks = 256;

/// Of the upper left corner.
using Square = std::vector<std::uint8_t>;

Square makeDisc(int size, int radius) {
    Square mask(static_cast<std::size_t>(size) * static_cast<std::size_t>(size));
    if (radius <= 0) return mask;
    cairo_surface_t* image = cairo_image_surface_create(CAIRO_FORMAT_A8, size, size);
    cairo_t* path = cairo_create(image);
    cairo_move_to(path, size, size);
    cairo_arc(path, size, size, radius, std::numbers::pi, 1.5 * std::numbers::pi);
    cairo_close_path(path);
    cairo_set_antialias(path, CAIRO_ANTIALIAS_BEST);
    cairo_fill(path);
    cairo_surface_flush(image);
    unsigned char const* bytes = cairo_image_surface_get_data(image);
    int const stride = cairo_image_surface_get_stride(image);
    for (int y = 0; bytes && y < size; ++y)
        std::copy_n(bytes + static_cast<std::ptrdiff_t>(y) * stride, size,
                    mask.begin() + static_cast<std::ptrdiff_t>(y) * size);
    cairo_destroy(path);
    cairo_surface_destroy(image);
    return mask;
}

Square makeRing(int radius, int thickness) {
    Square ring = makeDisc(radius, radius);
    Square const hole = makeDisc(radius, radius - thickness);
    for (std::size_t i = 0; i < ring.size(); ++i)
        ring[i] = static_cast<std::uint8_t>(ring[i] - std::min(ring[i], hole[i]));
    return ring;
}

Mask make(int radius, int thickness) {
    Square const ring = makeRing(radius, thickness);
    auto const size = static_cast<std::size_t>(radius);
    std::size_t const stride = (size + 3) / 4 * 4;
    Mask mask;
    mask.stride = static_cast<int>(stride);
    for (bool const right : {false, true}) {
        for (bool const low : {false, true}) {
            Square& corner = mask.corners[Mask::corner(right, low)];
            corner.resize(stride * size);
            for (std::size_t y = 0; y < size; ++y)
                for (std::size_t x = 0; x < size; ++x)
                    corner[y * stride + x] =
                        ring[(low ? size - 1 - y : y) * size + (right ? size - 1 - x : x)];
        }
    }
    return mask;
}

} // namespace

Mask const& disc(int radius) {
    return ring(radius, radius);
}

Mask const& ring(int radius, int thickness) {
    static auto& masks = *new std::map<std::pair<int, int>, Mask>;
    std::pair<int, int> const key(radius, std::min(radius, thickness));
    auto const known = masks.find(key);
    if (known != masks.end()) return known->second;
    if (masks.size() >= mostMasks) masks.clear();
    return masks[key] = make(key.first, key.second);
}

} // namespace wainscot::CornerMasks
