#pragma once

#include "host/base/box.h"
#include "host/base/export.h"

namespace wainscot {

class Glob;

/// The room that a window has round its root, for what is drawn there.
struct WindowMargins {
    int left = 0;
    int bottom = 0;
    int right = 0;
    int top = 0;

    XY<int> lower() const { return {left, bottom}; }
    XY<int> total() const { return {left + right, bottom + top}; }

    /// The room for a root's surround. Without a compositor a shadow cannot be shown: a thin edge takes its
    /// place.
    WAINSCOT_API static WindowMargins forRoot(Glob const& root, bool composited);

    friend bool operator==(WindowMargins const&, WindowMargins const&) = default;
};

} // namespace wainscot
