#pragma once

#include "host/base/export.h"

namespace wainscot {

/// Nearly everything belongs to the user-interface thread: the one on which the host was made.
namespace UiThread {

/// The calling thread is the user-interface thread from now on, until `release()`.
WAINSCOT_API void adopt();
WAINSCOT_API void release();
/// Whether the calling thread is the adopted one; true while none is adopted.
WAINSCOT_API bool isCurrent();
/// In debug builds of the library: on a wrong thread, prints `what` and ends the program.
WAINSCOT_API void check(char const* what);

} // namespace UiThread
} // namespace wainscot
