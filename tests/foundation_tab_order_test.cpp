#include "foundation/tab_order_manager.h"
#include "host/drawing/drawable.h"
#include "tests/tab_order_model.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>
#include <stdexcept>

namespace wainscot {
namespace {

constexpr unsigned int none = TabOrderManager::noTabStop;
constexpr unsigned int append = TabOrderManager::appendTabStop;
using Log = std::vector<std::string>;

/// A control whose answers and actions the test gives.
class Control : public TabOrderable {
public:
    explicit Control(int number = 0, Log* log = nullptr) : number_(number), log_(log) {}

    bool isTabStopActive() override {
        // The functions may destroy this object, and themselves with it.
        auto const action = onQuestion;
        bool const answer = active;
        if (action) action();
        return answer;
    }
    void handleTabStopFocusReceipt(eDirection direction) override {
        note(direction == forward ? "forward " : "backward ");
        EXPECT_TRUE(isReceivingTabStopFocus());
        auto const action = onReceipt;
        if (action) action();
    }
    void handleTabStopFocusLoss() override {
        note(isReceivingTabStopFocus() && !quiet ? "own loss " : "loss ");
        auto const action = onLoss;
        if (action) action();
    }

    bool active = true;
    /// Losses after one's own receipt are written down like all others.
    bool quiet = false;
    std::function<void()> onQuestion, onReceipt, onLoss;

private:
    void note(char const* what) {
        EXPECT_EQ(Drawable::holdCount() > 0, true);
        if (log_) log_->push_back(what + std::to_string(number_));
    }

    int number_;
    Log* log_;
};

/// Three controls with the orders 0, 1, 2.
class TabOrderTest : public testing::Test {
public:
    TabOrderTest() { begin(); }
    ~TabOrderTest() override { EXPECT_EQ(Drawable::holdCount(), 0); }

    void begin() {
        controls.clear();
        manager = std::make_unique<TabOrderManager>(false);
        for (int i = 0; i < 3; ++i) {
            controls.push_back(std::make_unique<Control>(i, &log));
            manager->addTabStop(*controls.back());
        }
    }
    Control& at(std::size_t i) { return *controls[i]; }
    std::vector<unsigned int> orders() const {
        std::vector<unsigned int> all;
        for (unsigned int i = 0; i < manager->numTabStops(); ++i)
            all.push_back(manager->getTabStopTabOrder(i));
        return all;
    }

