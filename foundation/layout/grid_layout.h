#pragma once

#include "foundation/layout/layout.h"

#include <concepts>
#include <map>

namespace wainscot {

/// The cells of a grid that an item takes: counted from 0, rows from above.
struct GridCell {
    int row = 0;
    int column = 0;
    int rows = 1;
    int columns = 1;
};

/// Places items in rows and columns. Items may lie in one cell; a row or column in which nothing is shown
/// takes no room.
class WAINSCOT_API GridLayout : public Layout {
public:
    /// A child of the panel, or one that will be by the time of the layout. False when refused: null, dying,
    /// an item already, a negative row or column, or one beyond 65534.
    bool add(Glob& child, GridCell const& cell, LayoutOptions const& options = {}) {
        return addItem(&child, inner(cell), options);
    }
    /// A new child, which becomes one of the panel's as soon as there is a panel. Null when refused.
    template <class T>
    requires std::derived_from<T, Glob> T* add(std::unique_ptr<T> child, GridCell const& cell,
                                               LayoutOptions const& options = {}) {
        T* const added = child.get();
        return addItem(std::unique_ptr<Glob>(child.release()), inner(cell), options) ? added : nullptr;
    }
    /// A layout as an item. Null when refused, as children, or nested too deep.
    template <class T>
    requires std::derived_from<T, Layout> T* add(std::unique_ptr<T> nested, GridCell const& cell,
                                                 LayoutOptions const& options = {}) {
        T* const added = nested.get();
        return addItem(std::unique_ptr<Layout>(std::move(nested)), inner(cell), options) ? added : nullptr;
    }
    /// The share of a column, or a row, of the room that is left over; 0 from the start. Refused as cells.
    bool setColumnStretch(int column, int stretch);
    bool setRowStretch(int row, int stretch);
    /// Makes all columns as wide as the widest needs; off from the start.
    void setEqualColumns(bool equal);
    /// The first row below everything that was added.
    int nextRow() const { return nextRow_; }

protected:
    Cell cellOf(Cell const& given, int shown) const override;
    void stretch(Tracks& columns, Tracks& rows) const override;
    bool stretchesRows() const override { return false; }
    bool hasEqualColumns() const override { return equalColumns_; }

private:
    Cell inner(GridCell const& cell);
    bool setStretch(std::map<int, int>& stretches, int track, int stretch);

    std::map<int, int> columnStretch_;
    std::map<int, int> rowStretch_;
    int nextRow_ = 0;
    bool equalColumns_ = false;
};

} // namespace wainscot
