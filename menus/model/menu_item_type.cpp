#include "menus/model/menu_item_type.h"

#include <algorithm>
#include <array>

namespace wainscot {

namespace {

constexpr std::array<LightweightString<char>, 4> names{"SimpleMenuItem", "GroupedMenuItem",
                                                       "ExpandedGroupItem", "CompressedGroupItem"};

} // namespace

LightweightString<char> MenuItemTypeToString(MenuItemType type) {
    return type < names.size() ? names[type] : LightweightString<char>();
}

MenuItemType StringToMenuItemType(LightweightString<char> const& text) {
    auto const* const found = std::find(names.begin(), names.end(), text);
    return found == names.end() ? eSimpleMenuItem : static_cast<MenuItemType>(found - names.begin());
}

} // namespace wainscot
