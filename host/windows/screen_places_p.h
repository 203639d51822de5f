#pragma once

#include "host/base/box.h"
#include "host/base/export.h"
#include "host/objects/widget_position.h"

#include <vector>

namespace wainscot {

/// Arithmetic of places on a screen of several monitors, in root coordinates.
namespace ScreenPlaces {

/// The monitor on which most of the box lies, or the nearest monitor when it lies on none. An empty box
/// stands for its lower-left corner. `monitors` is not empty.
WAINSCOT_API IntBox monitorOf(std::vector<IntBox> const& monitors, IntBox const& box);
/// The box moved by as little as possible to lie in `monitor`. A box that is too large keeps its size and
/// lies at the upper left.
WAINSCOT_API IntBox movedOnto(IntBox const& monitor, IntBox const& box);
/// A box of that size on one side of another, `gap` pixels away and lined up along their common edge.
WAINSCOT_API IntBox beside(IntBox const& anchor, XY<int> size, WidgetRelativity side, int gap,
                           WidgetAlignment alignment);
/// The other side.
WAINSCOT_API WidgetRelativity opposite(WidgetRelativity side);

/// A place found for a pop-up.
struct Found {
    IntBox box;
    /// Whether it lies on the other side of its anchor.
    bool opposite = false;
};
/// Like `beside`, and wholly on the monitor: on the other side when the wanted side has no room, on the side
/// with more room when neither has enough. Along the edge it is moved as far as needed.
WAINSCOT_API Found besideOn(IntBox const& monitor, IntBox const& anchor, XY<int> size, WidgetRelativity side,
                            int gap, WidgetAlignment alignment);

} // namespace ScreenPlaces

} // namespace wainscot
