#include "host/windows/input_router.h"

#include "host/base/diagnostics.h"
#include "host/events/dispatch_scope.h"
#include "host/events/keybinding_manager.h"
#include "host/events/messages.h"
#include "host/messages/handler_ref.h"
#include "host/messages/notify_msg.h"
#include "host/objects/dispatch.h"
#include "host/objects/kbd_focus.h"
#include "host/objects/tree.h"
#include "host/services/clipboard.h"
#include "host/services/command_map.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace wainscot {

namespace {

constexpr int maxNotches = 100;
/// No pointer is further away than this; sums of places stay within their range.
constexpr int maxPlace = 1 << 28;
constexpr double wheelGestureMs = 500.0;
constexpr int wheelGestureReach = 8;

int buttonBit(InputEvent::Button button) {
    switch (button) {
    case InputEvent::Button::left:
        return EventKind::left;
    case InputEvent::Button::right:
        return EventKind::right;
    case InputEvent::Button::middle:
        return EventKind::middle;
    case InputEvent::Button::none:
        break;
    }
    return 0;
}

Glob* shownOrNull(Glob* glob) {
    return glob && glob->isShown() ? glob : nullptr;
}

/// The number of the command that a key runs; `CommandMap::none` when it runs none.
unsigned long boundCommand(std::uint32_t key) {
    LightweightString<char> const command = KeybindingManager::instance().getCommandForKey(key);
    return command.empty() ? CommandMap::none : CommandMap::instance().findCommand(command.c_str());
}

bool isReturnOrSpace(std::uint32_t code) {
    return Key::base(code) == Key::enter || Key::base(code) == Key::space;
}

} // namespace

InputRouter::InputRouter(Backend& backend, EventSystem& events, GlobManager& windows)
    : events_(events), windows_(windows), wishes_(backend, events), drags_(windows, events), tips_(events),
      composition_(backend), handOver_(windows),
      approach_(windows, [this](InputEvent const& move) { routeMove(move); }) {}

void InputRouter::route(InputEvent const& reported) {
    using Kind = InputEvent::Kind;
    InputEvent input = reported;
    input.place = {std::clamp(input.place.x, -maxPlace, maxPlace),
                   std::clamp(input.place.y, -maxPlace, maxPlace)};
    tellMouseListeners(input);
    switch (input.kind) {
    case Kind::pointerPressed:
        routePress(input);
        return updatePointerWishes();
    case Kind::pointerReleased:
        routeRelease(input);
        return updatePointerWishes();
    case Kind::pointerMoved:
        routeMove(input);
        return updatePointerWishes();
    case Kind::pointerLeft:
        approach_.drop();
        pointerIsInside_ = false;
        tips_.pointerIsOver(nullptr);
        return updateContainment(nullptr);
    case Kind::pressLost:
        return losePress();
    case Kind::filesDragged:
        return dragFiles(input);
    case Kind::filesDropped:
        return dropFiles(input);
    case Kind::wheel:
    case Kind::sideWheel:
        return routeWheel(input);
    case Kind::zoom:
        return routeZoom(input);
    case Kind::keyPressed:
    case Kind::keyReleased:
        return routeKey(input);
    case Kind::composedText:
        return routeComposedText(input);
    case Kind::composing:
        return composition_.show(keyTarget(), input.text, input.amount);
    case Kind::screenChanged:
        return windows_.screenChanged();
    default:
        break;
    }
    if (TopLevelWindow* window = windows_.windowOf(input.window)) routeWindow(input, *window);
}

// Pointer

Glob* InputRouter::blockerOf(Glob const* target) const {
    return target ? windows_.modality().blockerOf(*target) : nullptr;
}

Glob* InputRouter::globUnder(InputEvent const& input) const {
    Glob* const found = anyGlobUnder(input);
    return blockerOf(found) ? nullptr : found;
}

