#pragma once

#include "host/base/export.h"
#include "host/objects/size_needs.h"

namespace wainscot {

class Glob;

/// The size of a widget that was made without one: what it needs, until somebody else resizes it.
class WAINSCOT_API AutomaticSize {
public:
    AutomaticSize(bool width, bool height) : width_(width), height_(height) {}

    /// Takes the needed width and height where they are automatic, and still those that were given here; and
    /// tells what lays it out.
    void apply(Glob& glob, XY<int> needed);
    /// What to answer as `Glob::sizeNeeds`: what is not automatic has the size that it was made with.
    SizeNeeds needs(XY<int> needed, XY<int> minimum = {-1, -1}) const;

private:
    XY<int> given_{-1, -1};
    bool width_;
    bool height_;
};

} // namespace wainscot
