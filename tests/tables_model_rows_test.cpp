#include "tables/model/row_ranges.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>

namespace wainscot {
namespace {

using Random = std::mt19937;

unsigned int below(Random& random, std::size_t end) {
    return static_cast<unsigned int>(random() % end);
}

std::vector<RowRange> rangesOf(std::set<unsigned int> const& rows) {
    std::vector<RowRange> ranges;
    for (unsigned int const row : rows) {
        if (!ranges.empty() && ranges.back().end == row)
            ++ranges.back().end;
        else
            ranges.push_back({row, row + 1});
    }
    return ranges;
}

TEST(RowRanges, RandomScriptsAgreeWithASet) {
    Random random(1);
    constexpr unsigned int numRows = 120;
    for (int script = 0; script < 60; ++script) {
        RowRanges rows;
        std::set<unsigned int> expected;
        auto const renumber = [&](auto number) {
            std::set<unsigned int> renumbered;
            for (unsigned int const row : expected)
                if (long const to = number(static_cast<long>(row)); to >= 0)
                    renumbered.insert(static_cast<unsigned int>(to));
            expected = renumbered;
        };
        for (int step = 0; step < 150; ++step) {
            unsigned int const first = below(random, numRows);
            unsigned int const count = below(random, 12);
            unsigned int const target = below(random, numRows);
            long const f = first, c = count, t = target;
            RowRanges other;
            other.assign(std::vector<RowRange>{{target, target + 9}, {9, 3}, {first, first + count}});
            std::set<unsigned int> range, others;
            for (unsigned int row = first; row < first + count; ++row) range.insert(row);
            others = range;
            for (unsigned int row = target; row < target + 9; ++row) others.insert(row);
            ASSERT_EQ(rangesOf(others), std::vector(other.ranges().begin(), other.ranges().end()));
            bool const adds = random() % 2 == 0;
            switch (random() % 6) {
            case 0:
                adds ? rows.add(other) : rows.remove(other);
                for (unsigned int const row : others)
                    adds ? (void)expected.insert(row) : (void)expected.erase(row);
                break;
            case 1:
                adds ? rows.add({first, first + count}) : rows.remove({first, first + count});
                for (unsigned int const row : range)
                    adds ? (void)expected.insert(row) : (void)expected.erase(row);
                break;
            case 2:
                rows.toggle({first, first + count});
                for (unsigned int const row : range)
                    if (expected.erase(row) == 0) expected.insert(row);
                break;
            case 3:
                rows.insertRows(first, count);
                renumber([&](long row) { return row < f ? row : row + c; });
                break;
            case 4:
                rows.removeRows(first, count);
                renumber([&](long row) { return row < f ? row : row < f + c ? -1 : row - c; });
                break;
            default:
                rows.moveRows(first, count, target);
                renumber([&](long row) {
                    if (row >= f && row < f + c) return t + row - f;
                    long const without = row < f ? row : row - c;
                    return without < t ? without : without + c;
                });
            }
            ASSERT_EQ(rangesOf(expected), std::vector(rows.ranges().begin(), rows.ranges().end()));
            ASSERT_EQ(expected.size(), rows.count());
            ASSERT_EQ(expected.contains(target), rows.contains(target));
            auto const next = expected.lower_bound(target);
            ASSERT_EQ(next == expected.end() ? std::nullopt : std::optional(*next), rows.firstFrom(target));
            ASSERT_EQ(expected.empty() ? std::nullopt : std::optional(*expected.rbegin()), rows.last());
        }
    }
}

TEST(RowRanges, RowsThatCannotExistAreNeverMembers) {
    RowRanges rows;
    rows.add({maxRows - 2, 0xFFFFFFFF});
    rows.add({maxRows, 0xFFFFFFFF});
    EXPECT_EQ(2u, rows.count());
    rows.insertRows(0, 1);
    EXPECT_EQ(maxRows - 1, rows.first());
    rows.insertRows(5, 0xFFFFFFFF);
    EXPECT_TRUE(rows.empty());
    rows.add({0, maxRows});
    rows.moveRows(1, 0xFFFFFFFF, 0xFFFFFFFF);
    rows.removeRows(0xFFFFFFFF, 0xFFFFFFFF);
    EXPECT_EQ(maxRows, rows.count());
}

} // namespace
} // namespace wainscot