Glob* InputRouter::anyGlobUnder(InputEvent const& input) const {
    TopLevelWindow* window = input.window ? windows_.windowOf(input.window) : nullptr;
    // Notes take no input: what they cover does.
    if (!input.window || (window && window->isNote())) window = windows_.windowAt(input.place);
    if (!window || !window->root().isShown()) return nullptr;
    return Tree::globAt(window->root(), window->root().screenXYToGlobXY(input.place));
}

Glob* InputRouter::globUnderPointer() const {
    InputEvent here;
    here.place = events_.pointer.place;
    here.window = windows_.windowOf(pointerWindow_) ? pointerWindow_ : 0;
    return globUnder(here);
}

Glob* InputRouter::captureHolder() const {
    EventHandler* const holder = events_.pointer.captureHolder();
    return holder ? holder->asGlob() : nullptr;
}

Glob* InputRouter::pointerTarget(InputEvent const& input) const {
    if (Glob* holder = captureHolder()) return shownOrNull(holder);
    bool const pressedOnNobody = events_.pointer.heldButtons != 0;
    return pressedOnNobody ? nullptr : globUnder(input);
}

Event InputRouter::pointerEvent(int kind, InputEvent const& input) const {
    PointerState const& pointer = events_.pointer;
    Event event(kind, input.place);
    event.setModifiers(input.modifiers);
    event.setHeldButtons(pointer.heldButtons);
    event.setChord(pointer.chord);
    event.setClicks(pointer.clicks);
    event.setPressPlace(pointer.pressPlace);
    event.setTime(input.time);
    return event;
}

void InputRouter::tellMouseListeners(InputEvent const& input) {
    using Kind = InputEvent::Kind;
    if (events_.mouseListeners.empty()) return;
    int const bit = buttonBit(input.button);
    int const kind = input.kind == Kind::pointerPressed    ? EventKind::mouse | bit | EventKind::down
                     : input.kind == Kind::pointerReleased ? EventKind::mouse | bit | EventKind::up
                     : input.kind == Kind::pointerMoved ? EventKind::mouseMove | events_.pointer.heldButtons
                     : input.kind == Kind::wheel        ? EventKind::mouseWheel
                     : input.kind == Kind::sideWheel    ? EventKind::sideWheel
                                                        : 0;
    if (kind == 0) return;
    Event event = pointerEvent(kind, input);
    event.setAmount(input.amount);
    event.setClicks(input.clicks);
    DispatchScope const scope(event);
    events_.mouseListeners.walk(
        [&](auto const& listener) { runHandler("mouse listener", [&] { listener(event); }); });
}

/// The release of a press on nobody's window, or on one that has gone, may never be reported: no button
/// counts as held then.
bool InputRouter::isSpent(InputEvent const& input, PopUpChain::Press press, Glob* under) {
    Glob* const blocker = blockerOf(is_good_glob_ptr(under) ? under : nullptr);
    if (press != PopUpChain::Press::spent && !blocker) return false;
    if (TopLevelWindow const* const window = windows_.windowOf(input.window)) {
        events_.pointer.heldButtons |= buttonBit(input.button);
        events_.pointer.pressedWindow = window->rootStamp();
    }
    if (press != PopUpChain::Press::spent) windows_.showModal(*blocker);
    return true;
}

Event InputRouter::pressToTakeBack(std::uint32_t modifiers, double time) const {
    InputEvent input;
    input.place = events_.pointer.pressPlace;
    input.modifiers = modifiers;
    input.time = time;
    return pointerEvent(EventKind::mouse | events_.pointer.pressButton | EventKind::down, input);
}

/// As with Escape, what the press began is taken back.
void InputRouter::losePress() {
    HandlerRef<Glob> const holder(captureHolder());
    Event const press = pressToTakeBack(0, service_get_msecs());
    events_.pointer.forgetPress();
    handOver_.end();
    drags_.cancel();
    DispatchScope const scope;
    if (Glob* const told = holder.get())
        runHandler("handlePressCancelled", [&] { told->handlePressCancelled(press); });
    refreshContainment();
}

bool InputRouter::holdsPress(TopLevelWindow const& window) const {
    TopLevelWindow const* const pressed = windows_.windowOfStamp(events_.pointer.pressedWindow);
    return pressed && (pressed == &window || pressed->isPopUp());
}

