#include "host/events/event.h"
#include "host/objects/tooltip_details.h"
#include "tables/tree_body_p.h"

namespace wainscot {

TreeBody::TreeBody(TreeView& tree) : Pressable<Glob>(0, 0), tree_(&tree) {
    setLightweight(true);
    setPressButtons(EventKind::left | EventKind::right);
}

bool TreeBody::react(Event const& event) {
    TreeView* const tree = tree_.get();
    if (!tree || !tree->isActive()) return Pressable<Glob>::react(event);
    if (mouse_wheel_event(event)) return tree->wheel(event) || Pressable<Glob>::react(event);
    return reactToPress(event) || Pressable<Glob>::react(event);
}

void TreeBody::draw() {
    if (TreeView* const tree = tree_.get()) tree->drawRows(*this);
}

bool TreeBody::getTooltipDetails(XY<int> const& place, TooltipDetails& details) const {
    TreeView const* const tree = tree_.get();
    if (!tree || !tree->tipAt(inTree(place), details)) return false;
    details.area = details.area.translated(XY<int>() - box().bottomLeft());
    return true;
}

// Presses

bool TreeBody::pressBegan(Event const& event) {
    TreeView* const tree = tree_.get();
    return tree && tree->pressAt(event);
}

void TreeBody::pressMoved(Event const& event) {
    TreeView* const tree = tree_.get();
    LifeGuard const life = guard();
    // The drag has the pointer now.
    if (tree && isMouseMoveSignificant(event) && tree->dragTo(event) && life.alive()) dropPress();
}

void TreeBody::pressEnded(PressEnd how) {
    if (TreeView* const tree = tree_.get())
        tree->endPress(how == PressEnd::releasedInside || how == PressEnd::releasedOutside);
}

// Drags

bool TreeBody::canAccept(DragDropItem const& item, XY<int> const& place, eDropReason reason) {
    TreeView* const tree = tree_.get();
    return tree && tree->isActive() && tree->canDropAt(item, inTree(place), reason);
}

bool TreeBody::acceptDrop(DragDropItem& item, XY<int> const& place, eDropReason reason) {
    TreeView* const tree = tree_.get();
    return tree && tree->dropAt(item, inTree(place), reason);
}

MouseCursorID TreeBody::getDropCursor(DragDropItem const& item, XY<int> const& place) const {
    TreeView const* const tree = tree_.get();
    return tree ? tree->dropCursorAt(item, inTree(place)) : inheritCursor;
}

void TreeBody::handleDragHover(DragDropItem const& item, XY<int> const& place, bool inside) {
    if (TreeView* const tree = tree_.get()) tree->dragHovers(item, inTree(place), inside);
}

void TreeBody::handleDragEnd(DragDropItem&, bool) {
    if (TreeView* const tree = tree_.get()) tree->dragEnded();
}

} // namespace wainscot
