#pragma once

#include "host/base/export.h"

namespace wainscot {

/// Gets the toolkit ready for the live host: all families register their makers, and what is read from the
/// preferences once is read. The first widget of a host calls it; calling it again does nothing. Nothing
/// happens without a host.
WAINSCOT_API void loadToolkit();

} // namespace wainscot
