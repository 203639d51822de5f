#pragma once

#include "host/objects/glob.h"

#include <vector>

namespace wainscot {

/// The objects that contain the pointer, from the root to the deepest. They are told when the pointer enters
/// and leaves.
class WAINSCOT_API ContainmentPath {
public:
    /// From now on the path leads to `deepest` (null = nowhere). Left objects are told first, the deepest
    /// first; then entered objects, the deepest last.
    void moveTo(Glob* deepest);
    /// The deepest object that still lives; null when there is none.
    Glob* deepest() const;

private:
    using Step = HandlerRef<Glob>;
    static void tell(Step const& step, bool inside);

    std::vector<Step> steps_;
};

} // namespace wainscot
