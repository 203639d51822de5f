#include "host/drawing/region.h"

#include "host/drawing/image.h"
#include "host/drawing/region_p.h"
#include "host/drawing/surface.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace wainscot {
namespace {

/// Rows of a corner are boxes; no corner on a screen is larger.
constexpr int largestRadius = Surface::maxDeviceExtent;

pixman_box32_t asPixmanBox(IntBox const& box) {
    return {box.x1, box.y1, box.x2, box.y2};
}

/// The pixel library takes regions that it only reads by plain pointers.
pixman_region32_t* readable(pixman_region32_t const* region) {
    return const_cast<pixman_region32_t*>(region);
}

Qv::Ptr<iRegion> make(pixman_region32_t const* region) {
    return Qv::Ptr<iRegion>(new Region(region));
}

/// One region of many boxes at once: one by one, each would copy all boxes before it.
Qv::Ptr<iRegion> makeFrom(std::vector<pixman_box32_t> const& boxes) {
    PixelRegion region;
    region.assign(boxes);
    return make(region.get());
}

/// How far a row, `distance` rows from the outer end of a corner, begins inside the box.
int insetOfRow(int distance, int radius) {
    double const fromCentre = radius - distance - 0.5;
    double const half = std::sqrt(std::max(0.0, double(radius) * radius - fromCentre * fromCentre));
    return radius - static_cast<int>(std::lround(half));
}

struct RoundCorners {
    bool topLeft;
    bool topRight;
    bool bottomLeft;
    bool bottomRight;
};

RoundCorners cornersOf(eCurvedRegionType type) {
    switch (type) {
    case eCurvedAll:
        return {true, true, true, true};
    case eCurvedTop:
        return {true, true, false, false};
    case eCurvedBottom:
        return {false, false, true, true};
    case eCurvedLeft:
        return {true, false, true, false};
    case eCurvedRight:
        return {false, true, false, true};
    case eCurvedNone:
        break;
    }
    return {false, false, false, false};
}

} // namespace

iRegion::~iRegion() = default;

Region::Region(pixman_region32_t const* region) {
    pixman_region32_copy(region_.get(), readable(region));
    int count = 0;
    pixman_box32_t const* parts = pixman_region32_rectangles(region_.get(), &count);
    boxes_.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) boxes_.emplace_back(parts[i].x1, parts[i].y1, parts[i].x2, parts[i].y2);
}

IntBox Region::bounds() const {
    pixman_box32_t const* all = pixman_region32_extents(readable(pixels()));
    return {all->x1, all->y1, all->x2, all->y2};
}

bool Region::contains(XY<int> const& place) const {
    return pixman_region32_contains_point(readable(pixels()), place.x, place.y, nullptr) != 0;
}

Qv::Ptr<iRegion> makeCurvedRegion(XY<int> const& size, unsigned int radius, eCurvedRegionType type) {
    std::vector<pixman_box32_t> rows;
    if (size.x < 1 || size.y < 1) return makeFrom(rows);
    int const most = std::min({size.x / 2, size.y / 2, largestRadius});
    int const r = radius > static_cast<unsigned>(most) ? most : static_cast<int>(radius);
    RoundCorners const round = cornersOf(type);
    for (int i = 0; i < r; ++i) {
        int const inset = insetOfRow(i, r);
        rows.push_back({round.bottomLeft ? inset : 0, i, size.x - (round.bottomRight ? inset : 0), i + 1});
        rows.push_back(
            {round.topLeft ? inset : 0, size.y - 1 - i, size.x - (round.topRight ? inset : 0), size.y - i});
    }
    rows.push_back({0, r, size.x, size.y - r});
    return makeFrom(rows);
}

Qv::Ptr<iRegion> region_intersect(Qv::Ptr<iRegion> const& a, Qv::Ptr<iRegion> const& b) {
    if (!a || !b) return a ? a : b;
    PixelRegion both;
    pixman_region32_intersect(both.get(), readable(Region::of(*a).pixels()),
                              readable(Region::of(*b).pixels()));
    return make(both.get());
}

bool region_eq(Qv::Ptr<iRegion> const& a, Qv::Ptr<iRegion> const& b) {
    if (!a || !b) return !a && !b;
    return pixman_region32_equal(readable(Region::of(*a).pixels()), readable(Region::of(*b).pixels())) != 0;
}

namespace {

/// The effect of several steps on any region: they take an area away, then add an area.
struct Change {
    PixelRegion removed;
    PixelRegion added;

    /// Appends the steps of `next`.
    void follow(Change& next) {
        pixman_region32_union(removed.get(), removed.get(), next.removed.get());
        pixman_region32_subtract(added.get(), added.get(), next.removed.get());
        pixman_region32_union(added.get(), added.get(), next.added.get());
    }
};

} // namespace

namespace Glib {

RegionBuilder& RegionBuilder::add(IntBox const& box) {
    if (!box.isEmpty()) steps_.push_back({box, true});
    return *this;
}

RegionBuilder& RegionBuilder::subtract(IntBox const& box) {
    if (!box.isEmpty()) steps_.push_back({box, false});
    return *this;
}

Qv::Ptr<iRegion> RegionBuilder::build() const {
    std::vector<std::unique_ptr<Change>> changes;
    for (std::size_t i = 0; i < steps_.size();) {
        // Neighbouring steps of one kind are made one region first, which sorts them at once.
        std::vector<pixman_box32_t> boxes;
        bool const adds = steps_[i].adds;
        for (; i < steps_.size() && steps_[i].adds == adds; ++i) boxes.push_back(asPixmanBox(steps_[i].box));
        changes.push_back(std::make_unique<Change>());
        (adds ? changes.back()->added : changes.back()->removed).assign(boxes);
    }
    // Neighbours are joined two and two, so that no box is copied more often than the number of rounds.
    for (; changes.size() > 1; changes.resize((changes.size() + 1) / 2))
        for (std::size_t i = 0; i < changes.size(); i += 2) {
            if (i + 1 < changes.size()) changes[i]->follow(*changes[i + 1]);
            std::swap(changes[i / 2], changes[i]);
        }
    return changes.empty() ? makeFrom({}) : make(changes.front()->added.get());
}

} // namespace Glib

Qv::Ptr<iRegion> glib_buildRegionFromImage(Qv::Ptr<Glib::Image> const& image) {
    if (!image) return {};
    std::vector<pixman_box32_t> runs;
    auto const isSolid = [&](int x, int y) { return image->pixelAt({x, y}) >> 31 != 0; };
    for (int y = 0; y < image->size().y; ++y) {
        for (int x = 0; x < image->size().x; ++x) {
            if (!isSolid(x, y)) continue;
            int const start = x;
            while (x < image->size().x && isSolid(x, y)) ++x;
            runs.push_back({start, y, x, y + 1});
        }
    }
    return makeFrom(runs);
}

} // namespace wainscot
