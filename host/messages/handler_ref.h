#pragma once

#include "host/base/life.h"

namespace wainscot {

class EventHandler;

/// A weak reference to an event handler: address and stamp, because the address alone may belong to another
/// handler later. Asking is a look-up in constant time that never touches the handler. `T` has to be complete
/// only where the reference is made or asked. User-interface thread only.
template <class T = EventHandler>
class HandlerRef {
public:
    constexpr HandlerRef() = default;
    explicit HandlerRef(T* handler) : handler_(handler), stamp_(handler ? handler->idStamp() : IdStamp()) {}

    /// Null when there is none, or when it has died.
    T* get() const {
        EventHandler const* const known = handler_;
        return Liveness::alive(known, stamp_) ? handler_ : nullptr;
    }
    explicit operator bool() const { return get() != nullptr; }
    /// The handler's stamp, also after its death; invalid when there is none.
    constexpr IdStamp stamp() const { return stamp_; }

    /// Whether both refer to the same handler, alive or not, or neither refers to any.
    friend constexpr bool operator==(HandlerRef const& a, HandlerRef const& b) {
        return a.stamp_ == b.stamp_;
    }

private:
    T* handler_ = nullptr;
    IdStamp stamp_;
};

} // namespace wainscot
