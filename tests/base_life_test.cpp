#include "host/base/id_stamp.h"
#include "host/base/life.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace wainscot {
namespace {

/// Objects as an allocator places them: at multiples of 16.
struct alignas(16) Place {
    IdStamp stamp;
};

TEST(Liveness, AgreesWithAModelUnderRandomUse) {
    std::size_t const before = Liveness::count();
    std::map<void const*, IdStamp> model;
    std::mt19937 random(5);
    std::vector<Place> blocks[2] = {std::vector<Place>(6000), std::vector<Place>(6000)};
    auto const any = [&] { return &blocks[random() % 2][random() % 6000]; };
    for (int i = 0; i < 60000; ++i) {
        Place* const object = any();
        // Phases of growing and of shrinking, so that the table fills, empties and fills again.
        if (random() % 8 < (i / 5000 % 2 ? 1 : 6)) {
            model[object] = object->stamp = IdStamp::make();
            Liveness::add(object, object->stamp);
        } else {
            Liveness::remove(object);
            model.erase(object);
        }
        void const* const asked = any();
        auto const found = model.find(asked);
        ASSERT_EQ(Liveness::stampOf(asked), found == model.end() ? IdStamp() : found->second);
        ASSERT_EQ(Liveness::count(), before + model.size());
    }
    for (auto const& [object, stamp] : model) {
        EXPECT_TRUE(Liveness::alive(object, stamp));
        Liveness::remove(object);
        EXPECT_FALSE(Liveness::alive(object, stamp));
    }
    EXPECT_EQ(Liveness::count(), before);
}

TEST(Liveness, NullIsNeverAlive) {
    std::size_t const before = Liveness::count();
    Liveness::add(nullptr, IdStamp::make());
    EXPECT_EQ(Liveness::count(), before);
    EXPECT_FALSE(Liveness::stampOf(nullptr).valid());
    Liveness::remove(nullptr);
    EXPECT_EQ(Liveness::count(), before);
}

TEST(LifeToken, GuardsKnowTheDeadTheirSuccessorsAndCopies) {
    std::size_t const before = Liveness::count();
    std::optional<LifeToken> token(std::in_place);
    EXPECT_EQ(Liveness::count(), before);
    LifeGuard const guard(*token), second(*token);
    EXPECT_EQ(Liveness::count(), before + 1);
    std::optional<LifeToken> copy(*token);
    LifeGuard const ofCopy(*copy);
    *copy = *token;
    EXPECT_TRUE(guard.alive() && second.alive() && ofCopy.alive());
    token.reset();
    EXPECT_FALSE(guard.alive() || second.alive());
    EXPECT_TRUE(ofCopy.alive());
    token.emplace();
    EXPECT_TRUE(LifeGuard(*token).alive());
    EXPECT_FALSE(guard.alive());
    token.reset();
    copy.reset();
    EXPECT_EQ(Liveness::count(), before);
}

TEST(IdStamp, InvalidOnesNameNothing) {
    IdStamp stamp = IdStamp::make();
    EXPECT_TRUE(stamp.valid());
    EXPECT_EQ(stamp.asString(), std::to_string(stamp.value()).c_str());
    stamp.invalidate();
    EXPECT_FALSE(stamp.valid());
    EXPECT_EQ(stamp, IdStamp());
}

TEST(ThreadIdStamp, NoStampIsGivenTwice) {
    constexpr std::size_t each = 5000;
    std::vector<std::vector<IdStamp>> made(4);
    {
        std::vector<std::jthread> threads;
        for (auto& stamps : made)
            threads.emplace_back([&stamps] {
                for (std::size_t i = 0; i < each; ++i) stamps.push_back(IdStamp::make());
            });
    }
    std::set<IdStamp> all;
    for (auto const& stamps : made) {
        EXPECT_TRUE(std::is_sorted(stamps.begin(), stamps.end()));
        all.insert(stamps.begin(), stamps.end());
    }
    EXPECT_EQ(all.size(), made.size() * each);
}

} // namespace
} // namespace wainscot
