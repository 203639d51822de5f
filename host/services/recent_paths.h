#pragma once

#include "host/base/lightweight_string.h"

#include <vector>

namespace wainscot {

/// The paths that were used last, the latest first, kept in one preference. Needs a live host.
class WAINSCOT_API RecentPaths {
public:
    /// `key` is the preference; beyond `limit` paths the oldest go.
    explicit RecentPaths(LightweightString<char> key, std::size_t limit = 10);

    std::vector<LightweightString<wchar_t>> paths() const;
    /// Makes a path the latest, whether it was known or not; the empty path is ignored.
    void add(LightweightString<wchar_t> const& path);
    void remove(LightweightString<wchar_t> const& path);
    void clear();

private:
    void store(std::vector<LightweightString<wchar_t>> const& paths);

    LightweightString<char> key_;
    std::size_t limit_;
};

} // namespace wainscot
