#include "host/windows/event_loop.h"

#include "host/base/diagnostics.h"
#include "host/base/ui_thread.h"
#include "host/events/dispatch_scope.h"
#include "host/events/event_system.h"
#include "host/events/messages.h"
#include "host/objects/dispatch.h"
#include "host/objects/pending_layouts_p.h"
#include "host/services/preferences.h"
#include "host/services/system_watchdog.h"
#include "host/windows/backend.h"
#include "host/windows/glob_manager.h"
#include "host/windows/input_router_p.h"

#include <algorithm>

namespace wainscot {

namespace {

/// Of neighbouring moves in one window only the last one counts.
void mergeMoves(std::vector<InputEvent>& input) {
    std::size_t kept = 0;
    for (std::size_t i = 0; i < input.size(); ++i) {
        bool const isMove = input[i].kind == InputEvent::Kind::pointerMoved;
        bool const followed = isMove && !input[i].isStep && i + 1 < input.size() &&
                              input[i + 1].kind == InputEvent::Kind::pointerMoved &&
                              input[i + 1].window == input[i].window;
        if (followed) continue;
        if (kept != i) input[kept] = std::move(input[i]);
        ++kept;
    }
    input.resize(kept);
}

/// Writes settings that have waited long enough; gives when the next settings are due.
std::optional<double> writePreferences() {
    EditorPreferences* const store = EditorPreferences::current();
    if (!store) return {};
    store->writeIfDue();
    return store->nextWrite();
}

std::optional<double> sooner(std::optional<double> a, std::optional<double> b) {
    return a && b ? std::min(*a, *b) : a ? a : b;
}

/// Marks that a turn is running; the mark goes also when the window system throws.
class Turning {
public:
    explicit Turning(bool& mark) : mark_(mark) { mark_ = true; }
    ~Turning() { mark_ = false; }
    Turning(Turning const&) = delete;
    Turning& operator=(Turning const&) = delete;

private:
    bool& mark_;
};

} // namespace

/// One call of the loop. When the host has been destroyed meanwhile, the outermost call frees the loop.
class EventLoop::Running {
public:
    explicit Running(EventLoop& loop) : loop_(loop) { ++loop.running_; }
    ~Running() {
        if (--loop_.running_ == 0) auto const last = std::move(loop_.remains_);
    }
    Running(Running const&) = delete;
    Running& operator=(Running const&) = delete;

private:
    EventLoop& loop_;
};

void EventLoop::endWith(std::shared_ptr<void> parts) {
    remains_ = std::move(parts);
    quit_ = true;
}

EventLoop::EventLoop(Backend& backend, EventSystem& events, GlobManager& windows)
    : backend_(backend), events_(events), windows_(windows),
      router_(std::make_unique<InputRouter>(backend, events, windows)) {}

EventLoop::~EventLoop() = default;

template <class Handler>
void EventLoop::handle(char const* where, Handler handler) {
    if (remains_) return;
    int const holds = Drawable::holdCount();
    {
        DispatchScope const scope;
        SystemWatchdog::Watch const watch(where);
        runHandler(where, handler);
    }
    if (Drawable::holdCount() == holds) return;
    Diagnostics::count("redraw holds out of balance", where);
    Drawable::restoreHoldCount(holds);
}

int EventLoop::run() {
    if (turning_ || DispatchScope::isActive()) {
        Diagnostics::count("loop run from inside a handler", "run");
        return 1;
    }
    Running const running(*this);
    while (!quit_ && windows_.numWindows() > 0) {
        turn();
        if (quit_ || !isIdle() || windows_.numWindows() == 0) continue;
        std::optional<double> const due = events_.timers.nextDue();
        if (!due && !backend_.isInteractive()) break;
        backend_.wait(sooner(due, writePreferences()));
    }
    quit_ = false;
    return std::exchange(exitCode_, 0);
}

void EventLoop::quit(int code) {
    quit_ = true;
    exitCode_ = code;
}

void EventLoop::turn() {
    if (turning_ || DispatchScope::isActive()) {
        Diagnostics::count("loop run from inside a handler", "turn");
        return;
    }
    UiThread::check("the loop turned");
    Running const running(*this);
    Turning const turning(turning_);
    dispatchInput();
    dispatchTimers();
    takeCalls();
    drain();
    backend_.setRepeating(router_->isRepeating());
    paint();
}

void EventLoop::dispatchInput() {
    backend_.poll(input_);
    std::vector<InputEvent> input = std::exchange(input_, {});
    mergeMoves(input);
    for (InputEvent const& next : input) {
        if (remains_) return;
        routeInput(next);
        takeReports();
    }
}

void EventLoop::routeInput(InputEvent const& input) {
    handle("input", [&] { router_->route(input); });
    drain();
    backend_.setRepeating(router_->isRepeating());
}

/// Handlers that open and close windows for ever leave the rest for the next turn.
void EventLoop::takeReports() {
    for (int round = 0; round < maxRounds && backend_.hasInput(); ++round) {
        std::vector<InputEvent> reports;
        backend_.poll(reports);
        for (InputEvent const& report : reports) routeInput(report);
    }
}

/// Earlier reports come first.
void EventLoop::inject(InputEvent input) {
    backend_.poll(input_);
    input_.push_back(std::move(input));
}

void EventLoop::dispatchTimers() {
    double const now = service_get_msecs();
    for (EventTimeServer::Due const& due : events_.timers.takeDue(now)) {
        if (!events_.timers.isStillDue(due)) continue;
        Event event(EventKind::timer);
        event.setTime(now);
        event.setTarget(due.handler.get());
        handle("timer", [&] { deliverEvent(due.handler.get(), event); });
        drain();
    }
}

void EventLoop::takeCalls() {
    if (events_.queue.size() >= maxDeliveries) return;
    for (Qv::Ptr<EventQueue::Call>& call : events_.inbox->take(maxDeliveries - events_.queue.size()))
        events_.queue.add(std::move(call));
}

void EventLoop::drain() {
    std::size_t delivered = 0;
    if (remains_) return;
    for (int round = 0; round < maxRounds && !events_.queue.empty(); ++round) {
        std::deque<EventQueue::Entry> entries = events_.queue.take();
        while (!entries.empty() && delivered < maxDeliveries) {
            EventQueue::Entry entry = std::move(entries.front());
            entries.pop_front();
            deliver(entry);
            ++delivered;
        }
        events_.queue.putBack(entries);
        if (delivered == maxDeliveries) break;
    }
    if (!events_.queue.empty()) Diagnostics::count("queue not drained", "handlers keep posting");
}

void EventLoop::deliver(EventQueue::Entry& entry) {
    if (entry.call) {
        handle("call from another thread", [&] { entry.call->run(); });
        return;
    }
    EventHandler* const target = entry.event.target();
    if (!target) return;
    if (isMessageEvent(entry.event)) {
        handle("message", [&] { deliverEvent(target, entry.event); });
        return;
    }
    Glob* const glob = target->asGlob();
    if (!glob)
        handle("posted event", [&] { deliverEvent(target, entry.event); });
    else if (glob->isShown())
        handle("posted event", [&] { dispatchUpwards(glob, entry.event); });
}

void EventLoop::paint() {
    if (PendingLayouts::any()) handle("layout", [] { PendingLayouts::doAll(); });
    windows_.popUps().checkOpeners();
    if (windows_.hasPaintWork()) handle("painting", [&] { windows_.paintPending(); });
    handle("text caret", [&] { router_->followTextCaret(); });
    if (router_->containmentIsStale()) handle("containment", [&] { router_->refreshContainment(); });
}

bool EventLoop::isIdle() const {
    return input_.empty() && !backend_.hasInput() && events_.queue.empty() && events_.inbox->empty() &&
           !PendingLayouts::any() && !windows_.hasPaintWork();
}

bool EventLoop::settle(int maxTurns) {
    Running const running(*this);
    for (int i = 0; i < maxTurns; ++i) {
        turn();
        if (remains_ || isIdle()) return true;
    }
    Diagnostics::count("not settled", "handlers keep each other busy");
    return false;
}

} // namespace wainscot
