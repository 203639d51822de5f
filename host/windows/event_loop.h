#pragma once

#include "host/base/export.h"
#include "host/events/event_queue.h"
#include "host/windows/input_event.h"

#include <memory>
#include <vector>

namespace wainscot {

class Backend;
class EventSystem;
class GlobManager;
class InputRouter;

/// The one loop. A turn dispatches the platform input that has come, then the timers that are due, then calls
/// from other threads, draining the queue after each; then it paints once, and presents.
class WAINSCOT_API EventLoop {
public:
    EventLoop(Backend& backend, EventSystem& events, GlobManager& windows);
    ~EventLoop();
    EventLoop(EventLoop const&) = delete;
    EventLoop& operator=(EventLoop const&) = delete;

    /// Turns until the last window has closed or `quit()` is called. The answer is the argument of `quit()`,
    /// else 0. After an earlier `quit()` it ends at once. Without a screen it also ends when nothing can
    /// happen any more. Refused with 1 inside a handler.
    int run();
    void quit(int code);
    /// One turn, without sleeping. Refused inside a handler: the loop never runs from there.
    void turn();
    /// Adds input as if it came from the window system, behind the waiting input.
    void inject(InputEvent input);
    /// Whether nothing is left to do before time moves or input comes.
    bool isIdle() const;
    /// Turns without moving time until idle; false when `maxTurns` were not enough.
    bool settle(int maxTurns = 1000);

    /// A turn is under way.
    bool isTurning() const { return running_ > 0; }
    /// The host is destroyed inside a turn: nothing more is delivered. The host's parts, this loop included,
    /// are freed when the outermost call of the loop returns.
    void endWith(std::shared_ptr<void> parts);

    /// Rounds of delivery after one input event or timer; what is left then waits for the next turn.
    static constexpr int maxRounds = 64;
    /// Deliveries after one input event or timer, likewise.
    static constexpr std::size_t maxDeliveries = 100000;

private:
    class Running;
    void dispatchInput();
    void routeInput(InputEvent const& input);
    /// Handles input that the program itself has caused in the window system, before further input.
    void takeReports();
    void dispatchTimers();
    void takeCalls();
    void drain();
    void deliver(EventQueue::Entry& entry);
    void paint();
    /// Runs one handler. Exceptions are reported; redraw holds that it leaves behind end.
    template <class Handler>
    void handle(char const* where, Handler handler);

    Backend& backend_;
    EventSystem& events_;
    GlobManager& windows_;
    std::unique_ptr<InputRouter> router_;
    std::vector<InputEvent> input_;
    bool turning_ = false;
    /// Nested calls of `run`, `settle` and `turn`.
    int running_ = 0;
    /// Not null when the host has been destroyed.
    std::shared_ptr<void> remains_;
    bool quit_ = false;
    int exitCode_ = 0;
};

} // namespace wainscot
