#include "host/services/file_operations_p.h"

#include "host/base/convert.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace wainscot {

namespace {

using Wide = LightweightString<wchar_t>;

FileResult resultOf(bool done, Wide const& path) {
    return done ? FileResult() : failedOn(path, errno);
}

/// Runs one system call on a path, unless the path must not be changed. The call answers 0 on success.
template <class Call>
FileResult change(Wide const& path, Call call) {
    std::string const bytes = changeablePath(path);
    if (bytes.empty()) return failedOn(path, EINVAL);
    return resultOf(call(bytes.c_str()) == 0, path);
}

} // namespace

FileResult failedOn(LightweightString<wchar_t> const& path, int reason) {
    return {fromUTF8(LightweightString<char>(std::strerror(reason))), path};
}

std::string changeablePath(LightweightString<wchar_t> const& path) {
    LightweightString<char> const bytes = fileNameToBytes(path);
    std::string text(bytes.view());
    while (!text.empty() && text.back() == '/') text.pop_back();
    std::string const last = text.substr(text.rfind('/') + 1);
    bool const isUsable = !last.empty() && last != "." && last != ".." && text.find('\0') == text.npos;
    return isUsable ? text : std::string();
}

bool renameWithoutReplacing(std::string const& from, std::string const& to) {
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return true;
    // Not every file system can refuse to replace something in the same step.
    if (errno != EINVAL && errno != ENOSYS) return false;
    struct stat status {};
    if (lstat(to.c_str(), &status) == 0) {
        errno = EEXIST;
        return false;
    }
    return std::rename(from.c_str(), to.c_str()) == 0;
}

FileResult createFolder(LightweightString<wchar_t> const& path) {
    return change(path, [](char const* bytes) { return mkdir(bytes, 0777); });
}

FileResult deleteFile(LightweightString<wchar_t> const& path) {
    return change(path, [](char const* bytes) { return unlink(bytes); });
}

FileResult deleteEmptyFolder(LightweightString<wchar_t> const& path) {
    return change(path, [](char const* bytes) { return rmdir(bytes); });
}

FileResult renamePath(LightweightString<wchar_t> const& from, LightweightString<wchar_t> const& to) {
    std::string const source = changeablePath(from);
    std::string const target = changeablePath(to);
    if (source.empty()) return failedOn(from, EINVAL);
    if (target.empty()) return failedOn(to, EINVAL);
    if (source == target) return {};
    if (renameWithoutReplacing(source, target)) return {};
    int const reason = errno;
    return failedOn(reason == EEXIST ? to : from, reason);
}

} // namespace wainscot
