#pragma once

#include "host/messages/event_handler.h"
#include "host/messages/handler_ref.h"

#include <map>
#include <optional>
#include <set>
#include <unordered_map>
#include <vector>

namespace wainscot {

/// Delivers timer events (kind 4096) to registered handlers. A handler is ticked on a common grid of 10 ms.
/// `setNextTimer` states the next time of one handler; after that it is on the grid again, unless it states
/// another time. Without registered handlers nothing is ever due.
class WAINSCOT_API EventTimeServer {
public:
    static constexpr double gridMs = 10.0;
    /// No stated time is nearer than this.
    static constexpr double minMs = 1.0;

    /// The server of the live host.
    static EventTimeServer* theEventTimeServer();

    /// A second call changes nothing, also not the stated time.
    void registerForTimeEvents(EventHandler* handler);
    void unregister(EventHandler const* handler);
    bool isRegistered(EventHandler const* handler) const { return places_.count(handler) > 0; }
    /// The next tick of a registered handler comes in `ms`, once; 0 or less = on the grid.
    void setNextTimer(EventHandler* handler, double ms);
    std::size_t size() const { return entries_.size(); }

    /// When the next tick is due, on the millisecond clock; nothing while nobody is registered.
    std::optional<double> nextDue() const;
    /// The handlers that are due at `now`, in the order of registration; their next times are set, and missed
    /// ticks are left out. Before each delivery ask `isStillDue`.
    struct Due {
        HandlerRef<> handler;
        /// Its registration.
        std::uint64_t number;
    };
    std::vector<Due> takeDue(double now);
    /// Whether the handler is alive, and has been registered ever since.
    bool isStillDue(Due const& due) const;

private:
    struct Entry {
        HandlerRef<> handler;
        std::optional<double> due;
    };
    using Entries = std::map<std::uint64_t, Entry>;

    Entries::iterator find(EventHandler const* handler);
    void setDue(Entry& entry, std::uint64_t number, std::optional<double> due);
    bool gridIsIdle() const { return stated_.size() == entries_.size(); }

    Entries entries_;
    std::unordered_map<EventHandler const*, std::uint64_t> places_;
    /// Stated times with the numbers of their entries.
    std::set<std::pair<double, std::uint64_t>> stated_;
    std::uint64_t lastNumber_ = 0;
    double gridDue_ = 0.0;
};

} // namespace wainscot
