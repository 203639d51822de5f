#pragma once

#include "host/windows/input_event.h"

namespace wainscot {

/// Counts presses in quick succession: 1, 2, 3, then from 1 again. Presses belong together when they have the
/// same button, window and place, and follow each other quickly.
class ClickCounter {
public:
    /// Milliseconds, where the user has not set another time.
    static constexpr int usualInterval = 500;
    static constexpr int radius = 4;
    static constexpr int most = 3;

    /// `time` in milliseconds, `place` in root coordinates. Gives the press's number.
    int press(NativeWindowId window, InputEvent::Button button, XY<int> place, double time);
    void reset() { clicks_ = 0; }
    /// Milliseconds from one press to the next that belongs to it.
    void setInterval(double milliseconds) { interval_ = milliseconds; }

private:
    bool continues(NativeWindowId window, InputEvent::Button button, XY<int> place, double time) const;

    double interval_ = usualInterval;
    int clicks_ = 0;
    NativeWindowId window_ = 0;
    InputEvent::Button button_ = InputEvent::Button::none;
    XY<int> place_;
    double time_ = 0.0;
};

/// Sums the fine motion of a wheel to whole notches.
class WheelSum {
public:
    /// No device turns faster; more comes from a broken device.
    static constexpr int most = 100;

    /// The whole notches that are due now, positive = up; 0 while only a fraction is. A turn in the other
    /// direction forgets the fraction.
    int add(double notches);

private:
    double rest_ = 0.0;
};

/// The buttons that are held down.
class HeldButtons {
public:
    void press(InputEvent::Button button) { held_ |= bit(button); }
    void release(InputEvent::Button button) { held_ &= ~bit(button); }
    bool holds(InputEvent::Button button) const { return (held_ & bit(button)) != 0; }
    bool any() const { return held_ != 0; }
    void clear() { held_ = 0; }

private:
    static unsigned bit(InputEvent::Button button) { return 1u << static_cast<unsigned>(button); }

    unsigned held_ = 0;
};

} // namespace wainscot
