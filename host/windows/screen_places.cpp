#include "host/windows/screen_places_p.h"

#include <cstdint>

namespace wainscot::ScreenPlaces {

namespace {

std::int64_t area(IntBox const& box) {
    return box.isEmpty() ? 0 : std::int64_t(box.width()) * box.height();
}

std::int64_t gap(int low1, int high1, int low2, int high2) {
    return std::max<std::int64_t>({std::int64_t(low1) - high2, std::int64_t(low2) - high1, 0});
}

/// The square of the distance between two boxes, which may be too large for an integer.
double distance(IntBox const& a, IntBox const& b) {
    auto const x = static_cast<double>(gap(a.x1, a.x2, b.x1, b.x2));
    auto const y = static_cast<double>(gap(a.y1, a.y2, b.y1, b.y2));
    return x * x + y * y;
}

/// The low edge of a stretch moved into [from, to). A stretch that does not fit begins, or ends, there.
int movedInto(int low, int length, int from, int to, bool alignHigh) {
    int const last = Coordinate::difference(to, length);
    if (length > Coordinate::difference(to, from)) return alignHigh ? last : from;
    return std::clamp(low, from, last);
}

int aligned(WidgetAlignment alignment, int low, int high, int length) {
    switch (alignment) {
    case WidgetAlignment::start:
        return low;
    case WidgetAlignment::end:
        return Coordinate::difference(high, length);
    case WidgetAlignment::centre:
        break;
    }
    return static_cast<int>(low + (std::int64_t(high) - low - length) / 2);
}

/// Room on one side of the anchor, less what a pop-up needs there; negative = it does not fit.
std::int64_t spare(IntBox const& monitor, IntBox const& anchor, XY<int> size, WidgetRelativity side,
                   std::int64_t gap) {
    switch (side) {
    case WidgetRelativity::above:
        return monitor.y2 - gap - anchor.y2 - size.y;
    case WidgetRelativity::below:
        return anchor.y1 - gap - monitor.y1 - size.y;
    case WidgetRelativity::leftOf:
        return anchor.x1 - gap - monitor.x1 - size.x;
    case WidgetRelativity::rightOf:
        break;
    }
    return monitor.x2 - gap - anchor.x2 - size.x;
}

} // namespace

IntBox monitorOf(std::vector<IntBox> const& monitors, IntBox const& box) {
    IntBox const wanted = box.isEmpty() ? IntBox::sized(box.bottomLeft(), {1, 1}) : box;
    IntBox best = monitors.front();
    for (IntBox const& monitor : monitors) {
        std::int64_t const seen = area(monitor.intersection(wanted));
        std::int64_t const bestSeen = area(best.intersection(wanted));
        bool const nearer = seen == bestSeen && distance(monitor, wanted) < distance(best, wanted);
        if (seen > bestSeen || nearer) best = monitor;
    }
    return best;
}

IntBox movedOnto(IntBox const& monitor, IntBox const& box) {
    return IntBox::sized({movedInto(box.x1, box.width(), monitor.x1, monitor.x2, false),
                          movedInto(box.y1, box.height(), monitor.y1, monitor.y2, true)},
                         box.size());
}

IntBox beside(IntBox const& anchor, XY<int> size, WidgetRelativity side, int gap, WidgetAlignment alignment) {
    int const alongX = aligned(alignment, anchor.x1, anchor.x2, size.x);
    int const alongY = aligned(alignment, anchor.y1, anchor.y2, size.y);
    switch (side) {
    case WidgetRelativity::above:
        return IntBox::sized({alongX, Coordinate::sum(anchor.y2, gap)}, size);
    case WidgetRelativity::below:
        return IntBox::sized(XY<int>(alongX, anchor.y1) - XY<int>(0, gap) - XY<int>(0, size.y), size);
    case WidgetRelativity::leftOf:
        return IntBox::sized(XY<int>(anchor.x1, alongY) - XY<int>(gap, 0) - XY<int>(size.x, 0), size);
    case WidgetRelativity::rightOf:
        break;
    }
    return IntBox::sized({Coordinate::sum(anchor.x2, gap), alongY}, size);
}

WidgetRelativity opposite(WidgetRelativity side) {
    switch (side) {
    case WidgetRelativity::above:
        return WidgetRelativity::below;
    case WidgetRelativity::below:
        return WidgetRelativity::above;
    case WidgetRelativity::leftOf:
        return WidgetRelativity::rightOf;
    case WidgetRelativity::rightOf:
        break;
    }
    return WidgetRelativity::leftOf;
}

Found besideOn(IntBox const& monitor, IntBox const& anchor, XY<int> size, WidgetRelativity side, int gap,
               WidgetAlignment alignment) {
    std::int64_t const here = spare(monitor, anchor, size, side, gap);
    std::int64_t const there = spare(monitor, anchor, size, opposite(side), gap);
    bool const changes = here < 0 && there > here;
    IntBox const wanted = beside(anchor, size, changes ? opposite(side) : side, gap, alignment);
    return {movedOnto(monitor, wanted), changes};
}

} // namespace wainscot::ScreenPlaces
