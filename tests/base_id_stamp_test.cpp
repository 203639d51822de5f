#include "host/base/id_stamp.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace wainscot {
namespace {

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
