#pragma once

#include "host/base/box.h"

#include <cstdint>
#include <memory>
#include <span>
#include <unordered_set>
#include <vector>

namespace wainscot {

class Glob;

/// Numbers in any order. Adding and taking out take constant time.
class NumberBag {
public:
    void add(std::uint32_t number);
    void remove(std::uint32_t number);
    void clear();
    void appendTo(std::vector<std::uint32_t>& numbers) const;

private:
    /// Up to this many are searched one by one; more are kept by hash.
    static constexpr std::size_t fewAtMost = 128;

    std::vector<std::uint32_t> few_;
    std::unique_ptr<std::unordered_set<std::uint32_t>> many_;
};

/// Finds the children of a parent that meet a box, without looking at the others. Children are numbered in
/// their order from below to above.
class ChildGrid {
public:
    /// The children of a parent with at most this many are searched directly.
    static constexpr std::size_t threshold = 64;

    /// Takes in all children; `number` is called with each child and its number.
    template <class SetNumber>
    void build(std::vector<Glob*> const& children, std::vector<IntBox> const& boxes, SetNumber number) {
        reset(boxes);
        for (std::size_t i = 0; i < children.size(); ++i) {
            number(*children[i], static_cast<std::uint32_t>(i));
            append(children[i], boxes[i]);
        }
        built_ = entries_.size();
    }

    /// A child above all others; the answer is its number.
    std::uint32_t append(Glob* child, IntBox const& box);
    void move(std::uint32_t number, IntBox const& box);
    void remove(std::uint32_t number);
    /// Whether to build it anew: many numbers have no child any more, there are many more children than it
    /// was made for, or many lie outside its area.
    bool isWorn() const { return (gone_ + outside_) * 2 > entries_.size() || entries_.size() > built_ * 2; }

    /// Appends the children that meet one of the areas, from below to above, each once.
    void find(std::span<IntBox const> areas, std::vector<Glob*>& found) const;

private:
    struct Entry {
        Glob* child;
        IntBox box;
    };
    struct CellRange {
        int x1, y1, x2, y2;
        int count() const { return (x2 - x1 + 1) * (y2 - y1 + 1); }
    };

    void reset(std::vector<IntBox> const& boxes);
    CellRange cellsOf(IntBox const& box) const;
    std::size_t cellNumber(int x, int y) const;
    void link(std::uint32_t number);
    void unlink(std::uint32_t number);
    void addMeeting(Entry const& entry, std::span<IntBox const> areas, std::vector<Glob*>& found) const;

    std::vector<Entry> entries_;
    std::vector<NumberBag> cells_;
    /// Children that cover too many cells; they are looked at each time.
    NumberBag large_;
    IntBox extent_;
    int columns_ = 1;
    int rows_ = 1;
    std::size_t gone_ = 0;
    std::size_t outside_ = 0;
    std::size_t built_ = 0;
};

} // namespace wainscot
