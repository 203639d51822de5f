#pragma once

#include "host/windows/containment_p.h"
#include "host/windows/drag_drop_manager.h"
#include "host/windows/input_targets_p.h"
#include "host/windows/pointer_wishes_p.h"
#include "host/windows/press_hand_over_p.h"
#include "host/windows/tool_tips_p.h"

namespace wainscot {

/// Everything that depends on the pointer's place: which objects contain it, which tip is shown, its shape,
/// and how the window system reports its way.
class PointerHover {
public:
    PointerHover(Backend& backend, EventSystem& events, InputTargets& targets, DragDropManager& drags,
                 PressHandOver const& handOver);

    /// The pointer is at the place of `input`; a move may not have been reported.
    void arrive(InputEvent const& input);
    void leave();
    /// From now on the pointer is over `under`. While it is held, only the holder and its ancestors contain
    /// it.
    void enter(Glob* under);
    /// To be called when the holder of the pointer may have changed, or another object may lie under it.
    void update();
    /// To be called when the last button is up: puts the pointer back when its motion was unbounded.
    void pressHasEnded();
    /// Brings everything up to date after the tree has changed under a resting pointer.
    void refresh();
    /// Whether an object has been moved, added, removed, shown or hidden since then.
    bool isStale() const;
    /// A press, a key or the wheel hides the tip.
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
