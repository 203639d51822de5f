#include "foundation/layout/box_layout.h"

#include "foundation/layout/tracks_p.h"

namespace wainscot {

Layout::Cell BoxLayout::cellOf(Cell const&, int shown) const {
    return direction_ == row ? Cell{shown, 0} : Cell{0, shown};
}

/// Across, there is one track, which takes all the room.
void BoxLayout::stretch(Tracks& columns, Tracks& rows) const {
    Tracks& across = direction_ == row ? rows : columns;
    if (across.size() > 0) across.stretchAtLeast(0, 1);
}

} // namespace wainscot
