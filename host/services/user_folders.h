#pragma once

#include "host/base/export.h"
#include "host/base/lightweight_string.h"

namespace wainscot {

/// The user's home folder; empty when there is none.
WAINSCOT_API LightweightString<char> getHomeFolder();

/// Where a program of this name keeps its settings: a folder of that name in `XDG_CONFIG_HOME`, else in
/// `.config` in the home folder. Empty when the name is empty or the user has no home. The folder need not
/// exist.
WAINSCOT_API LightweightString<char> getConfigFolder(LightweightString<char> const& programName);

/// Where programs keep data of the user: `XDG_DATA_HOME`, else `.local/share` in the home folder. Empty when
/// the user has no home. The folder need not exist.
WAINSCOT_API LightweightString<char> getUserDataFolder();

/// A folder that the desktop has set up for the user's files, by its name in the desktop's list ("DESKTOP",
/// "DOCUMENTS", "DOWNLOAD", "MUSIC", "PICTURES", "VIDEOS"). Empty when no such folder is named, or when it
/// does not exist.
WAINSCOT_API LightweightString<char> getStandardFolder(char const* name);

} // namespace wainscot
