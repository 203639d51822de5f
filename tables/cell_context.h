#pragma once

#include "tables/table_adaptor.h"

namespace wainscot {

class CanvasRenderer;
class TableWidget;

/// One cell that is being drawn or edited, with all that this needs. Lives as long as the call that gets it.
class WAINSCOT_API iTableAdaptor::CellContext {
public:
    /// Palette, font and alignment are those that the adaptor gives the cell.
    CellContext(TableWidget& cellTable, iTableAdaptor& cellAdaptor, XY<int> const& cell);

    TableWidget& table;
    iTableAdaptor& adaptor;
    /// The column by its index in the adaptor, and the row.
    XY<int> position;
    /// Where it lies: in the coordinates of the canvas while it is drawn, else in those of the table.
    IntBox area;
    Palette palette;
    Glib::FontDesc font;
    std::pair<int, int> alignment;
    /// It is the current cell, or in the current row; its row is tagged.
    bool isCurrent = false;
    bool isInCurrentRow = false;
    bool isTagged = false;
    /// Its ground is that of a selection.
    bool isHighlighted = false;
    /// While it is drawn; else null.
    CanvasRenderer* renderer = nullptr;

    /// Asked of the adaptor once.
    Text const& getText() const;
    /// The colour of its text, which reads on its ground.
    Colour textColour() const;

private:
    mutable std::optional<Text> text_;
};

} // namespace wainscot
