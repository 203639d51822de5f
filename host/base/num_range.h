#pragma once

#include <algorithm>

namespace wainscot {

/// Says of a `NumRange` that its ends are in order; and that they stay as they are given.
struct Ordered {};
struct Unordered {};

/// A closed range of numbers; the ends are put in order when it is made.
template <class T, class Order = Ordered>
class NumRange {
public:
    constexpr NumRange() = default;
    constexpr NumRange(T a, T b) : low_(std::min(a, b)), high_(std::max(a, b)) {}

    constexpr T low() const { return low_; }
    constexpr T high() const { return high_; }
    constexpr T length() const { return high_ - low_; }
    constexpr bool contains(T value) const { return value >= low_ && value <= high_; }
    /// The value, moved to the nearer end when it lies outside; NaN becomes the low end.
    constexpr T clamp(T value) const { return value > high_ ? high_ : value >= low_ ? value : low_; }

    friend constexpr bool operator==(NumRange const&, NumRange const&) = default;

private:
    T low_{};
    T high_{};
};

/// A range that has a direction: from `start` to `end`, whichever is larger.
template <class T>
class NumRange<T, Unordered> {
public:
    constexpr NumRange() = default;
    constexpr NumRange(T from, T to) : start_(from), end_(to) {}

    constexpr T start() const { return start_; }
    constexpr T end() const { return end_; }
    constexpr T low() const { return std::min(start_, end_); }
    constexpr T high() const { return std::max(start_, end_); }
    constexpr T length() const { return high() - low(); }

    friend constexpr bool operator==(NumRange const&, NumRange const&) = default;

private:
    T start_{};
    T end_{};
};

} // namespace wainscot
