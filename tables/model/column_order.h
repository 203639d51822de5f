#pragma once

#include "host/base/export.h"
#include "host/base/lightweight_string.h"
#include "host/base/xy.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace wainscot {

/// The order of a table's columns on screen, and which of them are hidden.
///
/// A data column is a column of the adaptor; a view column is one of those that are shown, counted in their
/// order on screen. A hidden column keeps its place among the others. The sticky columns are the first ones
/// of the adaptor; they stay in front of all others.
class WAINSCOT_API ColumnOrder {
public:
    using Identifiers = std::vector<LightweightString<char>>;
    static constexpr int none = -1;

    /// Takes other columns. Those whose identifiers are known keep their order and stay hidden. A new one is
    /// shown behind the column before it in the list. The columns of one identifier, which may be empty, are
    /// told apart by their order in the lists.
    void setColumns(Identifiers identifiers, int numSticky = 0);

    int numDataColumns() const { return static_cast<int>(identifiers_.size()); }
    int numViewColumns() const { return static_cast<int>(view_.size()); }
    /// How many of the view columns are sticky; they come first.
    int numStickyViewColumns() const;
    /// The data columns that are shown, in their order on screen.
    std::span<int const> viewColumns() const { return view_; }

    bool validDataColumn(int column) const { return column >= 0 && column < numDataColumns(); }
    bool validViewColumn(int column) const { return column >= 0 && column < numViewColumns(); }
    /// `none` when there is no such column, or when it is hidden.
    int viewToData(int column) const;
    int dataToView(int column) const;
    /// The column becomes the other; the row stays.
    XY<int> viewToData(XY<int> const& position) const { return {viewToData(position.x), position.y}; }
    XY<int> dataToView(XY<int> const& position) const { return {dataToView(position.x), position.y}; }

    // What follows returns whether anything has changed.
    /// The column at `from` comes to be at `to`. A sticky column and another cannot pass each other.
    bool move(int from, int to);
    /// Two view columns change places; both are sticky, or none is.
    bool swap(int a, int b);
    bool setHidden(int dataColumn, bool isHidden);

    /// No for what is no data column.
    bool isHidden(int dataColumn) const;

    /// The order, what is hidden and the widths of the data columns, for `restore`; plain ASCII. A column
    /// without a width has 0.
    std::string text(std::span<unsigned short const> widths) const;
    /// As `setColumns`, but with the order of a text instead of the present one, and the widths that it has
    /// for columns that are still there. Of a text that `text` has not written nothing is taken: all columns
    /// are then shown in the order of the list. Returns whether the text was taken.
    bool restore(std::string_view text, Identifiers identifiers, std::span<unsigned short> widths,
                 int numSticky = 0);

private:
    /// A column with its identifier, as it is known from before.
    struct Known {
        LightweightString<char> identifier;
        /// Which one of the columns with this identifier, in the order of the list.
        int occurrence = 0;
        unsigned short width = 0;
        bool isHidden = false;
    };

    static std::vector<int> occurrencesOf(Identifiers const& identifiers);
    static bool parse(std::string_view text, std::vector<Known>& columns);
    std::vector<Known> known() const;
    /// Puts the columns of a new list where they are known to be. Returns the known column of each, or
    /// `none`.
    std::vector<int> arrange(std::vector<Known> const& known, Identifiers identifiers, int numSticky);
    bool isSticky(int dataColumn) const { return dataColumn < numSticky_; }
    bool canChangePlaces(int a, int b) const;
    /// Where a view column stands among all columns.
    std::vector<int>::iterator placeOf(int viewColumn);
    void findViewColumns();

    Identifiers identifiers_;
    std::vector<int> occurrences_;
    int numSticky_ = 0;
    /// All data columns, hidden ones too, in their order.
    std::vector<int> order_;
    std::vector<bool> hidden_;
    std::vector<int> view_;
    std::vector<int> viewOfData_;
};

} // namespace wainscot
