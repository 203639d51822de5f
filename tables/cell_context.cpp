#include "tables/cell_context.h"

#include "look/ink.h"
#include "tables/table_widget.h"

#include <stdexcept>

namespace wainscot {

iTableAdaptor::CellContext::CellContext(TableWidget& cellTable, iTableAdaptor& cellAdaptor,
                                        XY<int> const& cell)
    : table(cellTable), adaptor(cellAdaptor), position(cell), palette(cellTable.getPalette()),
      font(cellTable.getFont()) {
    // An adaptor that dies when it is asked is not asked further; the table counts it as failed.
    auto const goOn = [&] {
        if (table.getDataSource() != &adaptor) throw std::runtime_error("the adaptor has gone");
    };
    adaptor.getFieldColours(position, palette);
    goOn();
    auto const own = adaptor.getFont(position);
    goOn();
    if (own) font = *own;
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
