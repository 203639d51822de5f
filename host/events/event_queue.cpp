#include "host/events/event_queue.h"

#include <iterator>

namespace wainscot {

void EventQueue::putBack(std::deque<Entry>& rest) {
    rest.insert(rest.end(), std::make_move_iterator(entries_.begin()),
                std::make_move_iterator(entries_.end()));
    entries_ = std::exchange(rest, {});
}

} // namespace wainscot
