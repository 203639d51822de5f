#pragma once

#include "host/base/xy.h"

#include <algorithm>

namespace wainscot::Qv {

/// Tag of boxes whose y axis grows upwards: `y1` is the bottom edge, `y2` the top edge.
struct BottomUpTraits {};

/// A rectangle by its edges: `x1 <= x < x2`, `y1 <= y < y2`. Empty when an edge does not lie before its
/// opposite. A sum beyond the range of the type is set to the end of that range.
template <class T, class Traits>
struct Box {
    T x1{};
    T y1{};
    T x2{};
    T y2{};

    constexpr Box() = default;
    constexpr Box(T left, T bottom, T right, T top) : x1(left), y1(bottom), x2(right), y2(top) {}
    constexpr Box(XY<T> const& corner, XY<T> const& opposite)
        : x1(std::min(corner.x, opposite.x)), y1(std::min(corner.y, opposite.y)),
          x2(std::max(corner.x, opposite.x)), y2(std::max(corner.y, opposite.y)) {}

    /// From the lower-left corner and a size.
    static constexpr Box sized(XY<T> const& corner, XY<T> const& size) {
        XY<T> const opposite = corner + size;
        return {corner.x, corner.y, opposite.x, opposite.y};
    }

    constexpr T width() const { return Coordinate::difference(x2, x1); }
    constexpr T height() const { return Coordinate::difference(y2, y1); }
    constexpr XY<T> bottomLeft() const { return {x1, y1}; }
    constexpr XY<T> topRight() const { return {x2, y2}; }
    constexpr XY<T> size() const { return {width(), height()}; }
    constexpr XY<T> centre() const { return bottomLeft() + XY<T>(width() / 2, height() / 2); }
    constexpr bool isEmpty() const { return x1 >= x2 || y1 >= y2; }
    constexpr bool contains(XY<T> const& p) const { return p.x >= x1 && p.x < x2 && p.y >= y1 && p.y < y2; }
    constexpr bool contains(Box const& b) const {
        return b.x1 >= x1 && b.x2 <= x2 && b.y1 >= y1 && b.y2 <= y2;
    }
    constexpr bool intersects(Box const& b) const { return !intersection(b).isEmpty(); }
    constexpr Box intersection(Box const& b) const {
        return {std::max(x1, b.x1), std::max(y1, b.y1), std::min(x2, b.x2), std::min(y2, b.y2)};
    }
    /// The smallest box round both; an empty box adds nothing.
    constexpr Box unitedWith(Box const& b) const {
        if (isEmpty()) return b;
        if (b.isEmpty()) return *this;
        return {std::min(x1, b.x1), std::min(y1, b.y1), std::max(x2, b.x2), std::max(y2, b.y2)};
    }
    constexpr Box translated(XY<T> const& by) const {
        XY<T> const low = bottomLeft() + by;
        XY<T> const high = topRight() + by;
        return {low.x, low.y, high.x, high.y};
    }
    /// Shrunk by `by` on every side; negative grows.
    constexpr Box inset(T by) const {
        XY<T> const low = bottomLeft() + XY<T>(by, by);
        XY<T> const high = topRight() - XY<T>(by, by);
        return {low.x, low.y, high.x, high.y};
    }

    friend constexpr bool operator==(Box const&, Box const&) = default;
};

} // namespace wainscot::Qv

namespace wainscot {

/// The box of everything on the screen: logical integer pixels, y upwards.
using IntBox = Qv::Box<int, Qv::BottomUpTraits>;

/// The box between two corners, in any order.
constexpr IntBox makeBox(XY<int> const& corner, XY<int> const& opposite) {
    return {corner, opposite};
}
/// Width and height; 0 where the box is empty.
constexpr XY<int> getDimensions(IntBox const& box) {
    return {std::max(box.width(), 0), std::max(box.height(), 0)};
}
/// Whether the point's pixel lies in the box.
constexpr bool point_in_box(XY<int> const& point, IntBox const& box) {
    return box.contains(point);
}

} // namespace wainscot
