#include "tables/model/column_widths.h"

#include <gtest/gtest.h>

#include <numeric>

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

} // namespace
} // namespace wainscot
