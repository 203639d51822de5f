#include "foundation/tab_order_geometry.h"

#include "foundation/glob_tab_stop.h"
#include "host/base/diagnostics.h"
#include "host/objects/glob.h"

#include <algorithm>
#include <cstdio>

namespace wainscot {

namespace {

struct Placed {
    unsigned int index;
    IntBox box;
};

bool sharesHalf(IntBox const& row, IntBox const& box) {
    int const shared = std::min(row.y2, box.y2) - std::max(row.y1, box.y1);
    int const smaller = std::max(1, std::min(row.height(), box.height()));
    return shared * 2 >= smaller;
}

/// Sorts one row; controls with the same x are read downwards.
void sortRow(std::vector<Placed>::iterator first, std::vector<Placed>::iterator last,
             eReadingDirection direction) {
    std::stable_sort(first, last, [direction](Placed const& a, Placed const& b) {
        return direction == eReadingDirection::leftToRight ? a.box.x1 < b.box.x1 : a.box.x2 > b.box.x2;
    });
}

void sortByReading(std::vector<Placed>& stops, eReadingDirection direction) {
    std::stable_sort(stops.begin(), stops.end(),
                     [](Placed const& a, Placed const& b) { return a.box.y2 > b.box.y2; });
    for (auto first = stops.begin(); first != stops.end();) {
        IntBox row = first->box;
        auto last = first + 1;
        for (; last != stops.end() && sharesHalf(row, last->box); ++last) {
            row.y1 = std::max(row.y1, last->box.y1);
            row.y2 = std::min(row.y2, last->box.y2);
        }
        sortRow(first, last, direction);
        first = last;
    }
}

std::vector<unsigned int> sortedStops(TabOrderManager const& manager, eReadingDirection direction,
                                      bool onlyShown) {
    std::vector<Placed> stops;
    for (unsigned int index = 0; index < manager.numTabStops(); ++index) {
        Glob const* const widget = TabOrderGeometry::widgetOf(manager.getTabStopObject(index));
        if (widget && (!onlyShown || !widget->isHidden())) stops.push_back({index, widget->screenBox()});
    }
    sortByReading(stops, direction);
    std::vector<unsigned int> indices;
    for (Placed const& stop : stops) indices.push_back(stop.index);
    return indices;
}

/// For each number whether it is part of one longest rising subsequence.
std::vector<bool> longestRising(std::vector<std::size_t> const& numbers) {
    constexpr std::size_t nobody = static_cast<std::size_t>(-1);
    std::vector<std::size_t> tails;
    std::vector<std::size_t> before(numbers.size(), nobody);
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        auto const place =
            std::lower_bound(tails.begin(), tails.end(), numbers[i],
                             [&](std::size_t tail, std::size_t number) { return numbers[tail] < number; });
        if (place != tails.begin()) before[i] = *(place - 1);
        if (place == tails.end())
            tails.push_back(i);
        else
            *place = i;
    }
    std::vector<bool> rising(numbers.size());
    for (std::size_t i = tails.empty() ? nobody : tails.back(); i != nobody; i = before[i]) rising[i] = true;
    return rising;
}

} // namespace

Glob* TabOrderGeometry::widgetOf(TabOrderable* stop) {
    if (auto* const companion = dynamic_cast<GlobTabStop*>(stop)) return companion->widget();
    return dynamic_cast<Glob*>(stop);
}

std::vector<unsigned int> TabOrderGeometry::readingOrder(TabOrderManager const& manager,
                                                         eReadingDirection direction) {
    return sortedStops(manager, direction, false);
}

void TabOrderGeometry::arrange(TabOrderManager& manager, eReadingDirection direction) {
    manager.renumberTabStops(readingOrder(manager, direction));
}

std::vector<unsigned int> TabOrderGeometry::misplacedStops(TabOrderManager const& manager,
                                                           eReadingDirection direction) {
    std::vector<unsigned int> const reading = sortedStops(manager, direction, true);
    std::vector<std::size_t> ranks(reading.size());
    for (std::size_t i = 0; i < ranks.size(); ++i) ranks[i] = i;
    std::sort(ranks.begin(), ranks.end(), [&](std::size_t a, std::size_t b) {
        auto const orderOf = [&](std::size_t rank) {
            return std::pair(manager.getTabStopTabOrder(reading[rank]), reading[rank]);
        };
        return orderOf(a) < orderOf(b);
    });
    std::vector<bool> const rightlyPlaced = longestRising(ranks);
    std::vector<unsigned int> misplaced;
    for (std::size_t i = 0; i < ranks.size(); ++i)
        if (!rightlyPlaced[i]) misplaced.push_back(reading[ranks[i]]);
    return misplaced;
}

std::size_t TabOrderGeometry::report(TabOrderManager const& manager, eReadingDirection direction) {
    std::vector<unsigned int> const misplaced = misplacedStops(manager, direction);
    for (unsigned int const index : misplaced) {
        Glob const* const widget = widgetOf(manager.getTabStopObject(index));
        IntBox const box = widget->screenBox();
        char detail[160];
        std::snprintf(detail, sizeof detail, "stop %u \"%.60s\" at %d,%d has order %u", index,
                      widget->name().c_str(), box.x1, box.y1, manager.getTabStopTabOrder(index));
        Diagnostics::count("tab order disagrees with the screen", detail);
    }
    return misplaced.size();
}

} // namespace wainscot
