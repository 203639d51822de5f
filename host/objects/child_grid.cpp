#include "host/objects/child_grid_p.h"

#include <algorithm>
#include <cmath>

namespace wainscot {

namespace {

constexpr int maxCellsOfOneChild = 64;

/// The cell that holds a place; places outside belong to the cells at the edge.
int cellAt(int place, int low, int extent, int cells) {
    auto const along = (std::int64_t(place) - low) * cells / std::max(extent, 1);
    return static_cast<int>(std::clamp<std::int64_t>(along, 0, cells - 1));
}

} // namespace

void NumberBag::add(std::uint32_t number) {
    if (!many_ && few_.size() == fewAtMost) {
        many_ = std::make_unique<std::unordered_set<std::uint32_t>>(few_.begin(), few_.end());
        few_.clear();
    }
    if (many_)
        many_->insert(number);
    else
        few_.push_back(number);
}

void NumberBag::remove(std::uint32_t number) {
    if (many_) {
        many_->erase(number);
        return;
    }
    auto const found = std::find(few_.begin(), few_.end(), number);
    if (found == few_.end()) return;
    *found = few_.back();
    few_.pop_back();
}

void NumberBag::clear() {
    few_.clear();
    many_.reset();
}

void NumberBag::appendTo(std::vector<std::uint32_t>& numbers) const {
    numbers.insert(numbers.end(), few_.begin(), few_.end());
    if (many_) numbers.insert(numbers.end(), many_->begin(), many_->end());
}

void ChildGrid::reset(std::vector<IntBox> const& boxes) {
    entries_.clear();
    large_.clear();
    gone_ = outside_ = 0;
    extent_ = IntBox();
    for (IntBox const& box : boxes) extent_ = extent_.unitedWith(box);
    double const wanted = std::clamp(static_cast<double>(boxes.size()) / 2.0, 16.0, 16384.0);
    double const width = std::max(extent_.width(), 1);
    double const height = std::max(extent_.height(), 1);
    columns_ = std::clamp(static_cast<int>(std::lround(std::sqrt(wanted * width / height))), 1, 1024);
    rows_ = std::clamp(static_cast<int>(std::lround(wanted / columns_)), 1, 1024);
    cells_.clear();
    cells_.resize(static_cast<std::size_t>(columns_) * static_cast<std::size_t>(rows_));
}

ChildGrid::CellRange ChildGrid::cellsOf(IntBox const& box) const {
    return {cellAt(box.x1, extent_.x1, extent_.width(), columns_),
            cellAt(box.y1, extent_.y1, extent_.height(), rows_),
            cellAt(std::max(box.x2 - 1, box.x1), extent_.x1, extent_.width(), columns_),
            cellAt(std::max(box.y2 - 1, box.y1), extent_.y1, extent_.height(), rows_)};
}

std::uint32_t ChildGrid::append(Glob* child, IntBox const& box) {
    auto const number = static_cast<std::uint32_t>(entries_.size());
    entries_.push_back({child, box});
    link(number);
    return number;
}

void ChildGrid::move(std::uint32_t number, IntBox const& box) {
    unlink(number);
    entries_[number].box = box;
    link(number);
}

void ChildGrid::remove(std::uint32_t number) {
    unlink(number);
    entries_[number].child = nullptr;
    ++gone_;
}

std::size_t ChildGrid::cellNumber(int x, int y) const {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(columns_) + static_cast<std::size_t>(x);
}

void ChildGrid::link(std::uint32_t number) {
    if (!extent_.contains(entries_[number].box)) ++outside_;
    CellRange const range = cellsOf(entries_[number].box);
    if (range.count() > maxCellsOfOneChild) {
        large_.add(number);
        return;
    }
    for (int y = range.y1; y <= range.y2; ++y)
        for (int x = range.x1; x <= range.x2; ++x) cells_[cellNumber(x, y)].add(number);
}

void ChildGrid::unlink(std::uint32_t number) {
    if (!extent_.contains(entries_[number].box)) --outside_;
    CellRange const range = cellsOf(entries_[number].box);
    if (range.count() > maxCellsOfOneChild) {
        large_.remove(number);
        return;
    }
    for (int y = range.y1; y <= range.y2; ++y)
        for (int x = range.x1; x <= range.x2; ++x) cells_[cellNumber(x, y)].remove(number);
}

void ChildGrid::addMeeting(Entry const& entry, std::span<IntBox const> areas,
                           std::vector<Glob*>& found) const {
    if (!entry.child) return;
    for (IntBox const& area : areas)
        if (entry.box.intersects(area)) return found.push_back(entry.child);
}

void ChildGrid::find(std::span<IntBox const> areas, std::vector<Glob*>& found) const {
    std::size_t numCells = 0;
    for (IntBox const& area : areas)
        if (!area.isEmpty()) numCells += static_cast<std::size_t>(cellsOf(area).count());
    if (numCells == 0) return;
    // For large areas, walking all children in order is cheaper than sorting the found ones.
    if (numCells * 4 > cells_.size()) {
        for (Entry const& entry : entries_) addMeeting(entry, areas, found);
        return;
    }
    std::vector<std::uint32_t> numbers;
    large_.appendTo(numbers);
    for (IntBox const& area : areas) {
        if (area.isEmpty()) continue;
        CellRange const range = cellsOf(area);
        for (int y = range.y1; y <= range.y2; ++y) {
            for (int x = range.x1; x <= range.x2; ++x) cells_[cellNumber(x, y)].appendTo(numbers);
        }
    }
    std::sort(numbers.begin(), numbers.end());
    numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
    for (std::uint32_t const number : numbers) addMeeting(entries_[number], areas, found);
}

} // namespace wainscot
