#pragma once

#include "host/events/one_shot_timer.h"
#include "host/windows/diagonal_way_p.h"
#include "host/windows/glob_manager.h"
#include "host/windows/input_event.h"

#include <functional>

namespace wainscot {

/// Holds back moves of the pointer on its straight way from a pop-up to the one that was opened from it (see
/// `DiagonalWay`). A move that is still held back when the way takes too long is delivered then.
class WAINSCOT_API SubMenuApproach {
public:
    SubMenuApproach(GlobManager const& windows, std::function<void(InputEvent const&)> deliver);
    ~SubMenuApproach();
    SubMenuApproach(SubMenuApproach const&) = delete;
    SubMenuApproach& operator=(SubMenuApproach const&) = delete;

    /// Whether a move without a held button is held back; `from` is the last place that was delivered.
    bool holdsBack(XY<int> from, InputEvent const& move);
    /// Other input has come: forgets the move that was held back.
    void drop();
    /// Delivers the move that is held back, if the pop-up at the end of the way has gone.
    void checkTarget(XY<int> from);

private:
    /// The box towards which the pointer may be on its way; nothing when there is none.
    std::optional<IntBox> target(XY<int> from, XY<int> place) const;
    void timeIsOver();

    GlobManager const& windows_;
    std::function<void(InputEvent const&)> deliver_;
    DiagonalWay way_;
    InputEvent held_;
    /// Runs while a move is held back.
    OneShotTimer timer_;
    bool delivering_ = false;
};

} // namespace wainscot
