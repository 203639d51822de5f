#pragma once

#include "host/base/export.h"

#include <vector>

namespace wainscot {

class Glob;

/// Whether an object is active: it and all its ancestors are switched on. A flag in each object says whether
/// an ancestor is inactive, so that the question costs nothing.
class WAINSCOT_API Activity {
public:
    /// It has got a parent, or lost it.
    static void parentChanged(Glob& child);
    /// It was switched on or off: its descendants are told. Objects that are inactive now lose the focus, and
    /// descendants the pointer.
    static void switched(Glob& glob);

private:
    /// Brings the flags of the descendants up to date. Gives all objects for which the answer has changed,
    /// itself included.
    static std::vector<Glob*> spread(Glob& top);
};

} // namespace wainscot
