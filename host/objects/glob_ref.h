#pragma once

#include "host/objects/glob.h"

namespace wainscot {

/// Refers to an object that somebody else owns, and knows when it has died.
template <class T>
class GlobRef {
public:
    GlobRef() = default;
    explicit GlobRef(T* glob) : glob_(glob) {
        if (glob) life_ = glob->guard();
    }

    /// Null when there is none, or it has died.
    T* get() const { return glob_ && life_.alive() ? glob_ : nullptr; }

private:
    T* glob_ = nullptr;
    LifeGuard life_{nullptr, IdStamp()};
};

} // namespace wainscot
