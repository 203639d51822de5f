#pragma once

#include "host/base/export.h"

#include <atomic>
#include <cstdint>

namespace wainscot {

/// Root of everything that a `Qv::Ptr` may hold. Counted classes derive from `Qv::InternalRefCount`. For
/// objects with another owner, `addRef` and `release` do nothing.
class WAINSCOT_API iObject {
public:
    virtual ~iObject();
    virtual void addRef() const noexcept = 0;
    virtual void release() const noexcept = 0;

protected:
    iObject() = default;
    iObject(iObject const&) = default;
    iObject& operator=(iObject const&) = default;
};

namespace Qv {

/// The reference count of counted objects: starts at 0, the object is deleted when the last `Qv::Ptr` lets
/// go. A copied object starts with a count of its own.
class WAINSCOT_API InternalRefCount : public virtual iObject {
public:
    ~InternalRefCount() override;
    void addRef() const noexcept final { count_.fetch_add(1, std::memory_order_relaxed); }
    void release() const noexcept final;
    /// 1 means that the caller is the only owner and may change the object: all that other owners did with it
    /// has happened before.
    std::uint32_t refCount() const noexcept { return count_.load(std::memory_order_acquire); }

protected:
    InternalRefCount() = default;
    InternalRefCount(InternalRefCount const&) : iObject() {}
    InternalRefCount& operator=(InternalRefCount const&) { return *this; }

private:
    mutable std::atomic<std::uint32_t> count_{0};
};

} // namespace Qv
} // namespace wainscot
