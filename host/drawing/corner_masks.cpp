#include "host/drawing/corner_masks_p.h"

#include <algorithm>
#include <cairo.h>
#include <map>
#include <numbers>

namespace wainscot::CornerMasks {
namespace {

/// Enough for every radius that a program uses; radii that change all the time must not fill the memory.
constexpr std::size_t mostMasks = 256;

Mask makeDisc(int size, int radius) {
    Mask mask(static_cast<std::size_t>(size) * static_cast<std::size_t>(size));
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

Mask make(int radius, int thickness) {
    Mask mask = makeDisc(radius, radius);
    Mask const hole = makeDisc(radius, radius - thickness);
    for (std::size_t i = 0; i < mask.size(); ++i)
        mask[i] = static_cast<std::uint8_t>(mask[i] - std::min(mask[i], hole[i]));
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
