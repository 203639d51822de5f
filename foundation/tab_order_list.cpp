#include "foundation/tab_order_list_p.h"

#include <algorithm>

namespace wainscot {

namespace {

/// A push costs about one step for each chunk, and one for each stop of one chunk.
constexpr std::size_t chunkCapacity = 512;

using Stop = TabOrderManager::ClientInfo;

/// Whether a stop comes before all stops of `order` from `slot` on.
bool isBefore(Stop const& stop, unsigned int order, std::size_t slot) {
    unsigned int const own = stop.tabOrder();
    return own != order ? own < order : stop.slot < slot;
}

} // namespace

bool TabOrderChunk::isRun() {
    if (shape == Shape::unknown) {
        shape = Shape::run;
        for (std::size_t i = 1; i < stops.size(); ++i)
            if (stops[i]->storedOrder != stops[i - 1]->storedOrder + 1) shape = Shape::broken;
    }
    return shape == Shape::run;
}

TabOrderList::Stop* TabOrderList::stopAt(Place place) const {
    return atEnd(place) ? nullptr : chunks_[place.chunk]->stops[place.offset];
}

TabOrderList::Place TabOrderList::next(Place place) const {
    if (++place.offset < chunks_[place.chunk]->stops.size()) return place;
    return {place.chunk + 1, 0};
}

bool TabOrderList::stepBack(Place& place) const {
    if (place.offset > 0) return --place.offset, true;
    if (place.chunk == 0) return false;
    --place.chunk;
    place.offset = chunks_[place.chunk]->stops.size() - 1;
    return true;
}

TabOrderList::Place TabOrderList::lowerBound(unsigned int order, std::size_t slot) const {
    auto const chunk = std::partition_point(chunks_.begin(), chunks_.end(), [&](auto const& candidate) {
        return isBefore(*candidate->stops.back(), order, slot);
    });
    Place const place{static_cast<std::size_t>(chunk - chunks_.begin()), 0};
    if (atEnd(place)) return place;
    auto const& stops = (*chunk)->stops;
    auto const stop = std::partition_point(
        stops.begin(), stops.end(), [&](Stop const* candidate) { return isBefore(*candidate, order, slot); });
    return {place.chunk, static_cast<std::size_t>(stop - stops.begin())};
}

std::optional<unsigned int> TabOrderList::largestBelow(unsigned int order) const {
    Place place = lowerBound(order);
    if (!stepBack(place)) return std::nullopt;
    return orderAt(place);
}

void TabOrderList::insert(Stop& stop, unsigned int order) {
    put(roomFor(order, stop.slot), stop, order);
    ++version_;
}

TabOrderList::Place TabOrderList::roomFor(unsigned int order, std::size_t slot) {
    Place place = lowerBound(order, slot);
    if (atEnd(place)) {
        // A stop at the end fills the last chunk, or begins a new one.
        if (chunks_.empty() || chunks_.back()->stops.size() >= chunkCapacity) addChunk(chunks_.size());
        return {chunks_.size() - 1, chunks_.back()->stops.size()};
    }
    if (chunks_[place.chunk]->stops.size() < chunkCapacity) return place;
    split(place.chunk);
    return lowerBound(order, slot);
}

void TabOrderList::addChunk(std::size_t place) {
    chunks_.insert(chunks_.begin() + static_cast<std::ptrdiff_t>(place), std::make_unique<TabOrderChunk>());
}

void TabOrderList::split(std::size_t chunk) {
    addChunk(chunk + 1);
    TabOrderChunk& lower = *chunks_[chunk];
    TabOrderChunk& upper = *chunks_[chunk + 1];
    auto const middle = lower.stops.begin() + static_cast<std::ptrdiff_t>(lower.stops.size() / 2);
    upper.stops.assign(middle, lower.stops.end());
    lower.stops.erase(middle, lower.stops.end());
    upper.shift = lower.shift;
    lower.shape = TabOrderChunk::Shape::unknown;
    for (Stop* stop : upper.stops) stop->chunk = &upper;
}

void TabOrderList::put(Place place, Stop& stop, unsigned int order) {
    TabOrderChunk& chunk = *chunks_[place.chunk];
    stop.chunk = &chunk;
    stop.storedOrder = order - chunk.shift;
    chunk.stops.insert(chunk.stops.begin() + static_cast<std::ptrdiff_t>(place.offset), &stop);
    chunk.shape = TabOrderChunk::Shape::unknown;
}

void TabOrderList::erase(Stop& stop) {
    Place const place = lowerBound(stop.tabOrder(), stop.slot);
    TabOrderChunk& chunk = *chunks_[place.chunk];
    chunk.stops.erase(chunk.stops.begin() + static_cast<std::ptrdiff_t>(place.offset));
    chunk.shape = TabOrderChunk::Shape::unknown;
    stop.chunk = nullptr;
    if (chunk.stops.empty()) chunks_.erase(chunks_.begin() + static_cast<std::ptrdiff_t>(place.chunk));
    ++version_;
}

void TabOrderList::clear() {
    chunks_.clear();
    ++version_;
}

bool TabOrderList::holds(unsigned int order) const {
    Place const place = lowerBound(order);
    return !atEnd(place) && orderAt(place) == order;
}

bool TabOrderList::hasOneHolder(unsigned int order) const {
    Place const second = next(lowerBound(order));
    return atEnd(second) || orderAt(second) != order;
}

unsigned int TabOrderList::endOfRun(Place place, unsigned int highest) const {
    unsigned int last = orderAt(place);
    while (!atEnd(place)) {
        TabOrderChunk& chunk = *chunks_[place.chunk];
        unsigned int const order = orderAt(place);
        if (order > last + 1 || order > highest) break;
        bool const whole = place.offset == 0 && chunk.isRun() && chunk.lastOrder() <= highest;
        last = whole ? chunk.lastOrder() : order;
        // The other stops of the order do not belong to the run.
        place = whole ? Place{place.chunk + 1, 0} : lowerBound(order + 1);
    }
    return last;
}

// From the end of the run to its beginning, so that each stop moves to a free order.
std::optional<TabOrderList::Stop*> TabOrderList::push(unsigned int order, unsigned int highest) {
    if (!holds(order)) return nullptr;
    unsigned int const end = endOfRun(lowerBound(order), highest);
    if (end + 1 >= TabOrderManager::appendTabStop) return std::nullopt;
    Stop* const last = stopAt(lowerBound(end));
    bool isFree = !holds(end + 1);
    for (unsigned int next = end + 1; next > order;) {
        unsigned int const holder = next - 1;
        if (isFree && hasOneHolder(holder)) {
            next = shiftSingles(holder, order);
        } else {
            moveFirstHolder(holder);
            next = holder;
            isFree = !holds(holder);
        }
    }
    ++version_;
    return last;
}

void TabOrderList::moveFirstHolder(unsigned int order) {
    Stop& stop = *stopAt(lowerBound(order));
    erase(stop);
    insert(stop, order + 1);
}

unsigned int TabOrderList::shiftSingles(unsigned int order, unsigned int lowest) {
    Place place = lowerBound(order);
    for (;;) {
        TabOrderChunk& chunk = *chunks_[place.chunk];
        if (isWholeRun(place, lowest)) {
            order = chunk.firstOrder();
            ++chunk.shift;
            place.offset = 0;
        } else {
            ++chunk.stops[place.offset]->storedOrder;
            chunk.shape = TabOrderChunk::Shape::unknown;
        }
        if (order == lowest || !stepBack(place)) return order;
        Place before = place;
        if (stepBack(before) && orderAt(before) == orderAt(place)) return order;
        --order;
    }
}

bool TabOrderList::isWholeRun(Place lastOfChunk, unsigned int lowest) const {
    TabOrderChunk& chunk = *chunks_[lastOfChunk.chunk];
    if (lastOfChunk.offset + 1 != chunk.stops.size() || !chunk.isRun() || chunk.firstOrder() < lowest)
        return false;
    return lastOfChunk.chunk == 0 || chunks_[lastOfChunk.chunk - 1]->lastOrder() != chunk.firstOrder();
}

} // namespace wainscot
