#pragma once

#include "host/objects/glob.h"

namespace wainscot {

/// The one path of destruction.
class Lifetime {
public:
    /// Detaches the subtree at once, frees it when the outermost handler that is running has returned.
    static void destroy(Glob& glob);
    /// For an object whose destructor runs without `destroy`: it was no heap object, or its constructor
    /// threw.
    static void detachFromDestructor(Glob& glob);

private:
    /// The answer is what has been detached, parents before children.
    static std::vector<Glob*> detach(Glob& top);
    static void leaveWindow(Glob& top);
};

} // namespace wainscot
