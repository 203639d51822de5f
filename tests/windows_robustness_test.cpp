#include "tests/host_fixture.h"

#include "host/messages/notifier.h"
#include "host/objects/glob_notices.h"

#include <limits>

namespace wainscot {
namespace {

/// What callers must survive when those who are told of something destroy what it is about.
class Robust : public HostTest {
protected:
    /// A callback that runs a function and answers 0.
    static GlobNotices::Callback calling(std::function<void()> act) {
        return makeCallback<int, NotifyMsg>([act = std::move(act)](NotifyMsg const&) {
            act();
            return 0;
        });
    }
};

TEST_F(Robust, NoticesOfDeathMayDestroyAncestorsAndWindows) {
    for (int above : {1, 2, 3}) {
        RecordingParent* const root = openWindow();
        Glob* const outer = root->addChild(new ProbeGlob);
        Glob* const inner = outer->addChild(new ProbeGlob);
        Glob* const leaf = inner->addChild(new ProbeGlob);
        set_kbd_focus(leaf);
        int const before = ProbeGlob::alive;
        auto const watch = GlobNotices::watchDeletion(*leaf, calling([&] {
            Glob* doomed = leaf;
            for (int i = 0; i < above; ++i) doomed = doomed->parent();
            delete doomed;
        }));
        delete leaf;
        EXPECT_EQ(ProbeGlob::alive, before - std::min(above, 2) - 1) << above;
        EXPECT_EQ(is_good_glob_ptr(root), above < 3);
        if (above < 3) delete root;
        driver_.settle();
    }
    RecordingParent* const root = openWindow();
    auto const watch = GlobNotices::watchDeletion(*root, calling([&] { host_->globManager().closeAll(); }));
    openWindow(50, 50, {600, 0});
    delete root;
    EXPECT_EQ(host_->globManager().numWindows(), 0u);
}

TEST_F(Robust, NoticesOfMovesMayDestroyWhatIsBeingAddedOrShown) {
    RecordingParent* const root = openWindow();
    auto* child = new ProbeGlob;
    auto watch = GlobNotices::watchMoves(*child, calling([&] { delete child; }));
    EXPECT_EQ(root->addChild(child, BottomLeft(10, 10)), nullptr);
    auto owned = std::make_unique<ProbeGlob>();
    child = owned.get();
    auto* const panel = new ProbeGlob;
    root->addChild(panel);
    watch = GlobNotices::watchMoves(*child, calling([&] { delete panel; }));
    EXPECT_EQ(panel->addChild(std::move(owned), BottomLeft(10, 10)), nullptr);
    EXPECT_EQ(root->numChildren(), 0u);
    auto* const window = new Glob(20, 20);
    watch = GlobNotices::watchMoves(*window, calling([&] { delete window; }));
    EXPECT_FALSE(host_->globManager().realize(window, XY<int>(7, 7)));
    EXPECT_EQ(host_->globManager().numWindows(), 1u);
}

TEST_F(Robust, ARootThatSharesACanvasIsNoWindow) {
    expectDiagnostic("window refused");
    RecordingParent* const root = openWindow();
    auto const sharing = std::make_unique<Glob>(
        static_cast<unsigned short>(5), static_cast<unsigned short>(5), Palette(), true, root->canvas());
    EXPECT_FALSE(host_->globManager().realize(sharing.get()));
    EXPECT_EQ(host_->globManager().numWindows(), 1u);
}

TEST_F(Robust, TheLoopIsNotRunInsideAHandlerAndAnEarlyQuitCounts) {
    expectDiagnostic("loop run from inside a handler");
    RecordingParent* const root = openWindow();
    auto* const probe = new ProbeGlob;
    root->addChild(probe);
    int answer = -1;
    probe->onMessage = [&](auto const&, Glob*) {
        answer = host_->run();
        host_->quit(3);
        return 1;
    };
    sendMessage("run", probe);
    driver_.settle();
    EXPECT_EQ(answer, 1);
    EXPECT_EQ(host_->run(), 3);
    EXPECT_EQ(host_->run(), 0) << "the quit is spent";
}

TEST_F(Robust, PostingThatDoublesEndsTheTurnAllTheSame) {
    expectDiagnostic("queue not drained");
    RecordingParent* const root = openWindow();
    auto* const probe = new ProbeGlob;
    root->addChild(probe);
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
    RecordingParent* const root = openWindow();
    root->setVisible(false);
    driver_.settle();
    root->setVisible(true);
    driver_.settle();
    EXPECT_EQ(get_kbd_focus(), root);
    root->unmapCanvas();
    root->mapCanvas();
    EXPECT_EQ(get_kbd_focus(), root);
}

TEST_F(Robust, AWindowThatDiesUnderAHeldButtonLeavesThePointerFree) {
    RecordingParent* const first = openWindow(200, 200, {0, 0});
    RecordingParent* const second = openWindow(200, 200, {300, 0});
    std::vector<std::string> log;
    auto* const probe = new ProbeGlob(60, 40, &log);
    first->addChild(probe);
    int presses = 0;
    probe->onReact = [&](Event const& event) { return mouse_down_event(event) && ++presses > 0; };
    driver_.moveTo({400, 100});
    driver_.press();
    delete second;
    driver_.settle();
    driver_.moveTo(probe);
    EXPECT_EQ(log, std::vector<std::string>{"entered"}) << "hovering works without the release";
    driver_.press();
    EXPECT_EQ(presses, 1);
    driver_.release();
    delete first;
    EXPECT_FALSE(glib_appHasFocus());
}

TEST_F(Robust, TheInactiveHearNoKeysAndPassThemOn) {
    RecordingParent* const root = openWindow();
    auto* const panel = new ProbeGlob(200, 200);
    auto* const field = new ProbeGlob;
    root->addChild(panel);
    panel->addChild(field);
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
    EXPECT_EQ(inField, 2);
    EXPECT_EQ(inPanel, 1) << "an inactive ancestor is passed over";
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
    RecordingParent* const root = openWindow();
    auto* const probe = new ProbeGlob;
    root->addChild(probe, TopRight(0, 0));
    probe->setMovable(true);
    probe->onReact = [&](Event const& event) {
        if (!mouse_down_event(event)) return probe->Glob::react(event);
        probe->startMoving();
        return true;
    };
    driver_.drag(probe, {-100, -50});
    XY<int> const left = probe->box().bottomLeft();
    driver_.resizeWindow(root, {500, 400});
    EXPECT_EQ(probe->box().bottomLeft(), left);
    driver_.press(probe);
    probe->setVisible(false);
    EXPECT_FALSE(probe->isMoving());
    driver_.release();
}

TEST_F(Robust, WhatTheLoopPromisesOfTimersAndCapture) {
    RecordingParent* const root = openWindow();
    std::vector<std::string> log;
    auto* const first = new ProbeGlob(60, 40, &log, "first");
    auto* const second = new ProbeGlob(60, 40, &log, "second");
    root->addChild(first);
    root->addChild(second, BottomLeft(100, 0));
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
    EXPECT_EQ(log, (std::vector<std::string>{"first tick", "first message ticked", "second tick",
                                             "second message ticked"}));
    log.clear();
    second->clearInterest(EventKind::timer);
    virtualClock().advance(1000);
    for (int i = 0; i < 5; ++i) host_->loop().turn();
    EXPECT_EQ(log.size(), 2u) << "one tick and its message, although a hundred were missed";
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
    log.clear();
    driver_.release();
    EXPECT_EQ(log.front(), "second up") << "the handler's own choice of the holder stays";
    log.clear();
    second->setInterest(EventKind::timer);
    second->onReact = [&](Event const& event) {
        if (isTimerEvent(event)) second->note("tick");
        return true;
    };
    virtualClock().advance(10);
    host_->loop().turn();
    EXPECT_TRUE(log.empty()) << "registered anew in the same tick";
    first->clearInterest(EventKind::timer);
    second->clearInterest(EventKind::timer);
}

TEST_F(Robust, ContainmentFollowsSilentChanges) {
    RecordingParent* const root = openWindow();
    std::vector<std::string> log;
    auto* const below = new ProbeGlob(60, 40, &log, "below");
    root->addChild(below);
    Glob* above = root->addChild(new ProbeGlob(60, 40));
    driver_.moveTo({110, 110});
    root->removeWidget(above, false);
    driver_.settle();
    EXPECT_EQ(log, std::vector<std::string>{"below entered"});
}

TEST_F(Robust, PlacesAtTheEndsOfTheNumbersDoNotOverflow) {
    RecordingParent* const root = openWindow();
    constexpr int most = std::numeric_limits<int>::max();
    constexpr int least = std::numeric_limits<int>::min();
    Glob* deepest = root;
    for (int i = 0; i < 20; ++i) deepest = deepest->addChild(new Glob(50, 50), BottomLeft(most, least));
    for (auto position : {TopRight(least, most), Centre(most, most), RightOf(most, root->firstChild())})
        root->addChild(new Glob(10, 10), position);
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
    RecordingParent* const root = openWindow();
    Glob* chain = new ByHand(4, 4);
    for (int i = 0; i < 50000; ++i) {
        auto* const outer = new ByHand(4, 4);
        outer->addChild(chain);
        chain = outer;
    }
    root->addChild(chain);
    driver_.settle();
}

TEST_F(Robust, AThrowingFocusHolderKeepsNobodyFromBeingTold) {
    expectDiagnostic("exception in handler");
    RecordingParent* const root = openWindow();
    std::vector<std::string> log;
    auto* const thrower = new ProbeGlob;
    auto* const next = new ProbeGlob(10, 10, &log);
    root->addChild(thrower);
    root->addChild(next);
    set_kbd_focus(thrower);
    thrower->onFocus = [] { throw 1; };
    EXPECT_TRUE(set_kbd_focus(next));
    EXPECT_EQ(log, std::vector<std::string>{"gained"});
}

TEST(RobustHosts, ComeAndGo) {
    for (int i = 0; i < 20; ++i) {
        HostSettings settings;
        settings.screen = HostSettings::Screen::offscreen;
        Host host(0, nullptr, settings);
        auto* const root = new Glob(50, 50);
        host.globManager().realize(root);
        host.loop().settle();
        EXPECT_EQ(get_kbd_focus(), root);
    }
    EXPECT_EQ(get_kbd_focus(), nullptr);
    EXPECT_FALSE(sendMessage("to nobody", nullptr));
    Diagnostics::reset();
}

} // namespace
} // namespace wainscot
