#pragma once

#include "foundation/makers.h"

namespace wainscot::TextBoxes {

/// Gives panels their title boxes.
void registerMakers(Registry& registry);

} // namespace wainscot::TextBoxes
