#include "foundation/standard_panel_p.h"

#include "host/drawing/drawable.h"
#include "host/drawing/uif_std.h"
#include "host/events/dispatch_scope.h"
#include "host/events/event.h"
#include "host/objects/description.h"
#include "host/windows/glob_manager.h"

#include <algorithm>

namespace wainscot {

namespace {

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

/// The edges nearer than `reach`; of two opposite ones the right and the lower.
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

void StandardPanel::setResizable(bool resizable) {
    resizableEdges_ = resizable;
    Glob::setResizable(resizable);
}

IntBox StandardPanel::getTitleBar() const {
    if (!hasStrip()) return {};
    return {0, std::max(0, height() - titleBarHeight()), width(), height()};
}

// The pointer on the frame

/// A window of the system has edges of its own.
unsigned StandardPanel::edgesAt(XY<int> const& place) const {
    if (!resizableEdges_ || minimised_ || !bounds().contains(place)) return 0;
    if (!parent() && !(GlobManager::current() && GlobManager::current()->isPopUp(this))) return 0;
    int const reach = std::max<int>(border_.getSize(), UifStd::getWidgetGap());
    unsigned const edges = edgesWithin(place, bounds(), reach);
    // Near a corner either edge is meant as both.
    return edges == 0
               ? 0
               : edges | edgesWithin(place, bounds(),
                                     std::min(calcSize(spacingButton), std::min(width(), height()) / 3));
}

MouseCursorID StandardPanel::contextCursor(XY<int> const& place) const {
    if (grip_ == PanelGrip::title && isMoving()) return moveCursor;
    MouseCursorID const cursor = cursorFor(grip_ != 0 && grip_ != PanelGrip::title ? grip_ : edgesAt(place));
    return cursor != inheritCursor ? cursor : rect::contextCursor(place);
}

bool StandardPanel::beginDrag(Event const& event) {
    if (!mouse_down_event(event) || !mouse_left_event(event) || mouse_chord_event(event)) return false;
    XY<int> const place = eventXYToGlobXY(event, *this);
    unsigned const edges = edgesAt(place);
    if (edges == 0 && !(isMovable() && getTitleBar().contains(place))) return false;
    grip_ = edges != 0 ? static_cast<unsigned char>(edges) : PanelGrip::title;
    extras().dragBox = screenBox();
    extras().dragPlace = event.place();
    moveToTop();
    if (edges == 0) startMoving();
    return true;
}

/// A dragged edge goes back to where it was taken.
void StandardPanel::handlePressCancelled(Event const& press) {
    bool const isByEdge = grip_ != 0 && grip_ != PanelGrip::title;
    LifeGuard const life = guard();
    if (isByEdge) dragEdges(press.pressPlace());
    if (life.alive()) rect::handlePressCancelled(press);
}

/// A drag that was ended by something else (the panel was hidden) is found out here.
void StandardPanel::handleCaptureLost() {
    grip_ = 0;
    rect::handleCaptureLost();
}

bool StandardPanel::followDrag(Event const& event) {
    if (mouse_wheel_event(event)) return false;
    bool const isTitle = grip_ == PanelGrip::title;
    bool const isHeld = (event.heldButtons() & EventKind::left) != 0 && (!isTitle || isMoving());
    if (mouse_move_event(event) && isHeld) {
        LifeGuard const life = guard();
        if (!isTitle)
            dragEdges(event.place());
        else if (Glob::react(event) && life.alive())
            keepTitleInReach();
        return true;
    }
    if (isHeld) return true;
    grip_ = 0;
    if (!mouse_up_event(event)) return false;
    if (isTitle) stopMoving();
    return true;
}

XY<int> StandardPanel::leastFrameSize() const {
    UserAreaBorders const taken = getUserAreaBorders(layoutFlags(), border_);
    return {taken.left + taken.right + chainWidth(), taken.bottom + taken.top};
}

void StandardPanel::dragEdges(XY<int> const& place) {
    unsigned const edges = grip_;
    IntBox const start = extras_->dragBox;
    XY<int> const pointer = parent() ? movedInto(place, parent()->screenBox()) : place;
    XY<int> const way = pointer - extras_->dragPlace;
    int const wider = (edges & Surround::left) != 0 ? -way.x : (edges & Surround::right) != 0 ? way.x : 0;
    int const higher = (edges & Surround::bottom) != 0 ? -way.y : (edges & Surround::top) != 0 ? way.y : 0;
    LifeGuard const life = guard();
    XY<int> const wanted = start.size() + XY<int>{wider, higher};
    XY<int> size = sizeConstrain({std::max(0, wanted.x), std::max(0, wanted.y)}, static_cast<int>(edges));
    if (!life.alive()) return;
    XY<int> const least = leastFrameSize();
    size = {std::max(size.x, least.x), std::max(size.y, least.y)};
    XY<int> const corner{(edges & Surround::left) != 0 ? start.x2 - size.x : start.x1,
                         (edges & Surround::bottom) != 0 ? start.y2 - size.y : start.y1};
    if (parent()) return parent()->reshapeWidgetAt(this, parent()->screenXYToGlobXY(corner), size);
    setScreenPos(corner);
    if (life.alive()) resize(size.x, size.y);
}

/// A panel that was dragged out of its parent could not be fetched back.
void StandardPanel::keepTitleInReach() {
    if (!parent()) return;
    int const grip = std::min(calcSize(spacingButton), width());
    XY<int> const lowest{grip - width(), getTitleBar().height() - height()};
    XY<int> const highest{parent()->width() - grip, parent()->height() - height()};
    XY<int> const kept = movedInto(box().bottomLeft(), {lowest.x, lowest.y, highest.x, highest.y});
    setScreenPos(parent()->globXYToScreenXY(kept));
}

// Minimising

void StandardPanel::setMinimised(bool minimised) {
    if (minimised == minimised_ || (minimised && !hasStrip())) return;
    DispatchScope const scope;
    Glib::UpdateDeferrer const deferrer(canvas());
    LifeGuard const life = guard();
    minimised_ = minimised;
    if (minimised) {
        extras().fullHeight = height();
        hideWidgets();
    }
    if (life.alive()) resizeKeepingTop({width(), minimised ? getTitleBar().height() : extras().fullHeight});
    if (life.alive() && !minimised) showWidgets();
    if (life.alive()) setSizeFlag(minimised ? sizeMinimised : sizeFull);
    if (!life.alive()) return;
    makeDirty();
    describeChanged(DescriptionChange::state);
}

/// The strip has become higher or lower, or has gone.
void StandardPanel::keepMinimised() {
    if (!minimised_) return;
    if (!hasStrip()) return setMinimised(false);
    if (height() != titleBarHeight()) resizeKeepingTop({width(), titleBarHeight()});
}

/// What belongs to the strip stays; do-it stands below it.
void StandardPanel::hideWidgets() {
    std::vector<Extras::WidgetRef> hidden;
    Glob const* const doIt = getStandardWidget(StandardWidget::doIt);
    for (Glob* child = firstChild(); child; child = child->nextSibling()) {
        bool const staysShown = isStandardWidget(child) && child != doIt;
        if (child->isVisible() && !staysShown) hidden.emplace_back(child);
    }
    extras().hidden = hidden;
    for (Extras::WidgetRef const& ref : hidden)
        if (Glob* const widget = ref.get()) widget->setVisible(false);
}

void StandardPanel::showWidgets() {
    auto const hidden = std::exchange(extras().hidden, {});
    for (Extras::WidgetRef const& ref : hidden)
        if (Glob* const widget = ref.get()) widget->setVisible(true);
}

/// A place that is measured from the upper edge of the parent stays so.
void StandardPanel::resizeKeepingTop(XY<int> const& size) {
    LifeGuard const life = guard();
    XY<int> const corner{box().x1, box().y2 - size.y};
    if (!parent()) {
        resize(size.x, size.y);
        if (life.alive()) setScreenPos(corner);
        return;
    }
    WidgetDetails const details = parent()->getWidgetDetails(this);
    CoordinateOrigin const origin = details.position.origin();
    bool const hangsFromTop = !details.position.isRelative() &&
                              (origin == CoordinateOrigin::topLeft || origin == CoordinateOrigin::topRight);
    if (!hangsFromTop) return parent()->reshapeWidgetAt(this, corner, size);
    resize(size.x, size.y);
    if (life.alive() && parent()) parent()->positionChildWidget(details);
}

} // namespace wainscot
