#include "menus/model/menu_rows.h"

namespace wainscot {

MenuRows::MenuRows(std::span<MenuItem const> items) {
    for (Indices* const indices : {&rowOfItem_, &itemOfRow_, &logicalOfItem_, &itemOfLogical_})
        indices->reserve(items.size());
    bool showsMembers = true;
    for (MenuItem const& item : items) {
        auto const index = static_cast<unsigned short>(rowOfItem_.size());
        if (item.isHeader()) {
            ++numGroups_;
            showsMembers = item.type() == eExpandedGroupItem;
        }
        if (showsMembers || item.type() != eGroupedMenuItem) itemOfRow_.push_back(index);
        rowOfItem_.push_back(static_cast<unsigned short>(itemOfRow_.size() - 1));
        logicalOfItem_.push_back(static_cast<unsigned short>(itemOfLogical_.size()));
        if (isChoosable(item.type())) itemOfLogical_.push_back(index);
    }
}

bool MenuRows::isHidden(std::size_t item) const {
    return item < numItems() && itemOfRow(rowOfItem(item)) != item;
}

} // namespace wainscot
