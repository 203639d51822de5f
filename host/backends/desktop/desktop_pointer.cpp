#include "host/backends/desktop/desktop_pointer_p.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace wainscot {

bool ClickCounter::continues(NativeWindowId window, InputEvent::Button button, XY<int> place,
                             double time) const {
    return clicks_ > 0 && clicks_ < most && window == window_ && button == button_ &&
           time - time_ <= interval_ && std::abs(place.x - place_.x) <= radius &&
           std::abs(place.y - place_.y) <= radius;
}

int ClickCounter::press(NativeWindowId window, InputEvent::Button button, XY<int> place, double time) {
    bool const next = continues(window, button, place, time);
    clicks_ = next ? clicks_ + 1 : 1;
    // The place stays that of the first press, so that a series cannot wander over the screen.
    if (!next) place_ = place;
    window_ = window;
    button_ = button;
    time_ = time;
    return clicks_;
}

int WheelSum::add(double notches) {
    if (!std::isfinite(notches)) return 0;
    if (notches * rest_ < 0.0) rest_ = 0.0;
    rest_ += std::clamp(notches, -static_cast<double>(most), static_cast<double>(most));
    // Devices report fractions such as 0.1, whose sum falls just short of the notch.
    double const whole = std::trunc(rest_ + std::copysign(1e-4, rest_));
    rest_ = std::abs(rest_ - whole) < 1e-3 ? 0.0 : rest_ - whole;
    return static_cast<int>(std::clamp(whole, -static_cast<double>(most), static_cast<double>(most)));
}

} // namespace wainscot
