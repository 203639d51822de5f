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
    /// Becomes the live one. `wake` is called on any thread that has left a call in the inbox.
    explicit EventSystem(std::function<void()> wake);
    ~EventSystem();
    EventSystem(EventSystem const&) = delete;
    EventSystem& operator=(EventSystem const&) = delete;

    /// Null while no host lives.
    static EventSystem* current();
    /// The same for a caller that needs it; throws when no host lives.
    static EventSystem& live();

    /// The number of the host: never used again in this program, never 0.
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
