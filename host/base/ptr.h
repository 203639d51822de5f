#pragma once

#include "host/base/os.h"

#include <cstddef>
#include <functional>
#include <type_traits>
#include <utility>

namespace wainscot::Qv {

/// Shared pointer to a counted object. Refuses, at compile time, objects that belong to the on-screen tree.
template <class T>
class Ptr {
public:
    constexpr Ptr() noexcept = default;
    constexpr Ptr(std::nullptr_t) noexcept {}
    explicit Ptr(T* object) noexcept : object_(object) {
        static_assert(
            !requires { typename T::OwnedByTree; }, "a Glob belongs to its parent, not to a Qv::Ptr");
        OS().addReference(object_);
    }
    Ptr(Ptr const& other) noexcept : Ptr(other.object_, Counted()) {}
    Ptr(Ptr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    template <class U>
    requires std::is_convertible_v<U*, T*> Ptr(Ptr<U> const& other)
    noexcept : Ptr(other.get(), Counted()) {}
    ~Ptr() { OS().releaseReference(object_); }
    Ptr& operator=(Ptr other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }

    void reset() noexcept { *this = Ptr(); }
    T* get() const noexcept { return object_; }
    T* operator->() const noexcept { return object_; }
    T& operator*() const noexcept { return *object_; }
    explicit operator bool() const noexcept { return object_ != nullptr; }
    template <class U>
    Ptr<U> cast() const {
        return Ptr<U>(dynamic_cast<U*>(object_));
    }

    friend bool operator==(Ptr const& a, Ptr const& b) noexcept { return a.object_ == b.object_; }
    friend bool operator==(Ptr const& a, std::nullptr_t) noexcept { return a.object_ == nullptr; }

private:
    struct Counted {};
    Ptr(T* object, Counted) noexcept : object_(object) { OS().addReference(object_); }

    T* object_ = nullptr;
};

/// Makes a counted object in one step.
template <class T, class... Args>
Ptr<T> makePtr(Args&&... args) {
    return Ptr<T>(new T(std::forward<Args>(args)...));
}

} // namespace wainscot::Qv
