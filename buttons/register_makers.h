#pragma once

#include "foundation/makers.h"

namespace wainscot::Buttons {

/// Gives panels their buttons.
void registerMakers(Registry& registry);

} // namespace wainscot::Buttons
