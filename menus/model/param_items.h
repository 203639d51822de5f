#pragma once

#include "menus/model/generic_param.h"
#include "menus/model/menu_item.h"

#include <optional>
#include <utility>

namespace wainscot::GenericParam {

/// Parameters under a title.
using Section = std::pair<UIString, std::vector<Qv::Ptr<iParam>>>;

/// A menu item that shows the parameter as it is now, and hands choices to it: for "bool" one with the
/// options off and on, for "multiparam" one with the values as options, for "action" a command, for "choice"
/// one that opens a sub-menu of the values. Nothing for null and for parameters of other kinds; that is
/// counted in the diagnostics.
WAINSCOT_API std::optional<MenuItem> makeItem(Qv::Ptr<iParam> const& param);
/// The items of all sections: a header for the title, and the parameters as members of its group. Without a
/// title they are simple items.
WAINSCOT_API std::vector<MenuItem> makeItems(std::vector<Section> const& sections);

} // namespace wainscot::GenericParam
