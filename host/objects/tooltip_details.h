#pragma once

#include "host/base/box.h"
#include "host/services/ui_string.h"

namespace wainscot {

/// What is shown when the pointer rests on an object.
struct TooltipDetails {
    UIString text;
    /// Below the text, in a smaller voice.
    UIString more;
    /// The part that the text is about, in the object's own coordinates: the tip stands beside it, and goes
    /// when the pointer leaves it. The whole object unless it says less.
    IntBox area;
};

} // namespace wainscot
