#pragma once

#include "host/base/xy.h"

#include <cstdint>

namespace wainscot {

/// The room that an object wants from what lays it out, in pixels.
struct SizeNeeds {
    /// What shows all of it. Below 0 where the size that it has been given will do.
    XY<int> natural{-1, -1};
    /// What it can be made as small as; below 0 = not smaller than the natural size.
    XY<int> minimum{-1, -1};
    /// Its height follows from its width (see `Glob::heightForWidth`); the natural one is that for the
    /// natural width.
    bool heightFollowsWidth = false;

    friend bool operator==(SizeNeeds const&, SizeNeeds const&) = default;
};

/// What a parent is told of a child.
enum class ChildChange : std::uint8_t {
    added,
    removed,
    /// It was shown or hidden.
    visibility,
    /// It has another size, whoever gave it.
    size,
    /// It may need another size.
    needs,
};

} // namespace wainscot
