#pragma once

#include "host/base/xy.h"
#include "host/events/mouse_cursor.h"
#include "host/messages/event_handler.h"
#include "host/messages/handler_ref.h"

namespace wainscot {

/// What is known of the pointer, and who has captured it.
struct WAINSCOT_API PointerState {
    /// Root coordinates of the last pointer input.
    XY<int> place;
    /// Held buttons, as `EventKind::left` and so on.
    int heldButtons = 0;
    bool chord = false;
    XY<int> pressPlace;
    int clicks = 1;
    /// The button that began the press, as `EventKind::left` and so on; it may be up while others are held.
    int pressButton = 0;
    /// The pointer's shape where no object wants another.
    MouseCursorID defaultCursor = arrowCursor;

    /// The root of the window in which the first button was pressed.
    IdStamp pressedWindow;

    /// As if no button were held.
    void forgetPress() {
        heldButtons = 0;
        chord = false;
        pressedWindow.invalidate();
        releaseCapture();
    }

    /// From press to release everything goes to the pressed handler.
    void capture(EventHandler* handler) { holder_ = HandlerRef<>(handler); }
    void releaseCapture() { holder_ = HandlerRef<>(); }
    /// Null when nobody has captured the pointer, or the holder has died.
    EventHandler* captureHolder() const { return holder_.get(); }
    bool isCapturedBy(EventHandler const* handler) const { return handler && captureHolder() == handler; }

private:
    HandlerRef<> holder_;
};

/// The pointer's shape where no object wants another; the arrow from the start.
WAINSCOT_API void setDefaultMouseCursor(MouseCursorID cursor);
/// Root coordinates of the pointer.
WAINSCOT_API XY<int> glib_getMousePos();

} // namespace wainscot
