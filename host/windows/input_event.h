#pragma once

#include "host/base/lightweight_string.h"
#include "host/base/xy.h"

#include <cstdint>
#include <vector>

namespace wainscot {

/// Names a native window to its backend; 0 names none.
using NativeWindowId = std::uint64_t;

/// One piece of platform input, as a backend reports it. Places are logical root coordinates, y upwards.
struct InputEvent {
    enum class Kind : std::uint8_t {
        pointerMoved,
        pointerPressed,
        pointerReleased,
        /// The pointer has left all windows of the program.
        pointerLeft,
        /// No button is held any more, although no release was reported.
        pressLost,
        /// `amount` whole notches, positive = up, away from the user; never 0.
        wheel,
        /// The same sideways, positive = to the right.
        sideWheel,
        /// Zoom gesture, `amount` steps, positive = in.
        zoom,
        keyPressed,
        keyReleased,
        /// Finished composed text, and characters that no key code can hold: `text`.
        composedText,
        /// Unfinished composed text, to be shown at the caret: `text`, with the caret before its character
        /// number `amount`. Empty when the composition has ended.
        composing,
        /// Files from another program are being dragged over a window, at `place`; window 0 = they have left.
        filesDragged,
        /// Files from another program were let go over a window: `files`.
        filesDropped,
        /// Monitors have come, gone or changed.
        screenChanged,
        windowResized,
        windowMoved,
        /// Pixels have to be brought to the screen again; nothing has to be painted.
        windowExposed,
        windowCloseRequested,
        windowActivated,
        windowDeactivated,
        /// Minimised, or covered by the system in another way that makes painting useless.
        windowHidden,
        windowShown,
    };
    enum class Button : std::uint8_t { none = 0, left = 1, middle = 2, right = 3 };

    Kind kind = Kind::pointerMoved;
    Button button = Button::none;
    /// A held key repeats.
    bool repeat = false;
    /// The window that the input belongs to; 0 while unknown.
    NativeWindowId window = 0;
    /// Pointer place, or new place of the window's lower-left corner.
    XY<int> place{};
    /// New size of the window's contents, logical.
    XY<int> size{};
    int amount = 0;
    /// Key code with modifiers (`Key`), for key events.
    std::uint32_t keyCode = 0;
    /// `Key::shift`, `Key::ctrl`, `Key::alt`, `Key::meta` as they are with this input.
    std::uint32_t modifiers = 0;
    /// Clicks in quick succession, for presses: 1, 2, 3.
    int clicks = 1;
    /// When it happened, on the backend's millisecond clock.
    double time = 0.0;
    /// A move that must not be merged with those after it.
    bool isStep = false;
    LightweightString<wchar_t> text{};
    /// Full paths.
    std::vector<LightweightString<wchar_t>> files{};
};

} // namespace wainscot
