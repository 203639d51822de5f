#pragma once

#include "foundation/makers.h"

namespace wainscot::Menus {

/// Gives objects of the tree their context menus.
WAINSCOT_API void registerMakers(Registry& registry);

} // namespace wainscot::Menus
