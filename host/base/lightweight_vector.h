#pragma once

#include <memory>
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
    LightweightVector(std::initializer_list<T> items) : items_(std::make_shared<std::vector<T>>(items)) {}
    explicit LightweightVector(std::vector<T> items)
        : items_(std::make_shared<std::vector<T>>(std::move(items))) {}

    std::size_t size() const { return items_ ? items_->size() : 0; }
    bool empty() const { return size() == 0; }
    T const& operator[](std::size_t index) const { return (*items_)[index]; }
    T const* begin() const { return items_ ? items_->data() : nullptr; }
    T const* end() const { return begin() + size(); }
    T const& back() const { return items_->back(); }

    std::vector<T>& edit() {
        if (!items_)
            items_ = std::make_shared<std::vector<T>>();
        else if (items_.use_count() > 1)
            items_ = std::make_shared<std::vector<T>>(*items_);
        return *items_;
    }
    void push_back(T item) { edit().push_back(std::move(item)); }
    void clear() { items_.reset(); }
    bool sharesElementsWith(LightweightVector const& other) const { return items_ == other.items_; }

    friend bool operator==(LightweightVector const& a, LightweightVector const& b) {
        return a.items_ == b.items_ || std::equal(a.begin(), a.end(), b.begin(), b.end());
    }

private:
    std::shared_ptr<std::vector<T>> items_;
};

} // namespace wainscot
