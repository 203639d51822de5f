#pragma once

#include "host/events/event.h"

#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <unordered_map>
#include <utility>

namespace wainscot {

/// Handlers that are asked before all others: the highest priority first, with equal priority the latest
/// first. It may be changed, and its handlers may die, while it is walked.
template <class Subject>
class FilterStack;

template <>
class WAINSCOT_API FilterStack<Event> {
public:
    /// The answer names the entry for `pop`. A null handler is refused with an invalid stamp.
    IdStamp push(EventHandler* handler, int priority);
    /// False when there is no such entry.
    bool pop(IdStamp entry);
    /// Drops all entries of a live handler.
    void removeAll(EventHandler const& handler);

    std::size_t size() const { return entries_.size(); }
    bool contains(IdStamp entry) const { return priorities_.count(entry.value()) > 0; }

    /// Offers a key press or release to the handlers for which `mayAsk` answers true, until one consumes it.
    /// Handlers that are pushed or popped meanwhile are not asked.
    bool offer(Event const& event, std::function<bool(EventHandler&)> const& mayAsk);

private:
    /// The place of an entry: stamps grow, so that the latest has the largest.
    struct Rank {
        int priority;
        std::uint64_t stamp;
        bool operator<(Rank const& other) const {
            return priority != other.priority ? priority > other.priority : stamp > other.stamp;
        }
    };

    /// In the order of asking.
    std::map<Rank, HandlerRef<>> entries_;
    std::unordered_map<std::uint64_t, int> priorities_;
    /// The stamps of the handlers, each with those of its entries.
    std::set<std::pair<std::uint64_t, std::uint64_t>> byHandler_;
};

/// The live host's stack of handlers to which keys are offered before they are dispatched.
WAINSCOT_API FilterStack<Event>& getEventInterceptStack();

} // namespace wainscot
