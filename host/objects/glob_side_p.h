#pragma once

#include "host/drawing/colour.h"
#include "host/objects/child_grid_p.h"
#include "host/objects/glob.h"
#include "host/objects/surround.h"

#include <optional>

namespace wainscot {

/// What only few objects of the tree have; made when first needed.
struct Glob::Side {
    struct Offered {
        Glob* handler;
        IdStamp stamp;
        int kinds;
    };

    LightweightString<char> name;
    std::optional<Colour> colour;
    XY<int> minSize;
    /// The place rule of a child that stands next to a sibling.
    WidgetPosition relative;
    Surround surround;
    /// Where the pointer holds a moving object, in its own coordinates.
    XY<int> grip;
    UIString tip;
    UIString moreTip;
    std::vector<Offered> offered;
    std::unique_ptr<ChildGrid> grid;
};

} // namespace wainscot
