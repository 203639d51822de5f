#include "buttons/button.h"
#include "containers/scroll_bar.h"
#include "host/drawing/uif_std.h"
#include "host/events/dispatch_scope.h"

#include <algorithm>

namespace wainscot {

namespace {

/// How far from its end a resizable thumb is held by the end.
constexpr int gripLength = 8;

int rounded(double value) {
    return static_cast<int>(value + 0.5);
}

} // namespace

int ScrollBar::thickness() {
    return 3 * UifStd::getWidgetGap();
}

int ScrollBar::getMinThumbSize() {
    return std::max(thickness() - 2 * UifStd::getIndentWidth(), 1);
}

int ScrollBar::buttonLength() const {
    auto const isThere = [](Button const* button) { return button && button->isVisible(); };
    bool const any = isThere(firstButton_.get()) || isThere(lastButton_.get());
    return any ? std::min(width(), height()) : 0;
}

IntBox ScrollBar::getThumbBgArea() const {
    IntBox area = bounds();
    (isVertical() ? area.y1 : area.x1) += buttonLength();
    (isVertical() ? area.y2 : area.x2) -= buttonLength();
    return area;
}

/// The margins take at most half of the thickness, so that there always is a thumb to hold.
int ScrollBar::laneInset(int thickness) {
    return std::min<int>(UifStd::getIndentWidth(), thickness / 4);
}

IntBox ScrollBar::thumbTrack() const {
    IntBox track = getThumbBgArea().inset(laneInset(isVertical() ? width() : height()));
    track.x2 = std::max(track.x1, track.x2);
    track.y2 = std::max(track.y1, track.y2);
    return track;
}

int ScrollBar::getThumbRangePixels() const {
    IntBox const track = thumbTrack();
    return isVertical() ? track.height() : track.width();
}

IntBox ScrollBar::getThumbArea() const {
    IntBox area = thumbTrack();
    int const range = getThumbRangePixels();
    int const least = getMinThumbSize();
    int length = rounded(range * size_);
    int offset = rounded(range * position_);
    if (length < least) {
        length = std::min(least, range);
        bool const hasWay = range > least && size_ < 1;
        offset = hasWay ? rounded((range - least) * position_ / (1 - size_)) : 0;
    }
    if (isVertical()) {
        area.y2 -= offset;
        area.y1 = area.y2 - length;
    } else {
        area.x1 += offset;
        area.x2 = area.x1 + length;
    }
    return area;
}

XY<int> ScrollBar::getThumbPixelExtents() const {
    IntBox const thumb = getThumbArea();
    return isVertical() ? XY<int>{thumb.y1, thumb.y2} : XY<int>{thumb.x1, thumb.x2};
}

double ScrollBar::positionAt(int along) const {
    IntBox const track = thumbTrack();
    XY<int> const extents = getThumbPixelExtents();
    int const length = extents.y - extents.x;
    int const room = getThumbRangePixels() - length;
    int const way = isVertical() ? track.y2 - along : along - track.x1;
    return room > 0 ? (way - length / 2.0) / room * (1 - size_) : 0;
}

int ScrollBar::inResizingArea(XY<int> const& place) const {
    if (!resizable_ || !getThumbArea().contains(place)) return 0;
    XY<int> const extents = getThumbPixelExtents();
    bool const nearLower = alongBar(place) - extents.x <= gripLength;
    bool const nearUpper = extents.y - alongBar(place) <= gripLength;
    bool const atFarEnd = isVertical() ? nearLower : nearUpper;
    if (atFarEnd) return 1;
    return nearLower || nearUpper ? -1 : 0;
}

// Arrow buttons

void ScrollBar::reshape() {
    DispatchScope const scope;
    LifeGuard const life = guard();
    StandardPanel::reshape();
    if (life.alive()) layOutButtons();
}

/// Any length will do in which the thumb can be seen.
SizeNeeds ScrollBar::sizeNeeds() const {
    int const thick = thickness();
    int const across = usualThickness_ ? thick : -1;
    SizeNeeds needs;
    needs.natural = isVertical() ? XY<int>{across, -1} : XY<int>{-1, across};
    needs.minimum = isVertical() ? XY<int>{across, 2 * thick} : XY<int>{2 * thick, across};
    return needs;
}

void ScrollBar::handleLookChange(LookChange changes) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    StandardPanel::handleLookChange(changes);
    if (life.alive()) layOutButtons();
}

/// Squares at both ends, as long as they leave room for a thumb that can move.
void ScrollBar::layOutButtons() {
    int const side = std::min(width(), height());
    int const length = isVertical() ? height() : width();
    bool const fit = length >= 2 * side + 2 * UifStd::getIndentWidth() + 2 * getMinThumbSize();
    XY<int> const lower{0, 0};
    XY<int> const upper = isVertical() ? XY<int>{0, length - side} : XY<int>{length - side, 0};
    layOutButton(firstButton_, isVertical() ? upper : lower, side, fit);
    layOutButton(lastButton_, isVertical() ? lower : upper, side, fit);
}

void ScrollBar::layOutButton(HandlerRef<Button> const& button, XY<int> const& place, int side, bool fits) {
    if (!getWidget(button.get())) return;
    DispatchScope const scope;
    LifeGuard const life = guard();
    reshapeWidgetAt(button.get(), place, {side, side});
    if (life.alive() && button.get()) button.get()->setVisible(fits);
}

} // namespace wainscot
