#pragma once

#include <concepts>
#include <limits>

namespace wainscot {

/// Sums and differences of coordinates. A result beyond the range of the integer is set to the end of that
/// range, so that it never wraps round.
namespace Coordinate {

template <class T>
constexpr T sum(T a, T b) {
    if constexpr (std::integral<T>) {
        T result{};
        if (!__builtin_add_overflow(a, b, &result)) return result;
        return b > 0 ? std::numeric_limits<T>::max() : std::numeric_limits<T>::min();
    } else {
        return a + b;
    }
}

template <class T>
constexpr T difference(T a, T b) {
    if constexpr (std::integral<T>) {
        T result{};
        if (!__builtin_sub_overflow(a, b, &result)) return result;
        return b < 0 ? std::numeric_limits<T>::max() : std::numeric_limits<T>::min();
    } else {
        return a - b;
    }
}

} // namespace Coordinate

/// A point or a size; y grows upwards.
template <class T>
struct XY {
    T x{};
    T y{};

    constexpr XY() = default;
    constexpr XY(T xValue, T yValue) : x(xValue), y(yValue) {}

    friend constexpr bool operator==(XY const&, XY const&) = default;
    friend constexpr XY operator+(XY const& a, XY const& b) {
        return {Coordinate::sum(a.x, b.x), Coordinate::sum(a.y, b.y)};
    }
    friend constexpr XY operator-(XY const& a, XY const& b) {
        return {Coordinate::difference(a.x, b.x), Coordinate::difference(a.y, b.y)};
    }
    constexpr XY& operator+=(XY const& other) { return *this = *this + other; }
    constexpr XY& operator-=(XY const& other) { return *this = *this - other; }
};

} // namespace wainscot
