#pragma once

#include "host/base/life.h"
#include "host/base/xy.h"
#include "host/drawing/font.h"
#include "host/events/mouse_cursor.h"
#include "tables/table_column_description.h"

#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace wainscot {

class Event;
class MenuItem;

/// The data of a table: the application derives from it. The table holds a plain pointer and never deletes
/// it; an adaptor that has died is not asked any more.
///
/// Positions are cells: x is the column, by its index in `getColumnDefinitions`, y the row. Only cells that
/// are there are asked for, and for drawing only those in sight. An adaptor that throws is counted in the
/// diagnostics, and the cell stays empty.
class WAINSCOT_API iTableAdaptor {
public:
    class CellContext;
    using Text = LightweightString<wchar_t>;

    virtual ~iTableAdaptor();

    virtual Text getFieldText(XY<int> const& cell) const = 0;
    /// The number of rows. It may change at any time; call `TableWidget::dataChanged` then.
    virtual unsigned int getSize() const = 0;
    virtual std::vector<TableColumnDescription> getColumnDefinitions() const = 0;
    /// Changes the colours in which a cell is drawn. Leaves them as they are here.
    virtual void getFieldColours(XY<int> const& cell, Palette& palette) const;
    /// `eText` here.
    virtual DBFieldTypes::eType getFieldType(XY<int> const& cell) const;
    /// In pixels; 0 = the table's line height, as here. All rows are asked when the table reads the data, up
    /// to `mostRowHeights`; larger tables have rows of one height.
    virtual unsigned short getRowHeight(unsigned int row) const;
    static constexpr unsigned int mostRowHeights = 1U << 24;
    /// Whether a row is one of those that the user has picked. False here.
    virtual bool getTag(unsigned int row) const;
    /// The first tagged row from a row on. Asks row by row here; adaptors of very many rows override it.
    virtual std::optional<unsigned int> findTagged(unsigned int from) const;
    virtual bool isReadOnly(XY<int> const& cell) const;
    /// Nothing = the table's own font, as here.
    virtual std::optional<Glib::FontDesc> getFont(XY<int> const& cell) const;
    /// Shown in fainter letters in a cell without text.
    virtual Text getGhostText(XY<int> const& cell) const;
    /// The tool tip of a cell.
    virtual Text contextString(XY<int> const& cell) const;
    /// The pointer's shape over a place in a cell, from its lower-left corner. `arrowCursor` here.
    virtual MouseCursorID contextCursor(XY<int> const& cell, XY<int> const& place) const;
    /// Bits: 1 = one line, cut with an ellipsis; 2 = several lines, wrapped. 1 here.
    virtual int getTextStyle(XY<int> const& cell) const;
    /// Where a text stands in its cell: -1 left, 0 in the middle, 1 right; -1 at the bottom, 0 in the middle
    /// or, for one line, 1 in the middle as well. (-1, 1) here.
    virtual std::pair<int, int> getTextAlignment(XY<int> const& cell) const;
    /// Appends what can be chosen in a cell.
    virtual void getFieldChoices(XY<int> const& cell, std::vector<MenuItem>& choices) const;
    /// Whether it can be the current position. True here.
    virtual bool canBeCurrent(XY<int> const& cell) const;
    /// Draws a cell. False = the table draws its text, as here.
    virtual bool drawField(CellContext& context);
    /// The user has edited a cell.
    virtual void storeFieldText(Text const& text, XY<int> const& cell);
    /// Changes the tags of these rows. `byUser` is false for `TableWidget::tagAll`.
    virtual void setTags(std::map<unsigned int, bool> const& tags, bool byUser);
    /// Tags or untags all rows at once, for adaptors that need no list of them. False = `setTags` is to be
    /// called with every row, as here.
    virtual bool setAllTags(bool tagged);
    /// The pointer has come over a cell, or has left it.
    virtual void handleMouseContainment(XY<int> const& cell, bool inside);
    virtual void handleMouseClickEvent(XY<int> const& cell, Event const& event);
    /// The pointer begins to drag from a cell. True = a drag of the adaptor's own has begun.
    virtual bool handleMouseDragStart(XY<int> const& cell, Event const& event);
    /// The user wants a further row. True = there is one.
    virtual bool requestAddRow();
    /// Two rows change places in a column.
    virtual void swapFields(unsigned int column, unsigned int rowA, unsigned int rowB);
    /// Asks for the tag of every row here.
    virtual unsigned int getNumTagged() const;
    /// Brings the rows into an order.
    virtual void sort(LightweightString<char> const& column, bool reversed);
    /// A number that stays with what the row shows when rows are sorted or refreshed; 0 = none, as here.
    virtual std::uint64_t getRowIdentity(unsigned int row) const;
    /// The row that has it now; nothing = unknown, as here.
    virtual std::optional<unsigned int> findRow(std::uint64_t identity) const;
    /// False = no row is asked for a height of its own. True here.
    virtual bool hasRowHeights() const;

    bool anyTagged() const;
    /// The lowest tagged row; -1 when there is none.
    int getFirstTagged() const;
    void setTag(unsigned int row, bool tagged);

private:
    friend class TableWidget;
    LifeToken life_;
};

} // namespace wainscot
