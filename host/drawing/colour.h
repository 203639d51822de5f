#pragma once

#include "host/base/export.h"

#include <algorithm>
#include <cstdint>

namespace wainscot {

/// One colour: red, green and blue from 0 to 1, as shown on the screen (sRGB), opaque.
class Colour {
public:
    constexpr Colour() = default;
    /// With `clamp`, components outside 0 to 1 are moved to the nearer end, NaN too; without it they are
    /// kept, for intermediate results.
    constexpr Colour(double red, double green, double blue, bool clamp = true) {
        setrgb(red, green, blue, clamp);
    }
    /// From 0xRRGGBB; higher bits are ignored.
    static constexpr Colour fromLong(std::uint32_t rgb) {
        return {((rgb >> 16) & 0xFF) / 255.0, ((rgb >> 8) & 0xFF) / 255.0, (rgb & 0xFF) / 255.0};
    }

    constexpr double red() const { return red_; }
    constexpr double green() const { return green_; }
    constexpr double blue() const { return blue_; }
    constexpr void setrgb(double red, double green, double blue, bool clamp = true) {
        red_ = clamp ? clamped(red) : red;
        green_ = clamp ? clamped(green) : green;
        blue_ = clamp ? clamped(blue) : blue;
    }

    /// 0 (black) to 1 (white), as the eye weighs the three components.
    constexpr double brightness() const { return 0.299 * red_ + 0.587 * green_ + 0.114 * blue_; }
    /// 0xRRGGBB, each component rounded.
    constexpr std::uint32_t getAsLong() const {
        return byteOf(red_) << 16 | byteOf(green_) << 8 | byteOf(blue_);
    }

    /// `weight` is the share of the FIRST colour: 1 gives `first`, 0 gives `second`.
    static constexpr Colour mix(Colour const& first, Colour const& second, double weight) {
        double const w = clamped(weight);
        return {w * first.red_ + (1 - w) * second.red_, w * first.green_ + (1 - w) * second.green_,
                w * first.blue_ + (1 - w) * second.blue_};
    }
    /// Every component multiplied by `factor` and clamped: below 1 darkens, above 1 brightens.
    static constexpr Colour scale(Colour const& colour, double factor) {
        return {colour.red_ * factor, colour.green_ * factor, colour.blue_ * factor};
    }

    friend constexpr bool operator==(Colour const&, Colour const&) = default;

private:
    static constexpr double clamped(double value) { return value > 0 ? std::min(value, 1.0) : 0.0; }
    static constexpr std::uint32_t byteOf(double value) {
        return static_cast<std::uint32_t>(clamped(value) * 255.0 + 0.5);
    }

    double red_ = 0;
    double green_ = 0;
    double blue_ = 0;
};

/// A colour as three single-precision shares of the brightest component's range, 0 to 1.
struct NormalisedRGB {
    float r = 0;
    float g = 0;
    float b = 0;

    static constexpr NormalisedRGB fromColour(Colour const& colour) {
        return {static_cast<float>(colour.red()), static_cast<float>(colour.green()),
                static_cast<float>(colour.blue())};
    }

    friend constexpr bool operator==(NormalisedRGB const&, NormalisedRGB const&) = default;
};

/// How well one colour can be told from another: 1 (not at all) to 21 (black on white), from the relative
/// luminance of linear light.
WAINSCOT_API double contrastRatio(Colour const& a, Colour const& b);

} // namespace wainscot
