#pragma once

namespace wainscot {

/// A point or a size; y grows upwards.
template <class T>
struct XY {
    T x{};
    T y{};

    constexpr XY() = default;
    constexpr XY(T xValue, T yValue) : x(xValue), y(yValue) {}

    friend constexpr bool operator==(XY const&, XY const&) = default;
    friend constexpr XY operator+(XY const& a, XY const& b) { return {a.x + b.x, a.y + b.y}; }
    friend constexpr XY operator-(XY const& a, XY const& b) { return {a.x - b.x, a.y - b.y}; }
    constexpr XY& operator+=(XY const& other) { return *this = *this + other; }
    constexpr XY& operator-=(XY const& other) { return *this = *this - other; }
};

} // namespace wainscot
