#include "host/base/critical_section.h"
#include "host/base/ptr.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <utility>
#include <vector>

namespace wainscot {
namespace {

struct Named : virtual iObject {
    int name = 0;
};

/// Counts its kind; two ways up to the counted base.
class Payload : public Qv::InternalRefCount, public Named {
public:
    explicit Payload(int number) {
        name = number;
        ++alive;
    }
    Payload(Payload const& other) : Qv::InternalRefCount(other), Named(other) { ++alive; }
    ~Payload() override {
        --alive;
        if (onDeath) onDeath->reset();
    }

    static inline std::atomic<int> alive = 0;
    Qv::Ptr<Payload>* onDeath = nullptr;
};

struct Stranger : Qv::InternalRefCount {};

TEST(Ptr, LastOneLetsGo) {
    {
        Qv::Ptr<Payload> const first = Qv::makePtr<Payload>(3);
        Qv::Ptr<iObject> base = first;
        EXPECT_EQ(first->refCount(), 2u);
        Qv::Ptr<iObject> const moved = std::move(base);
        EXPECT_EQ(moved.cast<Named>()->name, 3);
        EXPECT_EQ(moved.cast<Stranger>(), nullptr);
        EXPECT_EQ(first->refCount(), 2u);
        EXPECT_EQ(Qv::makePtr<Payload>(*first)->refCount(), 1u) << "a copied object is counted on its own";
        EXPECT_EQ(Payload::alive, 1);
    }
    EXPECT_EQ(Payload::alive, 0);
}

TEST(Ptr, SurvivesAssignmentToItselfAndInDestructors) {
    Qv::Ptr<Payload> pointer = Qv::makePtr<Payload>(1);
    pointer = static_cast<Qv::Ptr<Payload> const&>(pointer);
    EXPECT_EQ(pointer->refCount(), 1u);
    pointer->onDeath = &pointer;
    pointer = Qv::makePtr<Payload>(2);
    EXPECT_EQ(pointer, nullptr);
    EXPECT_EQ(Payload::alive, 0);
}

TEST(ThreadPtr, CountsFromAllThreads) {
    Qv::Ptr<Payload> shared = Qv::makePtr<Payload>(1);
    {
        std::vector<std::jthread> threads;
        for (int t = 0; t < 4; ++t)
            threads.emplace_back([pointer = shared] {
                for (int i = 0; i < 5000; ++i) {
                    Qv::Ptr<Payload> copy = pointer;
                    EXPECT_EQ(copy->name, 1);
                    copy = nullptr;
                }
            });
        shared.reset();
    }
    EXPECT_EQ(Payload::alive, 0);
}

TEST(ThreadCriticalSection, MayBeEnteredAgainByItsHolderOnly) {
    CriticalSection section;
    long total = 0;
    {
        std::vector<std::jthread> threads;
        for (int t = 0; t < 4; ++t)
            threads.emplace_back([&] {
                for (int i = 0; i < 2000; ++i) {
                    section.enter();
                    for (int k = 0; k < 2; ++k, ++total) CriticalSectionLock const lock(section);
                    ++total;
                    section.leave();
                }
            });
    }
    EXPECT_EQ(total, 24000);
}

} // namespace
} // namespace wainscot
