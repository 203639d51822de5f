#include "buttons/button_extras_p.h"
#include "host/events/event.h"
#include "host/events/event_system.h"
#include "host/events/messages.h"
#include "host/objects/description.h"
#include "host/objects/kbd_focus.h"
#include "host/services/clock.h"

#include <algorithm>

namespace wainscot {

namespace {

/// Shorter moves of the pointer are not a drag.
constexpr int dragDistance = 4;

bool isClickKey(Event const& event) {
    return isKeyPressEvent(event) && actionFor(Button::keyTable, event.keyCode());
}

} // namespace

bool Button::react(Event const& event) {
    if (isMessageEvent(event)) return reactToMessage(event);
    if (isTimerEvent(event)) return reactToTimer(event);
    if (!isActive()) return rect::react(event);
    if (isClickKey(event)) return reactToKey(event);
    if (clickKeyPress_ != 0 && isKeyReleaseEvent(event)) showKeyPress(0);
    if (ignoresClicks_ || !mouse_event(event)) return rect::react(event);
    // A release without its press is not a click.
    return reactToPress(event) || Press::isOfLeftButton(event) || rect::react(event);
}

bool Button::pressBegan(Event const&) {
    stateBeforePress_ = state_;
    pressReported_ = (callbackEvents_ & onMouseDown) != 0;
    unsigned int const number = press().number();
    LifeGuard const life = guard();
    switchState(isDown() ? buttonUp : buttonDown, pressReported_);
    if (!life.alive() || number != press().number() || !isActive()) return true;
    if (isHidden())
        dropPress();
    else if (isRepeating())
        askForTimer();
    return true;
}

void Button::pressMoved(Event const& event) {
    if ((callbackEvents_ & onDrag) != 0) {
        XY<int> const way = event.place() - press().place();
        std::int64_t const x = way.x, y = way.y;
        if (isDown() && x * x + y * y >= dragDistance * dragDistance) report(dragMsg);
        return;
    }
    if (latching_ != 0) return;
    Button::setState(Press::isInside(event, *this) ? buttonDown : buttonUp, eRedrawYes);
}

void Button::pressEnded(PressEnd how) {
    if (isRepeating()) clearInterest(EventKind::timer);
    if (how == PressEnd::cancelled) return takeBack();
    bool const isReleased = how != PressEnd::lost;
    if (isReleased && (callbackEvents_ & onMouseUp) != 0)
        switchState(buttonUp, how == PressEnd::releasedInside);
    else if (latching_ == 0 && !(isReleased && staysDownAfterRelease()))
        Button::setState(buttonUp, eRedrawYes);
}

/// The owner of a latching button has heard of the press, so it also hears that the press is taken back.
void Button::takeBack() {
    if (latching_ == 0)
        Button::setState(buttonUp, eRedrawYes);
    else if (state_ != stateBeforePress_)
        switchState(stateBeforePress_, pressReported_);
}

bool Button::staysDownAfterRelease() const {
    return false;
}

// Repeating

bool Button::isAutoRepeating() const {
    return press().isHeld() && isDown() && isRepeating();
}

bool Button::isRepeating() const {
    return extras_ && extras_->repeat.interval > 0;
}

void Button::startRepeating() {
    if (extras_) extras_->repeat.clock.start(extras_->repeat.delay, extras_->repeat.interval);
}

void Button::askForTimer() {
    setInterest(EventKind::timer);
    setNextTimer(extras_->repeat.clock.msToNext());
}

/// Derived classes may have timers of their own.
bool Button::reactToTimer(Event const& event) {
    if (!press().isHeld() || !isRepeating()) return rect::react(event);
    if (isHidden()) {
        dropPress();
        return true;
    }
    // The pointer may still come back onto the button.
    if (!isDown()) return true;
    RepeatClock& clock = extras_->repeat.clock;
    bool const isDue = clock.isDue();
    setNextTimer(clock.msToNext());
    if (isDue) report(repeatMsg);
    return true;
}

// Keys and messages

/// Addressed to the button itself, so that nothing that lies over its centre takes the click.
bool Button::reactToKey(Event const&) {
    XY<int> const centre = globXYToScreenXY({width() / 2, height() / 2});
    Event const down(EventKind::leftPress, centre, this);
    Event const up(EventKind::leftRelease, centre, this);
    event_send(&down);
    event_send(&up);
    EventSystem const* const system = EventSystem::current();
    showKeyPress(system ? system->focus.heldKeyPress() : 0);
    return true;
}

void Button::showKeyPress(std::uint64_t press) {
    clickKeyPress_ = press;
    makeDirty();
    describeChanged(DescriptionChange::state);
}

bool Button::looksDown() const {
    if (isDown()) return true;
    EventSystem const* const system = clickKeyPress_ != 0 && isActive() ? EventSystem::current() : nullptr;
    return system && system->focus.heldKeyPress() == clickKeyPress_ && get_kbd_focus() == this;
}

bool Button::reactToMessage(Event const& event) {
    NotifyMsg const message(event.message(), event.data());
    LifeGuard const life = guard();
    int const answer = callInnerMessageCallback(message);
    if (answer == 1 || !life.alive()) return true;
    return rect::react(event);
}

} // namespace wainscot
