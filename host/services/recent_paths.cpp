#include "host/services/recent_paths.h"

#include "host/services/preferences.h"

#include <algorithm>

namespace wainscot {

RecentPaths::RecentPaths(LightweightString<char> key, std::size_t limit)
    : key_(std::move(key)), limit_(std::max<std::size_t>(limit, 1)) {}

std::vector<LightweightString<wchar_t>> RecentPaths::paths() const {
    JsonValue const& held = prefs().value(key_);
    std::vector<LightweightString<wchar_t>> found;
    for (std::size_t i = 0; i < held.size() && found.size() < limit_; ++i) {
        auto const path = held.at(i).asWideText();
        if (path && !path->empty()) found.push_back(*path);
    }
    return found;
}

void RecentPaths::add(LightweightString<wchar_t> const& path) {
    if (path.empty()) return;
    std::vector<LightweightString<wchar_t>> known = paths();
    std::erase(known, path);
    known.insert(known.begin(), path);
    known.resize(std::min(known.size(), limit_));
    store(known);
}

void RecentPaths::remove(LightweightString<wchar_t> const& path) {
    std::vector<LightweightString<wchar_t>> known = paths();
    if (std::erase(known, path) != 0) store(known);
}

void RecentPaths::clear() {
    prefs().setValue(key_, {});
}

void RecentPaths::store(std::vector<LightweightString<wchar_t>> const& paths) {
    JsonValue list = JsonValue::array();
    for (LightweightString<wchar_t> const& path : paths) list.add(JsonValue(path));
    prefs().setValue(key_, std::move(list));
}

} // namespace wainscot
