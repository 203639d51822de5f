#include "tables/cell_context.h"

#include "look/ink.h"
#include "tables/table_widget.h"

namespace wainscot {

iTableAdaptor::CellContext::CellContext(TableWidget& cellTable, iTableAdaptor& cellAdaptor,
                                        XY<int> const& cell)
    : table(cellTable), adaptor(cellAdaptor), position(cell), palette(cellTable.getPalette()),
      font(cellTable.getFont()) {
    adaptor.getFieldColours(position, palette);
    if (auto const own = adaptor.getFont(position)) font = *own;
    alignment = adaptor.getTextAlignment(position);
}

iTableAdaptor::Text const& iTableAdaptor::CellContext::getText() const {
    if (!text_) text_ = adaptor.getFieldText(position);
    return *text_;
}

Colour iTableAdaptor::CellContext::textColour() const {
    bool const isActive = table.isActive();
    return palette.text(!isActive ? eTextDisabled : isHighlighted ? eTextSelected : eTextEnabled);
}

} // namespace wainscot
