#pragma once

#include "host/services/file_names.h"

#include <cstdint>
#include <vector>

namespace wainscot {

/// What the file services say about the entries of a folder.
struct WAINSCOT_API iFileManager {
    /// Entries of a lower kind stand before those of a higher one.
    enum eKind : std::int32_t {
        eFolder = 0,
        eFile = 1,
        /// A device, pipe or socket.
        eSpecial = 2,
    };

    struct DirectoryItem {
        LightweightString<wchar_t> name;
        /// The full path.
        LightweightString<wchar_t> path;
        /// For a link: the kind of its target; a link without a target is a file.
        eKind kind = eFile;
        bool isLink = false;
        bool isBrokenLink = false;
        /// In bytes; 0 for folders.
        std::uint64_t size = 0;
        /// Of the last change, in seconds since 1970-01-01 00:00 UTC; 0 for earlier ones.
        std::uint64_t time = 0;
    };

    /// A folder's entries, without "." and ".." and in no order.
    struct Contents {
        std::vector<DirectoryItem> items;
        /// Why the folder could not be read to its end; empty on success.
        LightweightString<wchar_t> message;
    };
};

// Paths are wide text as `fileNameFromBytes` gives it.

/// Whether there is a file or folder of that path; links are followed.
WAINSCOT_API bool fileExists(LightweightString<wchar_t> const& path);
WAINSCOT_API bool folderExists(LightweightString<wchar_t> const& path);

/// A path from a folder and a name in it, with one "/" between them; an absolute `name` is given as it is.
WAINSCOT_API LightweightString<wchar_t> joinPaths(LightweightString<wchar_t> const& folder,
                                                  LightweightString<wchar_t> const& name);
/// The parent folder of a path: "/a" for "/a/b" and "/a/b/", "/" for "/a" and "/", empty for "a".
WAINSCOT_API LightweightString<wchar_t> getPath(LightweightString<wchar_t> const& path);

/// Reads the entries of a folder.
WAINSCOT_API iFileManager::Contents getDirectoryContents(LightweightString<wchar_t> const& folder);

/// Whether a file may have this name; when not, `reason` (unless null) gets the reason, for people.
WAINSCOT_API bool validateFileName(LightweightString<wchar_t> const& name,
                                   LightweightString<wchar_t>* reason = nullptr);

/// Where a program keeps the projects of its user: the preference "Projects folder" when that folder exists,
/// else the user's documents, else the home folder, else "/".
WAINSCOT_API LightweightString<wchar_t> getProjectsBaseDirectory();

} // namespace wainscot
