#pragma once

#include "driver/driver.h"

namespace wainscot {

/// Whether what the program shows and keeps fits together. For a program at rest, between two things that a
/// user does.
class WAINSCOT_API Consistency {
public:
    explicit Consistency(Driver& driver) : driver_(driver) {}

    /// Empty when all is well, else the first thing that is wrong:
    /// - the holder of the keyboard focus is not shown or inactive, the holder of the pointer is not shown;
    /// - no button is held, but a widget has the pointer, or a slider or scroll bar is held;
    /// - a timer should have gone off already;
    /// - a window shows another picture than it does when all of it is painted anew.
    LightweightString<char> fault();

private:
    LightweightString<char> faultOfFocus();
    LightweightString<char> faultOfPointer();
    LightweightString<char> faultOfTimers();
    LightweightString<char> faultOfPictures();

    Driver& driver_;
};

} // namespace wainscot
