#pragma once

#include "host/events/mouse_cursor.h"

#include <map>

struct SDL_Cursor;

namespace wainscot {

/// The shapes that the window system has for the pointer, each made when first shown.
class DesktopCursors {
public:
    DesktopCursors() = default;
    ~DesktopCursors() { close(); }
    DesktopCursors(DesktopCursors const&) = delete;
    DesktopCursors& operator=(DesktopCursors const&) = delete;

    /// A shape that the system lacks is shown as the arrow.
    void show(MouseCursorID cursor);
    /// To be called before the library ends.
    void close();

private:
    std::map<int, SDL_Cursor*> made_;
    MouseCursorID shown_ = arrowCursor;
};

} // namespace wainscot
