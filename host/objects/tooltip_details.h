#pragma once

#include "host/base/box.h"
#include "host/services/ui_string.h"

namespace wainscot {

/// What is shown when the pointer rests on an object.
struct TooltipDetails {
    UIString text;
    /// Stands below the text, in fainter letters.
    UIString more;
    /// The part that the text is about, in the object's own coordinates: the tip stands beside it, and is
    /// hidden when the pointer leaves it. The whole object unless it is set.
    IntBox area;
};

} // namespace wainscot