    Log log;
    std::vector<std::unique_ptr<Control>> controls;
    std::unique_ptr<TabOrderManager> manager;
};

using Orders = std::vector<unsigned int>;

TEST_F(TabOrderTest, PushAgainstTheEndMovesNobody) {
    std::vector<Control> many(4200);
    manager = std::make_unique<TabOrderManager>(false);
    unsigned int accepted = 0;
    while (manager->addTabStop(many[accepted], 0xFFFFEFFE)) ++accepted;
    EXPECT_EQ(accepted, 4096u);
    EXPECT_EQ(manager->getTabStopTabOrder(0), 0xFFFFFFFD);
    EXPECT_EQ(manager->getTabStopTabOrder(4095), 0xFFFFEFFE);
    EXPECT_EQ(manager->tabOrderBounds().highestOrder, 0xFFFFFFFD);
    EXPECT_FALSE(manager->setTabOrder(5, 0xFFFFEFFE));
    EXPECT_EQ(manager->getTabStopTabOrder(5), 0xFFFFFFF8);
}

TEST_F(TabOrderTest, HostsHandOverTheirControls) {
    struct Composite : TabOrderableHost {
        void getTabOrderables(std::vector<TabOrderable*>& list, unsigned int order) override {
            list = controls;
            asked = order;
        }
        std::vector<TabOrderable*> controls;
        unsigned int asked = 0;
    } composite;
    Control a, b;
    EXPECT_FALSE(manager->addTabStopsFrom(nullptr, 0));
    EXPECT_TRUE(manager->addTabStopsFrom(composite, 3));
    composite.controls = {&a, nullptr, &b};
    EXPECT_FALSE(manager->addTabStopsFrom(&composite, 9));
    EXPECT_EQ(composite.asked, 9u);
    EXPECT_EQ(orders(), (Orders{0, 1, 2, 9}));
    composite.controls = {&b, &a};
    EXPECT_FALSE(manager->addTabStopsFrom(composite));
    EXPECT_EQ(orders(), (Orders{0, 1, 2, 9, 10}));
}

TEST_F(TabOrderTest, OneControlInSeveralManagers) {
    TabOrderManager second(true);
    second.addTabStop(at(0));
    second.addTabStop(at(1));
    second.addTabStop(at(0));
    EXPECT_EQ(at(0).tabOrderManagers(), (std::vector<TabOrderManager*>{manager.get(), &second, &second}));
    EXPECT_TRUE(at(0).setTabStopFocus());
    EXPECT_EQ(log, (Log{"forward 0", "forward 0"}));
    second.setTabStopFocus(2);
    EXPECT_FALSE(second.isTabStopFocus(at(0))) << "only the first record counts";
    second.setTabStopFocus(1);
    log.clear();
    at(0).relinquishTabStopFocus();
    EXPECT_EQ(log, (Log{"loss 0", "loss 1"}));
    second.removeTabStop(0u);
    EXPECT_EQ(at(0).tabOrderManagers(), (std::vector<TabOrderManager*>{manager.get(), &second}));
    EXPECT_TRUE(second.removeTabStop(at(0)));
    manager.reset();
    EXPECT_TRUE(at(0).tabOrderManagers().empty());
}

TEST_F(TabOrderTest, RenumberingFollowsTheListAndResetsTheBounds) {
    manager->setTabOrder(0u, 50);
    manager->setTabStopFocus(0);
    manager->renumberTabStops({2, 2, 77});
    EXPECT_EQ(orders(), (Orders{2, 1, 0}));
    EXPECT_EQ(manager->getCurrentTabOrder(), 2u);
    EXPECT_EQ(manager->tabOrderBounds().lowestIndex, 2u);
    EXPECT_EQ(manager->tabOrderBounds().highestOrder, 2u);
    EXPECT_EQ(manager->incrementTabStop(), 2u);
}

TEST_F(TabOrderTest, WhatIsThrownReleasesTheRedraws) {
    at(0).onReceipt = [] { throw std::runtime_error("no"); };
    EXPECT_THROW(manager->setTabStopFocus(0), std::runtime_error);
    EXPECT_EQ(Drawable::holdCount(), 0);
    EXPECT_FALSE(at(0).isReceivingTabStopFocus());
    at(1).onQuestion = [] { throw std::runtime_error("no"); };
    EXPECT_THROW(manager->incrementTabStop(), std::runtime_error);
    EXPECT_EQ(Drawable::holdCount(), 0);
}

// --- Destruction in calls

/// Every way to move the focus, with every object destroyed, removed or focused in every call: no dead object
/// is touched (the sanitizer looks), and none is called.
TEST_F(TabOrderTest, AnythingMayGoInEveryCall) {
    using Act = std::function<void()>;
    std::vector<Act> const ways{
        [&] { manager->setTabStopFocus(1); }, [&] { manager->incrementTabStop(); },
        [&] { manager->decrementTabStop(); }, [&] { manager->refocusCurrentTabStop(); },
        [&] { at(1).setTabStopFocus(); },     [&] { at(0).relinquishTabStopFocus(); },
    };
    std::vector<Act> deeds{
        [&] { manager.reset(); },
        [&] { controls.clear(); },
        [&] { controls.clear(), manager.reset(); },
        [&] { manager.reset(), controls.clear(); },
        [&] {
            while (manager->removeTabStop(0u)) {
            }
        },
        [&] { manager->setTabStopFocus(none); },
        [&] { manager->setTabStopFocus(2); },
        [&] { manager->incrementTabStop(); },
    };
    for (std::size_t i = 0; i < 3; ++i) {
        deeds.push_back([this, i] { controls[i].reset(); });
        deeds.push_back([this, i] { manager->removeTabStop(at(i)); });
    }
    int done = 0;
    for (Act const& way : ways)
        for (Act const& deed : deeds)
            for (int call = 0; call < 3; ++call) {
                begin();
                manager->setTabStopFocus(0);
                log.clear();
                bool armed = true;
                std::size_t called = 0;
                auto const action = [&] {
                    if (!armed) return;
                    armed = false;
                    deed();
                    called = log.size();
                    ++done;
                };
                for (auto const& control : controls)
                    (call == 0   ? control->onQuestion
                     : call == 1 ? control->onReceipt
                                 : control->onLoss) = action;
                way();
                EXPECT_EQ(Drawable::holdCount(), 0);
                if (armed) continue;
                for (std::size_t i = called; i < log.size(); ++i) {
                    auto const who = static_cast<std::size_t>(log[i].back() - '0');
                    EXPECT_TRUE(manager && who < controls.size() && controls[who]) << log[i];
                }
                for (auto const& control : controls) {
                    if (!control) continue;
                    EXPECT_FALSE(control->isReceivingTabStopFocus());
                    EXPECT_EQ(control->tabOrderManagers().empty(),
                              !manager || manager->getTabStopIndex(*control) == none);
                }
            }
    EXPECT_GT(done, 180);
}

TEST_F(TabOrderTest, LossOnlyReachesStopsThatAreStillThere) {
    manager->setTabStopFocus(0);
    at(1).onReceipt = [&] { manager->removeTabStop(at(0)); };
    log.clear();
    manager->setTabStopFocus(1);
    EXPECT_EQ(log, (Log{"forward 1"}));
    EXPECT_EQ(manager->getCurrentTabStopIndex(), 0u);
}

TEST_F(TabOrderTest, NestedFocusingKeepsTheInnerOne) {
    manager->setTabStopFocus(0);
    at(1).onReceipt = [&] { manager->setTabStopFocus(2); };
    log.clear();
    manager->setTabStopFocus(1);
    // The inner change takes the focus from 1 while it still is receiving it.
    EXPECT_EQ(log, (Log{"forward 1", "forward 2", "own loss 1", "loss 0"}));
    EXPECT_EQ(manager->getCurrentTabStopIndex(), 2u);
}

// --- Against the model

class Comparison {
public:
    Comparison(unsigned int seed, int numControls, bool duplicates)
        : random_(seed), seed_(seed), manager_(duplicates), model_(duplicates) {
        for (int i = 0; i < numControls; ++i) {
            controls_.push_back(std::make_unique<Control>(i, &log_));
            controls_.back()->quiet = true;
        }
        model_.active.assign(controls_.size(), true);
    }

