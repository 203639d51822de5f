#include "host/base/life.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <optional>
#include <random>
#include <vector>

namespace wainscot {
namespace {

/// Objects as an allocator places them: at multiples of 16, side by side in two blocks.
struct alignas(16) Place {
    IdStamp stamp;
};

class Places {
public:
    explicit Places(std::mt19937& random) : random_(random) {}
    Place* any() { return &blocks_[random_() % 2][random_() % 6000]; }

private:
    std::mt19937& random_;
    std::vector<Place> blocks_[2] = {std::vector<Place>(6000), std::vector<Place>(6000)};
};

TEST(Liveness, AgreesWithAModelUnderRandomUse) {
    std::size_t const before = Liveness::count();
    std::map<void const*, IdStamp> model;
    std::mt19937 random(5);
    Places places(random);
    for (int i = 0; i < 60000; ++i) {
        Place* const object = places.any();
        // Phases of growing and of shrinking, so that the table fills, empties and fills again.
        if (random() % 8 < (i / 5000 % 2 ? 1 : 6)) {
            model[object] = object->stamp = IdStamp::make();
            Liveness::add(object, object->stamp);
        } else {
            Liveness::remove(object);
            model.erase(object);
        }
        void const* const asked = places.any();
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

TEST(LifeToken, GuardsKnowTheDeadAndTheirSuccessors) {
    std::size_t const before = Liveness::count();
    std::optional<LifeToken> token(std::in_place);
    EXPECT_EQ(Liveness::count(), before);
    LifeGuard const guard(*token);
    LifeGuard const second(*token);
    EXPECT_EQ(Liveness::count(), before + 1);
    EXPECT_TRUE(guard.alive() && second.alive());
    token.reset();
    EXPECT_FALSE(guard.alive() || second.alive());
    token.emplace();
    EXPECT_TRUE(LifeGuard(*token).alive());
    EXPECT_FALSE(guard.alive());
    token.reset();
    EXPECT_EQ(Liveness::count(), before);
}

TEST(LifeToken, CopiesLiveTheirOwnLives) {
    auto original = std::make_unique<LifeToken>();
    LifeGuard const ofOriginal(*original);
    LifeToken copy(*original);
    LifeGuard const ofCopy(copy);
    copy = *original;
    EXPECT_TRUE(ofCopy.alive());
    original.reset();
    EXPECT_FALSE(ofOriginal.alive());
    EXPECT_TRUE(ofCopy.alive());
}

} // namespace
} // namespace wainscot
