#include "host/windows/pointer_hover_p.h"

#include "host/objects/tree.h"

namespace wainscot {

PointerHover::PointerHover(Backend& backend, EventSystem& events, InputTargets& targets,
                           DragDropManager& drags, PressHandOver const& handOver)
    : events_(events), targets_(targets), drags_(drags), handOver_(handOver), wishes_(backend, events),
      tips_(events) {}

void PointerHover::arrive(InputEvent const& input) {
    bool const stays = targets_.isPointerInside() && events_.pointer.place == input.place;
    if (stays) return;
    targets_.pointerIsAt(input);
    enter(targets_.under(input));
}

void PointerHover::leave() {
    targets_.pointerHasLeft();
    tips_.pointerIsOver(nullptr);
    enter(nullptr);
}

/// While an object holds the pointer, only the holder and its ancestors can be entered.
void PointerHover::enter(Glob* under) {
    Glob* const holder = targets_.captureHolder();
    Glob const* const popUp = handOver_.present();
    bool const isHandedOver = popUp && Glob::getRootParent(under) == popUp;
    if (holder && !isHandedOver) {
        while (under && under != holder && !Glob::isParentedTo(holder, under)) under = under->parent();
    }
    containment_.moveTo(under);
}

void PointerHover::update() {
    // The window of the press may have gone, and with it the release.
    if (drags_.isDragging() && events_.pointer.heldButtons == 0) drags_.cancel();
    wishes_.updateMotion(targets_.captureHolder());
    Glob* const under = targets_.underPointer();
    tips_.pointerIsOver(under);
    Glob* const holder = targets_.captureHolder();
    wishes_.updateCursor(holder ? holder : is_good_glob_ptr(under) ? under : nullptr, drags_.cursor());
}

void PointerHover::pressHasEnded() {
    wishes_.updateMotion(targets_.captureHolder());
    enter(targets_.underPointer());
}

void PointerHover::refresh() {
    seenChanges_ = Tree::numChanges();
    enter(targets_.underPointer());
    update();
}

bool PointerHover::isStale() const {
    return seenChanges_ != Tree::numChanges() || wishes_.isStale();
}

} // namespace wainscot
