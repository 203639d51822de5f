#include "tests/host_fixture.h"

#include "foundation/load_toolkit.h"
#include "foundation/makers.h"
#include "host/drawing/uif_std.h"
#include "host/messages/handler_ref.h"
#include "host/messages/notifier.h"
#include "host/objects/glob_notices.h"
#include "host/services/preferences.h"
#include "host/windows/look.h"
#include "look/face.h"

#include <limits>

namespace wainscot {
namespace {

class Robust : public OneWindowTest {
protected:
    /// A callback that runs a function and answers 0.
    static GlobNotices::Callback calling(std::function<void()> act) {
        return makeCallback<int, NotifyMsg>([act = std::move(act)](NotifyMsg const&) {
            act();
            return 0;
        });
    }
};

TEST_F(Robust, NoticesOfMovesMayDestroyWhatIsBeingAddedOrShown) {
    auto* child = new ProbeGlob;
    auto watch = GlobNotices::watchMoves(*child, calling([&] { delete child; }));
    EXPECT_EQ(root_->addChild(child, BottomLeft(10, 10)), nullptr);
    auto owned = std::make_unique<ProbeGlob>();
    child = owned.get();
    auto* const panel = addTo(root_, new ProbeGlob);
    watch = GlobNotices::watchMoves(*child, calling([&] { delete panel; }));
    EXPECT_EQ(panel->addChild(std::move(owned), BottomLeft(10, 10)), nullptr);
    EXPECT_EQ(root_->numChildren(), 0u);
    auto* const window = new Glob(20, 20);
    watch = GlobNotices::watchMoves(*window, calling([&] { delete window; }));
    EXPECT_TRUE(host_->globManager().realize(window, XY<int>(7, 7))) << "nothing is left to the caller";
    EXPECT_EQ(host_->globManager().numWindows(), 1u);
}

TEST_F(Robust, ARootThatSharesACanvasIsNoWindow) {
    expectDiagnostic("window refused");
    auto const sharing = std::make_unique<Glob>(
        static_cast<unsigned short>(5), static_cast<unsigned short>(5), Palette(), true, root_->canvas());
    EXPECT_FALSE(host_->globManager().realize(sharing.get()));
    EXPECT_EQ(host_->globManager().numWindows(), 1u);
}

TEST_F(Robust, TheLoopIsNotRunInsideAHandlerAndAnEarlyQuitCounts) {
    expectDiagnostic("loop run from inside a handler");
    auto* const probe = addTo(root_, new ProbeGlob(60, 40, &log_));
    int answer = -1;
    probe->onMessage = [&](LightweightString<char> const& name, Glob*) {
        if (name != "run") return 1;
        sendMessage("inner", probe);
        host_->loop().turn();
        answer = host_->run();
        EXPECT_EQ(log_.size(), 1u) << "nothing is delivered inside the handler";
        host_->quit(3);
        return 1;
    };
    sendMessage("run", probe);
    driver_.settle();
    EXPECT_EQ(answer, 1);
    EXPECT_EQ(log_, (Lines{"message run", "message inner"}));
    EXPECT_EQ(host_->run(), 3);
    EXPECT_EQ(host_->run(), 0) << "the quit is spent";
}

TEST_F(Robust, PostingThatDoublesEndsTheTurnAllTheSame) {
    expectDiagnostic("queue not drained");
    auto* const probe = addTo(root_, new ProbeGlob);
    int delivered = 0;
    bool doubling = true;
    probe->onMessage = [&](auto const&, Glob*) {
        ++delivered;
        if (!doubling) return 1;
        sendMessage("twice", probe);
        sendMessage("twice", probe);
        return 1;
    };
    sendMessage("once", probe);
    host_->loop().turn();
    EXPECT_LE(delivered, 2 * EventLoop::maxDeliveries);
    doubling = false;
    driver_.settle();
}

TEST_F(Robust, WhatAnswersItselfForEverIsBounded) {
    expectDiagnostic("window refused");
    expectDiagnostic("event handlers offered in a ring");
    expectDiagnostic("look change not told");
    struct Answering : Glob {
        Answering() : Glob(10, 10) {}
        void handleLookChange(LookChange) override {
            if (++changes < 1000)
                Look::setTheme(Palette::currentTheme() == eThemeDark ? eThemeLight : eThemeDark);
        }
        int changes = 0;
    };
    auto* const answering = addTo(root_, new Answering);
    Look::broadcast();
    EXPECT_GT(answering->changes, 2);
    EXPECT_LT(answering->changes, 100);
    destroy(answering);
    Palette::setCurrentTheme(eThemeDark);

    std::vector<ProbeGlob*> ring;
    int asked = 0;
    for (int i = 0; i < 3; ++i) {
        ring.push_back(addTo(root_, new ProbeGlob));
        ring.back()->onReact = [&](Event const&) { return ++asked < 0; };
    }
    for (std::size_t i = 0; i < 3; ++i) ring[i]->addEventHandler(ring[(i + 1) % 3], EventKind::keyPress);
    ring[0]->handleEvent(Event(EventKind::keyPress));
    EXPECT_EQ(asked, 4) << "each once, and the first at its own turn";
    // A chain without a ring needs no call stack either.
    for (int i = 0; i < 20000; ++i) {
        ring.push_back(addTo(root_, new ProbeGlob));
        ring[ring.size() - 2]->addEventHandler(ring.back(), EventKind::keyPress);
    }
    ring[3]->handleEvent(Event(EventKind::keyPress));

    struct Calls : EventQueue::Call {
        explicit Calls(int& count) : count_(count) {}
        void run() override { ++count_; }
        int& count_;
    };
    int calls = 0;
    constexpr int most = EventLoop::maxDeliveries;
    for (int i = 0; i < most + 10; ++i)
        EventSystem::live().inbox->post(Qv::Ptr<EventQueue::Call>(new Calls(calls)));
    host_->loop().turn();
    EXPECT_EQ(calls, most);
    driver_.settle();
    EXPECT_EQ(calls, most + 10);

    std::vector<NotifierSubscription> watches;
    std::function<void(Glob*)> const openAnother = [&](Glob* glob) {
        watches.push_back(GlobNotices::watchDeletion(*glob, calling([&] {
            auto another = std::make_unique<Glob>(9, 9);
            if (host_->globManager().realize(another.get())) openAnother(another.release());
        })));
    };
    openAnother(root_);
    host_->globManager().closeAll();
    EXPECT_EQ(host_->globManager().numWindows(), 0u);
    EXPECT_LT(watches.size(), 100u);
}

/// While the loop turns, and in a call from outside of it.
TEST(HostInAHandler, EndsWhenThatHasReturned) {
    for (bool const inLoop : {true, false}) {
        Diagnostics::reset();
        Diagnostics::setSink([](char const*) {});
        HostSettings settings;
        settings.name = "test";
        settings.screen = HostSettings::Screen::offscreen;
        auto host = std::make_unique<Host>(0, nullptr, settings);
        auto* const probe = new ProbeGlob;
        probe->onMessage = [&](auto const&, Glob*) {
            sendMessage("never", probe);
            host.reset();
            EXPECT_THROW(Host(0, nullptr, settings), std::logic_error);
            return 1;
        };
        host->globManager().realize(probe);
        if (inLoop) {
            sendMessage("end", probe);
            EXPECT_EQ(host->run(), 0);
        } else {
            callMessage("end", probe, nullptr);
        }
        EXPECT_EQ(ProbeGlob::alive, 0);
        EXPECT_EQ(EventSystem::current(), nullptr);
        EXPECT_EQ(Diagnostics::countOf("host destroyed inside a handler"), 1u);
        Diagnostics::setSink(nullptr);
        Diagnostics::reset();
    }
}

TEST_F(Robust, CallbacksThatEndOtherSubscriptionsWhenTheyGo) {
    struct Chain : CallbackInvokerBase {
        NotifierSubscription next;
        bool typeMatch(int) const override { return true; }
        void invoke(NotifyMsg const&) override {}
    };
    Notifier notifier;
    std::vector<NotifierBase::Id> ids;
    for (int i = 0; i < 50; ++i) {
        auto* const chain = new Chain;
        chain->next = notifier.subscribe("", calling([] {}));
        ids.push_back(notifier.registerInternal(chain));
    }
    for (NotifierBase::Id id : ids) EXPECT_TRUE(notifier.unregister(id));
    EXPECT_LE(notifier.numListeners(), 50u);
}

TEST_F(Robust, AHiddenRootComesBackWithItsKeys) {
    root_->setVisible(false);
    driver_.settle();
    root_->setVisible(true);
    driver_.settle();
    EXPECT_EQ(get_kbd_focus(), root_);
    root_->unmapCanvas();
    root_->mapCanvas();
    EXPECT_EQ(get_kbd_focus(), root_);
}

TEST_F(Robust, TheInactiveHearNoKeys) {
    auto* const panel = addTo(root_, new ProbeGlob(200, 200));
    auto* const field = addTo(panel, new ProbeGlob);
    int inPanel = 0, inField = 0;
    panel->onReact = [&](Event const& event) { return isKeyPressEvent(event) && ++inPanel > 0; };
    field->onReact = [&](Event const& event) {
        inField += isKeyPressEvent(event);
        return false;
    };
    set_kbd_focus(field);
    driver_.key('a');
    EXPECT_EQ(inField, 1);
    EXPECT_EQ(inPanel, 1);
    panel->setActive(false);
    driver_.key('a');
    EXPECT_EQ(inField, 1) << "what lies in it is inactive too";
    EXPECT_EQ(inPanel, 1);
}

TEST_F(Robust, HandlersOutsideTheTreeAreForgottenToo) {
    struct Plain : EventHandler {
        void addRef() const noexcept override {}
        void release() const noexcept override {}
    };
    {
        Plain plain;
        EventTimeServer::theEventTimeServer()->registerForTimeEvents(&plain);
        getEventInterceptStack().push(&plain, std::numeric_limits<int>::max());
    }
    EXPECT_FALSE(EventTimeServer::theEventTimeServer()->nextDue());
    EXPECT_EQ(getEventInterceptStack().size(), 0u);
}

TEST_F(Robust, MovingEndsWhenHiddenAndTheNewPlaceStays) {
    auto* const probe = addTo(root_, new ProbeGlob, TopRight(0, 0));
    probe->moveWhenPressed();
    driver_.drag(probe, {-100, -50});
    XY<int> const left = probe->box().bottomLeft();
    driver_.resizeWindow(root_, {500, 400});
    EXPECT_EQ(probe->box().bottomLeft(), left);
    driver_.press(probe);
    probe->setVisible(false);
    EXPECT_FALSE(probe->isMoving());
    driver_.release();
}

TEST_F(Robust, WhatTheLoopPromisesOfTimersAndCapture) {
    auto* const first = addTo(root_, new ProbeGlob(60, 40, &log_, "first"));
    auto* const second = addTo(root_, new ProbeGlob(60, 40, &log_, "second"), BottomLeft(100, 0));
    for (ProbeGlob* probe : {first, second}) {
        probe->setInterest(EventKind::timer);
        probe->onReact = [probe](Event const& event) {
            if (isMessageEvent(event)) return probe->Glob::react(event);
            if (isTimerEvent(event)) {
                probe->note("tick");
                sendMessage("ticked", probe);
            }
            return true;
        };
    }
    virtualClock().advance(10);
    host_->loop().turn();
    EXPECT_EQ(takeLog(),
              (Lines{"first tick", "first message ticked", "second tick", "second message ticked"}));
    second->clearInterest(EventKind::timer);
    second->onReact = [&](Event const& event) {
        if (mouse_up_event(event)) second->note("up");
        return true;
    };
    first->onReact = [&](Event const& event) {
        if (mouse_down_event(event)) EventSystem::live().pointer.capture(second);
        if (isTimerEvent(event)) {
            second->clearInterest(EventKind::timer);
            second->setInterest(EventKind::timer);
        }
        return true;
    };
    driver_.press(first);
    log_.clear();
    driver_.release();
    EXPECT_EQ(log_.front(), "second up") << "the handler's own choice of the holder stays";
    log_.clear();
    second->setInterest(EventKind::timer);
    second->onReact = [&](Event const& event) {
        if (isTimerEvent(event)) second->note("tick");
        return true;
    };
    virtualClock().advance(10);
    host_->loop().turn();
    EXPECT_TRUE(log_.empty()) << "registered anew in the same tick";
    first->clearInterest(EventKind::timer);
    second->clearInterest(EventKind::timer);
}

TEST_F(Robust, ContainmentFollowsSilentChanges) {
    addTo(root_, new ProbeGlob(60, 40, &log_, "below"));
    Glob* above = root_->addChild(new ProbeGlob(60, 40));
    driver_.moveTo({110, 110});
    root_->removeWidget(above, false);
    driver_.settle();
    EXPECT_EQ(log_, Lines{"below entered"});
    // A wheel may come from where no move has told of.
    inject(
        {.kind = InputEvent::Kind::wheel, .window = nativeOf(root_)->id(), .place = {300, 300}, .amount = 1});
    EXPECT_EQ(log_, (Lines{"below entered", "below left"}));
}

/// A root that is too large is laid out before it is shown, and may do anything then.
TEST_F(Robust, WhatIsOpenedMayDoAnythingWhenItIsLaidOut) {
    expectDiagnostic("window refused");
    ProbeGlob* big = nullptr;
    RecordingParent* owner = nullptr;
    GlobManager& windows = host_->globManager();
    std::function<void()> const deeds[] = {
        [&] { delete owner; },
        [&] { delete big; },
        [&] { owner->addChild(static_cast<Glob*>(big)); },
        [&] { windows.realize(big); },
    };
    std::string opened;
    for (std::function<void()> const& deed : deeds) {
        owner = openWindow(50, 50, {500, 400});
        big = new ProbeGlob(6000, 6000);
        big->onReshape = [&] {
            big->onReshape = nullptr;
            deed();
        };
        HandlerRef<Glob> const left(big);
        opened += windows.addModalGlob(big, owner) ? '1' : '0';
        driver_.settle();
        driver_.moveTo({500, 300});
        opened += left.get() && windows.windowOf(left.get()) ? 'w' : '-';
        if (left.get()) delete left.get();
        if (is_good_glob_ptr(owner)) delete owner;
        driver_.settle();
        EXPECT_EQ(windows.numWindows(), 1u);
    }
    EXPECT_EQ(opened, "1w1-0-1w") << "true also for what has gone";
}

TEST_F(Robust, PlacesAtTheEndsOfTheNumbersDoNotOverflow) {
    constexpr int most = std::numeric_limits<int>::max();
    constexpr int least = std::numeric_limits<int>::min();
    Glob* deepest = root_;
    for (int i = 0; i < 20; ++i) deepest = deepest->addChild(new Glob(50, 50), BottomLeft(most, least));
    for (auto position : {TopRight(least, most), Centre(most, most), RightOf(most, root_->firstChild())})
        root_->addChild(new Glob(10, 10), position);
    EXPECT_GT(deepest->screenBox().x1, 0);
    EXPECT_LT(deepest->screenXYToGlobXY({least, most}).x, 0);
    for (XY<int> place : {XY<int>(least, least), XY<int>(most, most), XY<int>(most, least)}) {
        driver_.clickAt(place);
        driver_.wheelAt(place, least);
    }
    driver_.settle();
}

TEST_F(Robust, DrawingChildrenByHandNeedsNoCallStackEither) {
    struct ByHand : Glob {
        using Glob::Glob;
        void draw() override { drawWidgets(); }
    };
    Glob* chain = new ByHand(4, 4);
    for (int i = 0; i < 50000; ++i) {
        auto* const outer = new ByHand(4, 4);
        outer->addChild(chain);
        chain = outer;
    }
    root_->addChild(chain);
    driver_.settle();
}

TEST_F(Robust, AThrowingFocusHolderKeepsNobodyFromBeingTold) {
    expectDiagnostic("exception in handler");
    auto* const thrower = addTo(root_, new ProbeGlob);
    auto* const next = addTo(root_, new ProbeGlob(10, 10, &log_));
    set_kbd_focus(thrower);
    thrower->onFocus = [] { throw 1; };
    EXPECT_TRUE(set_kbd_focus(next));
    EXPECT_EQ(log_, Lines{"gained"});
}

/// As a host finds them when none has been before it.
void expectStartValues() {
    EXPECT_EQ(Palette::currentTheme(), eThemeDark);
    EXPECT_EQ(UifStd::getScale(), 1.0);
    EXPECT_EQ(UifStd::metrics().rowGap, UifStd::Metrics().rowGap);
    EXPECT_EQ(Look::deviceScale(), 1.0);
    EXPECT_TRUE(ControlLook::isCurved());
    EXPECT_EQ(Registry::instance().makeStandardWidget, nullptr);
}

void changeSettings() {
    prefs().setPreference("curved_buttons", 0);
    loadToolkit();
    EXPECT_FALSE(ControlLook::isCurved());
    EXPECT_NE(Registry::instance().makeStandardWidget, nullptr);
    UifStd::Metrics metrics;
    metrics.rowGap = 30;
    Look::setMetrics(metrics);
    Look::setTheme(eThemeLight);
    Look::setSize(2.0);
    Look::setDeviceScale(2.0);
}

TEST(RobustHosts, ComeAndGo) {
    for (int i = 0; i < 20; ++i) {
        expectStartValues();
        HostSettings settings;
        settings.screen = HostSettings::Screen::offscreen;
        Host host(0, nullptr, settings);
        auto* const root = new Glob(50, 50);
        host.globManager().realize(root);
        host.loop().settle();
        EXPECT_EQ(get_kbd_focus(), root);
        changeSettings();
    }
    expectStartValues();
    EXPECT_EQ(get_kbd_focus(), nullptr);
    EXPECT_FALSE(sendMessage("to nobody", nullptr));
    Diagnostics::reset();
}

} // namespace
} // namespace wainscot
