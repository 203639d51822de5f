#include "host/services/drive_list.h"

#include "host/services/file_names.h"
#include "host/services/resources.h"
#include "host/services/text_ids.h"
#include "host/services/user_folders.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

namespace wainscot {

namespace {

using Narrow = LightweightString<char>;

struct Place {
    char const* name;
    ResId text;
};

constexpr Place standardPlaces[] = {{"DESKTOP", TextId::desktop},    {"DOCUMENTS", TextId::documents},
                                    {"DOWNLOAD", TextId::downloads}, {"MUSIC", TextId::music},
                                    {"PICTURES", TextId::pictures},  {"VIDEOS", TextId::videos}};

constexpr std::string_view networkKinds[] = {"nfs", "nfs4", "cifs", "smb3", "fuse.sshfs", "davfs", "9p"};

std::string_view takeWord(std::string_view& line) {
    std::size_t const end = std::min(line.find(' '), line.size());
    std::string_view const word = line.substr(0, end);
    line.remove_prefix(std::min(end + 1, line.size()));
    return word;
}

/// Blanks and the like are written as a backslash and three octal digits.
std::string unescaped(std::string_view word) {
    auto const isOctal = [](char c) { return c >= '0' && c <= '7'; };
    std::string result;
    for (std::size_t i = 0; i < word.size(); ++i) {
        std::string_view const digits = word.substr(std::min(i + 1, word.size()), 3);
        if (word[i] != '\\' || digits.size() != 3 || !std::all_of(digits.begin(), digits.end(), isOctal)) {
            result += word[i];
            continue;
        }
        result += static_cast<char>((digits[0] - '0') * 64 + (digits[1] - '0') * 8 + (digits[2] - '0'));
        i += 3;
    }
    return result;
}

bool isForPeople(std::string_view path, std::string_view kind) {
    for (std::string_view const folder : {"/media/", "/mnt/", "/run/media/"})
        if (path.substr(0, folder.size()) == folder) return true;
    return path == "/mnt" ||
           std::find(std::begin(networkKinds), std::end(networkKinds), kind) != std::end(networkKinds);
}

/// Collects places, each path once.
class PlaceList {
public:
    void add(DriveItem::Kind kind, LightweightString<wchar_t> const& name, Narrow const& path) {
        if (!path.empty() && paths_.insert(path).second)
            items_.push_back({kind, name, fileNameFromBytes(path)});
    }
    void addMount(Narrow const& path) {
        Narrow const last = path.substr(path.rfind('/') + 1);
        add(DriveItem::Kind::mountPoint, fileNameFromBytes(last), path);
    }
    std::vector<DriveItem> take() { return std::move(items_); }

private:
    std::set<Narrow> paths_;
    std::vector<DriveItem> items_;
};

} // namespace

std::vector<LightweightString<char>> findMountPoints(std::string_view mounts) {
    std::vector<Narrow> points;
    while (!mounts.empty()) {
        std::size_t const end = std::min(mounts.find('\n'), mounts.size());
        std::string_view line = mounts.substr(0, end);
        mounts.remove_prefix(std::min(end + 1, mounts.size()));
        takeWord(line);
        std::string const path = unescaped(takeWord(line));
        std::string_view const kind = takeWord(line);
        if (!path.empty() && path.front() == '/' && isForPeople(path, kind)) points.emplace_back(path);
    }
    return points;
}

std::vector<DriveItem> buildDriveList() {
    PlaceList places;
    places.add(DriveItem::Kind::fileSystem, resourceStrW(TextId::fileSystem), "/");
    places.add(DriveItem::Kind::home, resourceStrW(TextId::home), getHomeFolder());
    for (Place const& place : standardPlaces)
        places.add(DriveItem::Kind::standardPlace, resourceStrW(place.text), getStandardFolder(place.name));
    std::ifstream file("/proc/self/mounts", std::ios::binary);
    std::string const mounts{std::istreambuf_iterator<char>(file), {}};
    for (Narrow const& point : findMountPoints(mounts)) places.addMount(point);
    return places.take();
}

} // namespace wainscot
