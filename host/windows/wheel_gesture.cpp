#include "host/windows/wheel_gesture_p.h"

#include "host/objects/dispatch.h"

#include <algorithm>
#include <cstdlib>

namespace wainscot {

namespace {

constexpr int maxNotches = 100;
constexpr double gestureMs = 500.0;
/// How far the pointer may stray meanwhile.
constexpr int gestureReach = 8;

} // namespace

Glob* WheelGesture::targetOf(InputEvent const& input) {
    if (Glob* holder = targets_.captureHolder()) return InputTargets::shownOrNull(holder);
    XY<int> const way = input.place - startPlace_;
    bool const isNear = std::abs(way.x) <= gestureReach && std::abs(way.y) <= gestureReach;
    bool const goesOn =
        InputTargets::shownOrNull(glob_.get()) && isNear && input.time - lastTime_ < gestureMs;
    if (!goesOn) {
        glob_ = HandlerRef<Glob>(targets_.under(input));
        startPlace_ = input.place;
    }
    lastTime_ = input.time;
    return glob_.get();
}

void WheelGesture::wheel(InputEvent const& input) {
    hover_.arrive(input);
    hover_.dismissTip();
    int const notches = std::clamp(input.amount, -maxNotches, maxNotches);
    Glob* const target = targetOf(input);
    if (!target || notches == 0 || targets_.isOutsidePopUps(target)) return;
    bool const isSideways = input.kind == InputEvent::Kind::sideWheel;
    Event event = targets_.pointerEvent(isSideways ? EventKind::sideWheel : EventKind::mouseWheel, input);
    event.setAmount(notches);
    dispatchUpwards(target, event);
}

void WheelGesture::zoom(InputEvent const& input) {
    hover_.arrive(input);
    Glob* const target = targets_.ofPointer(input);
    if (!target || input.amount == 0) return;
    Event event = targets_.pointerEvent(EventKind::zoom, input);
    event.setAmount(input.amount);
    dispatchUpwards(target, event);
}

} // namespace wainscot
