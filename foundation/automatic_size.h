#pragma once

#include "host/base/export.h"
#include "host/base/xy.h"

namespace wainscot {

class Glob;

/// The size of a widget that was made without one: what it needs, until somebody else resizes it.
class WAINSCOT_API AutomaticSize {
public:
    AutomaticSize(bool width, bool height) : width_(width), height_(height) {}

    /// Takes the needed width and height where they are automatic, and still those that were given here.
    void apply(Glob& glob, XY<int> needed);

private:
    XY<int> given_{-1, -1};
    bool width_;
    bool height_;
};

} // namespace wainscot
