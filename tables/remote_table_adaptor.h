#pragma once

#include "host/events/one_shot_timer.h"
#include "host/messages/handler_ref.h"
#include "tables/model/row_ranges.h"
#include "tables/table_adaptor.h"
#include "tables/table_widget.h"

#include <array>
#include <bitset>
#include <list>
#include <unordered_map>

namespace wainscot {

/// Rows that are not here yet when the table shows them: those of a database, a server or a slow disk. Texts
/// that are missing are shown as a faint "..."; the rows in sight are asked for once, between events, and
/// drawn when they come. Rows that have come are kept, up to a number; those not seen for longest go first.
///
/// Derive, override `requestRows` and `getColumnDefinitions`, and hand over what comes with `rowsHaveCome`.
/// Use it on the thread of the user interface only; bring what another thread has loaded there first
/// (`UiThreadCallback`).
class WAINSCOT_API RemoteTableAdaptor : public iTableAdaptor {
public:
    using RowTexts = std::vector<Text>;

    explicit RemoteTableAdaptor(unsigned int numRows = 0);
    ~RemoteTableAdaptor() override;

    /// The table that shows it; may be null, and may die first.
    void setTable(TableWidget* table) { table_ = HandlerRef<TableWidget>(table); }
    /// Forgets all rows and tells the table.
    void setNumRows(unsigned int numRows);
    /// The rows have other contents: those in sight are asked for again.
    void forgetRows();
    /// How many rows are kept at least; never fewer than are in sight. At first 8192.
    void setNumKept(unsigned int numRows) { numKept_ = numRows; }

    /// The texts of these rows, from `first` on, each with one text per column; missing ones are empty. Rows
    /// that nobody asked for are kept as well; those that cannot exist are left out.
    void rowsHaveCome(unsigned int first, std::vector<RowTexts> rows);
    /// These rows could not be had. They are asked for again when the table is next drawn, not before.
    void rowsHaveFailed(RowRange rows);

    /// Whether the texts of a row are here.
    bool isHere(unsigned int row) const;

    // iTableAdaptor
    Text getFieldText(XY<int> const& cell) const override;
    Text getGhostText(XY<int> const& cell) const override;
    unsigned int getSize() const override { return numRows_; }
    bool hasRowHeights() const override { return false; }

protected:
    /// Begins to load these rows, whole pages of `rowsInPage`. Called between events, never while the table
    /// draws; it may answer at once with `rowsHaveCome`. If it throws, that is as if the rows had failed.
    virtual void requestRows(RowRange rows) = 0;

    static constexpr unsigned int rowsInPage = 64;

private:
    struct Page {
        std::array<RowTexts, rowsInPage> rows;
        std::bitset<rowsInPage> here;
        /// Its place among the pages in the order of use.
        std::list<unsigned int>::iterator use;
    };

    Page const* find(unsigned int row) const;
    Page& make(unsigned int number);
    void dropOldPages();
    void forgetAll();
    void askLater(unsigned int row) const;
    void askNow();
    RowRange rowsInSight() const;
    bool isMissing(unsigned int page, RowRange inSight) const;

    unsigned int numRows_;
    unsigned int numKept_ = 8192;
    HandlerRef<TableWidget> table_;
    LifeToken life_;
    // What reading notes for later.
    mutable std::unordered_map<unsigned int, Page> pages_;
    /// Numbers of pages; the one that was used last is first.
    mutable std::list<unsigned int> uses_;
    mutable RowRanges wanted_;
    RowRanges asked_;
    mutable OneShotTimer timer_;
};

} // namespace wainscot