    unsigned int below(std::size_t bound) { return static_cast<unsigned int>(random_() % bound); }
    unsigned int anyIndex() {
        unsigned int const pick = below(20);
        return pick == 0 ? none : pick == 1 ? 1000000 : below(model_.stops.size() + 2);
    }
    unsigned int anyOrder(unsigned int range) {
        unsigned int const pick = below(24);
        if (pick == 0) return 0xFFFFEFF0 + below(20);
        if (pick == 1) return none;
        if (pick < 6) return append;
        // Beyond the highest nobody makes way, so that orders come to be shared.
        bool const beyond = pick < 12 && model_.highest < 0xFFFFE000;
        return beyond ? model_.highest + 1 + below(3) : below(range);
    }

    void fill(unsigned int count) {
        for (unsigned int i = 0; i < count; ++i) {
            int const object = static_cast<int>(below(controls_.size()));
            EXPECT_EQ(manager_.addTabStop(control(object)), model_.add(object, append));
        }
    }
    /// Has stops share orders, with some of them inside the bounds.
    void share(unsigned int count) {
        unsigned int const highest = model_.highest;
        for (unsigned int i = 0; i < count; ++i) {
            unsigned int const index = below(model_.stops.size());
            unsigned int const order = highest + 1 + below(count / 3);
            EXPECT_EQ(manager_.setTabOrder(index, order), model_.setOrder(index, order));
        }
        EXPECT_EQ(manager_.setTabOrder(0u, append - 1), false);
        same(manager_.removeTabStop(control(0)), model_.removeAll(0));
        same(manager_.addTabStop(control(0), highest + count / 2), model_.add(0, highest + count / 2));
    }
    /// A run of orders in which one has several holders, and a gap behind it.
    void layOutRun(unsigned int length, unsigned int shared, unsigned int holders) {
        for (unsigned int i = 0; i < length + holders; ++i) {
            unsigned int const order = i == 0 ? 10000 : append;
            same(manager_.addTabStop(control(static_cast<int>(i)), order),
                 model_.add(static_cast<int>(i), order));
        }
        // Below the lowest nobody makes way.
        for (unsigned int i = 0; i < length + holders; ++i) {
            unsigned int const order = i < shared ? i + 1 : i < shared + holders ? shared : i - holders + 1;
            same(manager_.setTabOrder(i, order), model_.setOrder(i, order));
        }
        compare();
    }
    void push(unsigned int order) {
        int const object = static_cast<int>(model_.stops.size());
        same(manager_.addTabStop(control(object), order), model_.add(object, order));
        compare();
    }
    unsigned int highest() const { return model_.highest; }

