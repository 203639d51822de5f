#include "buttons/button.h"
#include "containers/scroll_bar.h"
#include "host/events/event.h"
#include "host/services/clock.h"
#include "host/services/preferences.h"

#include <algorithm>

namespace wainscot {

namespace {

/// In units of the processor clock.
constexpr std::int64_t firstInterval = iClock::processorPerSecond * 3 / 10;
constexpr std::int64_t nextInterval = iClock::processorPerSecond / 10;

} // namespace

int ScrollBar::handleMouseEvent(wainscot::Event const& event) {
    if (mouse_wheel_event(event)) return turnWheel(event.amount());
    if (mouse_down_event(event) && (mouse_left_event(event) || mouse_right_event(event))) return press(event);
    if (mouse_up_event(event)) return letGo();
    if (mouse_move_event(event)) return follow(event);
    return 0;
}

/// The owner knows how far a notch goes: the thumb stays where it is until it is set.
int ScrollBar::turnWheel(int notches) {
    eEventType const type = notches < 1 ? downButtonPressed : upButtonPressed;
    LifeGuard const life = guard();
    for (int left = std::abs(notches); left > 0; --left) {
        informParent(type);
        if (!life.alive()) return 1;
    }
    showThumbPosition();
    return 1;
}

// Pressing

int ScrollBar::press(wainscot::Event const& event) {
    if (!isActive() || size_ >= 1) return 0;
    if (mouse_chord_event(event) && (isDragging() || paging_)) return 1;
    endPress();
    XY<int> const place = eventXYToGlobXY(event, *this);
    if (!getThumbBgArea().contains(place)) return 0;
    anchor_ = place;
    movedWhileHeld_ = false;
    thumbAtPress_ = getWidgetValue();
    if (!getThumbArea().contains(place)) {
        if (!mouse_left_event(event)) return 0;
        return config_int(trackPressJumps, 0) != 0 ? jump(place) : page(place);
    }
    resizingEnd_ = inResizingArea(place);
    dragging_ = resizingEnd_ == 0;
    redrawThumb();
    return 1;
}

int ScrollBar::letGo() {
    bool const wasDragging = isDragging();
    paging_ = false;
    stopTimer();
    if (!wasDragging) return 0;
    if (movedWhileHeld_ && !tellData(thumbAtPress_, DataChangeType::finished)) return 1;
    if (report(thumbReleased)) endPress();
    return 1;
}

void ScrollBar::endPress() {
    bool const wasHeld = isDragging();
    dragging_ = false;
    resizingEnd_ = 0;
    if (paging_) stopTimer();
    paging_ = false;
    if (wasHeld) redrawThumb();
}

/// What was dragged goes back to where it was; pages that were turned stay turned.
void ScrollBar::handlePressCancelled(wainscot::Event const&) {
    if (isDragging() && getWidgetValue() != thumbAtPress_) {
        storeThumb(thumbAtPress_, eRedrawYes);
        if (!tellData(thumbAtPress_, DataChangeType::continued) || !report(thumbMoved)) return;
    }
    letGo();
}

// Dragging

int ScrollBar::follow(wainscot::Event const& event) {
    XY<int> const place = eventXYToGlobXY(event, *this);
    if (event.heldButtons() == 0) {
        // The release went astray: the bar was out of sight.
        endPress();
        setOverThumb(getThumbArea().contains(place));
        return 0;
    }
    if (!isActive() || !(isDragging() || paging_)) return 0;
    XY<int> const way = place - anchor_;
    int const change = isVertical() ? -way.y : way.x;
    anchor_ = place;
    int const range = getThumbRangePixels();
    if (paging_ || change == 0 || range <= 0) return 1;
    ThumbSettings const before = getWidgetValue();
    double const share = static_cast<double>(change) / range;
    if (dragging_)
        setThumbPosDelta(share);
    else
        resizeBy(share);
    tellMoved(before);
    return 1;
}

void ScrollBar::tellMoved(ThumbSettings const& before) {
    DataChangeType const why = movedWhileHeld_ ? DataChangeType::continued : DataChangeType::started;
    movedWhileHeld_ = true;
    if (tellData(before, why)) report(thumbMoved);
}

/// The thumb is held from now on, also where it had no way to go.
int ScrollBar::jump(XY<int> const& place) {
    dragging_ = true;
    setThumbPos(positionAt(alongBar(place)));
    redrawThumb();
    if (getWidgetValue() != thumbAtPress_) tellMoved(thumbAtPress_);
    return 1;
}

/// About its middle while there is room on both sides; the held end never passes the middle.
void ScrollBar::resizeBy(double change) {
    double const growth = change * resizingEnd_;
    double const position = position_ - growth;
    bool const hasRoom = position >= 0 && size_ + position + 2 * growth <= 1;
    double const size = size_ + (hasRoom ? 2 : 1) * growth;
    double const middle = position_ + size_ / 2;
    if (resizingEnd_ > 0 ? position + size <= middle : position >= middle) return;
    setThumbSize(size);
    setThumbPos(position);
}

// Paging

int ScrollBar::page(XY<int> const& place) {
    XY<int> const extents = getThumbPixelExtents();
    bool const isBefore = isVertical() ? place.y >= extents.y : place.x < extents.x;
    pagingStep_ = isBefore ? -size_ : size_;
    paging_ = true;
    if (pageOnce() && paging_ && isActive()) startTimer();
    return 1;
}

bool ScrollBar::pageOnce() {
    ThumbSettings const before = getWidgetValue();
    setThumbPosDelta(pagingStep_);
    return tellData(before, DataChangeType::single) && report(thumbMoved);
}

bool ScrollBar::isBeyondThumb() const {
    XY<int> const extents = getThumbPixelExtents();
    bool const towardsUpper = isVertical() == (pagingStep_ < 0);
    return towardsUpper ? alongBar(anchor_) >= extents.y : alongBar(anchor_) < extents.x;
}

bool ScrollBar::isAutoRepeating() const {
    return paging_ && isBeyondThumb();
}

void ScrollBar::startTimer() {
    lastRepeat_ = iClock::current().processor();
    repeatInterval_ = firstInterval;
    setInterest(EventKind::timer);
    setNextRepeat();
}

void ScrollBar::stopTimer() {
    clearInterest(EventKind::timer);
}

/// When the interval may be over at the earliest: processor time is not more than wall time, but for that of
/// other threads.
void ScrollBar::setNextRepeat() {
    std::int64_t const left = repeatInterval_ - (iClock::current().processor() - lastRepeat_);
    setNextTimer(std::max(1.0, static_cast<double>(left) * 1000.0 / iClock::processorPerSecond));
}

int ScrollBar::handleTimerEvent() {
    if (!paging_ || !isShown()) {
        paging_ = false;
        stopTimer();
        return 1;
    }
    std::int64_t const now = iClock::current().processor();
    bool const isDue = now - lastRepeat_ > repeatInterval_;
    if (isDue) {
        lastRepeat_ = now;
        repeatInterval_ = nextInterval;
    }
    setNextRepeat();
    if (isDue && isBeyondThumb()) pageOnce();
    return 1;
}

// The pointer over it

void ScrollBar::handleMouseContainment(bool inside) {
    if (!inside) setOverThumb(false);
    StandardPanel::handleMouseContainment(inside);
}

void ScrollBar::setOverThumb(bool over) {
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
