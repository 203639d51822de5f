#include "host/windows/pointer_moves_p.h"

#include "host/objects/dispatch.h"

namespace wainscot {

PointerMoves::PointerMoves(EventSystem& events, GlobManager const& windows, InputTargets& targets,
                           DragDropManager& drags, PressHandOver& handOver, PointerHover& hover)
    : events_(events), targets_(targets), drags_(drags), handOver_(handOver), hover_(hover),
      approach_(windows, [this](InputEvent const& held) { move(held); }) {}

void PointerMoves::move(InputEvent const& input) {
    PointerState& pointer = events_.pointer;
    bool const stays = targets_.isPointerInside() && pointer.place == input.place &&
                       targets_.pointerWindow() == input.window;
    if (stays) return;
    bool const held = pointer.heldButtons != 0;
    if (!held && approach_.holdsBack(pointer.place, input)) return;
    targets_.pointerIsAt(input);
    // The dragged object may follow the pointer: containment is told after that.
    if (!held) hover_.enter(targets_.under(input));
    Event const event = targets_.pointerEvent(EventKind::mouseMove | pointer.heldButtons, input);
    if (drags_.handleMouseMove(event)) return;
    Glob* const popUp = held ? handOver_.receiver(targets_.captureHolder(), event) : nullptr;
    if (Glob* target = popUp ? popUp : targets_.ofPointer(input)) dispatchUpwards(target, event);
    if (held) refresh();
}

void PointerMoves::leave() {
    dropHeldBack();
    hover_.leave();
}

void PointerMoves::refresh() {
    approach_.checkTarget(events_.pointer.place);
    hover_.refresh();
}

} // namespace wainscot
