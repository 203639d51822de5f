#include "containers/slider.h"
#include "host/drawing/uif_std.h"
#include "host/events/event.h"
#include "host/objects/description.h"

#include <algorithm>
#include <cmath>

namespace wainscot {

bool Slider::react(Event const& event) {
    if (isActive() && isKeyPressEvent(event)) return reactToKey(event) || Glob::react(event);
    bool isUsed = false;
    if (mouse_down_event(event) && (mouse_left_event(event) || mouse_right_event(event)))
        isUsed = press(event);
    else if (mouse_up_event(event))
        isUsed = letGo();
    else if (mouse_move_event(event))
        isUsed = follow(event);
    return isUsed || Glob::react(event);
}

/// Keys that take it no further are used all the same: they mean nothing else while it has the focus.
bool Slider::reactToKey(Event const& event) {
    switch (event.keyCode()) {
    case Key::right:
    case Key::up:
        nudge(true);
        return true;
    case Key::left:
    case Key::down:
        nudge(false);
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
    dropThumb();
    XY<int> const place = eventXYToGlobXY(event, *this);
    if (!getThumbArea().contains(place))
        return mouse_left_event(event) && pressPointOfInterest(alongChannel(place));
    pickUpThumb(alongChannel(place));
    return true;
}

void Slider::pickUpThumb(int x) {
    held_ = true;
    movedWhileHeld_ = false;
    valueAtPress_ = value_;
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
        // The release went astray: the slider was out of sight.
        dropThumb();
        return false;
    }
    setSliderFromPixelPos(alongChannel(eventXYToGlobXY(event, *this)) - grip_);
    return true;
}

void Slider::setSliderFromPixelPos(double x) {
    double const before = value_;
    storeValue(clamped(x2v(std::clamp(x, startX_, endX_))), eRedrawYes);
    if (value_ == before) return;
    DataChangeType const why = movedWhileHeld_ ? DataChangeType::continued : DataChangeType::started;
    movedWhileHeld_ = true;
    if (tellData(before, why)) report(sliderMoved);
}

bool Slider::letGo() {
    if (!held_) return false;
    bool const moved = movedWhileHeld_;
    dropThumb();
    if (!moved || tellData(valueAtPress_, DataChangeType::finished)) report(sliderReleased);
    return true;
}

void Slider::dropThumb() {
    if (!held_) return;
    held_ = false;
    makeDirty();
}

void Slider::handlePressCancelled(Event const&) {
    if (!held_) return;
    double const before = clamped(valueAtPress_);
    if (value_ != before) {
        storeValue(before, eRedrawYes);
        if (!tellData(before, DataChangeType::continued) || !report(sliderMoved)) return;
    }
    letGo();
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
