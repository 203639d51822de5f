#include "foundation/val_observer.h"
#include "foundation/val_server_adaptor.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <random>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>

namespace wainscot {
namespace {

using Log = std::vector<std::string>;

/// Records what it hears, then does what the test says.
class Listener : public ValClient<int> {
public:
    Listener(std::string name, Log& log) : name_(std::move(name)), log_(log) {}

    void handleNotification(NotifierEvent<int> const& event) override {
        bool const before = event.type == ValServerBase::preValChangedMsgType;
        int const stored = static_cast<ValServer<int>*>(event.source)->value();
        EXPECT_EQ(event.value, stored);
        log_.push_back(name_ + (before ? " pre " : " ") + std::to_string(stored));
        // The function may destroy this object, and itself with it.
        auto const action = before ? onPre : onChange;
        if (action) action();
    }

    std::function<void()> onPre;
    std::function<void()> onChange;

private:
    std::string name_;
    Log& log_;
};

class Guard : public iValGuard<int>, public Qv::InternalRefCount {
public:
    explicit Guard(std::function<bool(int&)> answer) : answer_(std::move(answer)) {}
    bool requestValChange(ValServer<int>*, int& value) override { return answer_(value); }

private:
    std::function<bool(int&)> answer_;
};

Qv::Ptr<iValGuard<int>> makeGuard(std::function<bool(int&)> answer) {
    return Qv::makePtr<Guard>(std::move(answer));
}

class ValServerTest : public testing::Test {
protected:
    std::unique_ptr<Listener> listen(char const* name) {
        auto listener = std::make_unique<Listener>(name, log);
        listener->attach(*server);
        return listener;
    }
    /// Whether another thread can enter the lock now.
    bool isUnlocked() const {
        bool entered = false;
        std::thread([&] {
            ValServer<int> other;
            Log unused;
            Listener visitor("visitor", unused);
            visitor.attach(*server);
            entered = visitor.detach();
        }).join();
        return entered;
    }

