#pragma once

#include "host/base/box.h"

namespace wainscot {

/// Device pixels for one logical pixel. The user's setting comes first; then the dots per inch in the window
/// system's resource text ("Xft.dpi: 144"), relative to 96 and rounded to quarters; then 1. Both may be null.
/// Values that are not sensible numbers count as missing.
double chooseDeviceScale(char const* setting, char const* resources);

/// The logical length of a device length, and back. Both round; a logical length survives the way there and
/// back at every scale from 1 up.
int toLogical(int device, double scale);
int toDevice(int logical, double scale);

/// A rectangle of the window system in device pixels, y downwards.
struct DeviceRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    friend bool operator==(DeviceRect const&, DeviceRect const&) = default;
    DeviceRect unitedWith(DeviceRect const& other) const;
};

/// Root coordinates: one logical space for all windows and monitors, y upwards, with its origin in the
/// lower-left corner of the box round all monitors.
class RootSpace {
public:
    RootSpace() = default;
    /// `desktop` is the box round all monitors.
    RootSpace(DeviceRect const& desktop, double scale) : desktop_(desktop), scale_(scale) {}

    double scale() const { return scale_; }
    /// The logical box of a window's contents or of a monitor.
    IntBox toRoot(DeviceRect const& rect) const;
    /// The device place of a window's upper-left corner, when its lower-left corner is at `place`.
    XY<int> toDeviceCorner(XY<int> place, int deviceHeight) const;
    /// The root pixel under a device pixel of a window's contents; also for places outside the window.
    XY<int> pixelInWindow(IntBox const& window, XY<int> devicePixel) const;
    /// The reverse: a device pixel under a root pixel.
    XY<int> devicePixelInWindow(IntBox const& window, XY<int> pixel) const;

private:
    DeviceRect desktop_;
    double scale_ = 1.0;
};

} // namespace wainscot
