#pragma once

#include "host/services/files.h"

namespace wainscot {

/// What came of changing something in the file system.
struct FileResult {
    /// Why it was not done, or not to its end, as the system puts it; empty when it was.
    LightweightString<wchar_t> message;
    /// The file or folder that `message` is about.
    LightweightString<wchar_t> path;

    bool isDone() const { return message.empty(); }
};

// Paths are wide text as `fileNameFromBytes` gives it. A link is changed itself, never what it leads to; "/"
// and paths that end in "." or ".." are refused. Nothing that exists is replaced.

/// Makes one folder; the folder that it lies in must exist.
WAINSCOT_API FileResult createFolder(LightweightString<wchar_t> const& path);

/// Deletes a file, link, pipe or socket, but no folder.
WAINSCOT_API FileResult deleteFile(LightweightString<wchar_t> const& path);

WAINSCOT_API FileResult deleteEmptyFolder(LightweightString<wchar_t> const& path);

/// Deletes a folder of any depth and everything in it; links in it go, what they lead to stays. It ends at
/// the first thing that cannot be deleted, also where another file system begins; what has been deleted till
/// then is gone.
WAINSCOT_API FileResult deleteFolderWithContents(LightweightString<wchar_t> const& path);

/// Gives a file or folder another path on the same file system. Refused where something has that path
/// already.
WAINSCOT_API FileResult renamePath(LightweightString<wchar_t> const& from,
                                   LightweightString<wchar_t> const& to);

/// Puts a file or folder into the user's trash, from where the desktop can bring it back. Refused, with the
/// reason, where there is no trash on its file system: then only deleting is left.
WAINSCOT_API FileResult moveToTrash(LightweightString<wchar_t> const& path);

} // namespace wainscot
