#include "tables/model/table_keys.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace wainscot {

TableKeyView::~TableKeyView() = default;

namespace TableKeys {

namespace {

constexpr XY<int> nowhere{-1, -1};

/// A row number, or the nearest one that an `int` can be; the first row for NaN.
int toRow(double row) {
    constexpr double largest = std::numeric_limits<int>::max();
    return row > 0 ? static_cast<int>(std::min(row, largest)) : 0;
}

/// The places that the keys go to. A result outside the table means that there is no such place.
class Navigation {
public:
    explicit Navigation(TableKeyView const& view)
        : view_(view),
          numRows_(static_cast<int>(std::min<unsigned int>(view.numRows(), std::numeric_limits<int>::max()))),
          numColumns_(view.numColumns()) {}

    bool isValid(XY<int> const& position) const {
        return position.x >= 0 && position.x < numColumns_ && position.y >= 0 && position.y < numRows_;
    }
    XY<int> after(Step step, XY<int> const& from) const;

private:
    int lastColumn() const { return numColumns_ - 1; }
    int lastRow() const { return numRows_ - 1; }
    /// The nearest cell before (-1) or behind (1) that can be edited, in reading order.
    XY<int> nearestEditable(XY<int> const& from, int direction) const;
    XY<int> home(XY<int> const& from) const;
    XY<int> left(XY<int> const& from) const;
    XY<int> right(XY<int> const& from) const;
    /// The nearest row above (-1) or below (1) that can be current, in the same column.
    XY<int> nearestRow(XY<int> from, int direction) const;
    /// The position itself when it can be current, else the nearest row in that direction.
    XY<int> rowFrom(XY<int> const& position, int direction) const;
    XY<int> pageUp(XY<int> const& from) const;
    XY<int> pageDown(XY<int> const& from) const;

    TableKeyView const& view_;
    int numRows_;
    int numColumns_;
};

XY<int> Navigation::after(Step step, XY<int> const& from) const {
    switch (step) {
    case Step::nextEditable:
        return nearestEditable(from, 1);
    case Step::previousEditable:
        return nearestEditable(from, -1);
    case Step::home:
        return home(from);
    case Step::end:
        return {lastColumn(), from.y};
    case Step::left:
        return left(from);
    case Step::right:
        return right(from);
    case Step::up:
        return nearestRow(from, -1);
    case Step::down:
        return nearestRow(from, 1);
    case Step::pageUp:
        return pageUp(from);
    case Step::pageDown:
        return pageDown(from);
    case Step::firstRow:
        return rowFrom({from.x, 0}, 1);
    case Step::lastRow:
        return rowFrom({from.x, lastRow()}, -1);
    }
    return nowhere;
}

XY<int> Navigation::nearestEditable(XY<int> const& from, int direction) const {
    if (numColumns_ <= 0) return nowhere;
    // Cells are counted in reading order; a position outside stands before or behind its row, or the table.
    std::int64_t const beyond = direction > 0 ? 0 : 1;
    std::int64_t const column = std::clamp<std::int64_t>(from.x, beyond - 1, lastColumn() + beyond);
    std::int64_t const numCells = std::int64_t{numRows_} * numColumns_;
    std::int64_t cell = std::clamp<std::int64_t>(std::int64_t{from.y} * numColumns_ + column, -1, numCells);
    for (int questions = 0; questions < maxQuestions; ++questions) {
        cell += direction;
        if (cell < 0 || cell >= numCells) return nowhere;
        XY<int> const position(static_cast<int>(cell % numColumns_), static_cast<int>(cell / numColumns_));
        if (view_.isEditable(position)) return position;
    }
    return nowhere;
}

XY<int> Navigation::home(XY<int> const& from) const {
    XY<int> const first(0, from.y);
    return isValid(first) ? first : right(first);
}

XY<int> Navigation::left(XY<int> const& from) const {
    return from.x == 0 ? XY<int>(lastColumn(), from.y) - XY<int>(0, 1) : from - XY<int>(1, 0);
}

XY<int> Navigation::right(XY<int> const& from) const {
    return from.x == lastColumn() ? XY<int>(0, from.y) + XY<int>(0, 1) : from + XY<int>(1, 0);
}

XY<int> Navigation::nearestRow(XY<int> from, int direction) const {
    for (int questions = 0; questions < maxQuestions; ++questions) {
        from += XY<int>(0, direction);
        if (!isValid(from) || view_.canBeCurrent(from)) return from;
    }
    return nowhere;
}

XY<int> Navigation::rowFrom(XY<int> const& position, int direction) const {
    if (!isValid(position) || view_.canBeCurrent(position)) return position;
    return nearestRow(position, direction);
}

XY<int> Navigation::pageUp(XY<int> const& from) const {
    int const firstSeen = toRow(std::ceil(view_.firstVisible()));
    int const row = from.y > firstSeen ? firstSeen : std::max((from - XY<int>(0, view_.numLines())).y, 0);
    return rowFrom({from.x, row}, 1);
}

XY<int> Navigation::pageDown(XY<int> const& from) const {
    int const lastSeen = toRow(std::floor(view_.lastVisible())) - 1;
    XY<int> const aPageOn = from + XY<int>(0, view_.numLines());
    int const row = lastSeen > (from + XY<int>(0, 1)).y ? lastSeen : aPageOn.y;
    return rowFrom({from.x, std::min(row, lastRow())}, -1);
}

} // namespace

} // namespace TableKeys

bool isNavigationKey(std::uint32_t key) {
    return actionFor(TableKeys::keyTable, key).has_value();
}

XY<int> calcPostKeypressPosition(TableKeyView const& view, XY<int> const& position, std::uint32_t key) {
    auto const step = actionFor(TableKeys::keyTable, key);
    if (!step) return position;
    TableKeys::Navigation const navigation(view);
    XY<int> const result = navigation.after(*step, position);
    return navigation.isValid(result) ? result : position;
}

} // namespace wainscot
