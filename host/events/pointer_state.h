#pragma once

#include "host/base/xy.h"
#include "host/events/mouse_cursor.h"
#include "host/messages/event_handler.h"
#include "host/messages/handler_ref.h"

namespace wainscot {

/// The state of the pointer, and who has captured it.
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
    /// The pointer's shape over objects that want no shape of their own.
    MouseCursorID defaultCursor = arrowCursor;

    /// The root of the window in which the first button was pressed.
    IdStamp pressedWindow;

    /// From now on no button counts as held.
    void forgetPress() {
        heldButtons = 0;
        chord = false;
        pressedWindow.invalidate();
        releaseCapture();
    }

    /// Has everything go to the handler until the release.
    void capture(EventHandler* handler) { holder_ = HandlerRef<>(handler); }
    void releaseCapture() { holder_ = HandlerRef<>(); }
    /// Null when nobody has captured the pointer, or the holder has died.
    EventHandler* captureHolder() const { return holder_.get(); }
    bool isCapturedBy(EventHandler const* handler) const { return handler && captureHolder() == handler; }

private:
    HandlerRef<> holder_;
};

/// Sets the pointer's shape over objects that want no shape of their own; the arrow unless set.
WAINSCOT_API void setDefaultMouseCursor(MouseCursorID cursor);
/// Root coordinates of the pointer.
WAINSCOT_API XY<int> glib_getMousePos();

} // namespace wainscot
