#pragma once

#include "host/objects/glob.h"

namespace wainscot {

/// Where children lie: turns place rules into places, and does what every change of a box brings with it
/// (damage, move notices, the parent's search grid).
class WAINSCOT_API Placement {
public:
    /// Kept where sums of places cannot overflow.
    static XY<int> clampPlace(XY<int> place);
    static void setRule(Glob& child, WidgetPosition const& position);
    static WidgetPosition rule(Glob const& child);
    /// The place that a rule gives a child of that size; `present` when the sibling in the rule has died.
    static XY<int> placeFor(Glob const& parent, WidgetPosition const& position, XY<int> size,
                            XY<int> present);
    /// The place of a box of that size in an area, by a position that names a corner.
    static XY<int> inCorner(WidgetPosition const& position, IntBox const& area, XY<int> size);
    static void moveTo(Glob& glob, XY<int> place);
    static void setSize(Glob& glob, double width, double height);
    static void placeChild(Glob& parent, Glob& child);
    /// For a child that was just linked: its former place is not painted again.
    static void placeNewChild(Glob& parent, Glob& child);
    static void placeChildren(Glob& parent);

private:
    static void boxChanged(Glob& glob);
    static Glob* siblingOf(Glob const& parent, Glob const& child);
};

} // namespace wainscot
