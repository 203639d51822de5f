#pragma once

#include "host/objects/glob.h"

#include <vector>

namespace wainscot {

/// The objects that contain the pointer, from the root to the deepest; tells them when that begins and ends.
class WAINSCOT_API ContainmentPath {
public:
    /// From now on the path leads to `deepest` (null = to nowhere). Leaving is told from the deepest
    /// outwards, then entering inwards.
    void moveTo(Glob* deepest);
    /// The deepest object that still lives; null when there is none.
    Glob* deepest() const;

private:
    using Step = HandlerRef<Glob>;
    static void tell(Step const& step, bool inside);

    std::vector<Step> steps_;
};

} // namespace wainscot
