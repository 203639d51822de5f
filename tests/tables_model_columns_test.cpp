#include "tables/model/column_order.h"
#include "tables/model/column_widths.h"
#include "tables/model/table_keys.h"
#include "tables/model/tag_rules.h"

#include <gtest/gtest.h>

#include <limits>
#include <numeric>
#include <random>
#include <set>

namespace wainscot {
namespace {

using Widths = std::vector<unsigned short>;
using Indices = std::vector<int>;
/// A width, a least width, and 0 for what is not resizable.
using Columns = std::vector<ColumnWidth>;

/// The cap of automatic widths is 280.
constexpr ColumnMetrics metrics{20, 5};

enum How { setup, force, stretch };

Widths sized(How how, Columns columns, Indices const& view, int visibleWidth, Indices const& texts = {}) {
    auto const widest = [&](std::size_t column) {
        return columns[column].width == 0 ? texts.at(column) : -1;
    };
    ColumnWidths sizes(columns, view, metrics);
    if (how == stretch) sizes.stretchColumnsToFit(visibleWidth);
    if (how != stretch) sizes.setupColumnWidths(visibleWidth, texts.empty() ? 0 : 9, widest, how == force);
    Widths widths;
    for (auto const& column : columns) widths.push_back(column.width);
    return widths;
}

TEST(ColumnWidths, ColumnsAreSized) {
    EXPECT_EQ(sized(setup, {{0}, {0}, {0}}, {0, 1, 2}, 0, {30, 269, 270}), Widths({40, 279, 280}));
    EXPECT_EQ(sized(setup, {{0, 60}, {0, 300}, {0}}, {0, 1, 2}, 0, {30, 999, 0}), Widths({60, 300, 10}));
    EXPECT_EQ(sized(setup, {{0, 60}, {0}, {0, 275}}, {0, 1, 2}, 0, {}), Widths({70, 10, 280}));
    EXPECT_EQ(sized(setup, {{0}, {50}, {0}}, {0, 1, 2}, 171, {30, 9, 40}), Widths({55, 50, 66}));
    EXPECT_EQ(sized(setup, {{0}, {50}, {0}}, {2, 1, 0}, 171, {30, 9, 40}), Widths({56, 50, 65}));
    // Hidden columns are sized, but do not take part; what is no column is left out.
    EXPECT_EQ(sized(setup, {{0}, {0}, {0}}, {2, 0}, 101, {30, 90, 40}), Widths({46, 100, 55}));
    EXPECT_EQ(sized(setup, {{0}, {0, 7}}, {7, -1}, 500, {30, 90}), Widths({40, 100}));
    // None is to be sized: those that are resizable are stretched, if there is space.
    EXPECT_EQ(sized(setup, {{50}, {50, 0, 0}, {20}}, {0, 1, 2}, 141, {}), Widths({60, 50, 31}));
    EXPECT_EQ(sized(setup, {{50}, {50, 0, 0}}, {0, 1}, 90, {}), Widths({50, 50}));
    EXPECT_EQ(sized(force, {{500, 30}, {5, 0, 0}, {0, 0, 0}}, {0, 1, 2}, 0, {50, 9, 70}),
              Widths({60, 5, 80}));
    EXPECT_EQ(sized(force, {}, {}, 100, {}), Widths());

    // What is missing or too much is shared.
    EXPECT_EQ(sized(stretch, {{10}, {10}, {10, 0, 0}}, {0, 1, 2}, 35), Widths({12, 12, 11}));
    EXPECT_EQ(sized(stretch, {{10}, {10}, {10, 0, 0}}, {2, 1, 0}, 35), Widths({13, 12, 10}));
    EXPECT_EQ(sized(stretch, {{10}, {10}, {10}}, {0, 1, 2}, 25), Widths({9, 9, 9}));
    EXPECT_EQ(sized(stretch, {{10, 9}, {30}, {10}}, {0, 1}, 20), Widths({9, 20, 10}));
    EXPECT_EQ(sized(stretch, {{10, 0, 0}, {10, 0, 0}}, {0, 1}, 100), Widths({10, 10}));
    EXPECT_EQ(sized(stretch, {{65000}, {65000}}, {0, 1}, 2000000000), Widths({65535, 65535}));
    EXPECT_EQ(sized(stretch, {{10, 3}}, {0}, -2000000000), Widths({3}));
    Indices view(200);
    std::iota(view.begin(), view.end(), 0);
    Widths expected(200, 8);
    expected.back() = 8 + 199;
    EXPECT_EQ(sized(stretch, Columns(200, {5, 5}), view, 1799), expected);
}

TEST(ColumnWidths, TypesHaveLeastWidths) {
    EXPECT_EQ(calcMinColumnWidth({0, 159, 3, 77, 900}, metrics), 160);
    EXPECT_EQ(calcMinColumnWidth({0, 161, 3, 77, 900}, metrics), 161);
    EXPECT_EQ(calcMinColumnWidth({0, 79, 3, 116, 900}, metrics), 80);
    EXPECT_EQ(calcMinColumnWidth({0, 500, 3, 117, 30}, metrics), 40);
    EXPECT_EQ(calcMinColumnWidth({0, 0, 3, 0, 70000}, metrics), 65535);
    EXPECT_EQ(calcColumnWidth({}, metrics) + calcColumnWidth(Indices{7, 30}, metrics), 40);
}

/// '_' is an empty identifier.
ColumnOrder::Identifiers identifiersOf(std::string_view letters) {
    ColumnOrder::Identifiers all;
    for (char const c : letters) all.emplace_back(std::string_view(&c, c == '_' ? 0 : 1));
    return all;
}

/// The view columns as digits; "-" stands before each that is hidden.
std::string shown(ColumnOrder const& order) {
    std::string all;
    for (int const column : order.viewColumns()) all += std::to_string(column);
    for (int column = 0; column < order.numDataColumns(); ++column)
        if (order.isHidden(column)) all += "-" + std::to_string(column);
    return all;
}

TEST(ColumnOrder, StepsAndRefusals) {
    ColumnOrder order;
    order.setColumns(identifiersOf("abcdef"), 2);
    EXPECT_FALSE(order.move(1, 2) || order.move(5, 0) || order.swap(0, 2) || order.move(2, 6) ||
                 order.move(-1, 3) || order.setHidden(6, true) || order.setHidden(0, false));
    EXPECT_TRUE(order.move(2, 4) && order.move(5, 2) && order.swap(0, 1) && order.setHidden(3, true));
    EXPECT_EQ(shown(order), "10542-3");
    EXPECT_EQ(order.viewToData(XY<int>(4, 7)), XY<int>(2, 7));
    EXPECT_EQ(order.dataToView(XY<int>(3, 7)), XY<int>(ColumnOrder::none, 7));
    EXPECT_TRUE(order.move(2, 4) && order.setHidden(3, false) && order.setHidden(1, true));
    EXPECT_EQ(shown(order) + std::to_string(order.numStickyViewColumns()), "03425-11");
    order.setColumns(identifiersOf("xfyzbed")); // The order was (b) a d e c f.
    EXPECT_EQ(shown(order), "065123-4");
    order.setColumns(identifiersOf("fb"), 1);
    EXPECT_TRUE(order.setHidden(1, false));
    EXPECT_EQ(shown(order), "01");
}

TEST(ColumnOrder, RandomStepsAgainstAList) {
    std::mt19937 random(1);
    auto const identifiers = identifiersOf("ab_c_aad%");
    ColumnOrder order;
    order.setColumns(identifiers);
    for (int step = 0; step < 2000; ++step) {
        std::string view = shown(order).substr(0, order.viewColumns().size());
        std::string const hidden = shown(order).substr(view.size());
        std::size_t const a = random() % 9, b = random() % 9;
        int const from = static_cast<int>(a), to = static_cast<int>(b);
        bool const isMove = random() % 2 == 0, isAllowed = a != b && std::max(a, b) < view.size();
        ASSERT_EQ(isMove ? order.move(from, to) : order.swap(from, to), isAllowed);
        if (isAllowed && isMove)
            view.insert((a < b ? b + 1 : b), 1, view[a]).erase(a < b ? a : a + 1, 1);
        else if (isAllowed)
            std::swap(view[a], view[b]);
        ASSERT_EQ(shown(order), view + hidden);
        for (int column = 0; column < order.numViewColumns(); ++column)
            ASSERT_EQ(order.dataToView(order.viewToData(column)), column);
        ASSERT_TRUE(order.setHidden(from, !order.isHidden(from)) && shown(order) != view + hidden);
        ASSERT_TRUE(order.setHidden(from, !order.isHidden(from)) && shown(order) == view + hidden);
        order.setHidden(to, random() % 2 == 0);

        Widths const widths(9, static_cast<unsigned short>(random()));
        Widths restored(9);
        ColumnOrder again;
        ASSERT_TRUE(again.restore(order.text(widths), identifiers, restored) && restored == widths);
        order.setColumns(identifiers);
        ASSERT_EQ(order.text(widths), again.text(widths));
    }
}

std::string restored(std::string const& text) {
    ColumnOrder order;
    Widths widths{1, 2, 3};
    std::string result = order.restore(text, identifiersOf("abc"), widths) ? "" : "broken ";
    result += shown(order);
    for (int const width : widths) result += "," + std::to_string(width);
    return result;
}

TEST(ColumnOrder, TextsOfAnyKindAreRestored) {
    EXPECT_EQ(restored(""), "012,1,2,3");
    EXPECT_EQ(restored("c,0,30,shown;a,0,0,shown;b,0,65535,hidden;"), "20-1,0,65535,30");
    EXPECT_EQ(restored("z,0,9,hidden;c,0,30,shown;c,0,31,hidden;a,1,7,hidden;"), "012,1,2,30");
    EXPECT_EQ(restored("%63,0,5,hidden;%61,0,4,shown;"), "01-2,4,2,5");
    for (char const* const end : {"a,0,6,shown", "a,0,65536,shown;", "a,-1,5,shown;", "a,0,5 ,shown;", ";",
                                  "a,0,5,seen;", "a%6,0,5,shown;", "a%6g,0,5,shown;", "a;"})
        EXPECT_EQ(restored(std::string("c,0,5,hidden;") + end), "broken 012,1,2,3") << end;
}

/// Those that have been pressed.
std::set<std::uint32_t> keys;

/// '.' is a cell, 'e' one that can be edited, 'x' one that cannot be current. Without rows all are 'x'.
struct Grid : TableKeyView {
    explicit Grid(std::vector<std::string> cells) : rows(std::move(cells)) {}
    unsigned int numRows() const override { return rows.empty() ? height : unsigned(rows.size()); }
    int numColumns() const override { return rows.empty() ? width : int(rows[0].size()); }
    bool isEditable(XY<int> const& position) const override { return at(position) == 'e'; }
    bool canBeCurrent(XY<int> const& position) const override { return at(position) != 'x'; }
    double firstVisible() const override { return first; }
    double lastVisible() const override { return last; }
    int numLines() const override { return 3; }
    char at(XY<int> const& position) const {
        ++questions;
        return rows.empty() ? 'x' : rows.at(std::size_t(position.y)).at(std::size_t(position.x));
    }
    /// The moves of a key that go elsewhere than they should. Positions are written as "xy"; '/' is -1.
    std::string wrong(std::uint32_t key, std::string moves, double firstSeen = 0, double lastSeen = 0) {
        keys.insert(key), first = firstSeen, last = lastSeen;
        std::string all;
        for (; !moves.empty(); moves.erase(0, 6)) {
            XY<int> const from(moves[0] - '0', moves[1] - '0'), to(moves[3] - '0', moves[4] - '0');
            if (calcPostKeypressPosition(*this, from, key) != to) all += moves.substr(0, 6);
        }
        return all;
    }

