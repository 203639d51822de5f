#include "containers/slider.h"
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
    // What the pointer holds is not to be moved by two hands.
    if (isActive() && !held_ && isKeyPressEvent(event)) return reactToKey(event) || Glob::react(event);
    bool isUsed = false;
    if (mouse_down_event(event))
        isUsed = press(event);
    else if (mouse_up_event(event))
        isUsed = releaseAt(event);
    else if (mouse_move_event(event))
        isUsed = follow(event);
    return isUsed || Glob::react(event);
}

/// Keys that take it no further are used all the same: they mean nothing else while it has the focus.
bool Slider::reactToKey(Event const& event) {
    double const page = maximum_ / pagesInRange - minimum_ / pagesInRange;
    switch (event.keyCode()) {
    case Key::right:
    case Key::up:
        nudge(true);
        return true;
    case Key::left:
    case Key::down:
        nudge(false);
        return true;
    case Key::pageUp:
        changePosition(value_ + page);
        return true;
    case Key::pageDown:
        changePosition(value_ - page);
        return true;
    case Key::home:
        changePosition(minimum_);
        return true;
    case Key::end:
        changePosition(maximum_);
        return true;
    default:
        return false;
    }
}

bool Slider::press(Event const& event) {
    if (!isActive()) return false;
    if (held_ && mouse_chord_event(event)) return true;
    if (!dropThumb()) return true;
    bool const isLeft = mouse_left_event(event);
    if (!isLeft && !mouse_right_event(event)) return false;
    LifeGuard const life = guard();
    claimKbdFocus();
    if (!life.alive() || !isActive()) return true;
    XY<int> const place = eventXYToGlobXY(event, *this);
    if (!getThumbArea().contains(place)) return isLeft && pressPointOfInterest(alongChannel(place));
    heldButton_ = isLeft ? EventKind::left : EventKind::right;
    pickUpThumb(alongChannel(place));
    return true;
}

void Slider::pickUpThumb(int x) {
    held_ = true;
    heldValue_.begin(value_);
    grip_ = x - static_cast<int>(std::lround(v2x(value_)));
    makeDirty();
}

/// The nearest one within half a thumb's length of the pointer.
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

bool Slider::follow(Event const& event) {
    if (!held_) return false;
    if (event.heldButtons() == 0) {
        // The release went astray.
        dropThumb();
        return false;
    }
    setSliderFromPixelPos(alongChannel(eventXYToGlobXY(event, *this)) - grip_);
    return true;
}

void Slider::setSliderFromPixelPos(double x) {
    if (endX_ <= startX_) return;
    double const before = value_;
    LifeGuard const life = guard();
    storeValue(clamped(x2v(std::clamp(x, startX_, endX_))), eRedrawYes);
    if (!life.alive() || !held_ || value_ == before) return;
    tellMoved(before, heldValue_.accepted(), heldValue_.nextChange(), false);
}

/// The release of another button changes nothing.
bool Slider::releaseAt(Event const& event) {
    return held_ && (event.heldButtons() & heldButton_) != 0 ? true : letGo();
}

bool Slider::letGo() {
    if (!held_) return false;
    if (dropThumb()) report(sliderReleased);
    return true;
}

bool Slider::dropThumb() {
    if (!held_) return true;
    held_ = false;
    makeDirty();
    LifeGuard const life = guard();
    tellDataOfEnd();
    return life.alive();
}

void Slider::tellDataOfEnd() {
    if (heldValue_.end()) tellData(heldValue_.accepted(), DataChangeType::finished);
}

void Slider::handleDataAdaptorChange() {
    tellDataOfEnd();
}

void Slider::handleCaptureLost() {
    if (dropThumb()) Glob::handleCaptureLost();
}

void Slider::handlePressCancelled(Event const&) {
    if (!held_) return;
    LifeGuard const life = guard();
    try {
        if (!takeBack()) return;
    } catch (...) {
        if (life.alive()) dropThumb();
        throw;
    }
    letGo();
}

bool Slider::takeBack() {
    double const before = value_;
    double const back = clamped(heldValue_.atPress());
    if (before == back) return true;
    LifeGuard const life = guard();
    storeValue(back, eRedrawYes);
    if (!life.alive()) return false;
    DataChangeType const why = heldValue_.isChanging() ? DataChangeType::continued : DataChangeType::single;
    return tellMoved(before, heldValue_.accepted(), why, false) != Moved::sliderHasGone;
}

void Slider::handleMouseContainment(bool inside) {
    if (isActive()) makeDirty();
    Glob::handleMouseContainment(inside);
}

void Slider::handleKbdFocus() {
    makeDirty();
    describeChanged(DescriptionChange::state);
}

} // namespace wainscot
