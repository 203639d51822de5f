#pragma once

#include "host/drawing/surface.h"

#include <cmath>
#include <pixman.h>

namespace wainscot {

/// The pixels of a surface as an image of the pixel library.
class SurfaceImage {
public:
    SurfaceImage(std::uint32_t* pixels, XY<int> size)
        : image_(pixman_image_create_bits_no_clear(PIXMAN_a8r8g8b8, size.x, size.y, pixels,
                                                   size.x * static_cast<int>(sizeof(std::uint32_t)))) {}
    ~SurfaceImage() {
        if (image_) pixman_image_unref(image_);
    }
    SurfaceImage(SurfaceImage const&) = delete;
    SurfaceImage& operator=(SurfaceImage const&) = delete;

    pixman_image_t* get() const { return image_; }

private:
    pixman_image_t* image_;
};

/// The device edge of a logical one: the one rounding of the whole library, so that neighbours meet.
inline int deviceEdge(double edge, double scale) {
    return static_cast<int>(std::floor(edge * scale + 0.5));
}

/// The thickness of lines, corners and the like in device pixels: never thinner than one.
inline int deviceThickness(int thickness, double scale) {
    return thickness <= 0 ? 0 : std::max(1, deviceEdge(thickness, scale));
}

} // namespace wainscot
