#pragma once

#include "host/drawing/region.h"

#include <pixman.h>

namespace wainscot {

/// A region of the pixel library that frees itself. Here its y axis grows upwards as everywhere.
class PixelRegion {
public:
    PixelRegion() { pixman_region32_init(&region_); }
    ~PixelRegion() { pixman_region32_fini(&region_); }
    PixelRegion(PixelRegion const&) = delete;
    PixelRegion& operator=(PixelRegion const&) = delete;
    /// All boxes at once: one by one, each would copy the boxes before it.
    void assign(std::vector<pixman_box32_t> const& boxes) {
        pixman_region32_fini(&region_);
        pixman_region32_init_rects(&region_, boxes.data(), static_cast<int>(boxes.size()));
    }
    pixman_region32_t* get() { return &region_; }
    pixman_region32_t const* get() const { return &region_; }

private:
    pixman_region32_t region_;
};

class Region final : public iRegion {
public:
    /// Takes a copy of the pixels of `region`.
    explicit Region(pixman_region32_t const* region);

    static Region const& of(iRegion const& region) { return static_cast<Region const&>(region); }
    pixman_region32_t const* pixels() const { return region_.get(); }

    std::vector<IntBox> const& boxes() const override { return boxes_; }
    IntBox bounds() const override;
    bool contains(XY<int> const& place) const override;

private:
    PixelRegion region_;
    std::vector<IntBox> boxes_;
};

} // namespace wainscot
