#include "host/drawing/render_target_p.h"

#include "host/drawing/coverage_blend_p.h"

#include <algorithm>

namespace wainscot {
namespace {

/// Nothing beyond this can be seen; within it no sum or product overflows.
constexpr int farthest = 1 << 20;

std::uint16_t component(double value) {
    return static_cast<std::uint16_t>(std::clamp(value, 0.0, 1.0) * 65535.0 + 0.5);
}

std::uint32_t opaquePixel(Colour const& colour) {
    return 0xFF000000U | colour.getAsLong();
}

pixman_box32_t asPixmanBox(IntBox const& box) {
    return {box.x1, box.y1, box.x2, box.y2};
}

std::uint32_t* pixelAt(Surface& surface, int x, int y) {
    return surface.pixels() + static_cast<std::ptrdiff_t>(y) * surface.stride() + x;
}

/// Most boxes of widgets are small: the pixel library takes longer to look at one than to fill it.
void fillOpaque(Surface& surface, IntBox const& part, std::uint32_t ink) {
    for (int y = part.y1; y < part.y2; ++y)
        CoverageBlend::fill(pixelAt(surface, part.x1, y), part.width(), ink);
}

/// Where the rows of a mask meet those of the surface.
struct Rows {
    std::uint32_t* pixels;
    std::ptrdiff_t pixelStride;
    std::uint8_t const* coverage;
    int coverageStride;
    int count;
};

template <bool opaque>
void blendWhole(Rows rows, std::uint32_t ink) {
    for (; rows.count > 0;
         --rows.count, rows.pixels += rows.pixelStride, rows.coverage += rows.coverageStride)
        for (int x = 0; x < rows.coverageStride; x += 4)
            CoverageBlend::blendFour<opaque>(rows.pixels + x, rows.coverage + x, ink);
}

void blendPartly(Rows rows, int width, std::uint32_t ink) {
    for (; rows.count > 0;
         --rows.count, rows.pixels += rows.pixelStride, rows.coverage += rows.coverageStride)
        for (int x = 0; x < width; ++x) CoverageBlend::blend(rows.pixels[x], ink, rows.coverage[x]);
}

int nearer(long long place) {
    return static_cast<int>(std::clamp<long long>(place, -farthest, farthest));
}

IntBox intersection(IntBox const& box, pixman_box32_t const& limit) {
    return box.intersection({limit.x1, limit.y1, limit.x2, limit.y2});
}

} // namespace

pixman_color_t pixmanColour(Colour const& colour, double alpha) {
    return {component(colour.red() * alpha), component(colour.green() * alpha),
            component(colour.blue() * alpha), component(alpha)};
}

double RenderTarget::opacity(double own) const {
    return std::clamp(own, 0.0, 1.0) * std::clamp(static_cast<double>(renderer_.opacity_), 0.0, 1.0);
}

XY<long long> RenderTarget::exactOnSurface(XY<int> const& place) const {
    return {static_cast<long long>(place.x) + renderer_.origin_.x,
            static_cast<long long>(place.y) + renderer_.origin_.y};
}

IntBox RenderTarget::visibleBox() const {
    pixman_box32_t const* limits = pixman_region32_extents(clip());
    int const height = surface().deviceSize().y;
    IntBox const onSurface(
        static_cast<int>(limits->x1 / scale()), static_cast<int>((height - limits->y2) / scale()),
        static_cast<int>(limits->x2 / scale()) + 1, static_cast<int>((height - limits->y1) / scale()) + 1);
    return onSurface.translated(XY<int>() - renderer_.origin_);
}

XY<int> RenderTarget::onSurface(XY<int> const& place) const {
    return {nearer(static_cast<long long>(place.x) + renderer_.origin_.x),
            nearer(static_cast<long long>(place.y) + renderer_.origin_.y)};
}

IntBox RenderTarget::deviceBox(IntBox const& box) const {
    XY<int> const low = onSurface(box.bottomLeft());
    XY<int> const high = onSurface(box.topRight());
    int const height = surface().deviceSize().y;
    if (scale() == 1.0) return {low.x, height - high.y, high.x, height - low.y};
    return {deviceEdge(low.x, scale()), height - deviceEdge(high.y, scale()), deviceEdge(high.x, scale()),
            height - deviceEdge(low.y, scale())};
}

bool RenderTarget::isVisible(IntBox const& deviceBox) const {
    pixman_box32_t box = asPixmanBox(deviceBox);
    return !deviceBox.isEmpty() && pixman_region32_contains_rectangle(clip(), &box) != PIXMAN_REGION_OUT;
}

void RenderTarget::fill(IntBox const* deviceBoxes, std::size_t count, Colour const& colour,
                        double alpha) const {
    int clips = 0;
    pixman_box32_t const* clipBoxes = pixman_region32_rectangles(clip(), &clips);
    pixman_color_t const ink = pixmanColour(colour, alpha);
    for (std::size_t i = 0; i < count; ++i) {
        for (int c = 0; c < clips; ++c) {
            IntBox const inside = intersection(deviceBoxes[i], clipBoxes[c]);
            if (inside.isEmpty()) continue;
            if (ink.alpha == 0xFFFF) {
                fillOpaque(surface(), inside, opaquePixel(colour));
                continue;
            }
            pixman_box32_t const part = asPixmanBox(inside);
            pixman_image_fill_boxes(PIXMAN_OP_OVER, image(), &ink, 1, &part);
        }
    }
}

void RenderTarget::fillMasked(CoverageMask const& mask, IntBox const& deviceBox, std::uint32_t ink) const {
    MaskFiller(*this, ink).fill(mask, deviceBox);
}

MaskFiller::MaskFiller(RenderTarget const& target, std::uint32_t ink)
    : pixels_(target.surface().pixels()), stride_(target.surface().stride()), ink_(ink),
      extents_(*pixman_region32_extents(target.clip())),
      clips_(pixman_region32_rectangles(target.clip(), &clipCount_)) {}

void MaskFiller::fill(CoverageMask const& mask, IntBox const& deviceBox) const {
    for (int c = 0; c < clipCount_; ++c) fillPart(mask, deviceBox, clips_[c]);
}

void MaskFiller::fillPart(CoverageMask const& mask, IntBox const& deviceBox,
                          pixman_box32_t const& clip) const {
    IntBox const part = intersection(deviceBox, clip);
    if (part.isEmpty()) return;
    Rows const rows{pixels_ + static_cast<std::ptrdiff_t>(part.y1) * stride_ + part.x1, stride_,
                    mask.coverage + static_cast<std::ptrdiff_t>(part.y1 - deviceBox.y1) * mask.stride +
                        (part.x1 - deviceBox.x1),
                    mask.stride, part.height()};
    // Whole rows go four pixels at a time; pixels behind the mask are touched, but keep their colour.
    bool const whole = part.width() == deviceBox.width() && deviceBox.x1 + mask.stride <= stride_;
    if (!whole)
        blendPartly(rows, part.width(), ink_);
    else if (CoverageBlend::isOpaque(ink_))
        blendWhole<true>(rows, ink_);
    else
        blendWhole<false>(rows, ink_);
}

} // namespace wainscot
