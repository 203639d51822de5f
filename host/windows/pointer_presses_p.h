#pragma once

#include "host/windows/pointer_moves_p.h"
#include "host/windows/popup_chain.h"

namespace wainscot {

/// Brings presses and releases to whom they belong, and keeps the one press that is under way: from its first
/// button down to its end, which is the last button up, or that the press is lost or taken back.
class PointerPresses {
public:
    PointerPresses(EventSystem& events, GlobManager& windows, InputTargets& targets, DragDropManager& drags,
                   PressHandOver& handOver, PointerHover& hover, PointerMoves& moves);

    void press(InputEvent const& input);
    void release(InputEvent const& input);
    /// The press ends without a release: no button counts as held, nothing is chosen. As with Escape, what it
    /// began is taken back.
    void lose();
    /// Escape while a button is held takes back what the press began. True = it was that.
    bool takeBack(Event const& key);
    /// The press goes to what lies in the window, or in a pop-up of its.
    bool isHeldIn(TopLevelWindow const& window) const;
    /// Somebody holds the pointer and repeats, by the processor clock.
    bool isRepeating() const;

private:
    /// The first button goes down.
    void begin(InputEvent const& input);
    /// Offers a press to what lies under it, which holds the pointer from then on.
    void deliver(InputEvent const& input, Glob& target);
    /// A press that somebody other than what lies under it has use for, or that is refused.
    bool isSpent(InputEvent const& input, PopUpChain::Press press, Glob* under);
    /// The press that is under way, as its holder hears of its end without a release.
    Event pressUnderWay(std::uint32_t modifiers, double time) const;
    /// Tells whoever holds the pointer, and whoever it was handed over to.
    void deliverRelease(Event const& event, int bit, bool isLast);

    EventSystem& events_;
    GlobManager& windows_;
    InputTargets& targets_;
    DragDropManager& drags_;
    PressHandOver& handOver_;
    PointerHover& hover_;
    PointerMoves& moves_;
};

} // namespace wainscot
