#pragma once

#include "host/services/file_operations.h"

#include <string>

namespace wainscot {

/// The result for a system call that failed on a path.
FileResult failedOn(LightweightString<wchar_t> const& path, int reason);

/// The bytes of a path without slashes at its end, which would make the system follow a link. Empty for a
/// path that must not be changed.
std::string changeablePath(LightweightString<wchar_t> const& path);

/// False, with the reason in `errno`, when it cannot be renamed, or when the new path is taken.
bool renameWithoutReplacing(std::string const& from, std::string const& to);

} // namespace wainscot
