#pragma once

#include "host/windows/pointer_hover_p.h"
#include "host/windows/sub_menu_approach_p.h"

namespace wainscot {

/// Brings the moves of the pointer to their receivers.
class PointerMoves {
public:
    PointerMoves(EventSystem& events, GlobManager const& windows, InputTargets& targets,
                 DragDropManager& drags, PressHandOver& handOver, PointerHover& hover);

    void move(InputEvent const& input);
    /// The pointer has left all windows of the program.
    void leave();
    /// A move that is held back does not matter any more.
    void dropHeldBack() { approach_.drop(); }
    /// Brings all that depends on the pointer's place up to date.
    void refresh();

private:
    EventSystem& events_;
    InputTargets& targets_;
    DragDropManager& drags_;
    PressHandOver& handOver_;
    PointerHover& hover_;
    SubMenuApproach approach_;
};

} // namespace wainscot