void InputRouter::routePress(InputEvent const& input) {
    PointerState& pointer = events_.pointer;
    int const bit = buttonBit(input.button);
    if (bit == 0) return;
    // A button that is pressed again was let go of where nobody told: over a window that was closed, for
    // example.
    if ((pointer.heldButtons & bit) != 0) losePress();
    endWheelGesture();
    escapeWasUnused_ = false;
    approach_.drop();
    tips_.dismiss();
    pointer.place = input.place;
    pointerWindow_ = input.window;
    pointerIsInside_ = true;
    if (pointer.heldButtons == 0) return beginPress(input);
    // A further button is part of the press: only the holder is told of it.
    pointer.chord = true;
    pointer.heldButtons |= bit;
    dispatchTo(shownOrNull(captureHolder()), pointerEvent(EventKind::mouse | bit | EventKind::down, input));
}

void InputRouter::beginPress(InputEvent const& input) {
    PointerState& pointer = events_.pointer;
    Glob* const under = anyGlobUnder(input);
    pointer.releaseCapture();
    handOver_.end();
    PopUpChain::Press const chainPress = windows_.popUps().press(under);
    if (isSpent(input, chainPress, under)) return;
    updateContainment(globUnder(input));
    pointer.pressPlace = input.place;
    pointer.clicks = std::max(input.clicks, 1);
    pointer.pressButton = pointer.heldButtons = buttonBit(input.button);
    pointer.chord = false;
    Glob* const target = globUnder(input);
    pointer.pressedWindow = target ? Glob::getRootParent(target)->idStamp() : IdStamp();
    if (!target) return;
    pointer.capture(target);
    Glob* consumer = nullptr;
    dispatchUpwards(target, pointerEvent(EventKind::mouse | pointer.pressButton | EventKind::down, input),
                    &consumer);
    bool const captureIsAsSet = is_good_glob_ptr(target) && pointer.isCapturedBy(target);
    if (captureIsAsSet && consumer) pointer.capture(consumer);
    if (chainPress == PopUpChain::Press::reachesOpener) windows_.popUps().openerWasPressed();
}

void InputRouter::routeRelease(InputEvent const& input) {
    PointerState& pointer = events_.pointer;
    int const bit = buttonBit(input.button);
    if (bit == 0 || (pointer.heldButtons & bit) == 0) return;
    pointer.place = input.place;
    pointer.heldButtons &= ~bit;
    bool const last = pointer.heldButtons == 0;
    Glob* const target = shownOrNull(captureHolder());
    Event const event = pointerEvent(EventKind::mouse | bit | EventKind::up, input);
    HandlerRef<Glob> const holder(target);
    DispatchScope const scope;
    bool const isHandedOver = handOver_.receiver(target, event) != nullptr;
    if (last || isHandedOver) pointer.releaseCapture();
    if (last) pointer.chord = false;
    if (last) drags_.drop(input.place);
    // Let go over a pop-up, it chooses there and nowhere else.
    if (isHandedOver)
        Glob::tellCaptureLost(holder);
    else if (bit == pointer.pressButton)
        dispatchUpwards(holder.get(), event);
    else
        dispatchTo(holder.get(), event);
    if (Glob* popUp = handOver_.present()) dispatchUpwards(popUp, event);
    if (last) handOver_.end();
    if (!last || pointer.heldButtons != 0) return;
    // Puts the pointer back when its motion was unbounded.
    wishes_.updateMotion(captureHolder());
    updateContainment(pointerIsInside_ ? globUnderPointer() : nullptr);
}

