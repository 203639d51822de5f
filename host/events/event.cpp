#include "host/events/event.h"

#include <cstdlib>

namespace wainscot {

namespace {

/// How far the pointer may stray from its press before a move counts as intended, in pixels on one axis.
constexpr int significantDistance = 4;

bool isMouse(Event const& event, int details) {
    return (event.kind() & EventKind::groupMask) == EventKind::mouse && (event.kind() & details) == details;
}

bool isGroup(Event const& event, int group) {
    return (event.kind() & EventKind::groupMask) == group;
}

} // namespace

Event::Event(int kind, XY<int> place, EventHandler* target) : kind_(kind), place_(place), pressPlace_(place) {
    setTarget(target);
}

Event::Event(int kind, std::uint32_t keyCode, EventHandler* target)
    : kind_(kind), keyCode_(keyCode), modifiers_(keyCode & Key::modifierMask) {
    setTarget(target);
}

void Event::setData(Qv::Ptr<iObject> data) {
    data_ = std::move(data);
    hasData_ = true;
}

void Event::setSender(iObject* sender) {
    sender_ = HandlerRef<>(dynamic_cast<EventHandler*>(sender));
}

Glob* Event::sender() const {
    EventHandler* const sender = sender_.get();
    return sender ? sender->asGlob() : nullptr;
}

bool mouse_event(Event const& event) {
    return isMouse(event, 0);
}

bool mouse_down_event(Event const& event) {
    return isMouse(event, EventKind::down);
}

bool mouse_up_event(Event const& event) {
    return isMouse(event, EventKind::up);
}

bool mouse_move_event(Event const& event) {
    return isMouse(event, EventKind::move);
}

bool mouse_left_event(Event const& event) {
    return isMouse(event, EventKind::left);
}

bool mouse_right_event(Event const& event) {
    return isMouse(event, EventKind::right);
}

bool mouse_middle_event(Event const& event) {
    return isMouse(event, EventKind::middle);
}

bool mouse_wheel_event(Event const& event) {
    return isMouse(event, EventKind::wheelTurn);
}

bool mouse_side_wheel_event(Event const& event) {
    return isMouse(event, EventKind::sideTurn);
}

bool mouse_zoom_event(Event const& event) {
    return isGroup(event, EventKind::zoom);
}

bool mouse_double_click_event(Event const& event) {
    return mouse_down_event(event) && event.clicks() == 2;
}

bool mouse_chord_event(Event const& event) {
    int const held = event.heldButtons();
    return mouse_event(event) && (held & (held - 1)) != 0;
}

bool eventWasChordEvent(Event const& event) {
    return mouse_event(event) && event.isChord();
}

bool isMouseMoveSignificant(Event const& event) {
    XY<int> const way = event.place() - event.pressPlace();
    return mouse_move_event(event) &&
           (std::abs(way.x) >= significantDistance || std::abs(way.y) >= significantDistance);
}

bool isKeyPressEvent(Event const& event) {
    return isGroup(event, EventKind::keyPress);
}

bool isKeyReleaseEvent(Event const& event) {
    return isGroup(event, EventKind::keyRelease);
}

bool isTimerEvent(Event const& event) {
    return isGroup(event, EventKind::timer);
}

bool isMessageEvent(Event const& event) {
    return isGroup(event, EventKind::messageGroup);
}

bool isPlainEvent(Event const& event) {
    return !mouse_chord_event(event) && !eventWasChordEvent(event) && event.modifiers() == 0;
}

int getMouseClickState(Event const& event) {
    return mouse_event(event) ? event.clicks() : 0;
}

std::uint32_t getModifier(Event const& event) {
    return event.modifiers();
}

} // namespace wainscot
