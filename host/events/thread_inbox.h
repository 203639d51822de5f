#pragma once

#include "host/events/event_queue.h"

#include <deque>
#include <functional>
#include <mutex>

namespace wainscot {

/// Where other threads leave calls for the user-interface thread. Safe from any thread.
/// The live host's inbox is found through a shared handle that outlives it: late calls are dropped.
class WAINSCOT_API ThreadInbox {
public:
    explicit ThreadInbox(std::function<void()> wake) : wake_(std::move(wake)) {}

    /// Leaves a call and wakes the loop.
    void post(Qv::Ptr<EventQueue::Call> call);
    /// Takes the calls that have come, oldest first, at most `most`; the rest stays.
    std::deque<Qv::Ptr<EventQueue::Call>> take(std::size_t most);
    bool empty() const;
    /// From now on new calls are dropped.
    void close();

private:
    mutable std::mutex mutex_;
    std::deque<Qv::Ptr<EventQueue::Call>> calls_;
    std::function<void()> wake_;
    bool closed_ = false;
};

} // namespace wainscot
