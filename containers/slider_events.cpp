#include "containers/slider.h"
#include "foundation/effects.h"
#include "host/base/first_exception.h"
#include "host/drawing/uif_std.h"
#include "host/events/event.h"
#include "host/objects/description.h"

#include <algorithm>
#include <cmath>

namespace wainscot {

namespace {

/// Steps of Page Up from one end to the other.
constexpr double pagesInRange = 10;

} // namespace

bool Slider::react(Event const& event) {
    // Keys do not move a thumb that the pointer holds.
    bool const isKey = isActive() && !isThumbHeld() && isKeyPressEvent(event);
    return (isKey && reactToKey(event)) || reactToPress(event) || Glob::react(event);
}

/// Keys are used also when they change nothing: they mean nothing else while the slider has the focus.
bool Slider::reactToKey(Event const& event) {
    auto const action = actionFor(keyTable, event.keyCode());
    if (!action) return false;
    double const page = maximum_ / pagesInRange - minimum_ / pagesInRange;
    switch (*action) {
    case nudgeUp:
    case nudgeDown:
        nudge(*action == nudgeUp);
        break;
    case pageUp:
    case pageDown:
        changePosition(value_ + (*action == pageUp ? page : -page));
        break;
    case toMinimum:
        changePosition(minimum_);
        break;
    case toMaximum:
        changePosition(maximum_);
        break;
    }
    return true;
}

bool Slider::pressBegan(Event const& event) {
    if (!isActive()) return false;
    LifeGuard const life = guard();
    unsigned int const number = press().number();
    claimKbdFocus();
    // The object that lost the focus may have ended the press.
    if (!life.alive() || number != press().number() || !isActive()) return true;
    XY<int> const place = eventXYToGlobXY(event, *this);
    if (!getThumbArea().contains(place))
        return mouse_left_event(event) && pressPointOfInterest(alongChannel(place));
    pickUpThumb(alongChannel(place));
    return true;
}

void Slider::pickUpThumb(int x) {
    gesture_.begin(value_);
    grip_ = x - static_cast<int>(std::lround(v2x(value_)));
    applyEffects(*this, Effect::paint | Effect::state);
}

/// Goes to the nearest point within half a thumb's length of the pointer.
bool Slider::pressPointOfInterest(int x) {
    double nearest = UifStd::getButtonHeight() / 4.0;
    std::optional<double> chosen;
    auto const consider = [&](double value) {
        double const distance = std::abs(v2x(value) - x);
        if (clamped(value) != value || distance > nearest) return;
        nearest = distance;
        chosen = value;
    };
    for (PointOfInterest const& point : points_) consider(point.value);
    if (pointOfInterest_) consider(*pointOfInterest_);
    if (!chosen) return false;
    changePosition(*chosen);
    return true;
}

void Slider::pressMoved(Event const& event) {
    if (isThumbHeld()) setSliderFromPixelPos(alongChannel(eventXYToGlobXY(event, *this)) - grip_);
}

void Slider::setSliderFromPixelPos(double x) {
    if (endX_ <= startX_) return;
    double const before = value_;
    LifeGuard const life = guard();
    storeValue(clamped(x2v(std::clamp(x, startX_, endX_))), eRedrawYes);
    if (life.alive() && isThumbHeld() && value_ != before) stepGesture(gesture_, before);
}

void Slider::pressEnded(PressEnd how) {
    if (!isThumbHeld()) return;
    FirstException thrown;
    LifeGuard const life = guard();
    if (how == PressEnd::cancelled)
        thrown.run([&] { takeBackGesture(gesture_, clamped(gesture_.atBegin())); });
    if (!life.alive()) return thrown.rethrow();
    bool const isReported = how != PressEnd::lost && !thrown.any() && isActive();
    thrown.run([&] { dropThumb(); });
    if (life.alive() && isReported) thrown.run([&] { informParent(sliderReleased); });
    thrown.rethrow();
}

void Slider::dropThumb() {
    gesture_.letGo();
    applyEffects(*this, Effect::paint | Effect::state);
    finishGesture(gesture_);
}

void Slider::handleDataAdaptorChange() {
    finishGesture(gesture_);
}

} // namespace wainscot
