#include "tables/model/column_order.h"
#include "tables/model/column_widths.h"

#include <gtest/gtest.h>

#include <numeric>
#include <random>

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

} // namespace
} // namespace wainscot
