#include "foundation/tab_stop_sequence_p.h"

#include <bit>

namespace wainscot {

namespace {

constexpr std::size_t lowestBit(std::size_t number) {
    return number & (~number + 1);
}

} // namespace

TabStopSequence::Stop* TabStopSequence::at(std::size_t index) const {
    if (index >= size()) return nullptr;
    return slots_[holes_ ? slotOf(index) : index].get();
}

void TabStopSequence::append(Qv::Ptr<Stop> stop) {
    if (holes_ * 2 > slots_.size()) closeHoles();
    stop->slot = slots_.size();
    slots_.push_back(std::move(stop));
    if (counts_.empty()) return;
    std::size_t const node = slots_.size();
    std::size_t count = 1;
    for (std::size_t child = 1; child < lowestBit(node); child *= 2) count += counts_[node - child];
    counts_.push_back(count);
}

Qv::Ptr<TabStopSequence::Stop> TabStopSequence::remove(Stop& stop) {
    if (counts_.empty()) buildCounts();
    for (std::size_t node = stop.slot + 1; node < counts_.size(); node += lowestBit(node)) --counts_[node];
    ++holes_;
    Qv::Ptr<Stop> const removed = std::move(slots_[stop.slot]);
    if (size() == 0) closeHoles();
    return removed;
}

std::size_t TabStopSequence::countBefore(std::size_t slot) const {
    std::size_t count = 0;
    for (std::size_t node = slot; node > 0; node -= lowestBit(node)) count += counts_[node];
    return count;
}

std::size_t TabStopSequence::slotOf(std::size_t index) const {
    std::size_t slot = 0;
    std::size_t wanted = index + 1;
    for (std::size_t step = std::bit_floor(slots_.size()); step > 0; step /= 2) {
        if (slot + step >= counts_.size() || counts_[slot + step] >= wanted) continue;
        slot += step;
        wanted -= counts_[slot];
    }
    return slot;
}

void TabStopSequence::buildCounts() {
    counts_.assign(slots_.size() + 1, 0);
    for (std::size_t node = 1; node < counts_.size(); ++node) counts_[node] = lowestBit(node);
}

void TabStopSequence::closeHoles() {
    std::erase(slots_, nullptr);
    for (std::size_t slot = 0; slot < slots_.size(); ++slot) slots_[slot]->slot = slot;
    holes_ = 0;
    counts_.clear();
}

} // namespace wainscot
