#pragma once

#include "host/base/lightweight_string.h"

#include <string_view>

namespace wainscot {

/// The result of reading a whole file.
struct FileBytes {
    enum class State : unsigned char {
        read,
        /// There is no such file.
        absent,
        /// It cannot be read; `message` says why.
        failed,
    };
    State state = State::absent;
    LightweightString<char> bytes;
    LightweightString<char> message;
};

/// Reads a regular file of at most `maxSize` bytes.
WAINSCOT_API FileBytes readWholeFile(LightweightString<char> const& path, std::size_t maxSize);

/// Replaces a file in one step: readers find the old contents or the new contents, never a part, also after a
/// crash. Permissions are kept, and so is a symbolic link in its place. Gives the reason on failure, else the
/// empty text; on failure the old file is untouched. Only one writer of a file may be at work.
WAINSCOT_API LightweightString<char> writeFileAtomically(LightweightString<char> const& path,
                                                         std::string_view bytes);

/// Makes a folder and the folders above it; gives the reason when it failed.
WAINSCOT_API LightweightString<char> makeFolders(LightweightString<char> const& path);

/// A lock that programs hold on a folder while they change a file in it; released by the destructor. Without
/// effect on file systems without locks.
class WAINSCOT_API FolderLock {
public:
    explicit FolderLock(LightweightString<char> const& folder);
    ~FolderLock();
    FolderLock(FolderLock const&) = delete;
    FolderLock& operator=(FolderLock const&) = delete;

private:
    int descriptor_;
};

} // namespace wainscot
