#include "host/services/files.h"

#include "host/base/convert.h"
#include "host/services/preferences.h"
#include "host/services/resources.h"
#include "host/services/text_ids.h"
#include "host/services/user_folders.h"

#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <string_view>
#include <sys/stat.h>

namespace wainscot {

namespace {

using Narrow = LightweightString<char>;
using Wide = LightweightString<wchar_t>;
using Item = iFileManager::DirectoryItem;

/// A zero character would end the path early, and so name another file.
bool statusOf(Wide const& path, struct stat& status) {
    Narrow const bytes = fileNameToBytes(path);
    return bytes.view().find('\0') == Narrow::npos && stat(bytes.c_str(), &status) == 0;
}

Wide systemReason() {
    return fromUTF8(Narrow(std::strerror(errno)));
}

iFileManager::eKind kindOf(mode_t mode) {
    if (S_ISDIR(mode)) return iFileManager::eFolder;
    return S_ISREG(mode) || S_ISLNK(mode) ? iFileManager::eFile : iFileManager::eSpecial;
}

/// False when the entry has gone meanwhile.
bool describe(int folder, char const* name, Item& item) {
    struct stat status {};
    if (fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) != 0) return false;
    item.isLink = S_ISLNK(status.st_mode);
    item.isBrokenLink = item.isLink && fstatat(folder, name, &status, 0) != 0;
    item.kind = kindOf(status.st_mode);
    if (item.kind == iFileManager::eFile && status.st_size > 0)
        item.size = static_cast<std::uint64_t>(status.st_size);
    if (status.st_mtime > 0) item.time = static_cast<std::uint64_t>(status.st_mtime);
    return true;
}

bool isDots(std::string_view name) {
    return name == "." || name == "..";
}

struct FolderCloser {
    void operator()(DIR* folder) const { closedir(folder); }
};

ResId textOf(FileNameFault fault) {
    switch (fault) {
    case FileNameFault::empty:
        return TextId::nameEmpty;
    case FileNameFault::reserved:
        return TextId::nameReserved;
    case FileNameFault::separator:
        return TextId::nameSeparator;
    case FileNameFault::tooLong:
        return TextId::nameTooLong;
    case FileNameFault::none:
        break;
    }
    return noResText;
}

} // namespace

bool fileExists(LightweightString<wchar_t> const& path) {
    struct stat status {};
    return statusOf(path, status);
}

bool folderExists(LightweightString<wchar_t> const& path) {
    struct stat status {};
    return statusOf(path, status) && S_ISDIR(status.st_mode);
}

LightweightString<wchar_t> joinPaths(LightweightString<wchar_t> const& folder,
                                     LightweightString<wchar_t> const& name) {
    if (folder.empty() || (!name.empty() && name[0] == L'/')) return name;
    if (name.empty()) return folder;
    return folder.back() == L'/' ? folder + name : folder + L"/" + name;
}

LightweightString<wchar_t> getPath(LightweightString<wchar_t> const& path) {
    std::wstring_view rest = path.view();
    auto const dropSlashes = [&rest] {
        while (rest.size() > 1 && rest.back() == L'/') rest.remove_suffix(1);
    };
    dropSlashes();
    std::size_t const slash = rest.rfind(L'/');
    if (slash == std::wstring_view::npos) return {};
    rest = rest.substr(0, slash + 1);
    dropSlashes();
    return Wide(rest);
}

iFileManager::Contents getDirectoryContents(LightweightString<wchar_t> const& folder) {
    iFileManager::Contents contents;
    Narrow const bytes = fileNameToBytes(folder);
    errno = ENOENT;
    bool const isPath = bytes.view().find('\0') == Narrow::npos;
    std::unique_ptr<DIR, FolderCloser> const opened(isPath ? opendir(bytes.c_str()) : nullptr);
    if (!opened) {
        contents.message = systemReason();
        return contents;
    }
    for (errno = 0; dirent const* const entry = readdir(opened.get()); errno = 0) {
        Item item;
        if (isDots(entry->d_name) || !describe(dirfd(opened.get()), entry->d_name, item)) continue;
        item.name = fileNameFromBytes(Narrow(static_cast<char const*>(entry->d_name)));
        item.path = joinPaths(folder, item.name);
        contents.items.push_back(std::move(item));
    }
    if (errno != 0) contents.message = systemReason();
    return contents;
}

bool validateFileName(LightweightString<wchar_t> const& name, LightweightString<wchar_t>* reason) {
    FileNameFault const fault = findFileNameFault(name);
    if (reason) *reason = resourceStrW(textOf(fault));
    return fault == FileNameFault::none;
}

LightweightString<wchar_t> getProjectsBaseDirectory() {
    if (EditorPreferences* const store = EditorPreferences::current()) {
        Wide preferred = store->getPreference("Projects folder", L"");
        if (folderExists(preferred)) return preferred;
    }
    for (Narrow const& folder : {getStandardFolder("DOCUMENTS"), getHomeFolder()})
        if (!folder.empty()) return fileNameFromBytes(folder);
    return L"/";
}

} // namespace wainscot
