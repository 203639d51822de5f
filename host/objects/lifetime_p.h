#pragma once

#include "host/objects/glob.h"

namespace wainscot {

/// The one path of destruction.
class Lifetime {
public:
    /// Detaches the subtree at once, and frees it when the outermost running handler has returned.
    static void destroy(Glob& glob);
    /// For an object whose destructor runs without `destroy`: it is not a heap object, or its constructor
    /// threw.
    static void detachFromDestructor(Glob& glob);

private:
    /// Gives the detached objects, parents before children.
    static std::vector<Glob*> detach(Glob& top);
    static void leaveWindow(Glob& top);
};

} // namespace wainscot
