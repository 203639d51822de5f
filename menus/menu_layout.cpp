#include "menus/menu_layout_p.h"

#include "host/drawing/uif_std.h"

#include <algorithm>

namespace wainscot {

int MenuLayout::rowHeight() {
    return UifStd::getTableRowHeight();
}

int MenuLayout::heightOf(MenuItem const& item) {
    if (isSeparator(item)) return UifStd::getWidgetGap();
    auto const formatted = item.formattedLabel();
    if (!formatted) return rowHeight();
    int const text = HTMLRenderer::calcHeight(*formatted, item.getFont(), -1);
    return std::max(rowHeight(), text + UifStd::getIndentWidth());
}

void MenuLayout::build(MenuData const& items) {
    MenuRows const& rows = items.rows();
    tops_.clear();
    tops_.reserve(rows.numRows() + 1);
    int top = 0;
    for (std::size_t row = 0; row < rows.numRows(); ++row) {
        tops_.push_back(top);
        top += heightOf(items.getItem(rows.itemOfRow(row)));
    }
    tops_.push_back(top);
}

std::size_t MenuLayout::rowAt(int y) const {
    auto const behind = std::upper_bound(tops_.begin(), tops_.end(), y);
    return static_cast<std::size_t>(behind - tops_.begin()) - (behind == tops_.begin() ? 0 : 1);
}

} // namespace wainscot
