#pragma once

#include "host/events/event_system.h"
#include "host/windows/backend.h"

namespace wainscot {

class Glob;

/// Tells the window system what objects want of the pointer: its shape, and how its way is reported while it
/// is held.
class WAINSCOT_API PointerWishes {
public:
    PointerWishes(Backend& backend, EventSystem& events) : backend_(backend), events_(events) {}

    /// The shape for the place over `under`, unless `forced` is a shape.
    void updateCursor(Glob* under, MouseCursorID forced = inheritCursor);
    /// To be called when the holder of the pointer has changed.
    void updateMotion(Glob const* holder);
    /// Whether the program has set another shape since the last update.
    bool isStale() const { return seenDefault_ != events_.pointer.defaultCursor; }

private:
    MouseCursorID cursorAt(Glob* under) const;

    Backend& backend_;
    EventSystem& events_;
    MouseCursorID shown_ = arrowCursor;
    MouseCursorID seenDefault_ = arrowCursor;
    bool fullMotion_ = false;
    bool unbounded_ = false;
    /// Where the pointer is when its bounds hold again.
    XY<int> leftAt_;
};

} // namespace wainscot
