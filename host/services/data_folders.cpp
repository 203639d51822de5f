#include "host/services/data_folders.h"

#include "host/services/file_names.h"

#include <cstdlib>
#include <dlfcn.h>
#include <string>
#include <sys/stat.h>

namespace wainscot {

namespace {

constinit char const anchor = 0;

bool isFolder(std::string const& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

/// The folder of the library that this code is in.
std::string libraryFolder() {
    Dl_info info{};
    if (dladdr(&anchor, &info) == 0 || !info.dli_fname) return {};
    std::string const path = info.dli_fname;
    return path.substr(0, path.rfind('/') + 1);
}

void addFolder(std::vector<LightweightString<char>>& folders, std::string const& path) {
    if (isFolder(path)) folders.emplace_back(path);
}

} // namespace

std::vector<LightweightString<char>> getDataFolders() {
    std::vector<LightweightString<char>> folders;
    if (char const* const named = std::getenv("WAINSCOT_DATA_DIR"); named && *named)
        addFolder(folders, named);
    std::string const library = libraryFolder();
    addFolder(folders, library + "../share/wainscot");
    // Libraries for one of several processors lie one folder deeper.
    if (folders.empty()) addFolder(folders, library + "../../share/wainscot");
    return folders;
}

LightweightString<char> findDataFile(LightweightString<char> const& name) {
    for (LightweightString<char> const& folder : getDataFolders()) {
        LightweightString<char> path = folder + "/" + name;
        struct stat status {};
        if (stat(path.c_str(), &status) == 0) return path;
    }
    return {};
}

LightweightString<wchar_t> getIconsDirectory() {
    return fileNameFromBytes(findDataFile("icons"));
}

LightweightString<wchar_t> getIconPath(LightweightString<wchar_t> const& bareName) {
    if (findFileNameFault(bareName) != FileNameFault::none) return {};
    return fileNameFromBytes(findDataFile("icons/" + fileNameToBytes(bareName)));
}

} // namespace wainscot
