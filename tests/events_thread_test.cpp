#include "tests/host_fixture.h"

#include "host/base/ui_thread.h"
#include "host/events/ui_thread_callback.h"
#include "host/messages/notifier.h"

#include <atomic>
#include <thread>

namespace wainscot {
namespace {

/// Run under the thread sanitizer too: everything else belongs to the user-interface thread.
class ThreadMessages : public HostTest {};

TEST_F(ThreadMessages, CallsArriveInOrderOnTheUserInterfaceThread) {
    constexpr int perThread = 500;
    constexpr int numThreads = 4;
    auto const uiThread = std::this_thread::get_id();
    std::vector<int> last(numThreads, -1);
    int received = 0;
    UIThreadCallback<std::pair<int, int>> callback(
        makeCallback<int, std::pair<int, int>>([&](auto const& message) {
            EXPECT_EQ(std::this_thread::get_id(), uiThread);
            auto& previous = last[static_cast<std::size_t>(message.first)];
            EXPECT_EQ(message.second, previous + 1);
            previous = message.second;
            return ++received;
        }));
    std::vector<std::thread> threads;
    for (int t = 0; t < numThreads; ++t)
        threads.emplace_back([&callback, t] {
            for (int i = 0; i < perThread; ++i) callback.call({t, i});
        });
    while (received < perThread * numThreads) host_->loop().turn();
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(received, perThread * numThreads);
}

TEST_F(ThreadMessages, NothingIsDeliveredAfterTheReceiverOrTheCallbackHasDied) {
    RecordingParent* const root = openWindow();
    auto* const receiver = addTo(root, new ProbeGlob);
    std::atomic<int> calls{0};
    auto const count = makeCallback<int, NotifyMsg>([&](NotifyMsg const&) { return ++calls; });
    UIThreadCallback<NotifyMsg> forReceiver(count, receiver);
    auto forNobody = std::make_unique<UIThreadCallback<NotifyMsg>>(count);
    for (bool const isLast : {false, true}) {
        std::thread([&] {
            forReceiver.call(NotifyMsg("one"));
            forNobody->call(NotifyMsg("two"));
        }).join();
        if (isLast) delete receiver;
        if (isLast) forNobody.reset();
        driver_.settle();
        EXPECT_EQ(calls, 2);
    }
}

TEST_F(ThreadMessages, CallsMadeWhileTheHostEndsAreDropped) {
    constexpr int most = 20000;
    std::atomic<bool> stop{false};
    std::atomic<int> made{0};
    UIThreadCallback<NotifyMsg> const callback(
        makeCallback<int, NotifyMsg>([](NotifyMsg const&) { return 0; }));
    std::thread caller([&] {
        while (!stop && made < most) {
            callback.call(NotifyMsg("late"));
            ++made;
        }
    });
    while (made < 100) std::this_thread::yield();
    EventSystem::live().inbox->close();
    EXPECT_TRUE(EventSystem::live().inbox->empty());
    int const atClose = made;
    while (made < most && made < atClose + 100) std::this_thread::yield();
    stop = true;
    caller.join();
    EXPECT_TRUE(EventSystem::live().inbox->empty());
}

TEST_F(ThreadMessages, EverythingElseIsRefusedOnOtherThreads) {
    EXPECT_TRUE(UiThread::isCurrent());
    bool current = true;
    std::thread([&] { current = UiThread::isCurrent(); }).join();
    EXPECT_FALSE(current);
#if !defined(NDEBUG) && !defined(__SANITIZE_THREAD__)
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    RecordingParent* const root = openWindow();
    EXPECT_DEATH(std::thread([&] { sendMessage("wrong", root); }).join(), "");
#endif
}

// Listener lists

TEST(Notifiers, ListsMayChangeOrDieWhileTheyAreWalked) {
    auto notifier = std::make_unique<Notifier>();
    std::vector<std::string> log;
    std::vector<NotifierSubscription> subscriptions(5);
    auto const listen = [&](std::size_t slot, char const* name, std::function<void()> then) {
        subscriptions[slot] =
            notifier->subscribe("changed", makeCallback<int, NotifyMsg>([&log, name, then](auto&) {
                                    log.push_back(name);
                                    if (then) then();
                                    return 0;
                                }));
    };
    listen(0, "first", [&] {
        subscriptions[0].end();
        subscriptions[1].end();
        listen(3, "added", {});
    });
    listen(1, "removed", {});
    listen(2, "third", {});
    notifier->issueNotification(NotifyMsg("changed"));
    EXPECT_EQ(log, (std::vector<std::string>{"first", "third"}));
    notifier->issueNotification(NotifyMsg("other"));
    EXPECT_EQ(log.size(), 2u);
    log.clear();
    listen(2, "killer", [&] { notifier.reset(); });
    Notifier* const raw = notifier.get();
    listen(4, "after the end", {});
    raw->issueNotification(NotifyMsg("changed"));
    EXPECT_EQ(log, (std::vector<std::string>{"added", "killer"}));
    subscriptions.clear();
}

TEST(Notifiers, InvokersChooseByType) {
    struct OddOnly : CallbackInvokerBase {
        explicit OddOnly(int& count) : calls(count) {}
        bool typeMatch(int type) const override { return type % 2 == 1; }
        void invoke(NotifyMsg const&) override { ++calls; }
        int& calls;
    };
    Notifier notifier;
    int calls = 0;
    NotifierBase::Id const id = notifier.registerInternal(new OddOnly(calls));
    for (int type : {1, 2, 3}) notifier.issueNotification(NotifyMsg("any"), type);
    EXPECT_EQ(calls, 2);
    EXPECT_TRUE(notifier.unregister(id));
    EXPECT_FALSE(notifier.unregister(id));
    auto& names = NotifyMsgTypeDictionary::instance();
    EXPECT_EQ(names.typeOf("a name"), names.typeOf("a name"));
    EXPECT_NE(names.typeOf("a name"), names.typeOf("another"));
}

TEST(Notifiers, AttachingAndDetachingManyIsNotQuadratic) {
    Notifier notifier;
    int sum = 0;
    auto const callback = makeCallback<int, NotifyMsg>([&](NotifyMsg const&) { return ++sum; });
    constexpr int many = 200000;
    std::vector<NotifierSubscription> subscriptions;
    for (int i = 0; i < many; ++i) subscriptions.push_back(notifier.subscribe("", callback));
    notifier.issueNotification(NotifyMsg("any"));
    EXPECT_EQ(sum, many);
    for (auto& subscription : subscriptions) subscription.end();
    EXPECT_EQ(notifier.numListeners(), 0u);
}

} // namespace
} // namespace wainscot
