#pragma once

#include "host/base/lightweight_string.h"

#include <cstdint>

namespace wainscot {

enum MenuItemType : std::uint32_t {
    eSimpleMenuItem = 0,
    /// A member of the group that the nearest header above it opens.
    eGroupedMenuItem = 1,
    /// The header of a group whose members are shown.
    eExpandedGroupItem = 2,
    /// The header of a group whose members are hidden.
    eCompressedGroupItem = 3,
};

constexpr bool isGroupHeader(MenuItemType type) {
    return type == eExpandedGroupItem || type == eCompressedGroupItem;
}
/// Whether it can be chosen, and counts for logical indices.
constexpr bool isChoosable(MenuItemType type) {
    return type == eSimpleMenuItem || type == eGroupedMenuItem;
}

/// How a type is written in a text; empty for an unknown value.
WAINSCOT_API LightweightString<char> MenuItemTypeToString(MenuItemType type);
/// Case matters. The empty text and unknown texts give `eSimpleMenuItem`.
WAINSCOT_API MenuItemType StringToMenuItemType(LightweightString<char> const& text);

} // namespace wainscot
