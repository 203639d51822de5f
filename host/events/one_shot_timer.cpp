#include "host/events/one_shot_timer.h"

#include "host/events/dispatch_scope.h"
#include "host/events/event.h"
#include "host/events/event_time_server.h"

#include <algorithm>

namespace wainscot {

class OneShotTimer::Waiting final : public EventHandler {
public:
    explicit Waiting(OneShotTimer& timer) : timer_(&timer) {}
    ~Waiting() override { cancel(); }
    // Owned by the timer, never counted.
    void addRef() const noexcept override {}
    void release() const noexcept override {}

    void wait(EventTimeServer& timers, double ms) {
        timers.registerForTimeEvents(this);
        timers.setNextTimer(this, std::max(ms, EventTimeServer::minMs));
    }
    void cancel() {
        timer_ = nullptr;
        if (EventTimeServer* const timers = EventTimeServer::theEventTimeServer()) timers->unregister(this);
    }
    bool handleEvent(Event const& event) override {
        if (isTimerEvent(event) && timer_) timer_->fire();
        return true;
    }

private:
    OneShotTimer* timer_;
};

OneShotTimer::OneShotTimer(std::function<void()> due) : due_(std::move(due)) {}

OneShotTimer::~OneShotTimer() {
    stop();
}

void OneShotTimer::start(double ms) {
    EventTimeServer* const timers = EventTimeServer::theEventTimeServer();
    if (!timers) return;
    if (!waiting_) waiting_ = std::make_unique<Waiting>(*this);
    waiting_->wait(*timers, ms);
}

/// The host of the present wait may have gone.
bool OneShotTimer::isRunning() const {
    EventTimeServer const* const timers = EventTimeServer::theEventTimeServer();
    return waiting_ && timers && timers->isRegistered(waiting_.get());
}

/// It may be called by the function that is running.
void OneShotTimer::stop() {
    if (!waiting_) return;
    waiting_->cancel();
    DispatchScope::freeWhenUnwound([](void* waiting) { delete static_cast<Waiting*>(waiting); },
                                   waiting_.release());
}

void OneShotTimer::fire() {
    stop();
    std::function<void()> const due = due_;
    due();
}

} // namespace wainscot