    Log log;
    std::unique_ptr<ValServer<int>> server = std::make_unique<ValServer<int>>(1);
};

TEST_F(ValServerTest, TellsBothPhasesInListOrderAlsoOfEqualValues) {
    auto const a = listen("a");
    auto const b = listen("b");
    EXPECT_TRUE(server->updateAndNotify(2));
    EXPECT_EQ(log, (Log{"a pre 1", "b pre 1", "a 2", "b 2"}));
    log.clear();
    *server = 2;
    EXPECT_EQ(log, (Log{"a pre 2", "b pre 2", "a 2", "b 2"}));
    EXPECT_EQ(server->numObservers(), 2u);
}

TEST_F(ValServerTest, AssignmentAndComparisonGoByValue) {
    ValServer<int> other(5);
    auto const a = listen("a");
    EXPECT_FALSE(*server == other);
    *server = other;
    EXPECT_TRUE(*server == other);
    EXPECT_EQ(log, (Log{"a pre 1", "a 5"}));
    EXPECT_TRUE(server->changedAfter(other));
    ValServer<int> const copy(*server);
    EXPECT_EQ(copy.value(), 5);
    EXPECT_EQ(copy.numObservers(), 0u);
    EXPECT_EQ(copy.lastChange(), 0u);
    // A reference to the server's own value survives the change.
    server->updateAndNotify(server->value());
    EXPECT_EQ(server->value(), 5);
}

TEST_F(ValServerTest, GuardMayRefuseOrAdjustACopy) {
    auto const a = listen("a");
    server->setGuard(makeGuard([](int& value) { return value = std::min(value, 10), value >= 0; }));
    EXPECT_FALSE(server->updateAndNotify(-1));
    EXPECT_EQ(server->value(), 1);
    EXPECT_TRUE(log.empty());
    int const wanted = 99;
    EXPECT_TRUE(server->updateAndNotify(wanted));
    EXPECT_EQ(wanted, 99);
    EXPECT_EQ(log, (Log{"a pre 1", "a 10"}));
}

TEST_F(ValServerTest, GuardMayBeReplacedOrDestroyTheServer) {
    server->setGuard(makeGuard([this](int&) {
        server->setGuard({});
        return true;
    }));
    EXPECT_TRUE(server->updateAndNotify(3));
    EXPECT_FALSE(server->getGuard());
    auto const a = listen("a");
    server->setGuard(makeGuard([this](int&) {
        server.reset();
        return true;
    }));
    EXPECT_TRUE(server->updateAndNotify(4));
    EXPECT_TRUE(log.empty());
    EXPECT_EQ(a->source(), nullptr);
}

TEST_F(ValServerTest, WithoutObserversTakesNoLock) {
    server->criticalSection().enter();
    // Would wait for ever if it took the lock.
    std::thread([this] { server->notifyValChanged(), server->preNotifyValChanged(); }).join();
    server->criticalSection().leave();
}

TEST_F(ValServerTest, NestedChangeShowsLaterObserversTheNewestValue) {
    auto const a = listen("a");
    a->onChange = [&] {
        a->onChange = nullptr;
        server->updateAndNotify(9);
    };
    ValServer<int>* const source = server.get();
    struct Reader : ValClient<int> {
        std::vector<int> told, read;
        void handleNotification(NotifierEvent<int> const& event) override {
            if (event.type != ValServerBase::valChangedMsgType) return;
            told.push_back(event.value);
            read.push_back(static_cast<ValServer<int>*>(event.source)->value());
        }
    } reader;
    reader.attach(*source);
    server->updateAndNotify(2);
    EXPECT_EQ(reader.told, (std::vector<int>{9, 2}));
    EXPECT_EQ(reader.read, (std::vector<int>{9, 9}));
}

TEST_F(ValServerTest, DeathOfTheServerEndsTheWalk) {
    for (bool const inFirstPhase : {true, false}) {
        log.clear();
        server = std::make_unique<ValServer<int>>(1);
        auto const a = listen("a");
        auto const b = listen("b");
        (inFirstPhase ? a->onPre : a->onChange) = [&] { server.reset(); };
        EXPECT_TRUE(server->updateAndNotify(2));
        EXPECT_EQ(log, inFirstPhase ? (Log{"a pre 1"}) : (Log{"a pre 1", "b pre 1", "a 2"}));
        EXPECT_EQ(b->source(), nullptr);
        EXPECT_TRUE(b->detach());
        EXPECT_FALSE(b->detach());
    }
}

TEST_F(ValServerTest, WhatIsThrownLeavesEverythingBalanced) {
    auto const a = listen("a");
    auto const b = listen("b");
    auto const fail = [] { throw std::runtime_error("no"); };
    server->setGuard(makeGuard([&](int&) -> bool { throw std::runtime_error("no"); }));
    EXPECT_THROW(server->updateAndNotify(2), std::runtime_error);
    server->setGuard({});
    a->onPre = fail;
    EXPECT_THROW(server->updateAndNotify(2), std::runtime_error);
    EXPECT_EQ(server->value(), 1);
    a->onPre = nullptr;
    a->onChange = fail;
    EXPECT_THROW(server->updateAndNotify(2), std::runtime_error);
    EXPECT_EQ(server->value(), 2);
    EXPECT_TRUE(isUnlocked());
    a->onChange = nullptr;
    log.clear();
    server->updateAndNotify(3);
    EXPECT_EQ(log, (Log{"a pre 2", "b pre 2", "a 3", "b 3"}));
}

/// Observers that add, remove and notify at random inside walks: each walk must visit exactly the observers
/// that were there when it began and have not left since, in the order of coming.
TEST_F(ValServerTest, RandomChangesInNestedWalks) {
    struct Walk {
        std::vector<std::size_t> expected;
    };
    for (unsigned int seed = 1; seed <= 40; ++seed) {
        std::mt19937 random(seed);
        ValServer<int> source;
        std::vector<std::size_t> order;
        std::vector<Walk> walks;
        std::vector<std::unique_ptr<ValClient<int>>> clients(12);
        std::function<void(std::size_t)> heard;
        struct Client : ValClient<int> {
            Client(std::size_t number, std::function<void(std::size_t)>& told) : id(number), heard(told) {}
            void handleNotification(NotifierEvent<int> const&) override { heard(id); }
            std::size_t id;
            std::function<void(std::size_t)>& heard;
        };
        auto const leave = [&](std::size_t id) {
            std::erase(order, id);
            for (Walk& walk : walks) std::erase(walk.expected, id);
        };
        int calls = 0;
        auto const notify = [&] {
            walks.push_back({order});
            source.notifyValChanged();
            EXPECT_TRUE(walks.back().expected.empty()) << "seed " << seed;
            walks.pop_back();
        };
        auto const change = [&] {
            std::size_t const id = random() % clients.size();
            leave(id);
            if (random() % 2) {
                clients[id].reset();
            } else {
                if (!clients[id]) clients[id] = std::make_unique<Client>(id, heard);
                clients[id]->attach(source);
                order.push_back(id);
            }
        };
        heard = [&](std::size_t id) {
            ASSERT_FALSE(walks.back().expected.empty());
            EXPECT_EQ(walks.back().expected.front(), id) << "seed " << seed;
            walks.back().expected.erase(walks.back().expected.begin());
            if (++calls > 2000) return;
            for (auto i = random() % 3; i > 0; --i) change();
            if (random() % 4 == 0 && walks.size() < 5) notify();
        };
        for (int i = 0; i < 60; ++i) change(), notify();
        EXPECT_EQ(source.numObservers(), order.size());
        EXPECT_GT(calls, 100);
        heard = [](std::size_t) {};
    }
}

class Client : public ValObserverClient {
public:
    void notifyPreValChanged(ValObserverBase* observer) override { heard.push_back({true, observer}); }
    void notifyValChanged(ValObserverBase* observer) override {
        heard.push_back({false, observer});
        auto const action = onChange;
        if (action) action();
    }
    std::vector<std::pair<bool, ValObserverBase*>> heard;
    std::function<void()> onChange;
};

TEST(ValObserver, NamesTheObserverThatFired) {
    ValServer<int> number;
    ValServer<LightweightString<wchar_t>> text;
    Client client;
    ValObserver<int> const first(number, &client);
    ValObserver<LightweightString<wchar_t>> second(text, &client);
    text = LightweightString<wchar_t>(L"x");
    EXPECT_EQ(client.heard, (decltype(client.heard){{true, &second}, {false, &second}}));
    EXPECT_EQ(second.getServer(), &text);
    client.onChange = [&] {
        EXPECT_EQ(client.heard.back().second->getServerBase(), static_cast<ValServerBase*>(&text));
        EXPECT_TRUE(client.heard.back().second->stopObserving());
    };
    text = LightweightString<wchar_t>(L"y");
    EXPECT_EQ(client.heard.size(), 4u);
    EXPECT_EQ(text.numObservers(), 0u);
    text = LightweightString<wchar_t>(L"z");
    EXPECT_EQ(client.heard.size(), 4u);
}

TEST(ValObserver, EachOfTheThreeMayDieFirst) {
    auto server = std::make_unique<ValServer<int>>();
    auto client = std::make_unique<Client>();
    auto observer = std::make_unique<ValObserver<int>>(*server, client.get());
    auto const second = std::make_unique<ValObserver<int>>(*server, client.get());
    client->onChange = [&] { observer.reset(); };
    *server = 1;
    EXPECT_EQ(client->heard.size(), 4u);
    client->onChange = [&] { client.reset(); };
    *server = 2;
    EXPECT_EQ(second->getClient(), nullptr);
    *server = 3;
    server.reset();
    EXPECT_EQ(second->getServer(), nullptr);
}

/// A widget with no more than a value.
template <class T>
class Face : public ValWidget<T>, public Qv::InternalRefCount {
public:
    T getWidgetValue() const override { return shown; }
    void setNewWidgetValue(T& value, eRedrawFlag redraw) override {
        shown = value;
        ++updates;
        lastRedraw = redraw;
    }
    /// What the user does.
    bool choose(T value, DataChangeType why = DataChangeType::single) {
        if (!this->requestSetNewDataValue(value, why)) return false;
        shown = value;
        return true;
    }

