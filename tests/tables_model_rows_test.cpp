#include "tables/model/row_heights.h"
#include "tables/model/row_notices.h"
#include "tables/model/row_order.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <set>
#include <string>

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

TEST(RowHeights, RandomScriptsAgreeWithASumOfAllRows) {
    Random random(2);
    for (unsigned int const most : {40u, 5000u}) {
        std::vector<unsigned short> heights(most);
        auto const own = [&] { return static_cast<unsigned short>(random() % 3 ? random() % 40 : 0); };
        for (auto& height : heights) height = own();
        RowHeights rows;
        rows.reset(most, 20, [&](unsigned int row) { return heights.at(row); });
        for (int step = 0; step < 150; ++step) {
            unsigned int const first = below(random, heights.size() + 1);
            auto const count = std::min(below(random, 30), static_cast<unsigned int>(heights.size()) - first);
            auto const at = heights.begin() + first;
            auto const before = heights;
            switch (random() % 3) {
            case 0:
                std::generate(at, at + count, own);
                rows.changed(first, count);
                break;
            case 1:
                heights.insert(at, count, own());
                rows.inserted(first, count);
                break;
            default:
                heights.erase(at, at + count);
                rows.removed(first, count);
            }
            std::vector<std::int64_t> bottoms{0};
            for (auto const height : heights) bottoms.push_back(bottoms.back() + (height ? height : 20));
            ASSERT_EQ(heights.size(), rows.count());
            ASSERT_EQ(bottoms.back(), rows.total());
            if (heights.empty()) continue;
            unsigned int const row = below(random, heights.size());
            ASSERT_EQ(bottoms[row], rows.topOf(row));
            auto const edge = random() % 2
                                  ? bottoms[row]
                                  : std::int64_t{below(random, static_cast<std::size_t>(rows.total()))};
            auto const passing = std::upper_bound(bottoms.begin(), bottoms.end(), edge) - bottoms.begin();
            ASSERT_EQ(passing - 1, rows.rowAt(edge));
            std::int64_t const bottom = edge + below(random, 400);
            // The walk of a table over its rows.
            std::size_t k = static_cast<std::size_t>(passing) - 1;
            auto const placeIn = [&](std::size_t r, std::int64_t pixel) {
                return static_cast<double>(r) + 1 -
                       static_cast<double>(bottoms[r + 1] - pixel) /
                           rows.heightOf(static_cast<unsigned int>(r));
            };
            double const firstRow = placeIn(k, edge);
            while (k < heights.size() && bottoms[k + 1] < bottom) ++k;
            if (!rows.isVariable()) continue;
            auto const visible = rows.visibleRows(edge, bottom - edge);
            ASSERT_EQ(firstRow, visible.first);
            ASSERT_EQ(k == heights.size() ? static_cast<double>(k) : placeIn(k, bottom), visible.last);
        }
    }
}

TEST(RowHeights, ExtremesAndRowsOfOneHeight) {
    RowHeights rows;
    EXPECT_EQ(std::nullopt, rows.rowAt(0));
    rows.reset(0xFFFFFFFF, 0xFFFF);
    EXPECT_EQ(std::int64_t{maxRows} * 0xFFFF, rows.total());
    EXPECT_EQ(maxRows - 1, rows.rowAt(rows.total() - 1));
    EXPECT_EQ(2.5, (rows.reset(10, 20), rows.visibleRows(50, 100).first));
    EXPECT_EQ(12.5, rows.visibleRows(50, 200).last);
    EXPECT_EQ(10, (rows.reset(10, 0), rows.total()));
    unsigned short answer = 0;
    rows.reset(3000, 10,
               [&](unsigned int row) { return row == 2000 ? answer : static_cast<unsigned short>(0); });
    EXPECT_FALSE(rows.isVariable());
    answer = 0xFFFF;
    rows.changed(2000, 1);
    EXPECT_TRUE(rows.isVariable());
    rows.setDefaultHeight(1);
    EXPECT_EQ(2999 + 0xFFFF, rows.total());
    EXPECT_EQ(3000.0, rows.visibleRows(0, 1'000'000).last);
    EXPECT_EQ(3000.0, rows.visibleRows(0, rows.total()).last);
    rows.removed(2000, 1);
    EXPECT_FALSE(rows.isVariable());
    rows.reset(5, 7, [](unsigned int) { return static_cast<unsigned short>(3); });
    auto const fails = [](unsigned int) -> unsigned short { throw 1; };
    EXPECT_ANY_THROW(rows.reset(9, 9, fails));
    EXPECT_EQ(15, rows.total());
}

