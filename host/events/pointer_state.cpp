#include "host/events/pointer_state.h"

#include "host/events/event_system.h"

namespace wainscot {

void setDefaultMouseCursor(MouseCursorID cursor) {
    if (EventSystem* const system = EventSystem::current())
        system->pointer.defaultCursor = cursor == inheritCursor ? arrowCursor : cursor;
}

XY<int> glib_getMousePos() {
    EventSystem const* const system = EventSystem::current();
    return system ? system->pointer.place : XY<int>();
}

} // namespace wainscot
