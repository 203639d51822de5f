#pragma once

#include "host/base/export.h"

#include <optional>
#include <span>
#include <vector>

namespace wainscot {

/// The largest number of rows; the largest row is one less.
inline constexpr unsigned int maxRows = 0x7FFFFFFF;

/// The rows from `first` up to, but not including, `end`.
struct RowRange {
    unsigned int first = 0;
    unsigned int end = 0;

    bool empty() const { return first >= end; }
    unsigned int count() const { return empty() ? 0 : end - first; }
    bool contains(unsigned int row) const { return row >= first && row < end; }
    bool operator==(RowRange const&) const = default;
};

/// `count` rows from `first` on, without those that cannot exist.
WAINSCOT_API RowRange rowsFrom(unsigned int first, unsigned int count);

/// A set of rows, kept as sorted ranges that neither overlap nor touch: 8 bytes a range. A range is found in
/// logarithmic time; an operation costs the ranges that it touches, and those behind them when they shift.
/// Rows from `maxRows` on are never members.
class WAINSCOT_API RowRanges {
public:
    void clear();
    /// Makes exactly these ranges the members. They may come in any order, overlap and be empty.
    void assign(std::span<RowRange const> ranges);
    void add(RowRange range);
    void remove(RowRange range);
    /// Members in the range leave, the other rows of the range join.
    void toggle(RowRange range);
    /// Union and difference; both take linear time.
    void add(RowRanges const& other);
    void remove(RowRanges const& other);

    bool contains(unsigned int row) const;
    bool empty() const { return ranges_.empty(); }
    /// How many rows are members; constant time.
    unsigned int count() const { return count_; }
    std::span<RowRange const> ranges() const { return ranges_; }
    /// The first and the last member; nothing when there is none.
    std::optional<unsigned int> first() const;
    std::optional<unsigned int> last() const;
    /// The first member that is `row` or lies behind it.
    std::optional<unsigned int> firstFrom(unsigned int row) const;

    // The members follow their rows when rows are inserted, removed or moved.
    /// The new rows are no members.
    void insertRows(unsigned int first, unsigned int count);
    void removeRows(unsigned int first, unsigned int count);
    /// The rows keep their membership; the first of them is `target` afterwards.
    void moveRows(unsigned int first, unsigned int count, unsigned int target);

    bool operator==(RowRanges const&) const = default;

private:
    using Ranges = std::vector<RowRange>;

    /// The index of the first range that ends behind `row`.
    std::size_t indexBehind(unsigned int row) const;
    /// Puts `parts` in the place of the ranges with indices from `low` up to `high`.
    void replace(std::size_t low, std::size_t high, std::span<RowRange const> parts);
    void take(Ranges ranges);

    Ranges ranges_;
    unsigned int count_ = 0;
};

} // namespace wainscot
