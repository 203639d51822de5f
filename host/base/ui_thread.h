#pragma once

#include "host/base/export.h"

namespace wainscot {

/// Nearly everything belongs to the user-interface thread: the one on which the host was made.
namespace UiThread {

/// The calling thread is the one from now on, until `release()`.
WAINSCOT_API void adopt();
WAINSCOT_API void release();
/// False on any other thread while one is adopted.
WAINSCOT_API bool isCurrent();
/// In debug builds of the library: says what was done on a wrong thread, and ends the program.
WAINSCOT_API void check(char const* what);

} // namespace UiThread
} // namespace wainscot
