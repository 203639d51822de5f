#include "host/events/mouse_listeners.h"

#include "host/events/event_system.h"

#include <utility>

namespace wainscot::Glib {

MouseListener::MouseListener(MouseListener&& other) noexcept
    : host_(std::exchange(other.host_, 0)), id_(std::exchange(other.id_, 0)) {}

MouseListener& MouseListener::operator=(MouseListener&& other) noexcept {
    std::swap(host_, other.host_);
    std::swap(id_, other.id_);
    return *this;
}

void MouseListener::end() {
    EventSystem* const system = EventSystem::current();
    if (system && system->number() == host_) system->mouseListeners.remove(id_);
    host_ = 0;
}

MouseListener addMouseListener(std::function<void(Event const&)> listener) {
    EventSystem& system = EventSystem::live();
    return {system.number(), system.mouseListeners.add(std::move(listener))};
}

} // namespace wainscot::Glib
