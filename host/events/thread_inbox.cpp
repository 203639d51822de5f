#include "host/events/thread_inbox.h"

#include <iterator>

namespace wainscot {

void ThreadInbox::post(Qv::Ptr<EventQueue::Call> call) {
    std::lock_guard const lock(mutex_);
    if (closed_) return;
    calls_.push_back(std::move(call));
    // Inside the lock, so that the backend cannot be destroyed while it is being woken.
    if (wake_) wake_();
}

std::deque<Qv::Ptr<EventQueue::Call>> ThreadInbox::take(std::size_t most) {
    std::lock_guard const lock(mutex_);
    if (calls_.size() <= most) return std::exchange(calls_, {});
    auto const end = calls_.begin() + static_cast<std::ptrdiff_t>(most);
    std::deque<Qv::Ptr<EventQueue::Call>> taken(std::make_move_iterator(calls_.begin()),
                                                std::make_move_iterator(end));
    calls_.erase(calls_.begin(), end);
    return taken;
}

bool ThreadInbox::empty() const {
    std::lock_guard const lock(mutex_);
    return calls_.empty();
}

void ThreadInbox::close() {
    std::deque<Qv::Ptr<EventQueue::Call>> dropped;
    std::lock_guard const lock(mutex_);
    closed_ = true;
    dropped.swap(calls_);
    wake_ = nullptr;
}

} // namespace wainscot
