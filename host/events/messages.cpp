#include "host/events/messages.h"

#include "host/base/diagnostics.h"
#include "host/base/ui_thread.h"
#include "host/events/dispatch_scope.h"
#include "host/events/event_system.h"

#include <utility>

namespace wainscot {

namespace {

Event messageEvent(LightweightString<char> name, EventHandler* target, iObject* sender) {
    Event event(EventKind::message);
    event.setModifiers(currentModifiers());
    event.setKeyCode(currentModifiers());
    event.setMessage(std::move(name));
    event.setTarget(target);
    event.setSender(sender);
    return event;
}

Event notificationEvent(NotifyMsg const& message, EventHandler* target, iObject* sender) {
    Event event = messageEvent(message.name(), target, sender);
    if (message.payload()) event.setData(message.payload());
    event.setReportCode(message.code());
    return event;
}

bool post(Event event) {
    UiThread::check("an event posted");
    EventSystem* const system = EventSystem::current();
    if (!system) {
        Diagnostics::count("event without a host", event.message().c_str());
        return false;
    }
    system->queue.add(std::move(event));
    return true;
}

/// The last answer of a handler in the present call.
constinit int notedAnswer = 0;

class AnswerScope {
public:
    AnswerScope() : outer_(std::exchange(notedAnswer, 0)) {}
    ~AnswerScope() { notedAnswer = outer_; }
    AnswerScope(AnswerScope const&) = delete;
    AnswerScope& operator=(AnswerScope const&) = delete;

private:
    int outer_;
};

int call(EventHandler* target, Event const& event) {
    AnswerScope const scope;
    return deliverEvent(target, event) ? 1 : notedAnswer;
}

bool refuseNull(LightweightString<char> const& name) {
    Diagnostics::count("message to nobody", name.c_str());
    return false;
}

} // namespace

bool sendMessage(LightweightString<char> name, EventHandler* target, iObject* sender, bool) {
    return target ? post(messageEvent(std::move(name), target, sender)) : refuseNull(name);
}

int callMessage(LightweightString<char> name, EventHandler* target, iObject* sender) {
    if (!target) return refuseNull(name);
    return call(target, messageEvent(std::move(name), target, sender));
}

bool sendMessageWithData(LightweightString<char> name, EventHandler* target, Qv::Ptr<iObject> data,
                         iObject* sender) {
    if (!target) return refuseNull(name);
    Event event = messageEvent(std::move(name), target, sender);
    event.setData(std::move(data));
    return post(std::move(event));
}

int callMessageWithData(LightweightString<char> name, EventHandler* target, Qv::Ptr<iObject> data,
                        iObject* sender) {
    if (!target) return refuseNull(name);
    Event event = messageEvent(std::move(name), target, sender);
    event.setData(std::move(data));
    return call(target, event);
}

bool sendNotification(NotifyMsg const& message, EventHandler* target, iObject* sender,
                      std::optional<std::uint32_t> modifiers) {
    if (!target) return refuseNull(message.name());
    Event event = notificationEvent(message, target, sender);
    if (modifiers) {
        event.setModifiers(*modifiers);
        event.setKeyCode(*modifiers);
    }
    return post(std::move(event));
}

int callNotification(NotifyMsg const& message, EventHandler* target, iObject* sender) {
    if (!target) return refuseNull(message.name());
    return call(target, notificationEvent(message, target, sender));
}

void noteMessageAnswer(int answer) {
    notedAnswer = answer;
}

bool event_send(Event const* event, bool) {
    if (!event || !event->target()) {
        Diagnostics::count("event to nobody", event ? event->message().c_str() : "null event");
        return false;
    }
    return post(*event);
}

bool deliverEvent(EventHandler* target, Event const& event) {
    if (!target || !target->idStamp().valid()) return false;
    UiThread::check("an event delivered");
    DispatchScope const scope(event);
    return target->handleEvent(event);
}

} // namespace wainscot
