#pragma once

#include "foundation/key_table.h"
#include "host/base/export.h"
#include "host/base/xy.h"
#include "host/events/key_codes.h"

namespace wainscot {

/// What the keys of a table ask about it. Positions are view positions: x is the column on screen, y the row.
/// Only positions inside the table are asked about.
class WAINSCOT_API TableKeyView {
public:
    virtual ~TableKeyView();

    virtual unsigned int numRows() const = 0;
    /// The visible ones.
    virtual int numColumns() const = 0;
    /// Whether Tab may stop here: the column can be edited and the cell is not read-only.
    virtual bool isEditable(XY<int> const& position) const = 0;
    virtual bool canBeCurrent(XY<int> const& position) const = 0;
    /// Where the view begins and ends, in rows and parts of rows.
    virtual double firstVisible() const = 0;
    virtual double lastVisible() const = 0;
    /// How many rows the view shows.
    virtual int numLines() const = 0;
};

namespace TableKeys {

enum class Step {
    nextEditable,
    previousEditable,
    home,
    end,
    left,
    right,
    up,
    down,
    pageUp,
    pageDown,
    firstRow,
    lastRow
};
inline constexpr KeyRow<Step> keyTable[] = {
    {Key::tab, Step::nextEditable, "to the next cell that can be edited, in this row or below"},
    {Key::shiftTab, Step::previousEditable, "to the cell before that can be edited, in this row or above"},
    {Key::home, Step::home, "to the first column"},
    {Key::end, Step::end, "to the last column"},
    {Key::left, Step::left, "to the column before; from the first one to the end of the row above"},
    {Key::right, Step::right, "to the next column; from the last one to the beginning of the row below"},
    {Key::up, Step::up, "to the row above that can be current"},
    {Key::shift | Key::up, Step::up, "as without Shift"},
    {Key::down, Step::down, "to the row below that can be current"},
    {Key::shift | Key::down, Step::down, "as without Shift"},
    {Key::pageUp, Step::pageUp, "to the first row that is fully seen, then up by the rows that are seen"},
    {Key::shift | Key::pageUp, Step::pageUp, "as without Shift"},
    {Key::pageDown, Step::pageDown, "to the end of what is seen, then down by the rows that are seen"},
    {Key::shift | Key::pageDown, Step::pageDown, "as without Shift"},
    {Key::ctrl | Key::home, Step::firstRow, "to the first row"},
    {Key::ctrl | Key::pageUp, Step::firstRow, "to the first row"},
    {Key::ctrl | Key::end, Step::lastRow, "to the last row"},
    {Key::ctrl | Key::pageDown, Step::lastRow, "to the last row"},
};

/// A search for a row or cell ends without result after this many questions, so that a key answers in a table
/// of any size.
inline constexpr int maxQuestions = 1'000'000;

} // namespace TableKeys

/// Whether a key, with its modifiers, moves the current position.
WAINSCOT_API bool isNavigationKey(std::uint32_t key);
/// Where a key moves the current position; the old position when it moves nowhere.
WAINSCOT_API XY<int> calcPostKeypressPosition(TableKeyView const& view, XY<int> const& position,
                                              std::uint32_t key);

} // namespace wainscot
