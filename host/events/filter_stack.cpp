#include "host/events/filter_stack.h"

#include "host/events/event_system.h"

#include <algorithm>

namespace wainscot {

IdStamp FilterStack<Event>::push(EventHandler* handler, int priority) {
    if (!handler) return IdStamp();
    auto const higher = [](Entry const& entry, int wanted) { return entry.priority > wanted; };
    auto const place = std::lower_bound(entries_.begin(), entries_.end(), priority, higher);
    Entry const entry{IdStamp::make(), handler, handler->idStamp(), priority};
    entries_.insert(place, entry);
    return entry.stamp;
}

bool FilterStack<Event>::pop(IdStamp entry) {
    return std::erase_if(entries_, [&](Entry const& e) { return e.stamp == entry; }) > 0;
}

void FilterStack<Event>::removeAll(EventHandler const* handler) {
    std::erase_if(entries_, [&](Entry const& e) { return e.handler == handler; });
}

bool FilterStack<Event>::contains(IdStamp entry) const {
    return std::any_of(entries_.begin(), entries_.end(), [&](Entry const& e) { return e.stamp == entry; });
}

bool FilterStack<Event>::offer(Event const& event, std::function<bool(EventHandler&)> const& mayAsk) {
    std::vector<Entry> const asked = entries_;
    for (Entry const& entry : asked) {
        if (!contains(entry.stamp) || !EventHandler::valid(entry.handler, entry.handlerStamp)) continue;
        if (!mayAsk(*entry.handler)) continue;
        if (entry.handler->intercept(event)) return true;
    }
    return false;
}

FilterStack<Event>& getEventInterceptStack() {
    return EventSystem::live().intercepts;
}

} // namespace wainscot
