#pragma once

#include "host/windows/composition_p.h"
#include "host/windows/pointer_presses_p.h"

namespace wainscot {

/// Brings keys, and text that an input method composes, to their receivers.
class KeyRouting {
public:
    KeyRouting(Backend& backend, EventSystem& events, GlobManager& windows, InputTargets& targets,
               PointerHover& hover, PointerPresses& presses);

    void key(InputEvent const& input);
    /// Finished text.
    void composedText(InputEvent const& input);
    /// Text that is not finished yet.
    void composing(InputEvent const& input);
    void endComposition() { composition_.end(); }
    /// To be called when the text caret may have moved.
    void followTextCaret() { composition_.follow(targets_.ofKeys()); }
    /// From now on the last key was not an unused Escape.
    void forgetEscape() { escapeWasUnused_ = false; }

private:
    /// Offers a key to the intercept stack, then dispatches it from the focus holder upwards.
    void dispatch(Event& event);
    bool offerToStack(Event const& event);
    bool dispatchToHolder(Event const& event);
    /// Uses a key press that no object has used, for commands for example. True = used.
    bool useElsewhere(Event const& event);
    /// Lets Tab leave a panel that keeps Tab to itself. True when the focus moved.
    bool leaveWithTab(Event const& key);

    EventSystem& events_;
    GlobManager& windows_;
    InputTargets& targets_;
    PointerHover& hover_;
    PointerPresses& presses_;
    Composition composition_;
    /// Whether the last key press was an Escape that nobody used.
    bool escapeWasUnused_ = false;
};

} // namespace wainscot
