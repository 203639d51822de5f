#pragma once

#include "host/events/event_queue.h"
#include "host/events/event_time_server.h"
#include "host/events/filter_stack.h"
#include "host/events/focus_holders.h"
#include "host/events/mouse_listeners.h"
#include "host/events/pointer_state.h"
#include "host/events/thread_inbox.h"

#include <memory>

namespace wainscot {

/// Everything about events that belongs to the one live host.
class WAINSCOT_API EventSystem {
public:
    /// Becomes the live one; `wake` is called from any thread when it has left something in the inbox.
    explicit EventSystem(std::function<void()> wake);
    ~EventSystem();
    EventSystem(EventSystem const&) = delete;
    EventSystem& operator=(EventSystem const&) = delete;

    /// Null while no host lives.
    static EventSystem* current();
    /// The same where the caller cannot go on without; throws when no host lives.
    static EventSystem& live();

    /// Never used again in this program; no host has 0.
    std::uint64_t number() const { return number_; }

    /// Drops everything that remembers a handler: timers, capture, focus, intercept entries.
    void forget(EventHandler const& handler);

    EventQueue queue;
    EventTimeServer timers;
    FilterStack<Event> intercepts;
    FocusHolders focus;
    PointerState pointer;
    MouseListeners mouseListeners;
    std::shared_ptr<ThreadInbox> inbox;

private:
    std::uint64_t number_;
};

} // namespace wainscot
