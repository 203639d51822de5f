#pragma once

#include "host/messages/event_handler.h"
#include "host/messages/handler_ref.h"

#include <unordered_map>

namespace wainscot {

/// Who holds the keyboard focus of each top-level window; windows are named by the stamps of their roots.
class WAINSCOT_API FocusHolders {
public:
    /// The holder in a window; null when there is none, or when it has died.
    EventHandler* holder(IdStamp window) const;
    void setHolder(IdStamp window, EventHandler* handler);
    void forgetWindow(IdStamp window) { holders_.erase(window.value()); }

    /// The active window, or the last active one while none is.
    IdStamp activeWindow() const { return active_; }
    void setActiveWindow(IdStamp window) { active_ = window; }
    /// Whether any window of the program is the active one at the moment.
    bool applicationHasFocus() const { return applicationHasFocus_; }
    void setApplicationHasFocus(bool has) { applicationHasFocus_ = has; }

    std::size_t numWindows() const { return holders_.size(); }

    /// The number of the key press that is still held; each press has its own. 0 while no key is held, or
    /// when the release went elsewhere.
    std::uint64_t heldKeyPress() const { return heldKeyPress_; }
    void keyPressed() { heldKeyPress_ = ++lastKeyPress_; }
    void keysReleased() { heldKeyPress_ = 0; }

    /// Nested changes of the focus that are under way.
    int nesting = 0;

private:
    std::unordered_map<std::uint64_t, HandlerRef<>> holders_;
    IdStamp active_;
    bool applicationHasFocus_ = false;
    std::uint64_t heldKeyPress_ = 0;
    std::uint64_t lastKeyPress_ = 0;
};

} // namespace wainscot
