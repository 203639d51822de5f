#include "host/services/user_folders.h"

#include "host/services/atomic_file_p.h"

#include <cstdlib>
#include <sstream>
#include <string>
#include <sys/stat.h>

namespace wainscot {

namespace {

/// The largest list that is read: far more than any desktop writes.
constexpr std::size_t largestList = 1024 * 1024;

/// A folder that the environment names; only absolute paths count.
std::string folderFrom(char const* variable) {
    char const* const value = std::getenv(variable);
    if (!value || *value != '/') return {};
    std::string folder = value;
    while (folder.size() > 1 && folder.back() == '/') folder.pop_back();
    return folder;
}

std::string configRoot() {
    std::string named = folderFrom("XDG_CONFIG_HOME");
    if (!named.empty()) return named;
    std::string const home = folderFrom("HOME");
    return home.empty() ? home : home + "/.config";
}

/// Makes the program's name a single folder's name.
std::string asFolderName(std::string name) {
    for (char& c : name)
        if (c == '/' || static_cast<unsigned char>(c) < 0x20 || c == 0x7F) c = '_';
    if (!name.empty() && name.front() == '.') name.front() = '_';
    return name;
}

bool isFolder(std::string const& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

/// The value of a line such as XDG_MUSIC_DIR="$HOME/Music", where quotes and "$" may be escaped.
std::string folderInLine(std::string const& line, std::string const& key) {
    std::string const beginning = "XDG_" + key + "_DIR=\"";
    if (line.compare(0, beginning.size(), beginning) != 0) return {};
    std::string rest = line.substr(beginning.size());
    std::string folder;
    if (rest.compare(0, 5, "$HOME") == 0) {
        folder = folderFrom("HOME");
        rest.erase(0, 5);
    }
    for (std::size_t i = 0; i < rest.size() && rest[i] != '"'; ++i) {
        if (rest[i] == '\\' && i + 1 < rest.size()) ++i;
        folder += rest[i];
    }
    return folder;
}

} // namespace

LightweightString<char> getHomeFolder() {
    return LightweightString<char>(folderFrom("HOME"));
}

LightweightString<char> getConfigFolder(LightweightString<char> const& programName) {
    std::string const root = configRoot();
    std::string const name = asFolderName(std::string(programName.view()));
    return LightweightString<char>(root.empty() || name.empty() ? std::string() : root + "/" + name);
}

LightweightString<char> getUserDataFolder() {
    std::string named = folderFrom("XDG_DATA_HOME");
    if (!named.empty()) return LightweightString<char>(named);
    std::string const home = folderFrom("HOME");
    return LightweightString<char>(home.empty() ? home : home + "/.local/share");
}

LightweightString<char> getStandardFolder(char const* name) {
    FileBytes const file =
        readWholeFile(LightweightString<char>(configRoot() + "/user-dirs.dirs"), largestList);
    std::istringstream list(std::string(file.bytes.view()));
    for (std::string line; std::getline(list, line);) {
        std::string const folder = folderInLine(line, name);
        if (!folder.empty() && folder.front() == '/' && isFolder(folder))
            return LightweightString<char>(folder);
    }
    return {};
}

} // namespace wainscot
