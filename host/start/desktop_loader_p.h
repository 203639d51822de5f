#pragma once

#include "host/base/lightweight_string.h"
#include "host/windows/backend.h"

#include <memory>

namespace wainscot {

/// Opens the desktop module beside the host library, or in its subfolder, and makes a backend. Null with the
/// reason in `problem`.
std::unique_ptr<Backend> loadDesktopBackend(LightweightString<char>& problem);

} // namespace wainscot
