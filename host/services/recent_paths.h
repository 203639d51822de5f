#pragma once

#include "host/base/lightweight_string.h"

#include <vector>

namespace wainscot {

/// The paths that were used last, the latest first, kept in one preference. Needs a live host.
class WAINSCOT_API RecentPaths {
public:
    /// `key` is the preference; with more than `limit` paths the oldest are dropped.
    explicit RecentPaths(LightweightString<char> key, std::size_t limit = 10);

    /// The paths, the latest first.
    std::vector<LightweightString<wchar_t>> paths() const;
    /// Puts a path first, whether it was known or not; the empty path is ignored.
    void add(LightweightString<wchar_t> const& path);
    void remove(LightweightString<wchar_t> const& path);
    void clear();

private:
    void store(std::vector<LightweightString<wchar_t>> const& paths);

    LightweightString<char> key_;
    std::size_t limit_;
};

} // namespace wainscot