void InputRouter::routeMove(InputEvent const& input) {
    PointerState& pointer = events_.pointer;
    bool const stays = pointerIsInside_ && pointer.place == input.place && pointerWindow_ == input.window;
    if (stays) return;
    bool const held = pointer.heldButtons != 0;
    if (!held && approach_.holdsBack(pointer.place, input)) return;
    pointer.place = input.place;
    pointerIsInside_ = true;
    pointerWindow_ = input.window;
    // What is being dragged may follow the pointer: containment is told when it has.
    if (!held) updateContainment(globUnder(input));
    Event const event = pointerEvent(EventKind::mouseMove | pointer.heldButtons, input);
    if (drags_.handleMouseMove(event)) return;
    Glob* const popUp = held ? handOver_.receiver(captureHolder(), event) : nullptr;
    if (Glob* target = popUp ? popUp : pointerTarget(input)) dispatchUpwards(target, event);
    if (held) refreshContainment();
}

/// While somebody holds the pointer, only that and its ancestors can be entered.
void InputRouter::updateContainment(Glob* under) {
    Glob* const holder = captureHolder();
    Glob const* const popUp = handOver_.present();
    bool const isHandedOver = popUp && Glob::getRootParent(under) == popUp;
    if (holder && !isHandedOver) {
        while (under && under != holder && !Glob::isParentedTo(holder, under)) under = under->parent();
    }
    containment_.moveTo(under);
}

void InputRouter::refreshContainment() {
    approach_.checkTarget(events_.pointer.place);
    seenChanges_ = Tree::numChanges();
    updateContainment(pointerIsInside_ ? globUnderPointer() : nullptr);
    updatePointerWishes();
}

void InputRouter::updatePointerWishes() {
    // The window of the press may have gone, and with it the release.
    if (drags_.isDragging() && events_.pointer.heldButtons == 0) drags_.cancel();
    wishes_.updateMotion(captureHolder());
    Glob* const under = pointerIsInside_ ? globUnderPointer() : nullptr;
    tips_.pointerIsOver(under);
    Glob* const holder = captureHolder();
    wishes_.updateCursor(holder ? holder : is_good_glob_ptr(under) ? under : nullptr, drags_.cursor());
}

bool InputRouter::isRepeating() const {
    Glob const* const holder = captureHolder();
    return holder && holder->isAutoRepeating() && events_.timers.isRegistered(holder);
}

void InputRouter::dragFiles(InputEvent const& input) {
    if (input.window == 0) return drags_.filesLeft();
    drags_.dragFiles(input.place);
}

void InputRouter::dropFiles(InputEvent const& input) {
    std::vector<LightweightString<wchar_t>> paths = input.files;
    drags_.dropFiles(std::move(paths), input.place);
}

Glob* InputRouter::wheelTarget(InputEvent const& input) {
    if (Glob* holder = captureHolder()) return shownOrNull(holder);
    XY<int> const way = input.place - wheelPlace_;
    bool const near = std::abs(way.x) <= wheelGestureReach && std::abs(way.y) <= wheelGestureReach;
    bool const goesOn = shownOrNull(wheelGlob_.get()) && near && input.time - wheelTime_ < wheelGestureMs;
    if (!goesOn) {
        wheelGlob_ = HandlerRef<Glob>(globUnder(input));
        wheelPlace_ = input.place;
    }
    wheelTime_ = input.time;
    return wheelGlob_.get();
}

/// No move may have told that the pointer has come there.
void InputRouter::noteArrival(InputEvent const& input) {
    bool const stays = pointerIsInside_ && events_.pointer.place == input.place;
    events_.pointer.place = input.place;
    if (stays) return;
    pointerIsInside_ = true;
    pointerWindow_ = input.window;
    updateContainment(globUnder(input));
}

void InputRouter::routeWheel(InputEvent const& input) {
    noteArrival(input);
    tips_.dismiss();
    int const notches = std::clamp(input.amount, -maxNotches, maxNotches);
    Glob* const target = wheelTarget(input);
    if (!target || notches == 0) return;
    bool const isSideways = input.kind == InputEvent::Kind::sideWheel;
    Event event = pointerEvent(isSideways ? EventKind::sideWheel : EventKind::mouseWheel, input);
    event.setAmount(notches);
    dispatchUpwards(target, event);
}

void InputRouter::routeZoom(InputEvent const& input) {
    noteArrival(input);
    Glob* const target = pointerTarget(input);
    if (!target || input.amount == 0) return;
    Event event = pointerEvent(EventKind::zoom, input);
    event.setAmount(input.amount);
    dispatchUpwards(target, event);
}

