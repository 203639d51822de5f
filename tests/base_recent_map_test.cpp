#include "host/base/recent_map.h"
#include "host/drawing/font.h"

#include <gtest/gtest.h>

#include <string>

namespace wainscot {
namespace {

TEST(RecentMapTest, TheOneAskedForLongestAgoGoes) {
    RecentMap<std::string, int> map(3);
    map.add("a", 1);
    map.add("b", 2);
    map.add("c", 3);
    ASSERT_TRUE(map.find("a"));
    map.add("d", 4);
    EXPECT_FALSE(map.find("b"));
    EXPECT_EQ(*map.find("a"), 1);
    EXPECT_EQ(map.add("a", 5), 5);
    EXPECT_EQ(map.size(), 3u);
    map.clear();
    EXPECT_FALSE(map.find("a"));
    EXPECT_EQ(map.add("a", 6), 6);
}

TEST(LoadedFonts, AreKeptWhileInUseAndForALimitedTime) {
    Qv::Ptr<iFont> const held = Glib::loadFont({"DejaVu Sans", 900});
    EXPECT_EQ(Glib::loadFont({"DejaVu Sans", 900}), held);
    int const width = held->textWidth(L"held");
    for (unsigned short size = 100; size < 600; ++size) Glib::loadFont({"DejaVu Sans", size});
    EXPECT_EQ(held->refCount(), 1u) << "nobody else keeps it any more";
    EXPECT_EQ(held->textWidth(L"held"), width);
    EXPECT_EQ(Glib::loadFont({"DejaVu Sans", 900})->textWidth(L"held"), width);
}

} // namespace
} // namespace wainscot
