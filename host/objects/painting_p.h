#pragma once

#include "host/objects/glob.h"

#include <cstdint>

namespace wainscot {

class Surface;

/// The painting visit: draws what meets the damage of a surface, parents before children, siblings in their
/// order.
class WAINSCOT_API Painting {
public:
    /// Paints the pending damage of a window; what was painted is then waiting to be presented.
    /// Nothing happens while there is no damage, the surface is held, or a visit is running.
    static void paint(Glob& root, Surface& surface);
    /// Draws the children of the object that is just drawing itself; refused for any other.
    static void drawChildrenNow(Glob& glob);
    /// What is drawn round an object that has a surround.
    static Surround const& surroundOf(Glob const& glob);
    /// Objects drawn since the program began; for tests of how much is visited.
    static std::uint64_t numDrawn();
};

} // namespace wainscot