    void step(unsigned int range) {
        int const object = static_cast<int>(below(controls_.size()));
        unsigned int const index = anyIndex();
        unsigned int const order = anyOrder(range);
        unsigned int const choice = below(20);
        if (choice < 4) return same(manager_.addTabStop(control(object), order), model_.add(object, order));
        if (choice == 4) return remove(object);
        if (choice == 5) return removeAt(index);
        if (choice < 8)
            return same(manager_.setTabOrder(control(object), order), model_.setOrderOf(object, order));
        if (choice < 10) return same(manager_.setTabOrder(index, order), model_.setOrder(index, order));
        if (choice == 10) return same(manager_.setTabStopFocus(index), model_.focus(index));
        if (choice == 11) return same(manager_.setTabStopFocus(control(object)), model_.focusObject(object));
        if (choice < 14) return same(manager_.incrementTabStop(), model_.increment());
        if (choice < 16) return same(manager_.decrementTabStop(), model_.decrement());
        if (choice == 16) return same(manager_.refocusCurrentTabStop(), model_.refocus());
        if (choice == 17) return toggleEnabled(object, index);
        if (choice == 18) return toggleActive(object);
        replace(object);
    }

    void compare() {
        ASSERT_EQ(manager_.numTabStops(), model_.stops.size()) << "seed " << seed_;
        for (unsigned int i = 0; i < model_.stops.size(); ++i) {
            TabOrderModel::Stop const& stop = model_.stops[i];
            // Millions of times, so without the cost of an assertion.
            if (manager_.getTabStopTabOrder(i) == stop.order &&
                manager_.getTabStopObject(i) == &control(stop.object) &&
                manager_.getTabStopEnabled(i) == stop.enabled)
                continue;
            FAIL() << "seed " << seed_ << ", index " << i << ": order " << manager_.getTabStopTabOrder(i)
                   << " for " << stop.order << ", enabled " << manager_.getTabStopEnabled(i) << " for "
                   << stop.enabled << ", or another object";
        }
        ASSERT_EQ(manager_.getCurrentTabStopIndex(), model_.currentIndex) << "seed " << seed_;
        ASSERT_EQ(manager_.getCurrentTabOrder(), model_.currentOrder) << "seed " << seed_;
        auto const end = static_cast<unsigned int>(model_.stops.size());
        ASSERT_EQ(manager_.getTabStopObject(end), nullptr) << "seed " << seed_;
        ASSERT_EQ(manager_.getTabStopTabOrder(end), none) << "seed " << seed_;
        TabOrderManager::TabOrderBounds const& bounds = manager_.tabOrderBounds();
        ASSERT_EQ(bounds.lowestOrder, model_.lowest) << "seed " << seed_;
        ASSERT_EQ(bounds.lowestIndex, model_.lowestIndex) << "seed " << seed_;
        ASSERT_EQ(bounds.highestOrder, model_.highest) << "seed " << seed_;
        ASSERT_EQ(bounds.highestIndex, model_.highestIndex) << "seed " << seed_;
        ASSERT_EQ(log_, model_.log) << "seed " << seed_;
        log_.clear();
        model_.log.clear();
    }

