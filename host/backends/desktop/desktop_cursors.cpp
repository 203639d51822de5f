#include "host/backends/desktop/desktop_cursors_p.h"

#include <SDL_events.h>
#include <SDL_mouse.h>

namespace wainscot {

namespace {

SDL_SystemCursor systemCursor(MouseCursorID cursor) {
    switch (cursor) {
    case textCursor:
        return SDL_SYSTEM_CURSOR_IBEAM;
    case handCursor:
        return SDL_SYSTEM_CURSOR_HAND;
    case waitCursor:
        return SDL_SYSTEM_CURSOR_WAIT;
    case crossCursor:
        return SDL_SYSTEM_CURSOR_CROSSHAIR;
    case sizeHorizontalCursor:
        return SDL_SYSTEM_CURSOR_SIZEWE;
    case sizeVerticalCursor:
        return SDL_SYSTEM_CURSOR_SIZENS;
    case sizeRisingCursor:
        return SDL_SYSTEM_CURSOR_SIZENESW;
    case sizeFallingCursor:
        return SDL_SYSTEM_CURSOR_SIZENWSE;
    case moveCursor:
        return SDL_SYSTEM_CURSOR_SIZEALL;
    case forbiddenCursor:
        return SDL_SYSTEM_CURSOR_NO;
    case inheritCursor:
    case hiddenCursor:
    case arrowCursor:
        break;
    }
    return SDL_SYSTEM_CURSOR_ARROW;
}

} // namespace

void DesktopCursors::show(MouseCursorID cursor) {
    if (cursor == shown_) return;
    shown_ = cursor;
    SDL_ShowCursor(cursor == hiddenCursor ? SDL_DISABLE : SDL_ENABLE);
    if (cursor == hiddenCursor) return;
    SDL_SystemCursor const shape = systemCursor(cursor);
    SDL_Cursor*& made = made_[shape];
    if (!made) made = SDL_CreateSystemCursor(shape);
    SDL_SetCursor(made ? made : SDL_GetDefaultCursor());
}

void DesktopCursors::close() {
    for (auto const& [shape, made] : made_)
        if (made) SDL_FreeCursor(made);
    made_.clear();
}

} // namespace wainscot
