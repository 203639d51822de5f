#pragma once

#include "host/base/lightweight_string.h"

#include <string_view>
#include <vector>

namespace wainscot {

/// A place from which a person begins to look for files.
struct DriveItem {
    enum class Kind : unsigned char {
        fileSystem,
        home,
        /// Desktop, documents, music and the like.
        standardPlace,
        /// A disk, stick or network folder.
        mountPoint,
    };
    Kind kind = Kind::mountPoint;
    /// In the user's language; for mount points the last part of the path.
    LightweightString<wchar_t> name;
    LightweightString<wchar_t> path;
};

/// The file system, the home folder, the standard places that exist, then what is mounted for people. No path
/// comes twice. Nothing is read from the places themselves, so that a dead network folder costs no time.
WAINSCOT_API std::vector<DriveItem> buildDriveList();

/// The mount points for people in a list as in `/proc/self/mounts`, as the bytes of paths: those below
/// `/media`, `/mnt` and `/run/media`, and network folders anywhere.
WAINSCOT_API std::vector<LightweightString<char>> findMountPoints(std::string_view mounts);

} // namespace wainscot