    T shown{};
    void handleDataMixed(bool mixed, eRedrawFlag) override { mixedNotices.push_back(mixed); }

    int updates = 0;
    eRedrawFlag lastRedraw = eRedrawNo;
    std::vector<bool> mixedNotices;
};

class Adaptor : public ValAdaptorBase<int> {
public:
    Adaptor() { ++alive; }
    ~Adaptor() override { --alive; }
    int getDataValue() const override {
        if (onRead) onRead();
        return data;
    }
    bool requestSetNewDataValue(int const& value, DataChangeType why) override {
        if (onWrite) onWrite();
        lastWhy = why;
        if (accepts) data = value;
        return accepts;
    }
    bool isMixed() const override { return mixed; }

    int data = 7;
    bool accepts = true;
    bool mixed = false;
    DataChangeType lastWhy = DataChangeType::started;
    std::function<void()> onRead, onWrite;
    static inline int alive = 0;
};

TEST(ValWidget, HearsWhenItsDataBecomesMixed) {
    Face<int> face;
    auto const adaptor = Qv::makePtr<Adaptor>();
    face.setDataAdaptor(adaptor);
    adaptor->mixed = true;
    EXPECT_FALSE(face.isDataMixed()) << "nobody has said so yet";
    adaptor->forceWidgetUpdate(eRedrawNo);
    adaptor->forceWidgetUpdate(eRedrawNo);
    EXPECT_TRUE(face.isDataMixed());
    // The same value for all: they are unlike no more.
    adaptor->onWrite = [&] { adaptor->mixed = false; };
    EXPECT_TRUE(face.choose(face.shown));
    EXPECT_FALSE(face.isDataMixed());
    adaptor->mixed = true;
    adaptor->forceWidgetUpdate(eRedrawNo);
    face.setDataAdaptor({});
    EXPECT_EQ(face.mixedNotices, (std::vector<bool>{true, false, true, false}));
}

TEST(ValWidget, SharesItsAdaptorAndLetsTheOldOneGo) {
    auto face = std::make_unique<Face<int>>();
    face->setDataAdaptor(Qv::makePtr<Adaptor>());
    face->setDataAdaptor(Qv::makePtr<Adaptor>());
    EXPECT_EQ(Adaptor::alive, 1);
    auto const kept = face->getDataAdaptor();
    Face<int> second;
    second.setDataAdaptor(kept);
    EXPECT_EQ(kept->getWidget(), &second);
    face.reset();
    EXPECT_EQ(kept->getWidget(), &second);
    second.setDataAdaptor({});
    EXPECT_EQ(kept->getWidget(), nullptr);
    kept->forceWidgetUpdate(eRedrawYes);
    EXPECT_EQ(second.updates, 0);
}

TEST(ValWidget, AdaptorsMayChangePlaces) {
    auto const a = Qv::makePtr<Adaptor>();
    auto const b = Qv::makePtr<Adaptor>();
    b->data = 8;
    Face<int> left, right;
    left.bindTo(a);
    right.bindTo(b);
    EXPECT_EQ(left.shown + 10 * right.shown, 87) << "bound and shown in one step";
    left.setDataAdaptor(b);
    right.setDataAdaptor(a);
    EXPECT_TRUE(left.choose(1) && right.choose(2));
    EXPECT_EQ(b->data + 10 * a->data, 21);
    b->mixed = true;
    right.setDataAdaptor(b);
    EXPECT_TRUE(left.choose(3));
    EXPECT_TRUE(right.isDataMixed()) << "the widget that it serves, whoever writes";
}

TEST(ValWidget, ShowsWhatTheDataHasWhenSomethingIsThrown) {
    ValServer<int> server(5);
    Face<int> face;
    bindToServer(face, server);
    face.shown = 6; // a widget changes its state before it asks
    server.setGuard(makeGuard([](int&) -> bool { throw std::runtime_error("no"); }));
    EXPECT_THROW(face.requestSetNewDataValue(6, DataChangeType::single), std::runtime_error);
    EXPECT_EQ(face.shown, 5);
    server.setGuard({});
    Log log;
    Listener listener("a", log);
    listener.attach(server);
    listener.onChange = [] { throw std::runtime_error("stored already"); };
    EXPECT_THROW(face.requestSetNewDataValue(6, DataChangeType::single), std::runtime_error);
    EXPECT_EQ(face.shown, 6);
    // Bound to other data in its own request, it shows that.
    auto const other = Qv::makePtr<Adaptor>();
    other->data = 9;
    server.setGuard(makeGuard([&](int&) -> bool {
        face.bindTo(other);
        throw std::runtime_error("no");
    }));
    EXPECT_THROW(face.requestSetNewDataValue(7, DataChangeType::single), std::runtime_error);
    EXPECT_EQ(face.shown, 9);
    bindToServer(face, server);
    server.setGuard(makeGuard([&](int&) { return face.bindTo(other), false; }));
    EXPECT_TRUE(face.requestSetNewDataValue(9, DataChangeType::single)) << "nothing is to be taken back";
}

TEST(ValWidget, MayDieInItsAdaptor) {
    auto face = std::make_unique<Face<int>>();
    auto adaptor = Qv::makePtr<Adaptor>();
    face->setDataAdaptor(adaptor);
    adaptor->onRead = [&] { face.reset(); };
    adaptor->forceWidgetUpdate(eRedrawYes);
    face = std::make_unique<Face<int>>();
    face->setDataAdaptor(adaptor);
    Adaptor* const last = adaptor.get();
    adaptor.reset();
    last->onWrite = [&] { face.reset(); };
    EXPECT_TRUE(face->requestSetNewDataValue(1, DataChangeType::single));
    EXPECT_EQ(Adaptor::alive, 0);
}

TEST(ValServerAdaptor, BindsBothWaysAndEndsInItself) {
    ValServer<int> server(5);
    Face<int> one, two;
    one.setDataAdaptor(Qv::makePtr<ValServerAdaptor<int>>(server));
    two.setDataAdaptor(Qv::makePtr<ValServerAdaptor<int>>(server));
    one.getDataAdaptor()->forceWidgetUpdate(eRedrawNo);
    EXPECT_EQ(one.shown, 5);
    EXPECT_TRUE(one.choose(6));
    EXPECT_EQ(server.value(), 6);
    EXPECT_EQ(two.shown, 6);
    EXPECT_EQ(one.updates, 1);
    server = 7;
    EXPECT_EQ(one.shown, 7);
}

TEST(ValServerAdaptor, ServesAllTypesThatWidgetsShow) {
    auto const goesRound = []<class T>(T value) {
        ValServer<T> server;
        Face<T> face;
        face.setDataAdaptor(Qv::makePtr<ValServerAdaptor<T>>(server));
        EXPECT_TRUE(face.choose(value));
        EXPECT_EQ(server.value(), value);
    };
    goesRound(true);
    goesRound(1);
    goesRound(2u);
    goesRound(1.5f);
    goesRound(2.5);
    goesRound(LightweightString<char>("a"));
    goesRound(LightweightString<wchar_t>(L"a"));
    goesRound(ColourData{Colour(1, 0, 0)});
    goesRound(ThumbSettings{0.25, 0.5});
}

class Counter final : public ValClient<int> {
public:
    ~Counter() override { detach(); }
    void handleNotification(NotifierEvent<int> const&) override { ++heard; }
    int heard = 0;
};

/// Other threads attach and detach while one notifies and replaces the server.
TEST(ThreadValServer, OtherThreadsMayComeAndGo) {
    ValServer<int> server;
    Counter always;
    always.attach(server);
    std::atomic<bool> stop{false};
    std::atomic<int> visits{0};
    auto const visit = [&] {
        for (; !stop; ++visits) {
            Counter visitor;
            visitor.attach(server);
            visitor.detach();
            visitor.attach(server);
        }
    };
    std::thread first(visit), second(visit);
    int changes = 0;
    while (visits < 3000 || changes < 3000) server = ++changes;
    stop = true;
    first.join();
    second.join();
    EXPECT_EQ(always.heard, 2 * changes);
    EXPECT_EQ(server.numObservers(), 1u);
}

TEST(ThreadValServer, MayDieBeforeItsObserversElsewhere) {
    for (int round = 0; round < 200; ++round) {
        auto server = std::make_unique<ValServer<int>>();
        auto observers = std::make_unique<std::vector<Counter>>(4);
        for (Counter& observer : *observers) observer.attach(*server);
        std::thread leaving([&] { observers.reset(); });
        *server = round;
        server.reset();
        leaving.join();
    }
}

} // namespace
} // namespace wainscot
