#pragma once

#include "host/services/file_operations.h"

#include <string>

namespace wainscot {

/// What is said of a system call that failed on a path.
FileResult failedOn(LightweightString<wchar_t> const& path, int reason);

/// The bytes of a path without slashes at its end, behind which a link would be followed. Empty for what must
/// not be changed.
std::string changeablePath(LightweightString<wchar_t> const& path);

/// False, with the reason in `errno`, when it cannot be renamed, or when something has the new path already.
bool renameWithoutReplacing(std::string const& from, std::string const& to);

} // namespace wainscot
