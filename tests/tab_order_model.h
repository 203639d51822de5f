#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace wainscot {

/// The rules of the tab order word for word, with a plain search from the front: the model for comparisons.
/// Controls are numbers.
class TabOrderModel {
public:
    static constexpr std::uint32_t none = 0xFFFFFFFF;
    static constexpr std::uint32_t append = 0xFFFFFFFE;
    static constexpr std::uint32_t limit = 0xFFFFEFFE;

    struct Stop {
        std::uint32_t order;
        int object;
        bool enabled = true;
    };

    explicit TabOrderModel(bool duplicates) : duplicates_(duplicates) {}

    bool add(int object, std::uint32_t order) {
        if (!duplicates_ && firstOf(object) != none) return false;
        if (order == append) order = highest == none ? 0 : highest + 1;
        if (order > limit || !makeWay(order)) return false;
        stops.push_back({order, object});
        auto const index = static_cast<std::uint32_t>(stops.size()) - 1;
        if (lowest == none || order < lowest) lowest = order, lowestIndex = index;
        if (highest == none || order > highest) highest = order, highestIndex = index;
        return true;
    }

    bool setOrder(std::uint32_t index, std::uint32_t order) {
        if (index >= stops.size() || order > limit || !makeWay(order)) return false;
        stops[index].order = order;
        if (index == currentIndex) currentOrder = order;
        return true;
    }
    bool setOrderOf(int object, std::uint32_t order) {
        for (std::uint32_t i = 0; i < stops.size(); ++i)
            if (stops[i].object == object && setOrder(i, order)) return true;
        return false;
    }

    bool removeAll(int object) {
        bool removed = false;
        for (std::uint32_t i = firstOf(object); i != none; i = firstOf(object)) {
            if (currentIndex == i)
                currentIndex = none;
            else if (currentIndex != none && currentIndex > i)
                --currentIndex;
            stops.erase(stops.begin() + i);
            removed = true;
        }
        if (removed && currentIndex < stops.size()) currentOrder = stops[currentIndex].order;
        return removed;
    }
    bool removeAt(std::uint32_t index) {
        if (index >= stops.size()) return false;
        if (currentIndex == index) currentIndex = none;
        stops.erase(stops.begin() + index);
        return true;
    }

    bool focus(std::uint32_t index, bool backward = false) {
        if (index == none) {
            if (currentIndex == none) return true;
            std::uint32_t const old = currentIndex;
            currentIndex = currentOrder = none;
            if (old < stops.size()) log.push_back("loss " + std::to_string(stops[old].object));
            return true;
        }
        if (index >= stops.size() || !qualifies(stops[index])) return false;
        std::uint32_t const old = currentIndex;
        currentOrder = stops[index].order;
        currentIndex = index;
        log.push_back((backward ? "backward " : "forward ") + std::to_string(stops[index].object));
        if (old < stops.size()) log.push_back("loss " + std::to_string(stops[old].object));
        return true;
    }
    bool focusObject(int object) {
        std::uint32_t const index = firstOf(object);
        return index != none && focus(index);
    }

    std::uint32_t increment() {
        std::uint32_t found = none;
        if (currentOrder != none)
            found = nearest([&](std::uint32_t order) { return order > currentOrder; },
                            [&](std::uint32_t order) { return order - currentOrder; });
        if (found == none)
            found = nearest([](std::uint32_t) { return true; }, [](std::uint32_t order) { return order; });
        focus(found);
        return currentIndex;
    }
    std::uint32_t decrement() {
        std::uint32_t found = none;
        if (currentOrder != none)
            found = nearest([&](std::uint32_t order) { return order < currentOrder; },
                            [&](std::uint32_t order) { return currentOrder - order; });
        if (found == none)
            found =
                nearest([](std::uint32_t) { return true; }, [](std::uint32_t order) { return none - order; });
        focus(found, true);
        return currentIndex;
    }
    std::uint32_t refocus() {
        if (currentIndex == none) return increment();
        focus(currentIndex);
        return currentIndex;
    }

    bool isFocus(int object) const { return firstOf(object) != none && firstOf(object) == currentIndex; }

    std::uint32_t firstOf(int object) const {
        for (std::uint32_t i = 0; i < stops.size(); ++i)
            if (stops[i].object == object) return i;
        return none;
    }

    std::vector<Stop> stops;
    std::vector<bool> active;
    std::vector<std::string> log;
    std::uint32_t currentOrder = none, currentIndex = none;
    std::uint32_t lowest = none, lowestIndex = none, highest = none, highestIndex = none;

private:
    bool qualifies(Stop const& stop) const {
        return stop.enabled && active[static_cast<std::size_t>(stop.object)];
    }

    template <class Wanted, class Distance>
    std::uint32_t nearest(Wanted wanted, Distance distance) const {
        std::uint32_t best = none;
        for (std::uint32_t i = 0; i < stops.size(); ++i) {
            if (!qualifies(stops[i]) || !wanted(stops[i].order)) continue;
            if (best == none || distance(stops[i].order) < distance(stops[best].order)) best = i;
        }
        return best;
    }

    bool makeWay(std::uint32_t order) {
        if (stops.empty() || order < lowest || order > highest) return true;
        std::uint32_t holder = 0;
        while (holder < stops.size() && stops[holder].order != order) ++holder;
        if (holder == stops.size()) return true;
        if (order + 1 >= append || !makeWay(order + 1)) return false;
        stops[holder].order = order + 1;
        if (order + 1 > highest) highest = order + 1, highestIndex = holder;
        if (holder == currentIndex) currentOrder = order + 1;
        return true;
    }

    bool duplicates_;
};

} // namespace wainscot
