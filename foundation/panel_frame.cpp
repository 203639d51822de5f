#include "foundation/panel_frame_p.h"

#include "foundation/panel_title_p.h"
#include "foundation/panel_widgets_p.h"
#include "host/drawing/uif_std.h"
#include "host/events/event.h"
#include "host/windows/glob_manager.h"

#include <algorithm>

namespace wainscot {

namespace {

/// A further bit besides the edges (`Surround::Edge`).
constexpr unsigned char titleGrip = 16;

constexpr unsigned horizontal = Surround::left | Surround::right;
constexpr unsigned vertical = Surround::bottom | Surround::top;

MouseCursorID cursorFor(unsigned edges) {
    if (edges == 0) return inheritCursor;
    if ((edges & vertical) == 0) return sizeHorizontalCursor;
    if ((edges & horizontal) == 0) return sizeVerticalCursor;
    bool const rises =
        edges == (Surround::left | Surround::bottom) || edges == (Surround::right | Surround::top);
    return rises ? sizeRisingCursor : sizeFallingCursor;
}

/// The edges nearer than `reach`; of two opposite edges the right one and the lower one.
unsigned edgesWithin(XY<int> const& place, IntBox const& box, int reach) {
    unsigned edges = 0;
    if (place.x >= box.x2 - reach)
        edges |= Surround::right;
    else if (place.x < box.x1 + reach)
        edges |= Surround::left;
    if (place.y < box.y1 + reach)
        edges |= Surround::bottom;
    else if (place.y >= box.y2 - reach)
        edges |= Surround::top;
    return edges;
}

XY<int> movedInto(XY<int> const& place, IntBox const& box) {
    return {std::clamp(place.x, box.x1, std::max(box.x1, box.x2)),
            std::clamp(place.y, box.y1, std::max(box.y1, box.y2))};
}

} // namespace

/// A window of the system has edges of its own.
unsigned PanelFrame::edgesAt(StandardPanel const& panel, XY<int> const& place) {
    if (!panel.resizableEdges_ || panel.minimised_ || !panel.bounds().contains(place)) return 0;
    GlobManager const* const windows = GlobManager::current();
    if (!panel.parent() && !(windows && windows->isPopUp(&panel))) return 0;
    int const reach = std::max<int>(panel.border_.getSize(), UifStd::getWidgetGap());
    unsigned const edges = edgesWithin(place, panel.bounds(), reach);
    if (edges == 0) return 0;
    // Near a corner one edge stands for both.
    int const corner =
        std::min(StandardPanel::calcSize(spacingButton), std::min(panel.width(), panel.height()) / 3);
    return edges | edgesWithin(place, panel.bounds(), corner);
}

bool PanelFrame::isTitleHeld(StandardPanel const& panel) {
    return panel.grip_ == titleGrip;
}

MouseCursorID PanelFrame::cursorAt(StandardPanel const& panel, XY<int> const& place) {
    if (isTitleHeld(panel) && panel.isMoving()) return moveCursor;
    bool const isByEdge = panel.grip_ != 0 && !isTitleHeld(panel);
    return cursorFor(isByEdge ? panel.grip_ : edgesAt(panel, place));
}

bool PanelFrame::begin(StandardPanel& panel, Event const& event) {
    if (!mouse_down_event(event) || !mouse_left_event(event) || mouse_chord_event(event)) return false;
    XY<int> const place = eventXYToGlobXY(event, panel);
    unsigned const edges = edgesAt(panel, place);
    if (edges == 0 && !(panel.isMovable() && PanelTitle::bar(panel).contains(place))) return false;
    panel.grip_ = edges != 0 ? static_cast<unsigned char>(edges) : titleGrip;
    panel.extras().dragBox = panel.screenBox();
    panel.extras().press.take(event, panel);
    panel.moveToTop();
    if (edges == 0) panel.startMoving();
    return true;
}

void PanelFrame::takeBack(StandardPanel& panel, XY<int> const& pressPlace) {
    if (panel.grip_ != 0 && !isTitleHeld(panel)) dragEdges(panel, pressPlace);
}

bool PanelFrame::follow(StandardPanel& panel, Event const& event) {
    if (panel.grip_ == 0) return false;
    bool const isTitle = isTitleHeld(panel);
    // Moving may have been stopped elsewhere.
    if (isTitle && !panel.isMoving()) {
        end(panel);
        return mouse_up_event(event);
    }
    switch (panel.extras_->press.take(event, panel)) {
    case Press::Step::moves:
        move(panel, event);
        return true;
    case Press::Step::chord:
        return true;
    case Press::Step::releasedInside:
    case Press::Step::releasedOutside:
        end(panel);
        if (isTitle) panel.stopMoving();
        return true;
    case Press::Step::lost:
        end(panel);
        return false;
    case Press::Step::begins:
    case Press::Step::other:
        break;
    }
    return false;
}

void PanelFrame::move(StandardPanel& panel, Event const& event) {
    if (!isTitleHeld(panel)) return dragEdges(panel, event.place());
    LifeGuard const life = panel.guard();
    if (panel.Glob::react(event) && life.alive()) keepTitleInReach(panel);
}

void PanelFrame::end(StandardPanel& panel) {
    panel.grip_ = 0;
    if (panel.extras_) panel.extras_->press.end();
}

XY<int> PanelFrame::leastSize(StandardPanel const& panel) {
    auto const taken = StandardPanel::getUserAreaBorders(panel.layoutFlags(), panel.border_);
    return {taken.left + taken.right + PanelWidgets::chainWidth(panel), taken.bottom + taken.top};
}

void PanelFrame::dragEdges(StandardPanel& panel, XY<int> const& place) {
    unsigned const edges = panel.grip_;
    Glob* const parent = panel.parent();
    IntBox const start = panel.extras_->dragBox;
    XY<int> const pointer = parent ? movedInto(place, parent->screenBox()) : place;
    XY<int> const way = pointer - panel.extras_->press.place();
    int const wider = (edges & Surround::left) != 0 ? -way.x : (edges & Surround::right) != 0 ? way.x : 0;
    int const higher = (edges & Surround::bottom) != 0 ? -way.y : (edges & Surround::top) != 0 ? way.y : 0;
    LifeGuard const life = panel.guard();
    XY<int> const wanted = start.size() + XY<int>{wider, higher};
    XY<int> size =
        panel.sizeConstrain({std::max(0, wanted.x), std::max(0, wanted.y)}, static_cast<int>(edges));
    if (!life.alive()) return;
    XY<int> const least = leastSize(panel);
    size = {std::max(size.x, least.x), std::max(size.y, least.y)};
    XY<int> const corner{(edges & Surround::left) != 0 ? start.x2 - size.x : start.x1,
                         (edges & Surround::bottom) != 0 ? start.y2 - size.y : start.y1};
    if (Glob* const now = panel.parent())
        return now->reshapeWidgetAt(&panel, now->screenXYToGlobXY(corner), size);
    panel.setScreenPos(corner);
    if (life.alive()) panel.resize(size.x, size.y);
}

/// A panel that was dragged out of its parent could not be fetched back.
void PanelFrame::keepTitleInReach(StandardPanel& panel) {
    Glob* const parent = panel.parent();
    if (!parent) return;
    int const grip = std::min(StandardPanel::calcSize(spacingButton), panel.width());
    XY<int> const lowest{grip - panel.width(), PanelTitle::bar(panel).height() - panel.height()};
    XY<int> const highest{parent->width() - grip, parent->height() - panel.height()};
    XY<int> const kept = movedInto(panel.box().bottomLeft(), {lowest.x, lowest.y, highest.x, highest.y});
    panel.setScreenPos(parent->globXYToScreenXY(kept));
}

} // namespace wainscot
