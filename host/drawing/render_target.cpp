#include "host/drawing/render_target_p.h"

#include <algorithm>
#include <cstring>

namespace wainscot {
namespace {

/// Beyond this nothing can be seen, and within it no sum or product overflows.
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

int nearer(long long place) {
    return static_cast<int>(std::clamp<long long>(place, -farthest, farthest));
}

} // namespace

pixman_color_t pixmanColour(Colour const& colour, double alpha) {
    return {component(colour.red() * alpha), component(colour.green() * alpha),
            component(colour.blue() * alpha), component(alpha)};
}

pixman_image_t* solidSource(pixman_color_t const& colour) {
    static pixman_image_t* source = nullptr;
    static pixman_color_t made{};
    if (source && std::memcmp(&made, &colour, sizeof colour) == 0) return source;
    if (source) pixman_image_unref(source);
    made = colour;
    return source = pixman_image_create_solid_fill(&colour);
}

double RenderTarget::opacity(double own) const {
    return std::clamp(own, 0.0, 1.0) * std::clamp(static_cast<double>(renderer_.opacity_), 0.0, 1.0);
}

XY<int> RenderTarget::onSurface(XY<int> const& place) const {
    return {nearer(static_cast<long long>(place.x) + renderer_.origin_.x),
            nearer(static_cast<long long>(place.y) + renderer_.origin_.y)};
}

IntBox RenderTarget::deviceBox(IntBox const& box) const {
    XY<int> const low = onSurface(box.bottomLeft());
    XY<int> const high = onSurface(box.topRight());
    int const height = surface().deviceSize().y;
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
            pixman_box32_t const& limit = clipBoxes[c];
            pixman_box32_t const part{
                std::max(deviceBoxes[i].x1, limit.x1), std::max(deviceBoxes[i].y1, limit.y1),
                std::min(deviceBoxes[i].x2, limit.x2), std::min(deviceBoxes[i].y2, limit.y2)};
            if (part.x1 >= part.x2 || part.y1 >= part.y2) continue;
            if (ink.alpha == 0xFFFF)
                pixman_fill(surface().pixels(), surface().stride(), 32, part.x1, part.y1, part.x2 - part.x1,
                            part.y2 - part.y1, opaquePixel(colour));
            else
                pixman_image_fill_boxes(PIXMAN_OP_OVER, image(), &ink, 1, &part);
        }
    }
}

} // namespace wainscot
