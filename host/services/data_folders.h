#pragma once

#include "host/base/lightweight_string.h"

#include <vector>

namespace wainscot {

/// Where the host's data lies, the first place first: the folder in `WAINSCOT_DATA_DIR`, then
/// `share/wainscot` beside the folder of the library, which is also where the build puts it. Folders that do
/// not exist are left out.
WAINSCOT_API std::vector<LightweightString<char>> getDataFolders();

/// The full path of the first data file of that name ("texts/en.txt"); empty when no data folder has it.
WAINSCOT_API LightweightString<char> findDataFile(LightweightString<char> const& name);

/// The folder of the icons; empty when there is none.
WAINSCOT_API LightweightString<wchar_t> getIconsDirectory();

/// The full path of an icon by its bare file name ("folder.png"). Empty when there is no such icon, and for
/// names that lead out of the folder.
WAINSCOT_API LightweightString<wchar_t> getIconPath(LightweightString<wchar_t> const& bareName);

} // namespace wainscot
