#include "host/events/thread_inbox.h"

namespace wainscot {

void ThreadInbox::post(Qv::Ptr<EventQueue::Call> call) {
    std::lock_guard const lock(mutex_);
    if (closed_) return;
    calls_.push_back(std::move(call));
    // Inside the lock, so that the backend behind it cannot go while it is being woken.
    if (wake_) wake_();
}

std::vector<Qv::Ptr<EventQueue::Call>> ThreadInbox::take() {
    std::lock_guard const lock(mutex_);
    return std::exchange(calls_, {});
}

bool ThreadInbox::empty() const {
    std::lock_guard const lock(mutex_);
    return calls_.empty();
}

void ThreadInbox::close() {
    std::vector<Qv::Ptr<EventQueue::Call>> dropped;
    std::lock_guard const lock(mutex_);
    closed_ = true;
    dropped.swap(calls_);
    wake_ = nullptr;
}

} // namespace wainscot
