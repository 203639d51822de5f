#pragma once

#include "host/objects/glob.h"

#include <cstdint>

namespace wainscot {

class Surface;

/// The painting visit: draws what meets the damage of a surface, parents before children, siblings in their
/// order.
class WAINSCOT_API Painting {
public:
    /// Paints the pending damage of a window; what was painted then waits to be presented. Does nothing
    /// without damage, while the surface is held, or in a visit.
    static void paint(Glob& root, Surface& surface);
    /// Draws the children of the object that is drawing itself at the moment; refused for all others.
    static void drawChildrenNow(Glob& glob);
    /// What is drawn round an object that has a surround.
    static Surround const& surroundOf(Glob const& glob);
    /// Objects drawn since the program began; for tests of how much is visited.
    static std::uint64_t numDrawn();
};

} // namespace wainscot
