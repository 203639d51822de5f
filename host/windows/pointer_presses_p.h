#pragma once

#include "host/windows/pointer_moves_p.h"
#include "host/windows/popup_chain.h"

namespace wainscot {

/// Brings presses and releases to their receivers, and keeps the present press. It lasts from the first
/// button down until the last button is up, or until the press is lost or taken back.
class PointerPresses {
public:
    PointerPresses(EventSystem& events, GlobManager& windows, InputTargets& targets, DragDropManager& drags,
                   PressHandOver& handOver, PointerHover& hover, PointerMoves& moves);

    void press(InputEvent const& input);
    void release(InputEvent const& input);
    /// Ends the press without a release: no button counts as held, and what the press began is taken back, as
    /// with Escape.
    void lose();
    /// Takes back what the press began, if the key is Escape and a button is held. True = it did.
    bool takeBack(Event const& key);
    /// Whether the present press is in the window, or in a pop-up.
    bool isHeldIn(TopLevelWindow const& window) const;
    /// Whether the holder of the pointer repeats by the processor clock.
    bool isRepeating() const;

private:
    /// The first button goes down.
    void begin(InputEvent const& input);
    /// Offers a press to the object under it, which holds the pointer from then on.
    void deliver(InputEvent const& input, Glob& target);
    /// Whether the object under the pointer does not get the press: it has closed pop-ups, or a modal object
    /// keeps input from the object.
    bool isSpent(InputEvent const& input, PopUpChain::Press press, Glob* under);
    /// The present press, as an event for `handlePressCancelled`.
    Event pressUnderWay(std::uint32_t modifiers, double time) const;
    /// Tells the holder of the pointer, and the pop-up to which the press was handed over.
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
