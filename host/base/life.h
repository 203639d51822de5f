#pragma once

#include "host/base/id_stamp.h"

#include <cstddef>

namespace wainscot {

/// The one record of what is alive: the address of every event handler and of every object that has handed
/// out a guard. Look-ups touch the object only when it is alive, so a dangling pointer may be asked about.
/// User-interface thread only; every operation takes constant time.
namespace Liveness {
/// `stamp` is the object's stamp and lies in the object: at its beginning, or right behind the pointer to its
/// virtual functions.
WAINSCOT_API void add(void const* object, IdStamp const& stamp);
WAINSCOT_API void remove(void const* object);
/// Notes that the live object at that address belongs to the on-screen tree.
WAINSCOT_API void markTreeObject(void const* object);
WAINSCOT_API bool isTreeObject(void const* object);
/// The stamp of the live object at that address; an invalid one when there is none.
WAINSCOT_API IdStamp stampOf(void const* object);
inline bool alive(void const* object, IdStamp stamp) {
    return stamp.valid() && stampOf(object) == stamp;
}
/// How many objects are alive.
WAINSCOT_API std::size_t count();
} // namespace Liveness

/// Life token of an object that is not an event handler (value server, tab manager, menu data, adaptor): a
/// member of that object. It costs nothing until the first guard is taken.
class WAINSCOT_API LifeToken {
public:
    LifeToken() = default;
    LifeToken(LifeToken const&) {}
    LifeToken& operator=(LifeToken const&) { return *this; }
    ~LifeToken() { end(); }
    /// The guarded object counts as dead from now on, although its memory may stay for a while.
    void end() {
        if (stamp_.valid()) Liveness::remove(this);
        stamp_.invalidate();
    }
    /// The token's stamp, made when it is first asked for.
    IdStamp stamp() const;

private:
    mutable IdStamp stamp_;
};

/// Taken before a call out, tested after it: when `alive()` is false, nothing of the object may be touched.
class WAINSCOT_API LifeGuard {
public:
    explicit LifeGuard(LifeToken const& token) : object_(&token), stamp_(token.stamp()) {}
    LifeGuard(void const* object, IdStamp stamp) : object_(object), stamp_(stamp) {}
    bool alive() const;

private:
    void const* object_;
    IdStamp stamp_;
};

} // namespace wainscot
