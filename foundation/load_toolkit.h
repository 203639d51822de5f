#pragma once

#include "host/base/export.h"

namespace wainscot {

/// Gets the toolkit ready for the live host: all families register their makers. The first widget of a host
/// calls it. Further calls, and calls without a host, do nothing.
WAINSCOT_API void loadToolkit();

} // namespace wainscot
