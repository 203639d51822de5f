#pragma once

#include "host/events/event.h"

#include <deque>
#include <vector>

namespace wainscot {

/// What waits to be delivered, first in, first out: messages, posted events, and callbacks from other
/// threads.
class WAINSCOT_API EventQueue {
public:
    /// A call that another thread asked for.
    class Call : public Qv::InternalRefCount {
    public:
        virtual void run() = 0;
    };

    /// Either an event, which holds its target, or a call.
    struct Entry {
        Event event;
        Qv::Ptr<Call> call;
    };

    void add(Event event) { entries_.push_back({std::move(event), {}}); }
    void add(Qv::Ptr<Call> call) { entries_.push_back({Event(0), std::move(call)}); }
    bool empty() const { return entries_.empty(); }
    std::size_t size() const { return entries_.size(); }
    /// Gives all entries away: one round of delivery.
    std::deque<Entry> take() { return std::exchange(entries_, {}); }
    /// Puts back what a round could not deliver, in front of newer entries.
    void putBack(std::deque<Entry>& rest);

private:
    std::deque<Entry> entries_;
};

} // namespace wainscot
