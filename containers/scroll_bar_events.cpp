#include "buttons/button.h"
#include "containers/scroll_bar.h"
#include "host/base/first_exception.h"
#include "host/events/event.h"
#include "host/events/event_system.h"
#include "host/services/clock.h"
#include "host/services/preferences.h"

#include <algorithm>
#include <cmath>

namespace wainscot {

namespace {

/// In units of the processor clock.
constexpr std::int64_t firstInterval = iClock::processorPerSecond * 3 / 10;
constexpr std::int64_t nextInterval = iClock::processorPerSecond / 10;
/// For one event: a broken wheel must not hold up the program.
constexpr int maxNotches = 100;
/// The least size of a zoom bar's thumb, as a share of its track.
constexpr double leastShare = 1e-6;

} // namespace

int ScrollBar::handleMouseEvent(wainscot::Event const& event) {
    if (mouse_wheel_event(event)) return turnWheel(event.amount());
    if (mouse_side_wheel_event(event) && !isVertical()) return turnWheel(-event.amount());
    bool const wasPaging = paging_;
    LifeGuard const life = guard();
    if (reactToPress(event)) {
        // The release after paging goes on.
        bool const endsPaging = life.alive() && wasPaging && !press().isHeld();
        return endsPaging && mouse_up_event(event) ? 0 : 1;
    }
    if (life.alive() && mouse_move_event(event)) updateHover();
    return 0;
}

/// The owner knows how far a notch goes: the thumb stays until the owner sets it.
int ScrollBar::turnWheel(int notches) {
    eEventType const type = notches < 1 ? downButtonPressed : upButtonPressed;
    FirstException thrown;
    LifeGuard const life = guard();
    int left = std::abs(std::clamp(notches, -maxNotches, maxNotches));
    for (; left > 0 && life.alive(); --left) thrown.run([&] { informParent(type); });
    if (life.alive()) showThumbPosition();
    thrown.rethrow();
    return 1;
}

// Pressing

bool ScrollBar::pressBegan(wainscot::Event const& event) {
    if (!isActive() || size_ >= 1) return false;
    XY<int> const place = eventXYToGlobXY(event, *this);
    if (!getThumbBgArea().contains(place)) return false;
    anchor_ = place;
    if (!isOnThumb(place)) {
        if (!mouse_left_event(event)) return false;
        config_int(trackPressJumps, 0) != 0 ? jump(place) : page(place);
        return true;
    }
    // A short thumb is only ends: with Shift it can be moved all the same.
    resizingEnd_ = (event.modifiers() & Key::shift) != 0 ? 0 : inResizingArea(place);
    dragging_ = resizingEnd_ == 0;
    gesture_.begin(getWidgetValue());
    redrawThumb();
    return true;
}

/// The margins on both sides belong to the thumb, so that it can be taken at the edge of the screen.
bool ScrollBar::isOnThumb(XY<int> const& place) const {
    XY<int> const extents = getThumbPixelExtents();
    return alongBar(place) >= extents.x && alongBar(place) < extents.y;
}

void ScrollBar::pressEnded(PressEnd how) {
    if (paging_) stopTimer();
    paging_ = false;
    if (how == PressEnd::lost) {
        LifeGuard const life = guard();
        if (isDragging()) dropThumb();
        if (life.alive()) updateHover();
        return;
    }
    if (!isDragging()) return;
    FirstException thrown;
    LifeGuard const life = guard();
    if (how == PressEnd::cancelled) thrown.run([&] { takeBack(); });
    if (life.alive() && !thrown.any()) thrown.run([&] { letGo(); });
    if (life.alive() && isDragging()) thrown.run([&] { dropThumb(); });
    thrown.rethrow();
}

/// Reported while it still counts as dragged.
void ScrollBar::letGo() {
    FirstException thrown;
    LifeGuard const life = guard();
    thrown.run([&] { finishGesture(gesture_); });
    if (life.alive() && isActive()) thrown.run([&] { report(thumbReleased); });
    thrown.rethrow();
}

void ScrollBar::dropThumb() {
    dragging_ = false;
    resizingEnd_ = 0;
    gesture_.letGo();
    redrawThumb();
    finishGesture(gesture_);
}

void ScrollBar::handleDataAdaptorChange() {
    finishGesture(gesture_);
}

/// A size that the owner has set during a drag stays; so do pages that were turned.
void ScrollBar::takeBack() {
    double const size = dragging_ ? size_ : gesture_.atBegin().size;
    takeBackGesture(gesture_, {std::min(gesture_.atBegin().position, 1 - size), size}, Reports::ifTaken);
}

// Dragging

void ScrollBar::pressMoved(wainscot::Event const& event) {
    if (!isActive() || !(isDragging() || paging_)) return;
    XY<int> const place = eventXYToGlobXY(event, *this);
    XY<int> const way = place - anchor_;
    int const change = isVertical() ? -way.y : way.x;
    anchor_ = place;
    int const range = getThumbRangePixels();
    if (paging_ || change == 0 || range <= 0) return;
    double const share = static_cast<double>(change) / range;
    ThumbSettings const before = getWidgetValue();
    LifeGuard const life = guard();
    if (dragging_)
        setThumbPosDelta(share);
    else
        resizeBy(share);
    if (!life.alive() || !isDragging()) return;
    double const wanted = position_;
    stepGesture(gesture_, before, Reports::ifTaken);
    if (life.alive() && dragging_) keepWay(wanted - position_);
}

/// The part of a move that the data refuses is kept: small steps add up to a step that the data takes.
void ScrollBar::keepWay(double leftOut) {
    int const pixels = static_cast<int>(std::lround(leftOut * getThumbRangePixels()));
    (isVertical() ? anchor_.y : anchor_.x) += isVertical() ? pixels : -pixels;
}

/// The thumb is held from now on, even if it did not move.
void ScrollBar::jump(XY<int> const& place) {
    dragging_ = true;
    ThumbSettings const before = getWidgetValue();
    gesture_.begin(before);
    redrawThumb();
    LifeGuard const life = guard();
    setThumbPos(positionAt(alongBar(place)));
    if (life.alive() && isDragging() && getWidgetValue() != before) stepGesture(gesture_, before);
}

/// About its middle while there is room on both sides. The held end never passes the middle, since the least
/// share is left between the ends.
void ScrollBar::resizeBy(double change) {
    double const growth = change * resizingEnd_;
    double const position = position_ - growth;
    bool const hasRoom = position >= 0 && size_ + position + 2 * growth <= 1;
    double const size = size_ + (hasRoom ? 2 : 1) * growth;
    if (size < leastShare) return;
    LifeGuard const life = guard();
    setThumbSize(size);
    if (life.alive()) setThumbPos(position);
}

// Paging

void ScrollBar::page(XY<int> const& place) {
    XY<int> const extents = getThumbPixelExtents();
    bool const isBefore = isVertical() ? place.y >= extents.y : place.x < extents.x;
    pagingStep_ = isBefore ? -size_ : size_;
    paging_ = true;
    startTimer();
    if (pageOnce() && !(paging_ && isActive())) stopTimer();
}

bool ScrollBar::pageOnce() {
    ThumbSettings const before = getWidgetValue();
    LifeGuard const life = guard();
    setThumbPosDelta(pagingStep_);
    if (life.alive()) tellUserChange(before, DataChangeType::single, Reports::ifTaken);
    return life.alive();
}

/// Whether the thumb has room to move there, too.
bool ScrollBar::isBeyondThumb() const {
    bool const hasWay = pagingStep_ < 0 ? position_ > 0 : position_ < 1 - size_;
    XY<int> const extents = getThumbPixelExtents();
    bool const towardsUpper = isVertical() == (pagingStep_ < 0);
    return hasWay && (towardsUpper ? alongBar(anchor_) >= extents.y : alongBar(anchor_) < extents.x);
}

bool ScrollBar::isAutoRepeating() const {
    return paging_ && isBeyondThumb();
}

void ScrollBar::startTimer() {
    clock_.start(firstInterval, nextInterval);
    setInterest(EventKind::timer);
    setNextTimer(clock_.msToNext());
}

void ScrollBar::stopTimer() {
    clearInterest(EventKind::timer);
}

int ScrollBar::handleTimerEvent() {
    if (!paging_ || !isShown() || size_ >= 1) {
        paging_ = false;
        stopTimer();
        return 1;
    }
    bool const isDue = clock_.isDue();
    setNextTimer(clock_.msToNext());
    if (isDue && isBeyondThumb()) pageOnce();
    return 1;
}

// The pointer over it

void ScrollBar::handleMouseContainment(bool inside) {
    updateHover();
    StandardPanel::handleMouseContainment(inside);
}

void ScrollBar::updateHover() {
    EventSystem const* const system = EventSystem::current();
    bool const over = system && containsPointer() &&
                      getThumbBgArea().contains(screenXYToGlobXY(system->pointer.place)) &&
                      isOnThumb(screenXYToGlobXY(system->pointer.place));
    if (over == overThumb_) return;
    overThumb_ = over;
    redrawThumb();
}

MouseCursorID ScrollBar::contextCursor(XY<int> const& place) const {
    bool const atEnd = isActive() && (isDragging() ? resizingEnd_ : inResizingArea(place)) != 0;
    if (atEnd && size_ < 1) return isVertical() ? sizeVerticalCursor : sizeHorizontalCursor;
    return StandardPanel::contextCursor(place);
}

} // namespace wainscot
