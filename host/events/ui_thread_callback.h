#pragma once

#include "host/events/event_system.h"
#include "host/events/thread_inbox.h"
#include "host/messages/callback.h"

#include <atomic>
#include <memory>

namespace wainscot {

/// Brings calls from any thread onto the user-interface thread. Made on that thread; calls are delivered
/// through the host's queue, in the order in which they were made, never after the receiver or this object
/// has died.
template <class Argument>
class UIThreadCallback {
public:
    using Callback = Qv::Ptr<iCallbackBase<int, Argument>>;

    /// Without a receiver only this object's own life counts.
    explicit UIThreadCallback(Callback callback, EventHandler* receiver = nullptr)
        : state_(std::make_shared<State>()) {
        state_->callback = std::move(callback);
        state_->receiver = HandlerRef<>(receiver);
        if (EventSystem* system = EventSystem::current()) state_->inbox = system->inbox;
    }
    UIThreadCallback(UIThreadCallback const&) = delete;
    UIThreadCallback& operator=(UIThreadCallback const&) = delete;
    ~UIThreadCallback() { state_->ended = true; }

    /// Safe from any thread, for as long as this object lives.
    void call(Argument argument) const {
        if (state_->inbox)
            state_->inbox->post(Qv::Ptr<EventQueue::Call>(new Delivery(state_, std::move(argument))));
    }

private:
    struct State {
        Callback callback;
        HandlerRef<> receiver;
        std::shared_ptr<ThreadInbox> inbox;
        std::atomic<bool> ended{false};
    };

    class Delivery final : public EventQueue::Call {
    public:
        Delivery(std::shared_ptr<State> state, Argument argument)
            : state_(std::move(state)), argument_(std::move(argument)) {}
        void run() override {
            if (state_->ended || !state_->callback) return;
            if (state_->receiver != HandlerRef<>() && !state_->receiver) return;
            Callback const held = state_->callback;
            held->call(argument_);
        }

    private:
        std::shared_ptr<State> state_;
        Argument argument_;
    };

    std::shared_ptr<State> state_;
};

} // namespace wainscot
