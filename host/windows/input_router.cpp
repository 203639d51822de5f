#include "host/windows/input_router_p.h"

#include "host/events/dispatch_scope.h"

#include <algorithm>

namespace wainscot {

namespace {

/// No pointer is further away than this; sums of places stay within their range.
constexpr int maxPlace = 1 << 28;

InputEvent withinReach(InputEvent const& reported) {
    InputEvent input = reported;
    input.place = {std::clamp(input.place.x, -maxPlace, maxPlace),
                   std::clamp(input.place.y, -maxPlace, maxPlace)};
    return input;
}

} // namespace

InputRouter::InputRouter(Backend& backend, EventSystem& events, GlobManager& windows)
    : events_(events), windows_(windows), targets_(events, windows), drags_(windows, events),
      handOver_(windows), hover_(backend, events, targets_, drags_, handOver_),
      moves_(events, windows, targets_, drags_, handOver_, hover_),
      presses_(events, windows, targets_, drags_, handOver_, hover_, moves_), wheel_(targets_, hover_),
      keys_(backend, events, windows, targets_, hover_, presses_),
      reports_(events, windows, targets_, hover_, presses_, keys_) {}

void InputRouter::route(InputEvent const& reported) {
    using Kind = InputEvent::Kind;
    InputEvent const input = withinReach(reported);
    tellMouseListeners(input);
    switch (input.kind) {
    case Kind::pointerPressed:
        return routePress(input);
    case Kind::pointerReleased:
        presses_.release(input);
        return hover_.update();
    case Kind::pointerMoved:
        moves_.move(input);
        return hover_.update();
    case Kind::pointerLeft:
        return moves_.leave();
    case Kind::pressLost:
        return presses_.lose();
    case Kind::filesDragged:
        return dragFiles(input);
    case Kind::filesDropped:
        return static_cast<void>(drags_.dropFiles(input.files, input.place));
    case Kind::wheel:
    case Kind::sideWheel:
        return wheel_.wheel(input);
    case Kind::zoom:
        return wheel_.zoom(input);
    case Kind::keyPressed:
    case Kind::keyReleased:
        return keys_.key(input);
    case Kind::composedText:
        return keys_.composedText(input);
    case Kind::composing:
        return keys_.composing(input);
    case Kind::screenChanged:
        return windows_.screenChanged();
    default:
        return reports_.report(input);
    }
}

void InputRouter::routePress(InputEvent const& input) {
    wheel_.end();
    keys_.forgetEscape();
    presses_.press(input);
    hover_.update();
}

void InputRouter::dragFiles(InputEvent const& input) {
    if (input.window == 0) return drags_.filesLeft();
    drags_.dragFiles(input.place);
}

void InputRouter::tellMouseListeners(InputEvent const& input) {
    using Kind = InputEvent::Kind;
    if (events_.mouseListeners.empty()) return;
    int const bit = InputTargets::buttonBit(input.button);
    int const kind = input.kind == Kind::pointerPressed    ? EventKind::mouse | bit | EventKind::down
                     : input.kind == Kind::pointerReleased ? EventKind::mouse | bit | EventKind::up
                     : input.kind == Kind::pointerMoved ? EventKind::mouseMove | events_.pointer.heldButtons
                     : input.kind == Kind::wheel        ? EventKind::mouseWheel
                     : input.kind == Kind::sideWheel    ? EventKind::sideWheel
                                                        : 0;
    if (kind == 0) return;
    Event event = targets_.pointerEvent(kind, input);
    event.setAmount(input.amount);
    event.setClicks(input.clicks);
    DispatchScope const scope(event);
    events_.mouseListeners.walk(
        [&](auto const& listener) { runHandler("mouse listener", [&] { listener(event); }); });
}

} // namespace wainscot