// Keys

void InputRouter::routeKey(InputEvent const& input) {
    bool const press = input.kind == InputEvent::Kind::keyPressed;
    Event event(press ? EventKind::keyPress : EventKind::keyRelease, input.keyCode);
    event.setModifiers(input.modifiers | (input.keyCode & Key::modifierMask));
    event.setRepeat(press && input.repeat);
    event.setTime(input.time);
    event.setPlace(events_.pointer.place);
    if (press && !input.repeat) events_.focus.keyPressed();
    if (!press) events_.focus.keysReleased();
    dispatchKey(event);
}

void InputRouter::routeComposedText(InputEvent const& input) {
    if (input.text.empty()) return;
    composition_.end();
    Event event(EventKind::message);
    event.setMessage(compoundTextInputMsg);
    event.setData(wrapData(input.text));
    event.setTime(input.time);
    if (Glob* holder = keyTarget()) deliverEvent(holder, event);
}

Glob* InputRouter::keyTarget() const {
    Glob* const holder = get_kbd_focus();
    Glob* const blocker = blockerOf(holder);
    if (!blocker) return shownOrNull(holder);
    Glob* const within = KbdFocus::holderIn(*Glob::getRootParent(blocker));
    return within && !blockerOf(within) ? shownOrNull(within) : blocker;
}

void InputRouter::dispatchKey(Event& event) {
    Glob* const target = keyTarget();
    IdStamp const active = target ? target->windowStamp() : events_.focus.activeWindow();
    auto const belongsHere = [&](EventHandler& handler) {
        IdStamp const window = handler.windowStamp();
        bool const isAsked = !window.valid() || window == active || windows_.popUps().containsStamp(window);
        return isAsked && !blockerOf(handler.asGlob());
    };
    DispatchScope const scope(event);
    bool const isAfterEscape = isKeyPressEvent(event) && std::exchange(escapeWasUnused_, false);
    if (isKeyPressEvent(event)) tips_.dismiss();
    if (cancelPress(event) || runTransportCommand(event)) return;
    if (events_.intercepts.offer(event, belongsHere)) return;
    event.setOffered();
    if (isAfterEscape && leaveWithTab(event)) return;
    Glob* const holder = keyTarget();
    bool const unwantedRepeat =
        holder && event.isRepeat() && isReturnOrSpace(event.keyCode()) && !holder->repeatsReturnAndSpace();
    if (unwantedRepeat || (holder && dispatchUpwards(holder, event))) return;
    if (!isKeyPressEvent(event)) return;
    if (sendClipboardMessage(event.keyCode()) || runBoundCommand(event.keyCode())) return;
    Glob* const unused = keyTarget();
    if (unused && windows_.handleUnusedKey(*unused, event)) return;
    escapeWasUnused_ = event.keyCode() == Key::escape;
}

bool InputRouter::leaveWithTab(Event const& key) {
    bool const isTab = key.keyCode() == Key::tab || key.keyCode() == Key::shiftTab;
    Glob* const holder = isTab ? keyTarget() : nullptr;
    if (!holder) return false;
    Event toPane = key;
    toPane.setKeyCode(Key::function(6) | (key.keyCode() & Key::shift));
    return windows_.handleUnusedKey(*holder, toPane);
}

bool InputRouter::cancelPress(Event const& key) {
    if (!isKeyPressEvent(key) || key.keyCode() != Key::escape) return false;
    if (drags_.isDragging()) {
        drags_.cancel();
        updatePointerWishes();
        return true;
    }
    PointerState& pointer = events_.pointer;
    Glob* const holder = captureHolder();
    if (!holder || pointer.heldButtons == 0) return false;
    Event const press = pressToTakeBack(key.modifiers(), key.time());
    // The buttons are still down; their releases go to nobody.
    pointer.releaseCapture();
    handOver_.end();
    holder->handlePressCancelled(press);
    refreshContainment();
    return true;
}

