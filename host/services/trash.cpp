#include "host/services/file_operations_p.h"

#include "host/services/atomic_file_p.h"
#include "host/services/clock.h"
#include "host/services/local_time.h"
#include "host/services/user_folders.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace wainscot {

namespace {

/// Leaves room for a number and the suffix of the note in a name.
constexpr std::size_t longestName = 200;
/// How many small numbers are tried before longer ones that are surely free.
constexpr int smallNumbers = 8;
constexpr int mostTries = 64;

/// The path as it stands in a note, where all but the plainest characters are written by number.
std::string escaped(std::string const& path) {
    constexpr char digits[] = "0123456789ABCDEF";
    std::string text;
    for (char const c : path) {
        bool const isPlain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                             c == '/' || c == '.' || c == '-' || c == '_' || c == '~';
        auto const byte = static_cast<unsigned char>(c);
        if (isPlain)
            text += c;
        else
            text.append({'%', digits[byte >> 4U], digits[byte & 15U]});
    }
    return text;
}

std::string noteFor(std::string const& path) {
    LightweightString<wchar_t> const when =
        formatLocalTime(L"%Y-%m-%dT%H:%M:%S", iClock::current().calendar());
    return "[Trash Info]\nPath=" + escaped(path) +
           "\nDeletionDate=" + std::string(fileNameToBytes(when).view()) + "\n";
}

std::string nameInTrash(std::string const& name, int number) {
    std::string const shortened = name.substr(0, longestName);
    if (number == 0) return shortened;
    std::string const suffix = std::to_string(number + 1);
    if (number < smallNumbers) return shortened + " " + suffix;
    return shortened + " " + std::to_string(iClock::current().calendar()) + "-" + suffix;
}

/// Writes a new note. False on failure, with the reason in `errno`; an existing note is not replaced.
bool writeNote(std::string const& path, std::string const& text) {
    int const note = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
    if (note < 0) return false;
    bool const isWhole = write(note, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    int const reason = isWhole ? 0 : ENOSPC;
    close(note);
    if (reason != 0) unlink(path.c_str());
    errno = reason;
    return isWhole;
}

/// 0, or the system's reason. The note is written before the file is moved, so that the origin of every file
/// in the trash is known.
int putInto(std::string const& trash, std::string const& path, int number) {
    std::string const name = nameInTrash(path.substr(path.rfind('/') + 1), number);
    std::string const note = trash + "/info/" + name + ".trashinfo";
    if (!writeNote(note, noteFor(path))) return errno;
    if (renameWithoutReplacing(path, trash + "/files/" + name)) return 0;
    int const reason = errno;
    unlink(note.c_str());
    return reason;
}

} // namespace

FileResult moveToTrash(LightweightString<wchar_t> const& path) {
    std::string const bytes = changeablePath(path);
    if (bytes.empty() || bytes.front() != '/') return failedOn(path, EINVAL);
    struct stat status {};
    if (lstat(bytes.c_str(), &status) != 0) return failedOn(path, errno);
    std::string const data(getUserDataFolder().view());
    if (data.empty()) return failedOn(path, ENOENT);
    std::string const trash = data + "/Trash";
    for (char const* const part : {"/files", "/info"})
        if (!makeFolders(LightweightString<char>(trash + part)).empty()) return failedOn(path, errno);
    int reason = EEXIST;
    for (int number = 0; reason == EEXIST && number < mostTries; ++number)
        reason = putInto(trash, bytes, number);
    return reason == 0 ? FileResult() : failedOn(path, reason);
}

} // namespace wainscot