    std::vector<std::string> rows;
    unsigned int height = 0;
    int width = 0;
    double first = 0, last = 0;
    mutable int questions = 0;
};

TEST(TableKeys, KeysGoToTheirPlaces) {
    Grid wide({"..e.", ".e.e", "....", "e..."}), ends({"x", ".", ".", "x"}), one({"."}),
        tall({".", "x", ".", "x", "x", ".", ".", "x", ".", "x"});
    EXPECT_EQ(wide.wrong(0x9, "00>20 20>11 31>03 03>03 //>20 92>03 /3>03"), "");
    EXPECT_EQ(wide.wrong(0x1000009, "03>31 31>11 11>20 20>20 00>00 /9>03 91>31"), "");
    EXPECT_EQ(wide.wrong(0x8000047, "21>01 01>01 24>24") + one.wrong(0x8000047, "0/>00"), "");
    EXPECT_EQ(wide.wrong(0x800004F, "11>31") + wide.wrong(0x800004B, "21>11 01>30 00>00"), "");
    EXPECT_EQ(wide.wrong(0x800004D, "21>31 31>02 33>33"), "");
    for (std::uint32_t const shift : {0U, 0x1000000U}) {
        EXPECT_EQ(tall.wrong(shift | 0x8000048, "05>02 00>00 95>95") + ends.wrong(0x8000048, "01>01"), "");
        EXPECT_EQ(tall.wrong(shift | 0x8000050, "02>05 08>08 92>92"), "");
        EXPECT_EQ(tall.wrong(shift | 0x8000049, "05>02 02>00", 1.5), "");
        EXPECT_EQ(tall.wrong(shift | 0x8000049, "06>05 08>06 05>02", 6), "");
        EXPECT_EQ(tall.wrong(shift | 0x8000051, "02>08 06>08", 0, 9.9), "");
        EXPECT_EQ(tall.wrong(shift | 0x8000051, "02>05 00>02 05>08", 0, 4.9), "");
        EXPECT_EQ(tall.wrong(shift | 0x8000051, "05>08", 0, 1e300), "");
        EXPECT_EQ(tall.wrong(shift | 0x8000051, "02>05", 0, std::numeric_limits<double>::quiet_NaN()), "");
    }
    for (std::uint32_t const key : {0xA000047U, 0xA000049U}) EXPECT_EQ(ends.wrong(key, "02>01"), "");
    for (std::uint32_t const key : {0xA00004FU, 0xA000051U}) EXPECT_EQ(ends.wrong(key, "01>02"), "");
    EXPECT_EQ(keys.size(), 18U);
    for (std::uint32_t modifiers = 0; modifiers < 32; ++modifiers)
        for (std::uint32_t key = modifiers << 24; key < (modifiers << 24 | 256); ++key)
            EXPECT_EQ(isNavigationKey(key), keys.count(key) == 1) << key;
}

TEST(TableKeys, NoTableIsTooLarge) {
    Grid grid({});
    for (auto const& [height, width] : {std::pair(2147483647U, 2), {4294967295U, 0}, {0U, 3}})
        for (std::uint32_t const key :
             {0x9U, 0x1000009U, 0x8000048U, 0x8000050U, 0x8000049U, 0x8000051U, 0xA000047U})
            for (int const row : {1000000000, 2147483647, -2147483647 - 1}) {
                grid.height = height, grid.width = width, grid.questions = 0;
                EXPECT_EQ(calcPostKeypressPosition(grid, {1, row}, key), XY<int>(1, row)) << key;
                EXPECT_LE(grid.questions, TableKeys::maxQuestions + 1);
            }
}

/// '#' is a tagged row. To ask a row twice is a fault.
TagRules::GetTag tagsOf(std::string_view rows) {
    return [rows, asked = std::set<unsigned int>()](unsigned int row) mutable {
        EXPECT_TRUE(asked.insert(row).second) << row;
        return rows.at(row) == '#';
    };
}

/// The rows that become tagged; "-" stands before those that become untagged.
std::string written(TagRules::Tags const& tags) {
    std::string all;
    for (auto const& [row, tag] : tags) all += (tag ? "" : "-") + std::to_string(row);
    return all;
}

std::string clicked(std::string_view rows, unsigned int flags, TagRules::Click const& click) {
    return written(TagRules::tagsAfterClick(click, flags, unsigned(rows.size()), tagsOf(rows)));
}

TEST(TagRules, Clicks) {
    // A click is a row, Shift and Ctrl.
    EXPECT_EQ(clicked(".#..#", 0, {2}) + clicked(".#..#", 5, {1, true, true}), "-12-41-4");
    EXPECT_EQ(clicked(".#..#", 6, {2}) + clicked(".#..#", 6, {5}), "-12-4");
    EXPECT_EQ(clicked(".#..#", 2, {2}) + clicked(".#..#", 2, {4}), "2-4");
    EXPECT_EQ(clicked(".#..#", 6, {1, false, true}) + clicked("##..#", 6, {2, true}), "-1-0-1234");
    EXPECT_EQ(clicked("##...#", 2, {2, true}) + clicked(".#..#", 2, {4, true, true}), "23451234");
    EXPECT_EQ(clicked("##.#.##", 6, {2, true}) + clicked("#.#..", 6, {3, true, true}), "-0-123-5-6-023");
    EXPECT_EQ(clicked(".....", 6, {3, true}) + clicked("..#..", 6, {2, true}), "32");
}

TEST(TagRules, AllRows) {
    EXPECT_EQ(written(TagRules::toggleAll(15, 3, tagsOf("#.#")).tags), "-0-1-2");
    EXPECT_EQ(written(TagRules::toggleAll(16, 3, tagsOf(".##")).tags), "012");
    EXPECT_EQ(written(TagRules::toggleAll(16, 0, {}).tags), "");
    EXPECT_TRUE(TagRules::toggleAll(16, 1, tagsOf("#")).unsetsCurrent);
    EXPECT_FALSE(TagRules::toggleAll(15, 1, tagsOf("#")).unsetsCurrent);
    EXPECT_FALSE(TagRules::toggleAll(16, 1, tagsOf(".")).unsetsCurrent);
    EXPECT_EQ(written(TagRules::invertedTags(3, tagsOf("#.#"))), "-01-2");
}

} // namespace
} // namespace wainscot
