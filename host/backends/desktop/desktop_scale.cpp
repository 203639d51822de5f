#include "host/backends/desktop/desktop_scale_p.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <optional>
#include <string_view>

namespace wainscot {

namespace {

constexpr double leastScale = 0.5;
constexpr double greatestScale = 4.0;
constexpr double dotsPerInchAtScaleOne = 96.0;

/// A positive number at the start of the text, blanks before it skipped.
std::optional<double> readPositive(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
    double value = 0.0;
    auto const result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc() || !std::isfinite(value) || value <= 0.0) return std::nullopt;
    return value;
}

std::optional<double> readDotsPerInch(std::string_view resources) {
    static constexpr std::string_view key = "Xft.dpi:";
    while (!resources.empty()) {
        std::size_t const lineEnd = std::min(resources.find('\n'), resources.size());
        std::string_view const line = resources.substr(0, lineEnd);
        if (line.substr(0, key.size()) == key) return readPositive(line.substr(key.size()));
        resources.remove_prefix(std::min(lineEnd + 1, resources.size()));
    }
    return std::nullopt;
}

} // namespace

double chooseDeviceScale(char const* setting, char const* resources) {
    std::optional<double> scale;
    if (setting) scale = readPositive(setting);
    if (!scale && resources) {
        if (auto const dpi = readDotsPerInch(resources))
            scale = std::round(*dpi / dotsPerInchAtScaleOne * 4.0) / 4.0;
    }
    return std::clamp(scale.value_or(1.0), leastScale, greatestScale);
}

int toLogical(int device, double scale) {
    return static_cast<int>(std::lround(device / scale));
}

int toDevice(int logical, double scale) {
    return static_cast<int>(std::lround(logical * scale));
}

DeviceRect DeviceRect::unitedWith(DeviceRect const& other) const {
    int const left = std::min(x, other.x);
    int const top = std::min(y, other.y);
    int const right = std::max(x + width, other.x + other.width);
    int const bottom = std::max(y + height, other.y + other.height);
    return {left, top, right - left, bottom - top};
}

IntBox RootSpace::toRoot(DeviceRect const& rect) const {
    int const bottom = desktop_.y + desktop_.height - (rect.y + rect.height);
    return IntBox::sized({toLogical(rect.x - desktop_.x, scale_), toLogical(bottom, scale_)},
                         {toLogical(rect.width, scale_), toLogical(rect.height, scale_)});
}

XY<int> RootSpace::toDeviceCorner(XY<int> place, int deviceHeight) const {
    int const bottom = desktop_.y + desktop_.height - toDevice(place.y, scale_);
    return {desktop_.x + toDevice(place.x, scale_), bottom - deviceHeight};
}

XY<int> RootSpace::pixelInWindow(IntBox const& window, XY<int> devicePixel) const {
    int const fromBottom = toDevice(window.height(), scale_) - 1 - devicePixel.y;
    // A logical pixel k covers the device pixels from round(k * scale) up to, not including, round((k + 1) *
    // scale).
    auto const covering = [this](int pixel) {
        return static_cast<int>(std::ceil((pixel + 0.5) / scale_)) - 1;
    };
    return window.bottomLeft() + XY<int>{covering(devicePixel.x), covering(fromBottom)};
}

XY<int> RootSpace::devicePixelInWindow(IntBox const& window, XY<int> pixel) const {
    XY<int> const inside = pixel - window.bottomLeft();
    return {toDevice(inside.x, scale_), toDevice(window.height(), scale_) - 1 - toDevice(inside.y, scale_)};
}

} // namespace wainscot
