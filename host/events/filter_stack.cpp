#include "host/events/filter_stack.h"

#include "host/events/event_system.h"

#include <vector>

namespace wainscot {

IdStamp FilterStack<Event>::push(EventHandler* handler, int priority) {
    if (!handler) return IdStamp();
    IdStamp const stamp = IdStamp::make();
    entries_.emplace(Rank{priority, stamp.value()}, HandlerRef<>(handler));
    priorities_.emplace(stamp.value(), priority);
    byHandler_.emplace(handler->idStamp().value(), stamp.value());
    return stamp;
}

bool FilterStack<Event>::pop(IdStamp entry) {
    auto const known = priorities_.find(entry.value());
    if (known == priorities_.end()) return false;
    auto const found = entries_.find({known->second, entry.value()});
    byHandler_.erase({found->second.stamp().value(), entry.value()});
    entries_.erase(found);
    priorities_.erase(known);
    return true;
}

void FilterStack<Event>::removeAll(EventHandler const& handler) {
    if (entries_.empty()) return;
    std::uint64_t const stamp = handler.idStamp().value();
    auto next = byHandler_.lower_bound({stamp, 0});
    while (next != byHandler_.end() && next->first == stamp) {
        auto const known = priorities_.find(next->second);
        entries_.erase({known->second, known->first});
        priorities_.erase(known);
        next = byHandler_.erase(next);
    }
}

bool FilterStack<Event>::offer(Event const& event, std::function<bool(EventHandler&)> const& mayAsk) {
    if (entries_.empty()) return false;
    std::vector<std::pair<Rank, HandlerRef<>>> const asked(entries_.begin(), entries_.end());
    for (auto const& [rank, entry] : asked) {
        bool const isThere = priorities_.count(rank.stamp) > 0;
        EventHandler* const handler = entry.get();
        if (isThere && handler && mayAsk(*handler) && handler->intercept(event)) return true;
    }
    return false;
}

FilterStack<Event>& getEventInterceptStack() {
    return EventSystem::live().intercepts;
}

} // namespace wainscot
