#pragma once

#include "host/base/life.h"

namespace wainscot {

class EventHandler;

/// Refers to an event handler that somebody else owns, and knows when it has died: the address together with
/// the stamp, because an address alone may belong to another one later. Asking is a look-up in constant time
/// that never touches the handler; `T` has to be complete only where it is made or asked.
/// User-interface thread only.
template <class T = EventHandler>
class HandlerRef {
public:
    constexpr HandlerRef() = default;
    explicit HandlerRef(T* handler) : handler_(handler), stamp_(handler ? handler->idStamp() : IdStamp()) {}

    /// Null when there is none, or it has died.
    T* get() const {
        EventHandler const* const known = handler_;
        return Liveness::alive(known, stamp_) ? handler_ : nullptr;
    }
    explicit operator bool() const { return get() != nullptr; }
    /// That of the handler, also after its death; invalid when there is none.
    constexpr IdStamp stamp() const { return stamp_; }

    /// Whether both refer to the same handler, alive or not, or both to none.
    friend constexpr bool operator==(HandlerRef const& a, HandlerRef const& b) {
        return a.stamp_ == b.stamp_;
    }

private:
    T* handler_ = nullptr;
    IdStamp stamp_;
};

} // namespace wainscot
