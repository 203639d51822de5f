#include "host/events/event_system.h"
#include "host/objects/dispatch.h"
#include "host/objects/drag_drop_item.h"
#include "host/objects/glob_side_p.h"
#include "host/objects/tooltip_details.h"

namespace wainscot {

MouseCursorID Glob::contextCursor(XY<int> const&) const {
    return inheritCursor;
}

void Glob::setContextString(UIString const& tip, UIString const& more) {
    if (!side_ && tip.isEmpty() && more.isEmpty()) return;
    side().tip = tip;
    side().moreTip = more;
}

bool Glob::getTooltipDetails(XY<int> const&, TooltipDetails& details) const {
    if (!side_ || (side_->tip.isEmpty() && side_->moreTip.isEmpty())) return false;
    details.text = side_->tip;
    details.more = side_->moreTip;
    details.area = bounds();
    return true;
}

bool Glob::wantsFullMotion() const {
    return false;
}

bool Glob::wantsUnboundedMotion() const {
    return false;
}

bool Glob::isAutoRepeating() const {
    return false;
}

void Glob::handlePressCancelled(Event const& press) {
    LifeGuard const life = guard();
    if (isMoving()) setScreenPos(press.pressPlace() - side().grip);
    if (life.alive()) handleCaptureLost();
}

std::optional<IntBox> Glob::textCaret() const {
    return {};
}

bool Glob::canAccept(DragDropItem const&, XY<int> const&, eDropReason) {
    return false;
}

bool Glob::acceptDrop(DragDropItem&, XY<int> const&, eDropReason) {
    return false;
}

MouseCursorID Glob::getDropCursor(DragDropItem const&, XY<int> const&) const {
    return inheritCursor;
}

void Glob::handleDragHover(DragDropItem const&, XY<int> const&, bool) {}

void Glob::handleDragEnd(DragDropItem&, bool) {}

} // namespace wainscot