    void compareControls() {
        for (int i = 0; i < static_cast<int>(controls_.size()); ++i) {
            EXPECT_EQ(manager_.isTabStopFocus(control(i)), model_.isFocus(i));
            EXPECT_EQ(manager_.getTabStopIndex(control(i)), model_.firstOf(i));
            auto const records = std::count_if(model_.stops.begin(), model_.stops.end(),
                                               [i](TabOrderModel::Stop const& s) { return s.object == i; });
            EXPECT_EQ(control(i).tabOrderManagers().size(), static_cast<std::size_t>(records));
        }
    }

    /// How many orders are held more than once.
    std::size_t numShared() const {
        std::vector<std::uint32_t> orders;
        for (TabOrderModel::Stop const& stop : model_.stops) orders.push_back(stop.order);
        std::sort(orders.begin(), orders.end());
        return orders.size() -
               static_cast<std::size_t>(std::unique(orders.begin(), orders.end()) - orders.begin());
    }

private:
    Control& control(int object) { return *controls_[static_cast<std::size_t>(object)]; }

    template <class Answer>
    void same(Answer real, Answer model) {
        EXPECT_EQ(real, model) << "seed " << seed_;
    }
    void remove(int object) {
        if (below(3) == 0) same(manager_.removeTabStop(control(object)), model_.removeAll(object));
    }
    void removeAt(unsigned int index) {
        if (below(2) == 0) same(manager_.removeTabStop(index), model_.removeAt(index));
    }
    /// Asks by object and by index. The first record of an object counts.
    void toggleEnabled(int object, unsigned int index) {
        bool found = false;
        unsigned int const first = model_.firstOf(object);
        bool const isEnabled = manager_.getTabStopEnabled(control(object), &found);
        EXPECT_EQ(found, first != none);
        EXPECT_EQ(isEnabled, found && model_.stops[first].enabled);
        EXPECT_EQ(manager_.setTabStopEnabled(control(object), isEnabled), found);
        bool const enabled = manager_.getTabStopEnabled(index, &found);
        EXPECT_EQ(found, index < model_.stops.size());
        EXPECT_EQ(manager_.setTabStopEnabled(index, !enabled), found);
        if (found) model_.stops[index].enabled = !enabled;
    }
    void toggleActive(int object) {
        auto const i = static_cast<std::size_t>(object);
        model_.active[i] = controls_[i]->active = !controls_[i]->active;
    }
    /// The control dies, and a new one comes.
    void replace(int object) {
        auto const i = static_cast<std::size_t>(object);
        if (below(4)) return;
        model_.removeAll(object);
        model_.active[i] = true;
        controls_[i] = std::make_unique<Control>(object, &log_);
        controls_[i]->quiet = true;
    }