TEST(RowNotices, ListenersMayEndAndDestroyAnything) {
    auto notices = std::make_unique<RowNotices>();
    std::string told;
    NotifierSubscription second, late;
    NotifierSubscription const first = notices->subscribe([&](RowNotice const& notice) {
        told += std::to_string(notice.count);
        if (notice.count == 2) second.end();
        if (notice.count == 1) late = notices->subscribe([&](RowNotice const&) { told += 'c'; });
        if (notice.count == 3) notices.reset();
    });
    second = notices->subscribe([&](RowNotice const&) { told += 'b'; });
    for (unsigned int count = 1; count <= 3; ++count) notices->tell({RowNotice::Kind::changed, 0, count, 0});
    EXPECT_EQ("1b2c3", told);
}

TEST(RowNotices, RowsAndSetsGoTheSameWay) {
    Random random(3);
    for (int i = 0; i < 2000; ++i) {
        RowNotice const notice{static_cast<RowNotice::Kind>(random() % 5), below(random, 20),
                               below(random, 9), below(random, 20)};
        unsigned int const row = below(random, 30);
        RowRanges rows;
        rows.add({row, row + 1});
        follow(rows, notice);
        ASSERT_EQ(rows.first(), rowAfter(notice, row));
    }
    EXPECT_EQ(std::nullopt, rowAfter({RowNotice::Kind::inserted, 0, 1, 0}, maxRows - 1));
}

std::vector<unsigned int> shown(RowOrder const& order) {
    std::vector<unsigned int> rows;
    for (unsigned int view = 0; view < order.numRows(); ++view) {
        rows.push_back(order.sourceRow(view).value());
        EXPECT_EQ(view, order.viewRow(rows.back()));
    }
    EXPECT_EQ(std::nullopt, order.sourceRow(order.numRows()));
    return rows;
}

