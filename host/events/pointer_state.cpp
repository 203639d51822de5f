#include "host/events/pointer_state.h"

#include "host/events/event_system.h"

namespace wainscot {

void PointerState::capture(EventHandler* handler) {
    holder_ = handler;
    holderStamp_ = handler ? handler->idStamp() : IdStamp();
}

EventHandler* PointerState::captureHolder() const {
    return EventHandler::valid(holder_, holderStamp_) ? holder_ : nullptr;
}

void setDefaultMouseCursor(MouseCursorID cursor) {
    if (EventSystem* const system = EventSystem::current())
        system->pointer.defaultCursor = cursor == inheritCursor ? arrowCursor : cursor;
}

XY<int> glib_getMousePos() {
    EventSystem const* const system = EventSystem::current();
    return system ? system->pointer.place : XY<int>();
}

} // namespace wainscot
