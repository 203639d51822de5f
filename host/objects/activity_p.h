#pragma once

#include "host/base/export.h"

#include <vector>

namespace wainscot {

class Glob;

/// Whether an object is active: when it and all its parents are. Each object knows of those above it by a
/// flag, so that the question costs nothing.
class WAINSCOT_API Activity {
public:
    /// It has got a parent, or lost it.
    static void parentChanged(Glob& child);
    /// It was switched on or off. What lies below learns of it; of what is inactive now, nothing keeps the
    /// focus, and nothing below it the pointer.
    static void switched(Glob& glob);

private:
    /// Brings the flags below up to date. Gives those for which the answer is another now, itself among them.
    static std::vector<Glob*> spread(Glob& top);
};

} // namespace wainscot