/// Keys that start and stop the player work wherever the focus is, but where text is being entered.
bool InputRouter::runTransportCommand(Event const& key) {
    if (!isKeyPressEvent(key)) return false;
    Glob const* const holder = keyTarget();
    if (windows_.popUps().isOpen() || (holder && holder->textCaret())) return false;
    unsigned long const number = boundCommand(key.keyCode());
    CommandMapRec const* const known = CommandMap::instance().getCommand(number);
    if (!known || !known->isTransport()) return false;
    CommandMap::instance().callCommand(number, Cmd::Context());
    return true;
}

bool InputRouter::sendClipboardMessage(std::uint32_t key) {
    LightweightString<char> const* const message = key == (Key::ctrl | 'X')   ? &WindowsClipboard::cutTextMsg
                                                   : key == (Key::ctrl | 'C') ? &WindowsClipboard::copyTextMsg
                                                   : key == (Key::ctrl | 'V')
                                                       ? &WindowsClipboard::pasteTextMsg
                                                       : nullptr;
    Glob* glob = message ? keyTarget() : nullptr;
    while (glob) {
        LifeGuard const life = glob->guard();
        bool const isTaken = glob->handleMessageEvent(*message, nullptr) != 0;
        if (isTaken || !life.alive()) return true;
        glob = glob->parent();
    }
    return false;
}

/// Keys that are bound to commands run them when nobody else wanted the key.
bool InputRouter::runBoundCommand(std::uint32_t key) {
    unsigned long const number = boundCommand(key);
    if (number == CommandMap::none) return false;
    CommandMap::instance().callCommand(number, Cmd::Context());
    return true;
}

// Windows

bool InputRouter::containmentIsStale() const {
    return seenChanges_ != Tree::numChanges() || wishes_.isStale();
}

void InputRouter::routeWindow(InputEvent const& input, TopLevelWindow& window) {
    using Kind = InputEvent::Kind;
    switch (input.kind) {
    case Kind::windowResized:
        return window.nativeResized(input.size);
    case Kind::windowMoved:
        return window.nativeMoved(input.place);
    case Kind::windowExposed:
        window.surface().toPresent().add(window.surface().bounds());
        return;
    case Kind::windowCloseRequested:
        if (Glob* blocker = blockerOf(&window.root())) return windows_.showModal(*blocker);
        return windows_.closeRequested(window.root());
    case Kind::windowActivated:
        return activated(window);
    case Kind::windowDeactivated:
        return deactivated(window);
    case Kind::windowHidden:
        return hidden(window);
    case Kind::windowShown:
        return window.setHidden(false);
    default:
        break;
    }
}

void InputRouter::activated(TopLevelWindow& window) {
    if (window.isPopUp()) return;
    bool const isOther = events_.focus.activeWindow() != window.rootStamp();
    events_.focus.setApplicationHasFocus(true);
    if (window.root().canBeIt()) windows_.activated(window);
    redrawFocusMark(window);
    if (Glob* blocker = blockerOf(&window.root())) windows_.showModal(*blocker);
    if (isOther) windows_.popUps().closeAll();
}

void InputRouter::hidden(TopLevelWindow& window) {
    window.setHidden(true);
    IdStamp const root = window.rootStamp();
    if (holdsPress(window)) losePress();
    if (TopLevelWindow const* known = windows_.windowOfStamp(root))
        windows_.popUps().windowChanged(known->root());
}

/// Widgets show their mark of the focus only while the application has it.
void InputRouter::redrawFocusMark(TopLevelWindow& window) {
    if (Glob* holder = KbdFocus::holderIn(window.root())) holder->makeDirty();
}

void InputRouter::deactivated(TopLevelWindow& window) {
    bool const wasActive = events_.focus.activeWindow() == window.rootStamp();
    if (wasActive) {
        events_.focus.setApplicationHasFocus(false);
        events_.focus.keysReleased();
        composition_.end();
        updatePointerWishes();
    }
    redrawFocusMark(window);
    if (holdsPress(window)) losePress();
    if (wasActive) windows_.popUps().closeAll();
}

} // namespace wainscot
