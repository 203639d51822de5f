#include "tests/host_fixture.h"

#include "driver/windows/child_process.h"
#include "host/events/ui_thread_callback.h"
#include "host/messages/notify_msg.h"
#include "host/services/clock.h"

#include <cmath>
#include <limits>
#include <stdexcept>

namespace wainscot {
namespace {

class Loop : public OneWindowTest {
protected:
    InputEvent pointerInput(InputEvent::Kind kind, XY<int> place,
                            InputEvent::Button button = InputEvent::Button::none) {
        return {.kind = kind, .button = button, .place = place, .time = virtualClock().msecs()};
    }
    void turnWithAKey() {
        host_->loop().inject({.kind = InputEvent::Kind::keyPressed, .keyCode = 'k'});
        host_->loop().turn();
    }
};

TEST_F(Loop, APressAndItsMessageAreDoneBeforeTheReleaseIsLookedAt) {
    auto* const probe = addTo(root_, new ProbeGlob(60, 40, &log_));
    probe->onReact = [&](Event const& event) {
        if (isMessageEvent(event)) return probe->Glob::react(event);
        if (mouse_down_event(event)) {
            log_.push_back("down");
            sendMessage("one", probe);
            event_send(std::make_unique<Event>(EventKind::keyPress, std::uint32_t('x'), probe).get());
            sendMessage("two", probe, probe, true);
        }
        if (mouse_up_event(event)) log_.push_back("up");
        if (isKeyPressEvent(event)) log_.push_back("posted key");
        return true;
    };
    XY<int> const place = probe->screenBox().centre();
    host_->loop().inject(pointerInput(InputEvent::Kind::pointerPressed, place, InputEvent::Button::left));
    host_->loop().inject(pointerInput(InputEvent::Kind::pointerReleased, place, InputEvent::Button::left));
    host_->loop().turn();
    EXPECT_THAT(log_, ElementsAre("entered", "down", "message one", "posted key", "message two", "up"));
}

TEST_F(Loop, OfMovesThatFollowEachOtherTheLastOneCounts) {
    auto* const probe = addTo(root_, new ProbeGlob(60, 40, &log_));
    moveIn(probe, 1, 1);
    probe->noteMouse();
    takeLog();
    auto const input = [&](int x, InputEvent::Kind kind,
                           InputEvent::Button button = InputEvent::Button::none) {
        host_->loop().inject(pointerInput(kind, probe->globXYToScreenXY({x, 5}), button));
    };
    for (int const x : {10, 20, 30}) input(x, InputEvent::Kind::pointerMoved);
    input(30, InputEvent::Kind::pointerPressed, InputEvent::Button::left);
    for (int const x : {40, 50}) input(x, InputEvent::Kind::pointerMoved);
    input(50, InputEvent::Kind::pointerReleased, InputEvent::Button::left);
    host_->loop().turn();
    EXPECT_THAT(log_, ElementsAre("move 30,5", "down 30,5", "move 50,5", "up 50,5"));
}

TEST_F(Loop, TimersComeAfterInputAndCallsFromThreadsAfterTimersAndThenItPaintsOnce) {
    auto* const probe = addTo(root_, new ProbeGlob(60, 40, &log_));
    driver_.settle();
    probe->setInterest(EventKind::timer);
    probe->onReact = [&](Event const& event) {
        if (isMessageEvent(event)) return probe->Glob::react(event);
        if (isTimerEvent(event)) {
            log_.push_back("timer");
            sendMessage("from the timer", probe);
        }
        if (isKeyPressEvent(event)) log_.push_back("key");
        probe->makeDirty();
        return true;
    };
    probe->onDraw = [&] { log_.push_back("draw"); };
    set_kbd_focus(probe);
    log_.clear();
    UIThreadCallback<NotifyMsg> late(makeCallback<int, NotifyMsg>([&](NotifyMsg const&) {
        log_.push_back("call");
        probe->makeDirty();
        return 1;
    }));
    late.call(NotifyMsg("late"));
    virtualClock().advance(10);
    turnWithAKey();
    EXPECT_THAT(log_, ElementsAre("key", "timer", "message from the timer", "call", "draw"));
    probe->clearInterest(EventKind::timer);
}

TEST_F(Loop, AWidgetThatPostsToItselfForEverStarvesNobody) {
    expectDiagnostic("queue not drained");
    auto* const busy = addTo(root_, new ProbeGlob);
    auto* const other = addTo(root_, new ProbeGlob(60, 40), BottomLeft(100, 0));
    driver_.settle();
    int posted = 0;
    int const most = 1000;
    busy->onMessage = [&](auto const&, Glob*) {
        if (++posted < most) sendMessage("again", busy);
        return 1;
    };
    int keys = 0;
    other->onReact = [&](Event const& event) { return isKeyPressEvent(event) && ++keys > 0; };
    set_kbd_focus(other);
    sendMessage("again", busy);
    turnWithAKey();
    EXPECT_EQ(keys, 1);
    EXPECT_GE(posted, EventLoop::maxRounds);
    EXPECT_LT(posted, most) << "one turn delivers a bounded number of rounds";
    int const drawnBefore = other->drawn;
    other->makeDirty();
    host_->loop().turn();
    EXPECT_EQ(other->drawn, drawnBefore + 1) << "painting is not kept waiting";
    EXPECT_GE(Diagnostics::countOf("queue not drained"), 1u);
    driver_.settle();
    EXPECT_EQ(posted, most);
}

TEST_F(Loop, ExceptionsAreReportedAndLeaveHoldsAndTreeInBalance) {
    expectDiagnostic("exception in handler");
    expectDiagnostic("redraw holds out of balance");
    auto* const thrower = addTo(root_, new ProbeGlob);
    driver_.settle();
    thrower->onReact = [&](Event const& event) -> bool {
        if (isMessageEvent(event)) return thrower->Glob::react(event);
        Drawable::disableRedraws();
        throw std::runtime_error("reaction");
    };
    thrower->onMessage = [](auto const&, Glob*) -> int { throw 42; };
    driver_.clickAt(thrower->screenBox().centre());
    EXPECT_EQ(Drawable::holdCount(), 0);
    sendMessage("queued", thrower);
    sendMessage("next", root_);
    driver_.settle();
    EXPECT_EQ(root_->names(), "next") << "the queue goes on";
    EXPECT_THROW(callMessage("direct", thrower), int) << "direct calls let it pass";
    thrower->onReact = nullptr;
    thrower->onDraw = []() -> void { throw std::runtime_error("painting"); };
    thrower->makeDirty();
    auto* const later = addTo(root_, new ProbeGlob(10, 10), BottomLeft(100, 100));
    driver_.settle();
    EXPECT_EQ(later->drawn, 1) << "others are painted all the same";
    // Move, press and release; the queued message; the painting.
    EXPECT_EQ(Diagnostics::countOf("exception in handler"), 5u);
    EXPECT_EQ(Diagnostics::countOf("redraw holds out of balance"), 3u);
}

TEST_F(Loop, AHoldOnPurposeLastsUntilItsOwnerEndsIt) {
    auto* const probe = addTo(root_, new ProbeGlob);
    driver_.settle();
    std::unique_ptr<LastingRedrawHold> loading;
    probe->onMessage = [&](LightweightString<char> const& name, Glob*) {
        if (name == "begin") loading = std::make_unique<LastingRedrawHold>("loading");
        if (name == "end") loading.reset();
        probe->makeDirty();
        return 1;
    };
    for (char const* name : {"begin", "more"}) {
        sendMessage(name, probe);
        driver_.settle();
        Drawable::update();
        EXPECT_EQ(probe->drawn, 1) << name;
        EXPECT_THAT(Drawable::lastingHolds(), ElementsAre("loading"));
    }
    sendMessage("end", probe);
    driver_.settle();
    EXPECT_EQ(probe->drawn, 2);
}

TEST_F(Loop, ItEndsWithTheLastWindowOrWhenToldTo) {
    RecordingParent* const second = openWindow(200, 200, {600, 100});
    root_->setInterest(EventKind::timer);
    root_->setNextTimer(5000);
    auto* const quitter = addTo(second, new ProbeGlob);
    quitter->onReact = [&](Event const& event) {
        if (isTimerEvent(event)) host_->quit(7);
        return true;
    };
    quitter->setInterest(EventKind::timer);
    quitter->setNextTimer(100);
    double const start = virtualClock().msecs();
    EXPECT_EQ(host_->run(), 7);
    EXPECT_EQ(virtualClock().msecs(), start + 100) << "time runs from due time to due time";
    delete quitter;
    driver_.closeWindow(second);
    driver_.closeWindow(root_);
    // Both heard "poot" and, being recorders, consumed it.
    EXPECT_EQ(root_->names(), "poot");
    EXPECT_EQ(host_->globManager().numWindows(), 2u);
    delete root_;
    delete second;
    EXPECT_EQ(host_->run(), 0);
}

TEST_F(Loop, ClosingDestroysAWindowThatDoesNotObject) {
    auto* const plain = new Glob(100, 100);
    host_->globManager().realize(plain);
    driver_.settle();
    plain->setIndestructible(true);
    driver_.closeWindow(plain);
    EXPECT_TRUE(is_good_glob_ptr(plain));
    plain->setIndestructible(false);
    driver_.closeWindow(plain);
    EXPECT_FALSE(is_good_glob_ptr(plain));
    EXPECT_EQ(host_->offscreen()->numWindows(), 1u) << "the other one";
}

TEST_F(Loop, ArefusedWindowLeavesTheRootWithItsOwner) {
    host_->offscreen()->refuseWindows(true);
    auto const root =
        std::make_unique<Glob>(static_cast<unsigned short>(10), static_cast<unsigned short>(10));
    EXPECT_FALSE(host_->globManager().realize(root.get()));
    EXPECT_EQ(root->canvas()->surface(), nullptr);
    EXPECT_THROW(Host(0, nullptr, {}), std::logic_error) << "one host at a time";
}

// Timers and virtual time

class Timers : public OneWindowTest {
protected:
    struct Ticker : ProbeGlob {
        std::vector<double> ticks;
        std::vector<double> stated;
        bool react(Event const& event) override {
            if (!isTimerEvent(event)) return ProbeGlob::react(event);
            ticks.push_back(event.time());
            if (ticks.size() <= stated.size()) setNextTimer(stated[ticks.size() - 1]);
            return ProbeGlob::react(event);
        }
    };
};

TEST_F(Timers, TickOnAGridWhileWantedAndNeverElse) {
    auto* const ticker = addTo(root_, new Ticker);
    double const start = virtualClock().msecs();
    driver_.advance(100);
    EXPECT_TRUE(ticker->ticks.empty());
    EXPECT_FALSE(EventTimeServer::theEventTimeServer()->nextDue());
    ticker->setInterest(EventKind::timer);
    ticker->setInterest(EventKind::timer);
    ticker->setVisible(false);
    driver_.advance(35);
    EXPECT_THAT(ticker->ticks, ElementsAre(start + 110, start + 120, start + 130)) << "the hidden tick too";
    EXPECT_EQ(virtualClock().msecs(), start + 135);
    ticker->clearInterest(EventKind::timer);
    driver_.advance(100);
    EXPECT_EQ(ticker->ticks.size(), 3u);
    ticker->setInterest(EventKind::timer);
    for (double const ms : {1000.0, 20.0}) {
        ticker->ticks.clear();
        virtualClock().advance(ms);
        driver_.settle();
        EXPECT_EQ(ticker->ticks.size(), 1u) << "no catching up after " << ms;
    }
}

TEST_F(Timers, AStatedTimeIsKeptOnceThenTheGridAgain) {
    auto* const ticker = addTo(root_, new Ticker);
    double const start = virtualClock().msecs();
    ticker->stated = {500, 250.5, 0};
    ticker->setInterest(EventKind::timer);
    ticker->setNextTimer(42);
    driver_.advance(820);
    EXPECT_THAT(ticker->ticks,
                ElementsAre(start + 42, start + 542, start + 792.5, start + 802.5, start + 812.5));
    ticker->clearInterest(EventKind::timer);
}

TEST_F(Timers, WhatIsAddedInATickIsNotCalledInItWhatIsRemovedNever) {
    auto* const first = addTo(root_, new Ticker);
    auto* const removed = addTo(root_, new Ticker);
    auto* const killed = addTo(root_, new Ticker);
    auto* const added = addTo(root_, new Ticker);
    int killedTicks = 0;
    killed->onReact = [&](Event const&) { return ++killedTicks > 0; };
    for (Ticker* ticker : {first, removed, killed}) ticker->setInterest(EventKind::timer);
    first->onReact = [&](Event const& event) {
        if (!isTimerEvent(event) || first->ticks.size() != 1) return true;
        removed->clearInterest(EventKind::timer);
        delete killed;
        added->setInterest(EventKind::timer);
        return true;
    };
    driver_.advance(10);
    EXPECT_EQ(first->ticks.size(), 1u);
    EXPECT_TRUE(removed->ticks.empty());
    EXPECT_EQ(killedTicks, 0);
    EXPECT_TRUE(added->ticks.empty());
    driver_.advance(10);
    EXPECT_EQ(added->ticks.size(), 1u);
}

TEST_F(Timers, WithWallTimeTheProcessorClockRunsOnWithoutAJump) {
    SystemClock clock;
    std::int64_t const before = clock.processor();
    clock.runProcessorWithWallTime(true);
    double const start = clock.msecs();
    std::int64_t const first = clock.processor();
    letTimePass(std::chrono::milliseconds(30));
    double const wall = clock.msecs() - start;
    double const ran = static_cast<double>(clock.processor() - first) / 1000.0;
    EXPECT_NEAR(ran, wall, 15.0) << "asleep";
    clock.runProcessorWithWallTime(false);
    std::int64_t const after = clock.processor();
    EXPECT_GE(first, before);
    EXPECT_GE(after - first, 29000) << "and never goes back";
    EXPECT_LT(after - first, 10'000'000);
}

TEST_F(Timers, AllThreeClocksMoveTogetherOrOneByOne) {
    iClock const& now = iClock::current();
    double const msecs = now.msecs();
    std::int64_t const processor = now.processor();
    std::int64_t const calendar = now.calendar();
    driver_.advance(2500.5);
    EXPECT_EQ(now.msecs(), msecs + 2500.5);
    EXPECT_EQ(now.processor(), processor + 2500500);
    EXPECT_EQ(now.calendar(), calendar + 2);
    virtualClock().advanceProcessor(300);
    EXPECT_EQ(now.processor(), processor + 2500800);
    virtualClock().setCalendar(86400);
    EXPECT_EQ(now.calendar(), 86400);
    EXPECT_EQ(now.msecs(), msecs + 2500.5);
    EXPECT_EQ(service_get_msecs(), now.msecs());
    expectDiagnostic("clock not moved");
    for (double ms : {std::numeric_limits<double>::infinity(), std::nan("")}) virtualClock().advance(ms);
    virtualClock().advanceTo(std::numeric_limits<double>::infinity());
    EXPECT_EQ(now.msecs(), msecs + 2500.5) << "there is no such time";
}

} // namespace
} // namespace wainscot
