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
    EXPECT_EQ(box.translated({7, -2}), IntBox(11, 0, 17, 6));
    EXPECT_EQ(box.inset(-1), IntBox(3, 1, 11, 9));
    EXPECT_TRUE(box.inset(3).isEmpty());
}

/// Boxes that overlap, that share an edge, that lie in each other, and that hold nothing.
TEST(Box, IsTheSetOfItsPixels) {
    IntBox const boxes[] = {{0, 0, 6, 5}, {4, -2, 9, 3}, {6, 0, 9, 5}, {0, 5, 6, 8},
                            {1, 1, 3, 2}, {3, 3, 3, 7},  {5, 4, 2, 1}, {}};
    for (IntBox const& a : boxes)
        for (IntBox const& b : boxes) {
            int inA = 0, inB = 0, inBoth = 0;
            for (int x = -1; x < 10; ++x)
                for (int y = -3; y < 9; ++y) {
                    XY<int> const pixel(x, y);
                    inA += point_in_box(pixel, a), inB += b.contains(pixel);
                    inBoth += a.contains(pixel) && b.contains(pixel);
                    EXPECT_EQ(a.intersection(b).contains(pixel), a.contains(pixel) && b.contains(pixel));
                    EXPECT_TRUE(a.unitedWith(b).contains(pixel) || !(a.contains(pixel) || b.contains(pixel)));
                }
            EXPECT_EQ(inA, getDimensions(a).x * getDimensions(a).y);
            EXPECT_EQ(a.isEmpty(), inA == 0);
            EXPECT_EQ(a.intersects(b), inBoth > 0);
            EXPECT_TRUE(inA && inB ? a.contains(b) == (inBoth == inB) : a.unitedWith(b) == (inA ? a : b));
        }
    EXPECT_EQ(boxes[0].unitedWith(boxes[1]), IntBox(0, -2, 9, 5));
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
    for (int value = -5; value < 12; ++value) {
        EXPECT_EQ(range.clamp(value), value < -3 ? -3 : value > 9 ? 9 : value);
        EXPECT_EQ(range.contains(value), range.clamp(value) == value);
    }
    NumRange<double> const part(0.25, 0.75);
    EXPECT_EQ(part.clamp(std::numeric_limits<double>::quiet_NaN()), 0.25);
    EXPECT_EQ(part.clamp(std::numeric_limits<double>::infinity()), 0.75);
}

} // namespace
} // namespace wainscot
