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

/// Moves of the pointer below this are no drag.
constexpr int dragDistance = 4;

bool isClickKey(Event const& event) {
    return isKeyPressEvent(event) && (event.keyCode() == Key::enter || event.keyCode() == Key::space);
}

} // namespace

bool Button::react(Event const& event) {
    if (isMessageEvent(event)) return reactToMessage(event);
    if (isTimerEvent(event)) return reactToTimer(event);
    if (!isActive()) return rect::react(event);
    if (isClickKey(event)) return reactToKey(event);
    if (clickKeyPress_ != 0 && isKeyReleaseEvent(event)) showKeyPress(0);
    if (mouse_left_event(event) && !ignoresClicks_) return reactToMouse(event);
    return rect::react(event);
}

bool Button::reactToMouse(Event const& event) {
    if (mouse_down_event(event))
        press(event);
    else if (mouse_up_event(event))
        releaseAt(event);
    else if (mouse_move_event(event))
        moveTo(event);
    else
        return rect::react(event);
    return true;
}

/// All of its edges count, so that a press exactly on the border is still inside.
bool Button::isInside(XY<int> const& place) const {
    return place.x >= 0 && place.x <= width() && place.y >= 0 && place.y <= height();
}

void Button::press(Event const& event) {
    modifiers_ = getModifier(event);
    pressPlace_ = event.place();
    stateBeforePress_ = state_;
    pressed_ = true;
    unsigned int const number = ++pressNumber_;
    pressReported_ = (callbackEvents_ & onMouseDown) != 0;
    LifeGuard const life = guard();
    switchState(isDown() ? buttonUp : buttonDown, pressReported_);
    if (!life.alive() || !pressed_ || number != pressNumber_ || !isActive()) return;
    if (isHidden()) return abandonPress();
    if (isRepeating()) askForTimer();
}

void Button::moveTo(Event const& event) {
    if (!pressed_) return;
    if ((callbackEvents_ & onDrag) != 0) {
        XY<int> const way = event.place() - pressPlace_;
        std::int64_t const x = way.x, y = way.y;
        if (isDown() && x * x + y * y >= dragDistance * dragDistance)
            informParent(message_ + dragSuffix, codeDrag);
        return;
    }
    if (latching_ != 0) return;
    Button::setState(isInside(eventXYToGlobXY(event, *this)) ? buttonDown : buttonUp, eRedrawYes);
}

void Button::releaseAt(Event const& event) {
    // A release whose press went elsewhere is nobody's click.
    if (!pressed_) return;
    endPress();
    if ((callbackEvents_ & onMouseUp) != 0)
        switchState(buttonUp, isInside(eventXYToGlobXY(event, *this)));
    else if (latching_ == 0 && !staysDownAfterRelease())
        Button::setState(buttonUp, eRedrawYes);
}

bool Button::staysDownAfterRelease() const {
    return false;
}

void Button::endPress() {
    pressed_ = false;
    if (isRepeating()) clearInterest(EventKind::timer);
}

// What a latching button has come to is known to its owner already.
void Button::abandonPress() {
    if (!pressed_) return;
    endPress();
    ++pressNumber_;
    if (latching_ == 0) Button::setState(buttonUp, eRedrawYes);
}

/// The owner of a latching button has heard of the press, so it hears of the way back.
void Button::handlePressCancelled(Event const&) {
    if (!pressed_) return;
    LifeGuard const life = guard();
    abandonPress();
    if (life.alive() && latching_ != 0 && state_ != stateBeforePress_)
        switchState(stateBeforePress_, pressReported_);
}

void Button::handleCaptureLost() {
    abandonPress();
    rect::handleCaptureLost();
}

// Repeating

bool Button::isAutoRepeating() const {
    return pressed_ && isDown() && isRepeating();
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
    if (!pressed_ || !isRepeating()) return rect::react(event);
    if (isHidden()) {
        abandonPress();
        return true;
    }
    // The way back onto the button may still come.
    if (!isDown()) return true;
    RepeatClock& clock = extras_->repeat.clock;
    bool const isDue = clock.isDue();
    setNextTimer(clock.msToNext());
    if (isDue) informParent(message_, codeRepeat);
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
