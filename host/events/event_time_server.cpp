#include "host/events/event_time_server.h"

#include "host/events/event_system.h"
#include "host/services/clock.h"

#include <algorithm>

namespace wainscot {

EventTimeServer* EventTimeServer::theEventTimeServer() {
    EventSystem* const system = EventSystem::current();
    return system ? &system->timers : nullptr;
}

EventTimeServer::Entries::iterator EventTimeServer::find(EventHandler const* handler) {
    auto const place = places_.find(handler);
    return place == places_.end() ? entries_.end() : entries_.find(place->second);
}

void EventTimeServer::registerForTimeEvents(EventHandler* handler) {
    if (!handler) return;
    auto const known = find(handler);
    if (known != entries_.end()) {
        if (known->second.handler.get() == handler) return;
        unregister(handler);
    }
    if (gridIsIdle()) gridDue_ = service_get_msecs() + gridMs;
    places_[handler] = ++lastNumber_;
    entries_.emplace(lastNumber_, Entry{HandlerRef<>(handler), {}});
}

void EventTimeServer::unregister(EventHandler const* handler) {
    auto const entry = find(handler);
    if (entry == entries_.end()) return;
    setDue(entry->second, entry->first, {});
    entries_.erase(entry);
    places_.erase(handler);
}

void EventTimeServer::setDue(Entry& entry, std::uint64_t number, std::optional<double> due) {
    if (entry.due) stated_.erase({*entry.due, number});
    entry.due = due;
    if (due) stated_.emplace(*due, number);
}

void EventTimeServer::setNextTimer(EventHandler* handler, double ms) {
    auto const entry = find(handler);
    if (entry == entries_.end()) return;
    bool const onGrid = !(ms > 0.0);
    if (onGrid && gridIsIdle()) gridDue_ = service_get_msecs() + gridMs;
    std::optional<double> due;
    if (!onGrid) due = service_get_msecs() + std::max(ms, minMs);
    setDue(entry->second, entry->first, due);
}

std::optional<double> EventTimeServer::nextDue() const {
    if (entries_.empty()) return {};
    if (gridIsIdle()) return stated_.begin()->first;
    return stated_.empty() ? gridDue_ : std::min(gridDue_, stated_.begin()->first);
}

std::vector<EventTimeServer::Due> EventTimeServer::takeDue(double now) {
    std::vector<std::uint64_t> reached;
    bool const gridWasIdle = gridIsIdle();
    if (!gridWasIdle && gridDue_ <= now) {
        for (auto const& [number, entry] : entries_)
            if (!entry.due) reached.push_back(number);
        gridDue_ = gridDue_ + gridMs > now ? gridDue_ + gridMs : now + gridMs;
    }
    while (!stated_.empty() && stated_.begin()->first <= now) {
        std::uint64_t const number = stated_.begin()->second;
        reached.push_back(number);
        setDue(entries_.at(number), number, {});
    }
    if (gridWasIdle && !reached.empty()) gridDue_ = now + gridMs;
    std::sort(reached.begin(), reached.end());
    std::vector<Due> due;
    due.reserve(reached.size());
    for (std::uint64_t const number : reached) due.push_back({entries_.at(number).handler, number});
    return due;
}

bool EventTimeServer::isStillDue(Due const& due) const {
    return due.handler && entries_.count(due.number) > 0;
}

} // namespace wainscot
