#pragma once

#include "host/services/files.h"

namespace wainscot {

/// The result of a change in the file system.
struct FileResult {
    /// Why it was not done, or not to its end, in the system's words; empty on success.
    LightweightString<wchar_t> message;
    /// The file or folder that `message` is about.
    LightweightString<wchar_t> path;

    bool isDone() const { return message.empty(); }
};

// Paths are wide text as `fileNameFromBytes` gives it. Links are never followed: the link itself is changed.
// "/" and paths that end in "." or ".." are refused. Nothing that exists is replaced.

/// Makes one folder; its parent folder must exist.
WAINSCOT_API FileResult createFolder(LightweightString<wchar_t> const& path);

/// Deletes a file, link, pipe or socket, but no folder.
WAINSCOT_API FileResult deleteFile(LightweightString<wchar_t> const& path);

/// Deletes a folder that has no entries.
WAINSCOT_API FileResult deleteEmptyFolder(LightweightString<wchar_t> const& path);

/// Deletes a folder of any depth and everything in it; links in it are deleted, never followed. It stops at
/// the first entry that cannot be deleted, and where another file system begins; what has been deleted by
/// then is gone.
WAINSCOT_API FileResult deleteFolderWithContents(LightweightString<wchar_t> const& path);

/// Gives a file or folder another path on the same file system. Refused when the path is taken.
WAINSCOT_API FileResult renamePath(LightweightString<wchar_t> const& from,
                                   LightweightString<wchar_t> const& to);

/// Puts a file or folder into the user's trash, from where the desktop can bring it back. Refused, with the
/// reason, where there is no trash on its file system: then only deleting is left.
WAINSCOT_API FileResult moveToTrash(LightweightString<wchar_t> const& path);

} // namespace wainscot
