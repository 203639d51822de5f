#pragma once

namespace wainscot {

/// The shapes of the pointer. Values from 1 up can be shown; the numbers are part of the interface.
enum MouseCursorID : int {
    /// No wish: the parent's shape; at the root the shape that the program has set.
    inheritCursor = 0,
    textCursor = 1,
    handCursor = 2,
    waitCursor = 3,
    crossCursor = 4,
    sizeHorizontalCursor = 5,
    sizeVerticalCursor = 6,
    /// From the lower-left to the upper-right corner, and the other way.
    sizeRisingCursor = 7,
    sizeFallingCursor = 8,
    moveCursor = 9,
    forbiddenCursor = 10,
    /// Nothing is shown.
    hiddenCursor = 11,
    arrowCursor = 16,
};

} // namespace wainscot
