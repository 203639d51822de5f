#include "tables/model/row_ranges.h"

#include <algorithm>
#include <utility>

namespace wainscot {

namespace {

using Ranges = std::vector<RowRange>;

RowRange possible(RowRange range) {
    return {range.first, std::min(range.end, maxRows)};
}

/// The rows for which `keep(isInA, isInB)` holds, found in one walk over all ends of ranges.
template <class Keep>
Ranges combined(std::span<RowRange const> a, std::span<RowRange const> b, Keep keep) {
    auto const edge = [](std::span<RowRange const> ranges, std::size_t index) {
        if (index >= 2 * ranges.size()) return maxRows + 1;
        return index % 2 == 0 ? ranges[index / 2].first : ranges[index / 2].end;
    };
    Ranges result;
    std::size_t edgeOfA = 0;
    std::size_t edgeOfB = 0;
    bool isKept = false;
    while (edgeOfA < 2 * a.size() || edgeOfB < 2 * b.size()) {
        unsigned int const row = std::min(edge(a, edgeOfA), edge(b, edgeOfB));
        if (edge(a, edgeOfA) == row) ++edgeOfA;
        if (edge(b, edgeOfB) == row) ++edgeOfB;
        if (keep(edgeOfA % 2 == 1, edgeOfB % 2 == 1) == isKept) continue;
        isKept = !isKept;
        if (isKept)
            result.push_back({row, row});
        else
            result.back().end = row;
    }
    return result;
}

} // namespace

RowRange rowsFrom(unsigned int first, unsigned int count) {
    if (first >= maxRows) return {maxRows, maxRows};
    return {first, first + std::min(count, maxRows - first)};
}

void RowRanges::clear() {
    ranges_.clear();
    count_ = 0;
}

void RowRanges::take(Ranges ranges) {
    ranges_ = std::move(ranges);
    count_ = 0;
    for (RowRange const range : ranges_) count_ += range.count();
}

void RowRanges::assign(std::span<RowRange const> ranges) {
    Ranges sorted(ranges.begin(), ranges.end());
    auto const isBefore = [](RowRange a, RowRange b) { return a.first < b.first; };
    std::sort(sorted.begin(), sorted.end(), isBefore);
    RowRanges result;
    for (RowRange const range : sorted) result.add(range);
    *this = std::move(result);
}

std::size_t RowRanges::indexBehind(unsigned int row) const {
    auto const endsBehind = [](unsigned int wanted, RowRange range) { return wanted < range.end; };
    auto const found = std::upper_bound(ranges_.begin(), ranges_.end(), row, endsBehind);
    return static_cast<std::size_t>(found - ranges_.begin());
}

void RowRanges::replace(std::size_t low, std::size_t high, std::span<RowRange const> parts) {
    for (std::size_t i = low; i < high; ++i) count_ -= ranges_[i].count();
    for (RowRange const part : parts) count_ += part.count();
    std::size_t const inPlace = std::min(high - low, parts.size());
    auto const at = [this](std::size_t i) { return ranges_.begin() + static_cast<std::ptrdiff_t>(i); };
    std::copy_n(parts.begin(), inPlace, at(low));
    if (inPlace < parts.size())
        ranges_.insert(at(low + inPlace), parts.begin() + static_cast<std::ptrdiff_t>(inPlace), parts.end());
    else
        ranges_.erase(at(low + inPlace), at(high));
}

void RowRanges::add(RowRange range) {
    range = possible(range);
    if (range.empty()) return;
    // A range that only touches the new one becomes part of it.
    std::size_t const low = range.first == 0 ? 0 : indexBehind(range.first - 1);
    std::size_t high = indexBehind(range.end);
    if (high < ranges_.size() && ranges_[high].first <= range.end) ++high;
    if (low < high) {
        range.first = std::min(range.first, ranges_[low].first);
        range.end = std::max(range.end, ranges_[high - 1].end);
    }
    replace(low, high, {&range, 1});
}

void RowRanges::remove(RowRange range) {
    range = possible(range);
    if (range.empty()) return;
    std::size_t const low = indexBehind(range.first);
    std::size_t high = indexBehind(range.end - 1);
    if (high < ranges_.size() && ranges_[high].first < range.end) ++high;
    if (low == high) return;
    RowRange const before{ranges_[low].first, range.first};
    RowRange const behind{range.end, ranges_[high - 1].end};
    RowRange parts[2];
    std::size_t numParts = 0;
    if (!before.empty()) parts[numParts++] = before;
    if (!behind.empty()) parts[numParts++] = behind;
    replace(low, high, {parts, numParts});
}

void RowRanges::toggle(RowRange range) {
    range = possible(range);
    if (range.empty()) return;
    std::size_t const low = range.first == 0 ? 0 : indexBehind(range.first - 1);
    std::size_t high = indexBehind(range.end);
    if (high < ranges_.size() && ranges_[high].first <= range.end) ++high;
    auto const isInOne = [](bool inA, bool inB) { return inA != inB; };
    replace(low, high, combined(ranges().subspan(low, high - low), {&range, 1}, isInOne));
}

void RowRanges::add(RowRanges const& other) {
    take(combined(ranges_, other.ranges_, [](bool mine, bool others) { return mine || others; }));
}

void RowRanges::remove(RowRanges const& other) {
    take(combined(ranges_, other.ranges_, [](bool mine, bool others) { return mine && !others; }));
}

bool RowRanges::contains(unsigned int row) const {
    std::size_t const index = indexBehind(row);
    return index < ranges_.size() && ranges_[index].contains(row);
}

std::optional<unsigned int> RowRanges::first() const {
    return firstFrom(0);
}

std::optional<unsigned int> RowRanges::last() const {
    if (empty()) return std::nullopt;
    return ranges_.back().end - 1;
}

std::optional<unsigned int> RowRanges::firstFrom(unsigned int row) const {
    std::size_t const index = indexBehind(row);
    if (index == ranges_.size()) return std::nullopt;
    return std::max(row, ranges_[index].first);
}

void RowRanges::insertRows(unsigned int first, unsigned int count) {
    count = rowsFrom(first, count).count();
    if (count == 0) return;
    std::size_t index = indexBehind(first);
    if (index == ranges_.size()) return;
    if (RowRange const split = ranges_[index]; split.first < first) {
        RowRange const parts[] = {{split.first, first}, {first, split.end}};
        replace(index, index + 1, parts);
        ++index;
    }
    // Compared before it is added: the sum of a row and a count has no room in 32 bits with a sign.
    auto const moved = [count](unsigned int row) { return row < maxRows - count ? row + count : maxRows; };
    for (std::size_t i = index; i < ranges_.size(); ++i) {
        RowRange const from = ranges_[i];
        ranges_[i] = {moved(from.first), moved(from.end)};
        count_ -= from.count() - ranges_[i].count();
    }
    while (!ranges_.empty() && ranges_.back().empty()) ranges_.pop_back();
}

void RowRanges::removeRows(unsigned int first, unsigned int count) {
    RowRange const gone = rowsFrom(first, count);
    if (gone.empty()) return;
    remove(gone);
    std::size_t const index = indexBehind(first);
    for (std::size_t i = index; i < ranges_.size(); ++i)
        ranges_[i] = {ranges_[i].first - gone.count(), ranges_[i].end - gone.count()};
    if (index == 0 || index == ranges_.size() || ranges_[index - 1].end < ranges_[index].first) return;
    RowRange const joined{ranges_[index - 1].first, ranges_[index].end};
    replace(index - 1, index + 1, {&joined, 1});
}

void RowRanges::moveRows(unsigned int first, unsigned int count, unsigned int target) {
    RowRange const block = rowsFrom(first, count);
    if (block.empty()) return;
    target = std::min(target, maxRows - block.count());
    RowRanges moving;
    for (std::size_t i = indexBehind(block.first); i < ranges_.size() && ranges_[i].first < block.end; ++i) {
        unsigned int const from = std::max(ranges_[i].first, block.first) - block.first;
        unsigned int const to = std::min(ranges_[i].end, block.end) - block.first;
        moving.add(RowRange{target + from, target + to});
    }
    removeRows(block.first, block.count());
    insertRows(target, block.count());
    add(moving);
}

} // namespace wainscot
