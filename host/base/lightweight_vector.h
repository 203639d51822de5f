#pragma once

#include "host/base/ptr.h"

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <utility>
#include <vector>

namespace wainscot {

/// The plain vector of the system.
template <class T>
using Vector = std::vector<T>;

/// Reference-counted vector: copies share their elements until one of them is changed.
/// Reading never copies; `edit()` gives the elements for a change, making an own copy first when they are
/// shared.
template <class T>
class LightweightVector {
public:
    using value_type = T;

    LightweightVector() = default;
    LightweightVector(std::initializer_list<T> items) : shared_(Qv::makePtr<Items>(items)) {}
    explicit LightweightVector(std::vector<T> items) : shared_(Qv::makePtr<Items>(std::move(items))) {}

    std::size_t size() const { return shared_ ? shared_->items.size() : 0; }
    bool empty() const { return size() == 0; }
    T const& operator[](std::size_t index) const { return shared_->items[index]; }
    T const* begin() const { return shared_ ? shared_->items.data() : nullptr; }
    T const* end() const { return begin() + size(); }
    /// The vector must not be empty.
    T const& back() const { return shared_->items.back(); }

    std::vector<T>& edit() {
        if (!shared_)
            shared_ = Qv::makePtr<Items>(std::vector<T>());
        else if (shared_->refCount() > 1)
            shared_ = Qv::makePtr<Items>(shared_->items);
        return shared_->items;
    }
    void push_back(T item) { edit().push_back(std::move(item)); }
    void clear() { shared_.reset(); }
    bool sharesElementsWith(LightweightVector const& other) const { return shared_ == other.shared_; }

    friend bool operator==(LightweightVector const& a, LightweightVector const& b) {
        return a.shared_ == b.shared_ || std::equal(a.begin(), a.end(), b.begin(), b.end());
    }

private:
    struct Items : Qv::InternalRefCount {
        explicit Items(std::vector<T> given) : items(std::move(given)) {}
        std::vector<T> items;
    };

    Qv::Ptr<Items> shared_;
};

} // namespace wainscot
