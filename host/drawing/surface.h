#pragma once

#include "host/base/life.h"
#include "host/drawing/damage.h"
#include "host/drawing/pixel_memory.h"

#include <cstdint>
#include <memory>

namespace wainscot {

class SurfaceImage;

/// The pixels of one window. Sizes, damage and places are logical with y upwards; the pixels are device
/// pixels, premultiplied ARGB in native byte order, the top row first. A logical edge e lies on the device
/// edge round(e * scale), so neighbours share an edge at every scale.
class WAINSCOT_API Surface {
public:
    /// The size is clamped to 1 at least and `maxDeviceExtent` device pixels at most.
    Surface(XY<int> size, double scale);
    ~Surface();
    Surface(Surface const&) = delete;
    Surface& operator=(Surface const&) = delete;

    static constexpr int maxDeviceExtent = 16384;

    XY<int> size() const { return size_; }
    double scale() const { return scale_; }
    XY<int> deviceSize() const { return deviceSize_; }
    IntBox bounds() const { return IntBox::sized({0, 0}, size_); }
    /// Sets size and scale. When either changes, the pixels are lost and everything is damaged.
    void resize(XY<int> size, double scale);

    /// The lower-left corner of the window's contents; round the contents there may be room for a shadow.
    XY<int> contentPlace() const { return contentPlace_; }
    void setContentPlace(XY<int> place) { contentPlace_ = place; }
    /// Whether transparent pixels show what lies below the window.
    bool isTranslucent() const { return translucent_; }
    void setTranslucent(bool translucent) { translucent_ = translucent; }
    /// Whether a frame is painted over its edges.
    bool isMarked() const { return marked_; }
    void setMarked(bool marked) { marked_ = marked; }

    std::uint32_t* pixels() { return pixels_.get(); }
    std::uint32_t const* pixels() const { return pixels_.get(); }
    /// Pixels from one row to the next.
    int stride() const { return deviceSize_.x; }
    /// The pixel that covers the lower-left corner of a logical place; 0 outside.
    std::uint32_t pixelAt(XY<int> place) const;
    /// The device box of a logical one, y downwards, clipped to the surface.
    IntBox deviceBox(IntBox const& box) const;
    /// The pixels as the pixel library sees them; for the renderer.
    SurfaceImage& image() const { return *image_; }

    /// The damage that the next painting visit paints.
    Damage& toPaint() { return toPaint_; }
    /// What has been painted, but not yet brought to the screen.
    Damage& toPresent() { return toPresent_; }
    Damage const& toPaint() const { return toPaint_; }
    Damage const& toPresent() const { return toPresent_; }

    /// While painting is held, painting visits leave the surface alone, and its damage waits. Holds may be
    /// nested.
    void holdPainting() { ++holds_; }
    void releasePainting() {
        if (holds_ > 0) --holds_;
    }
    bool isPaintingHeld() const { return holds_ > 0; }

    LifeToken const& life() const { return life_; }

private:
    void allocate();

    XY<int> size_;
    double scale_;
    XY<int> deviceSize_;
    XY<int> contentPlace_;
    bool translucent_ = false;
    bool marked_ = false;
    PixelMemory pixels_;
    std::unique_ptr<SurfaceImage> image_;
    Damage toPaint_;
    Damage toPresent_;
    int holds_ = 0;
    LifeToken life_;
};

} // namespace wainscot
