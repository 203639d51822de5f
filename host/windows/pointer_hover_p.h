#pragma once

#include "host/windows/containment_p.h"
#include "host/windows/drag_drop_manager.h"
#include "host/windows/input_targets_p.h"
#include "host/windows/pointer_wishes_p.h"
#include "host/windows/press_hand_over_p.h"
#include "host/windows/tool_tips_p.h"

namespace wainscot {

/// What follows from where the pointer is: who contains it, which tip is shown, what its shape is and how the
/// window system reports its way.
class PointerHover {
public:
    PointerHover(Backend& backend, EventSystem& events, InputTargets& targets, DragDropManager& drags,
                 PressHandOver const& handOver);

    /// The pointer's place is that of `input`, although no move may have told so.
    void arrive(InputEvent const& input);
    void leave();
    /// From now on the pointer is over `under`, as far as whoever holds it allows.
    void enter(Glob* under);
    /// To be called when somebody has taken or lost the pointer, or something else may lie under it.
    void update();
    /// To be called when the last button is up: puts the pointer back when its motion was unbounded.
    void pressHasEnded();
    /// Brings all up to date after the tree has changed under a resting pointer.
    void refresh();
    /// Something has been moved, added, removed, shown or hidden since then.
    bool isStale() const;
    /// A press, a key or the wheel: the tip goes.
    void dismissTip() { tips_.dismiss(); }

private:
    EventSystem& events_;
    InputTargets& targets_;
    DragDropManager& drags_;
    PressHandOver const& handOver_;
    PointerWishes wishes_;
    ToolTips tips_;
    ContainmentPath containment_;
    std::uint64_t seenChanges_ = 0;
};

} // namespace wainscot
