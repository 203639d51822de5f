#include "host/windows/diagonal_way_p.h"

#include <array>

namespace wainscot {

namespace {

long long gap(int place, int low, int high) {
    return place < low ? low - place : place >= high ? static_cast<long long>(place) - high + 1 : 0;
}

/// The square of the way to the nearest pixel of the box.
long long distance(XY<int> place, IntBox const& box) {
    long long const x = gap(place.x, box.x1, box.x2);
    long long const y = gap(place.y, box.y1, box.y2);
    return x * x + y * y;
}

/// The ends of the edge that faces `place`.
std::array<XY<int>, 2> nearEdge(XY<int> place, IntBox const& box) {
    bool const isBeside = place.x < box.x1 || place.x >= box.x2;
    if (isBeside) {
        int const x = place.x < box.x1 ? box.x1 : box.x2;
        return {{{x, box.y1}, {x, box.y2}}};
    }
    int const y = place.y < box.y1 ? box.y1 : box.y2;
    return {{{box.x1, y}, {box.x2, y}}};
}

/// On which side of the line from `a` to `b` a place lies.
long long side(XY<int> a, XY<int> b, XY<int> place) {
    return static_cast<long long>(b.x - a.x) * (place.y - a.y) -
           static_cast<long long>(b.y - a.y) * (place.x - a.x);
}

bool liesInTriangle(XY<int> place, XY<int> a, XY<int> b, XY<int> c) {
    long long const first = side(a, b, place);
    long long const second = side(b, c, place);
    long long const third = side(c, a, place);
    bool const anyRight = first < 0 || second < 0 || third < 0;
    bool const anyLeft = first > 0 || second > 0 || third > 0;
    return !(anyRight && anyLeft);
}

} // namespace

bool DiagonalWay::holdsBack(XY<int> from, XY<int> place, IntBox const& target, double now) {
    if (!began_) lastDistance_ = distance(from, target);
    double const began = began_.value_or(now);
    auto const [edgeStart, edgeEnd] = nearEdge(from, target);
    long long const left = distance(place, target);
    bool const comesNearer = left > 0 && left < lastDistance_;
    if (!comesNearer || now - began >= longest || !liesInTriangle(place, from, edgeStart, edgeEnd)) {
        end();
        return false;
    }
    began_ = began;
    lastDistance_ = left;
    return true;
}

std::optional<double> DiagonalWay::deadline() const {
    if (!began_) return {};
    return *began_ + longest;
}

} // namespace wainscot
