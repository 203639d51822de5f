#include "menus/model/drop_down_menu_data.h"

#include "host/base/diagnostics.h"

namespace wainscot {

DropDownMenuData::~DropDownMenuData() = default;

bool DropDownMenuData::setSelectedItemPhysical(unsigned short item, bool notify) {
    if (!checkIndex(item, "setSelectedItemPhysical")) return false;
    MenuItem const chosen = getItem(item);
    bool const isCommand = chosen.hasFlag(MenuItemFlag::command);
    if (isCommand && !notify) return false;
    unsigned short const logical = physicalToLogical(item);
    if (!isCommand && (logical > maxSelected || rows().itemOfLogical(logical) == none))
        return checkIndex(none, "setSelectedItemPhysical");
    bool const isAlive = isCommand || select(logical, notify);
    if (isAlive && notify) issueCallbacks(chosen, item, nullptr, nullptr);
    return true;
}

bool DropDownMenuData::select(int logical, bool notify) {
    if (!notify) return storeSilently(logical), true;
    Alive const alive(*this);
    store(logical);
    return bool(alive);
}

void DropDownMenuData::clearSelection(bool notify) {
    select(-1, notify);
}

short DropDownMenuData::getSelectedItem() const {
    bool const isIndex = value() >= 0 && value() <= maxSelected;
    return static_cast<short>(isIndex ? value() : -1);
}

unsigned short DropDownMenuData::getSelectedItemPhysical() const {
    return logicalToPhysical(static_cast<unsigned short>(getSelectedItem()));
}

LightweightString<wchar_t> DropDownMenuData::getSelectedItemNameW() const {
    unsigned short const selected = getSelectedItemPhysical();
    return selected == none ? LightweightString<wchar_t>() : getItem(selected).label();
}

} // namespace wainscot
