#include "host/drawing/surface.h"

#include "host/drawing/canvas_renderer.h"
#include "host/drawing/surface_image_p.h"

namespace wainscot {
namespace {

constexpr double minScale = 0.25;
constexpr double maxScale = 16.0;

double usableScale(double scale) {
    if (!std::isfinite(scale) || scale <= 0) return 1.0;
    return std::clamp(scale, minScale, maxScale);
}

int usableExtent(int extent, double scale) {
    return std::clamp(extent, 1, std::max(1, static_cast<int>(Surface::maxDeviceExtent / scale)));
}

} // namespace

Surface::Surface(XY<int> size, double scale) : scale_(usableScale(scale)) {
    size_ = {usableExtent(size.x, scale_), usableExtent(size.y, scale_)};
    allocate();
}

Surface::~Surface() {
    CanvasRenderer::forget(*this);
}

void Surface::resize(XY<int> size, double scale) {
    double const newScale = usableScale(scale);
    XY<int> const newSize(usableExtent(size.x, newScale), usableExtent(size.y, newScale));
    if (newSize == size_ && newScale == scale_) return;
    CanvasRenderer::forget(*this);
    size_ = newSize;
    scale_ = newScale;
    allocate();
}

void Surface::allocate() {
    deviceSize_ = {std::max(1, deviceEdge(size_.x, scale_)), std::max(1, deviceEdge(size_.y, scale_))};
    image_.reset();
    pixels_.reset();
    pixels_ =
        makePixelMemory(static_cast<std::size_t>(deviceSize_.x) * static_cast<std::size_t>(deviceSize_.y));
    image_ = std::make_unique<SurfaceImage>(pixels_.get(), deviceSize_);
    toPaint_.clear();
    toPresent_.clear();
    toPaint_.add(bounds());
}

IntBox Surface::deviceBox(IntBox const& box) const {
    IntBox const inside = box.intersection(bounds());
    if (inside.isEmpty()) return {};
    if (scale_ == 1.0) return {inside.x1, size_.y - inside.y2, inside.x2, size_.y - inside.y1};
    return {deviceEdge(inside.x1, scale_), deviceSize_.y - deviceEdge(inside.y2, scale_),
            deviceEdge(inside.x2, scale_), deviceSize_.y - deviceEdge(inside.y1, scale_)};
}

std::uint32_t Surface::pixelAt(XY<int> place) const {
    if (!bounds().contains(place)) return 0;
    int const column = std::min(deviceEdge(place.x, scale_), deviceSize_.x - 1);
    int const row = std::max(0, deviceSize_.y - 1 - deviceEdge(place.y, scale_));
    return pixels_[static_cast<std::size_t>(row) * static_cast<std::size_t>(stride()) +
                   static_cast<std::size_t>(column)];
}

} // namespace wainscot
