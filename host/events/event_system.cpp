#include "host/events/event_system.h"

#include "host/base/ui_thread.h"

#include <stdexcept>

namespace wainscot {

namespace {
constinit EventSystem* liveSystem = nullptr;
constinit std::uint64_t lastNumber = 0;
} // namespace

EventSystem::EventSystem(std::function<void()> wake)
    : inbox(std::make_shared<ThreadInbox>(std::move(wake))), number_(lastNumber + 1) {
    if (liveSystem) throw std::logic_error("wainscot: only one host may live at a time");
    liveSystem = this;
    lastNumber = number_;
    UiThread::adopt();
    EventHandler::setForgetHook([](EventHandler const& handler) { liveSystem->forget(handler); });
}

EventSystem::~EventSystem() {
    EventHandler::setForgetHook(nullptr);
    inbox->close();
    liveSystem = nullptr;
    UiThread::release();
}

EventSystem* EventSystem::current() {
    return liveSystem;
}

EventSystem& EventSystem::live() {
    if (!liveSystem) throw std::logic_error("wainscot: no host lives");
    return *liveSystem;
}

void EventSystem::forget(EventHandler const& handler) {
    if (timers.size() > 0) timers.unregister(&handler);
    if (intercepts.size() > 0) intercepts.removeAll(handler);
    if (pointer.isCapturedBy(&handler)) pointer.releaseCapture();
}

} // namespace wainscot
