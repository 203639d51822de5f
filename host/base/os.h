#pragma once

#include "host/base/object.h"

namespace wainscot {

/// The host's service object. `Qv::Ptr` counts references through it; code that holds a counted object
/// without a `Qv::Ptr` uses it too. Safe from any thread.
class WAINSCOT_API OSServices {
public:
    /// Does nothing for objects that are not counted, and for null.
    void addReference(iObject const* object) const noexcept {
        if (object) object->addRef();
    }
    /// The last release deletes the object.
    void releaseReference(iObject const* object) const noexcept {
        if (object) object->release();
    }
};

/// The one service object of the process; it exists before `main` and after it.
constexpr OSServices OS() {
    return {};
}

} // namespace wainscot