    std::mt19937 random_;
    unsigned int seed_;
    Log log_;
    TabOrderManager manager_;
    std::vector<std::unique_ptr<Control>> controls_;
    TabOrderModel model_;
};

TEST(TabOrderModel, SmallRandomSequencesAgree) {
    std::size_t shared = 0;
    for (unsigned int seed = 1; seed <= 3000 && !testing::Test::HasFatalFailure(); ++seed) {
        Comparison comparison(seed, 8, seed % 3 == 0);
        unsigned int const range = 4 + seed % 12;
        for (int i = 0; i < 60; ++i) {
            comparison.step(range);
            comparison.compare();
            if (testing::Test::HasFailure()) return;
        }
        comparison.compareControls();
        shared += comparison.numShared();
    }
    EXPECT_GT(shared, 500u) << "equal orders are hardly tried";
}

TEST(TabOrderModel, LongRunsAgree) {
    std::size_t shared = 0;
    for (unsigned int seed = 1; seed <= 12; ++seed) {
        Comparison comparison(seed, 1500, seed % 2 == 0);
        comparison.fill(2000);
        comparison.share(30 * seed);
        for (int i = 0; i < 120; ++i) {
            comparison.step(comparison.highest());
            comparison.compare();
            if (testing::Test::HasFailure()) return;
        }
        comparison.compareControls();
        shared += comparison.numShared();
    }
    EXPECT_GT(shared, 500u);
}

/// Orders with several holders at every place of a long run, and so at every place in what the list is cut
/// into.
TEST(TabOrderModel, SharedOrdersInsideRunsAgree) {
    for (unsigned int shared = 2; shared < 600; shared += 1 + shared % 3) {
        Comparison comparison(shared, 700, false);
        comparison.layOutRun(620, shared, 1 + shared % 3);
        for (unsigned int const order : {0u, 1u, shared, shared - 1, 1u}) comparison.push(order);
        ASSERT_FALSE(testing::Test::HasFailure()) << "shared order " << shared;
    }
}

/// This would take minutes if anything were quadratic, and overflow the stack if anything recursed.
TEST(TabOrderModel, HundredThousandStops) {
    constexpr unsigned int count = 100000, inFront = 20000;
    std::vector<Control> controls(count);
    auto manager = std::make_unique<TabOrderManager>(false);
    for (unsigned int i = 0; i < count; ++i)
        ASSERT_TRUE(
            manager->addTabStop(controls[i], i < count - inFront ? TabOrderManager::appendTabStop : 0));
    EXPECT_EQ(manager->getTabStopTabOrder(0), inFront);
    EXPECT_EQ(manager->getTabStopTabOrder(count - inFront - 1), count - 1);
    EXPECT_EQ(manager->getTabStopTabOrder(count - 1), 0u);
    for (unsigned int i = 0; i < 1000; ++i) ASSERT_EQ(manager->incrementTabStop(), count - 1 - i);
    // One by one from the front, as when the owner destroys them: each of the others moves down.
    for (unsigned int i = 0; i + 1000 < count; ++i) ASSERT_TRUE(manager->removeTabStop(controls[i]));
    EXPECT_EQ(manager->numTabStops(), 1000u);
    EXPECT_EQ(manager->getCurrentTabStopIndex(), 0u);
    EXPECT_EQ(manager->getTabStopObject(999), &controls.back());
    // Very many at one order, and then others pushed through them.
    for (unsigned int i = 0; i + 1000 < count; ++i) ASSERT_TRUE(manager->addTabStop(controls[i]));
    for (unsigned int i = 1; i < 50000; ++i) ASSERT_TRUE(manager->setTabOrder(controls[i], 500000));
    ASSERT_TRUE(manager->setTabOrder(controls[0], 500001));
    ASSERT_TRUE(manager->removeTabStop(controls[0]));
    ASSERT_TRUE(manager->addTabStop(controls[0], 600000));
    for (unsigned int i = 60000; i < 61000; ++i) ASSERT_TRUE(manager->setTabOrder(controls[i], 500000));
    auto const orderOf = [&](Control const& control) {
        return manager->getTabStopTabOrder(manager->getTabStopIndex(control));
    };
    EXPECT_EQ(orderOf(controls[1]), 501000u);
    EXPECT_EQ(orderOf(controls[1000]), 500001u);
    EXPECT_EQ(orderOf(controls[1001]), 500000u);
    EXPECT_EQ(orderOf(controls[60999]), 500000u);
    manager.reset();
    EXPECT_TRUE(controls[5].tabOrderManagers().empty());
}

} // namespace
} // namespace wainscot