TEST(RowOrder, RandomScriptsAgreeWithAStableSort) {
    Random random(4);
    for (int script = 0; script < 60; ++script) {
        struct Row {
            int a, b;
        };
        std::vector<Row> rows;
        auto const any = [&] {
            return Row{static_cast<int>(random() % 5) - 2, static_cast<int>(random() % 7)};
        };
        RowOrder order;
        bool const descends = random() % 2, filters = random() % 2;
        RowOrder::Key first, second;
        switch (script % 3) {
        case 0:
            first.number = [&](unsigned int r) { return rows.at(r).a; };
            break;
        case 1:
            first.text = [&](unsigned int r) {
                return std::string(1, static_cast<char>('d' + rows.at(r).a));
            };
            break;
        default:
            first.compare = [&](unsigned int x, unsigned int y) { return rows.at(x).a - rows.at(y).a; };
        }
        first.descending = descends;
        second.descending = script % 2;
        if (script % 4 < 2)
            second.compare = [&](unsigned int x, unsigned int y) { return rows.at(x).b - rows.at(y).b; };
        else
            second.number = [&](unsigned int r) { return rows.at(r).b; };
        order.setKeys({first, second});
        if (filters) order.setFilter([&](unsigned int r) { return rows.at(r).b != 3; });
        for (int step = 0; step < 60; ++step) {
            unsigned int const at = below(random, rows.size() + 1);
            unsigned int count = below(random, step % 9 ? 5 : 200);
            unsigned int const left = static_cast<unsigned int>(rows.size()) - at;
            auto const place = rows.begin() + at;
            RowNotice notice{static_cast<RowNotice::Kind>(random() % 4), at, count, 0};
            if (notice.kind != RowNotice::Kind::inserted) count = notice.count = std::min(count, left);
            switch (notice.kind) {
            case RowNotice::Kind::inserted:
                for (unsigned int i = 0; i < count; ++i) rows.insert(rows.begin() + at, any());
                break;
            case RowNotice::Kind::removed:
                rows.erase(place, place + count);
                break;
            case RowNotice::Kind::moved: {
                std::vector<Row> const block(place, place + count);
                rows.erase(place, place + count);
                notice.target = below(random, rows.size() + 1);
                rows.insert(rows.begin() + notice.target, block.begin(), block.end());
                break;
            }
            default:
                std::generate(place, place + count, any);
            }
            order.apply(notice);
            for (unsigned int const row : shown(order)) ASSERT_LT(row, rows.size());
            if (random() % 4 == 0) order.work(0);
            if (!order.isDone() && random() % 3 == 0) continue;
            while (!order.work(0)) {
            }
            std::vector<unsigned int> expected;
            for (unsigned int row = 0; row < rows.size(); ++row)
                if (!filters || rows[row].b != 3) expected.push_back(row);
            std::stable_sort(expected.begin(), expected.end(), [&](unsigned int x, unsigned int y) {
                if (rows[x].a != rows[y].a) return descends ? rows[x].a > rows[y].a : rows[x].a < rows[y].a;
                return second.descending ? rows[x].b > rows[y].b : rows[x].b < rows[y].b;
            });
            ASSERT_EQ(expected, shown(order)) << script << ' ' << step;
        }
    }
}

TEST(RowOrder, SlicesEndInTimeAndTheOldOrderStaysUntilTheNewIsComplete) {
    double time = 0;
    RowOrder order(300);
    order.setClock([&] { return time; });
    RowOrder::Key key;
    key.compare = [&](unsigned int a, unsigned int b) {
        return time += 0.3, static_cast<int>(b) - static_cast<int>(a);
    };
    order.setKeys({key});
    for (double start = time; !order.work(2000); start = time) {
        ASSERT_LE(time - start, 2.0 + 0.7);
        ASSERT_EQ(0u, order.sourceRow(0));
    }
    EXPECT_EQ(299u, order.sourceRow(0));
    EXPECT_GT(time, 100);
    order.setKeys({});
    EXPECT_EQ(299u, order.sourceRow(0));
    EXPECT_TRUE(order.work(0));
    EXPECT_EQ(0u, order.sourceRow(0));
}

TEST(RowOrder, BadComparisonsAndFiltersLoseNoRow) {
    Random random(5);
    for (bool const throws : {false, true}) {
        RowOrder order(500);
        RowOrder::Key key;
        key.compare = [&](unsigned int, unsigned int) {
            if (throws && random() % 3 == 0) throw 7;
            return static_cast<int>(random() % 3) - 1;
        };
        order.setKeys({key});
        order.setFilter([&](unsigned int row) { return throws && row == 9 ? throw 8 : true; });
        EXPECT_EQ(!throws, [&] {
            try {
                return order.work(1'000'000'000);
            } catch (int) {
                return false;
            }
        }());
        EXPECT_TRUE(order.work(1'000'000'000));
        for (unsigned int i = 0; i < 50; ++i) {
            try {
                order.apply({i % 2 ? RowNotice::Kind::changed : RowNotice::Kind::inserted, i, 7, 0});
            } catch (int) {
            }
        }
        std::vector<unsigned int> rows = shown(order);
        std::sort(rows.begin(), rows.end());
        for (unsigned int row = 0; row < 500 + 25 * 7; ++row) ASSERT_EQ(row, rows.at(row));
        order.apply({RowNotice::Kind::reset, 0, 3, 0});
        EXPECT_EQ(3u, order.numRows());
    }
}

} // namespace
} // namespace wainscot
