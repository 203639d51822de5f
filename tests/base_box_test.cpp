#include "host/base/box.h"
#include "host/base/num_range.h"

#include <gtest/gtest.h>

#include <limits>

namespace wainscot {
namespace {

TEST(Box, KnowsItsEdgesHoweverItWasMade) {
    IntBox const box(XY<int>(10, 2), XY<int>(4, 8));
    EXPECT_EQ(box, IntBox(4, 2, 10, 8));
    EXPECT_EQ(box, IntBox::sized({4, 2}, {6, 6}));
    EXPECT_EQ(box, makeBox({4, 8}, {10, 2}));
    EXPECT_EQ(getDimensions(makeBox({5, 9}, {2, 3})), (XY<int>{3, 6}));
    EXPECT_EQ(getDimensions(IntBox(5, 5, 2, 9)), (XY<int>{0, 4}));
    EXPECT_TRUE(box.contains({4, 2}));
    EXPECT_FALSE(box.contains({10, 2}));
    EXPECT_FALSE(box.contains({4, 8}));
    EXPECT_TRUE(point_in_box({4, 2}, box));
    EXPECT_FALSE(point_in_box({10, 2}, box));
}

TEST(Box, EmptyOnesMeetAndAddNothing) {
    IntBox const box(0, 0, 10, 10);
    IntBox const empty(3, 3, 3, 7);
    IntBox const reversed(5, 9, 2, 1);
    for (IntBox const& none : {empty, reversed, IntBox()}) {
        EXPECT_TRUE(none.isEmpty());
        EXPECT_FALSE(box.intersects(none));
        EXPECT_FALSE(none.intersects(box));
        EXPECT_EQ(box.unitedWith(none), box);
        EXPECT_EQ(none.unitedWith(box), box);
    }
    EXPECT_TRUE(box.inset(5).isEmpty());
    EXPECT_EQ(box.inset(-1), IntBox(-1, -1, 11, 11));
}

TEST(Box, OverlapIsWhatBothHold) {
    IntBox const a(0, 0, 10, 6);
    IntBox const b = a.translated({7, -2});
    EXPECT_EQ(b, IntBox(7, -2, 17, 4));
    EXPECT_EQ(a.intersection(b), IntBox(7, 0, 10, 4));
    for (int x = -1; x < 18; ++x)
        for (int y = -3; y < 7; ++y)
            EXPECT_EQ(a.intersection(b).contains({x, y}), a.contains({x, y}) && b.contains({x, y}));
}

TEST(Box, NeighboursShareAnEdgeButNoPixel) {
    IntBox const left(0, 0, 5, 5);
    IntBox const right(5, 0, 9, 5);
    EXPECT_FALSE(left.intersects(right));
    EXPECT_EQ(left.unitedWith(right), IntBox(0, 0, 9, 5));
    EXPECT_TRUE(left.unitedWith(right).contains(right));
    EXPECT_FALSE(left.contains(left.unitedWith(right)));
}

TEST(Box, StaysAtTheEndsOfTheRange) {
    constexpr int least = std::numeric_limits<int>::min();
    constexpr int most = std::numeric_limits<int>::max();
    IntBox const all(least, least, most, most);
    EXPECT_EQ(all.width(), most);
    EXPECT_EQ(all.inset(-5), all);
    EXPECT_EQ(IntBox(0, 0, 9, 9).inset(most).y2, 9 - most);
    EXPECT_EQ(all.translated({most, -1}), IntBox(-1, least, most, most - 1));
    EXPECT_EQ(IntBox::sized({most - 2, least}, {5, -5}), IntBox(most - 2, least, most, least));
    EXPECT_EQ(XY<int>(0, most) - XY<int>(least, least), XY<int>(most, most));
    EXPECT_EQ(XY<unsigned short>(3, 0) - XY<unsigned short>(5, 1), XY<unsigned short>(0, 0));
    EXPECT_EQ(XY<double>(1.5e308, 1) + XY<double>(1.5e308, 1),
              XY<double>(std::numeric_limits<double>::infinity(), 2));
}

TEST(NumRange, ClampsAndOrders) {
    NumRange<int> const range(9, -3);
    EXPECT_EQ(range, NumRange<int>(-3, 9));
    EXPECT_EQ(range.clamp(-4), -3);
    EXPECT_EQ(range.clamp(10), 9);
    EXPECT_EQ(range.clamp(0), 0);
    EXPECT_TRUE(range.contains(9));
    NumRange<double> const part(0.25, 0.75);
    EXPECT_EQ(part.clamp(std::numeric_limits<double>::quiet_NaN()), 0.25);
    EXPECT_EQ(part.clamp(std::numeric_limits<double>::infinity()), 0.75);
}

} // namespace
} // namespace wainscot
