#include "host/windows/pointer_presses_p.h"

#include "host/events/dispatch_scope.h"
#include "host/objects/dispatch.h"
#include "host/services/clock.h"
#include "host/windows/top_level_window.h"

#include <algorithm>

namespace wainscot {

PointerPresses::PointerPresses(EventSystem& events, GlobManager& windows, InputTargets& targets,
                               DragDropManager& drags, PressHandOver& handOver, PointerHover& hover,
                               PointerMoves& moves)
    : events_(events), windows_(windows), targets_(targets), drags_(drags), handOver_(handOver),
      hover_(hover), moves_(moves) {}

bool PointerPresses::isHeldIn(TopLevelWindow const& window) const {
    TopLevelWindow const* const pressed = windows_.windowOfStamp(events_.pointer.pressedWindow);
    return pressed && (pressed == &window || pressed->isPopUp());
}

bool PointerPresses::isRepeating() const {
    Glob const* const holder = targets_.captureHolder();
    return holder && holder->isAutoRepeating() && events_.timers.isRegistered(holder);
}

// Press

void PointerPresses::press(InputEvent const& input) {
    PointerState& pointer = events_.pointer;
    int const bit = InputTargets::buttonBit(input.button);
    if (bit == 0) return;
    // The button is pressed again, so its release was not reported: over a closed window, for example.
    if ((pointer.heldButtons & bit) != 0) lose();
    moves_.dropHeldBack();
    hover_.dismissTip();
    targets_.pointerIsAt(input);
    if (pointer.heldButtons == 0) return begin(input);
    // A further button is part of the press: only the holder is told of it.
    pointer.chord = true;
    pointer.heldButtons |= bit;
    dispatchTo(InputTargets::shownOrNull(targets_.captureHolder()),
               targets_.pointerEvent(EventKind::mouse | bit | EventKind::down, input));
}

/// The release of a press outside all windows, or on a window that has gone, may never be reported: then no
/// button counts as held.
bool PointerPresses::isSpent(InputEvent const& input, PopUpChain::Press press, Glob* under) {
    Glob* const blocker = targets_.blockerOf(is_good_glob_ptr(under) ? under : nullptr);
    if (press != PopUpChain::Press::spent && !blocker) return false;
    if (TopLevelWindow const* const window = windows_.windowOf(input.window)) {
        events_.pointer.heldButtons |= InputTargets::buttonBit(input.button);
        events_.pointer.pressedWindow = window->rootStamp();
    }
    if (press != PopUpChain::Press::spent) windows_.showModal(*blocker);
    return true;
}

void PointerPresses::begin(InputEvent const& input) {
    PointerState& pointer = events_.pointer;
    Glob* const under = targets_.anyUnder(input);
    pointer.releaseCapture();
    handOver_.end();
    PopUpChain::Press const chainPress = windows_.popUps().press(under);
    if (isSpent(input, chainPress, under)) return;
    hover_.enter(targets_.under(input));
    pointer.pressPlace = input.place;
    pointer.clicks = std::max(input.clicks, 1);
    pointer.pressButton = pointer.heldButtons = InputTargets::buttonBit(input.button);
    pointer.chord = false;
    Glob* const target = targets_.under(input);
    pointer.pressedWindow = target ? Glob::getRootParent(target)->idStamp() : IdStamp();
    if (!target) return;
    deliver(input, *target);
    if (chainPress == PopUpChain::Press::reachesOpener) windows_.popUps().openerWasPressed();
}

void PointerPresses::deliver(InputEvent const& input, Glob& target) {
    PointerState& pointer = events_.pointer;
    pointer.capture(&target);
    HandlerRef<Glob> const pressed(&target);
    Glob* consumer = nullptr;
    dispatchUpwards(&target,
                    targets_.pointerEvent(EventKind::mouse | pointer.pressButton | EventKind::down, input),
                    &consumer);
    bool const captureIsAsSet = pointer.isCapturedBy(pressed.get());
    if (captureIsAsSet && consumer) pointer.capture(consumer);
}

// Release

void PointerPresses::release(InputEvent const& input) {
    PointerState& pointer = events_.pointer;
    int const bit = InputTargets::buttonBit(input.button);
    if (bit == 0 || (pointer.heldButtons & bit) == 0) return;
    pointer.place = input.place;
    pointer.heldButtons &= ~bit;
    bool const isLast = pointer.heldButtons == 0;
    Event const event = targets_.pointerEvent(EventKind::mouse | bit | EventKind::up, input);
    DispatchScope const scope;
    deliverRelease(event, bit, isLast);
    if (isLast) handOver_.end();
    if (isLast && pointer.heldButtons == 0) hover_.pressHasEnded();
}

void PointerPresses::deliverRelease(Event const& event, int bit, bool isLast) {
    PointerState& pointer = events_.pointer;
    HandlerRef<Glob> const holder(InputTargets::shownOrNull(targets_.captureHolder()));
    bool const isHandedOver = handOver_.receiver(holder.get(), event) != nullptr;
    if (isLast || isHandedOver) pointer.releaseCapture();
    if (isLast) pointer.chord = false;
    if (isLast) drags_.drop(event.place());
    // A release over a pop-up chooses there and nowhere else.
    if (isHandedOver)
        Glob::tellCaptureLost(holder);
    else if (bit == pointer.pressButton)
        dispatchUpwards(holder.get(), event);
    else
        dispatchTo(holder.get(), event);
    if (Glob* popUp = handOver_.present()) dispatchUpwards(popUp, event);
}

// Ends without a release

Event PointerPresses::pressUnderWay(std::uint32_t modifiers, double time) const {
    InputEvent input;
    input.place = events_.pointer.pressPlace;
    input.modifiers = modifiers;
    input.time = time;
    return targets_.pointerEvent(EventKind::mouse | events_.pointer.pressButton | EventKind::down, input);
}

void PointerPresses::lose() {
    HandlerRef<Glob> const holder(targets_.captureHolder());
    Event const press = pressUnderWay(0, service_get_msecs());
    events_.pointer.forgetPress();
    handOver_.end();
    drags_.cancel();
    DispatchScope const scope;
    if (Glob* const told = holder.get())
        runHandler("handlePressCancelled", [&] { told->handlePressCancelled(press); });
    moves_.refresh();
}

bool PointerPresses::takeBack(Event const& key) {
    if (!isKeyPressEvent(key) || key.keyCode() != Key::escape) return false;
    if (drags_.isDragging()) {
        drags_.cancel();
        hover_.update();
        return true;
    }
    PointerState& pointer = events_.pointer;
    Glob* const holder = targets_.captureHolder();
    if (!holder || pointer.heldButtons == 0) return false;
    Event const press = pressUnderWay(key.modifiers(), key.time());
    // The buttons are still down; their releases go to nobody.
    pointer.releaseCapture();
    handOver_.end();
    holder->handlePressCancelled(press);
    moves_.refresh();
    return true;
}

} // namespace wainscot
