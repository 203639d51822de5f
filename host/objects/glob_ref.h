#pragma once

#include "host/objects/glob.h"

namespace wainscot {

/// Refers to an object that somebody else owns, and knows when it has died.
template <class T>
class GlobRef {
public:
    GlobRef() = default;
    explicit GlobRef(T* glob) : glob_(glob), stamp_(glob ? glob->idStamp() : IdStamp()) {}

    /// Null when there is none, or it has died.
    T* get() const { return EventHandler::valid(glob_, stamp_) ? glob_ : nullptr; }

private:
    T* glob_ = nullptr;
    IdStamp stamp_;
};

} // namespace wainscot
