#pragma once

#include "host/drawing/image.h"

#include <pixman.h>
#include <vector>

namespace wainscot::Glib {

/// An image at the device sizes at which it was drawn lately.
class ScaledImages {
public:
    ScaledImages() = default;
    ~ScaledImages();
    ScaledImages(ScaledImages const&) = delete;
    ScaledImages& operator=(ScaledImages const&) = delete;

    /// Null when the size is refused.
    pixman_image_t* at(Image const& image, XY<int> deviceSize);

private:
    struct Entry {
        XY<int> size;
        pixman_image_t* image;
    };
    static constexpr std::size_t most = 3;

    std::vector<Entry> entries_;
};

} // namespace wainscot::Glib
