#include "host/messages/event_handler.h"

#include "host/base/ui_thread.h"

namespace wainscot {

namespace {
using Forget = void (*)(EventHandler const&);
constinit Forget forgetHook = nullptr;
} // namespace

void EventHandler::setForgetHook(void (*forget)(EventHandler const&)) {
    forgetHook = forget;
}

EventHandler::EventHandler() : stamp_(IdStamp::make()) {
    UiThread::check("an event handler made");
    Liveness::add(this, stamp_);
}

EventHandler::~EventHandler() {
    retireStamp();
}

void EventHandler::retireStamp() {
    if (!stamp_.valid()) return;
    UiThread::check("an event handler destroyed");
    if (forgetHook) forgetHook(*this);
    Liveness::remove(this);
    stamp_.invalidate();
}

bool EventHandler::handleEvent(Event const&) {
    return false;
}

bool EventHandler::intercept(Event const&) {
    return false;
}

int EventHandler::handleMessageEvent(LightweightString<char>, Glob*) {
    return 0;
}

int EventHandler::handleDataMessageEvent(LightweightString<char>, Glob*, Qv::Ptr<iObject>) {
    return 0;
}

IdStamp EventHandler::windowStamp() const {
    return IdStamp();
}

Glob* EventHandler::asGlob() {
    return nullptr;
}

} // namespace wainscot
