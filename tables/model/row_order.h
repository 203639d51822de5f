#pragma once

#include "host/base/first_exception.h"
#include "tables/model/row_notices.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace wainscot {

/// The order in which the rows of a source are shown: sorted by several keys, stable, and without the rows
/// that a filter leaves out. The order is computed in slices; the one from before stays in force until it is
/// complete, then is replaced in one step. Without keys and filter it needs no memory.
///
/// The functions get rows of the source and must not call this object. One that throws counts as the answers
/// "equal", 0, empty text and "shown"; the order is completed, then the first exception passes to the caller.
/// A comparison that contradicts itself gives some order of the same rows.
class WAINSCOT_API RowOrder {
public:
    struct Key {
        /// Each of these is used when it is there, and the next where it finds two rows equal.
        /// Sorts by number; asked once per row in a full sort.
        std::function<std::int64_t(unsigned int row)> number = {};
        /// Sorts by the bytes of a text; asked once per row in a full sort.
        std::function<std::string(unsigned int row)> text = {};
        /// Below 0 when `a` comes before `b`, above 0 when behind it.
        std::function<int(unsigned int a, unsigned int b)> compare = {};
        bool descending = false;
    };
    using Filter = std::function<bool(unsigned int row)>;

    explicit RowOrder(unsigned int numSourceRows = 0);
    ~RowOrder();

    /// The first key counts most. Begins a new order.
    void setKeys(std::vector<Key> keys);
    /// Answers whether a row is shown; an empty one shows all. Begins a new order.
    void setFilter(Filter filter);
    /// Milliseconds; without it the clock of the host is read.
    void setClock(std::function<double()> clock) { clock_ = std::move(clock); }

    /// Follows the source, which has changed already. Rows are renumbered at once, in linear time. A few
    /// changed, inserted or moved rows find their places at once; otherwise a new order begins, and until it
    /// is complete inserted rows are not shown. A change while an order is computed starts it anew.
    void apply(RowNotice const& notice);

    /// Computes until the order is complete or the time is over; answers whether it is complete. Makes at
    /// least one step, which is one row asked or one pair compared. The clock is read after each slow step
    /// and after at most 64 quick ones.
    bool work(unsigned int budgetMicroseconds);
    bool isDone() const { return !isStale_; }

    unsigned int numRows() const;
    unsigned int numSourceRows() const { return numSourceRows_; }
    /// Between rows as shown and rows of the source; nothing when there is none or it is not shown.
    std::optional<unsigned int> sourceRow(unsigned int viewRow) const;
    std::optional<unsigned int> viewRow(unsigned int sourceRow) const;

private:
    class Sort;
    class Slice;
    using Rows = std::vector<unsigned int>;

    void begin();
    bool isShown(unsigned int row);
    int compare(unsigned int a, unsigned int b);
    bool comesBefore(unsigned int a, unsigned int b);
    bool standsWell(RowRange changed);
    void renumber(RowNotice const& notice);
    /// Takes the rows out of the order and puts those that are shown in their places.
    void place(RowRange rows);
    std::size_t placeAmong(Rows const& sorted, unsigned int row);
    void takeOut(std::vector<std::size_t> const& places);
    void shiftViewRows(std::vector<std::size_t> const& left, std::vector<std::size_t> const& joined);
    void noteViewRows();
    void showAll();

    unsigned int numSourceRows_;
    std::vector<Key> keys_;
    Filter filter_;
    std::function<double()> clock_;
    FirstException thrown_;
    /// Whether the keys, the filter or the rows are newer than the order in force.
    bool isStale_ = false;
    /// Whether every row is shown in the order of the source; the two tables are empty then.
    bool showsAll_ = true;
    Rows sourceRows_;
    Rows viewRows_;
    std::unique_ptr<Sort> sort_;
};

} // namespace wainscot
