#pragma once

#include "host/base/export.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

namespace wainscot {

/// The sizes that the widths of columns follow from, in pixels.
struct ColumnMetrics {
    int buttonHeight = 0;
    /// On each side of a text.
    int textMargin = 0;
    /// No automatic width is more than this many button heights.
    int capFactor = 14;
    /// How many rows are measured, from the first one on.
    unsigned int sampleSize = 25;

    unsigned int numSampleRows(unsigned int numRows) const { return std::min(sampleSize, numRows); }
};

/// What counts for the width of a column, in pixels.
struct WAINSCOT_API ColumnWidth {
    /// 0 = to be sized automatically.
    unsigned short width = 0;
    unsigned short minWidth = 0;
    /// 0 = not resizable.
    std::uint32_t resizability = 3;
    /// The code of a `DBFieldTypes::eType`.
    int fieldType = 0;
    /// In the table's font.
    int titleWidth = 0;

    bool isResizable() const { return resizability != 0; }
    /// At least `minWidth`, at most 65,535.
    void setWidth(std::int64_t wanted);
};

/// The widest of some texts and its margins, at most 65,535; 0 without any text.
WAINSCOT_API int calcColumnWidth(std::span<int const> textWidths, ColumnMetrics const& metrics);
/// What a column needs for its title, or for the date or timecode that it is edited as; at most 65,535.
WAINSCOT_API int calcMinColumnWidth(ColumnWidth const& column, ColumnMetrics const& metrics);

/// Sizes the columns of a table. Refers to the columns and changes their widths; they must outlive it.
class WAINSCOT_API ColumnWidths {
public:
    /// The widest text of a column in the sample, in pixels, without its margins; texts that are empty or
    /// HTML do not count.
    using WidestText = std::function<int(std::size_t column)>;

    /// `viewColumns` are the indices of the visible columns in their order on screen. Indices of no column
    /// are left out.
    ColumnWidths(std::span<ColumnWidth> columns, std::span<int const> viewColumns,
                 ColumnMetrics const& metrics);

    /// Of the visible columns.
    std::int64_t total() const;

    /// Gives each column of width 0, hidden ones too, the width of its widest text or, without rows, its
    /// least width, with margins. Spare pixels go to the visible columns that it has sized; when there are
    /// none, `stretchColumnsToFit` runs. `force` makes the widths of the resizable columns 0 first.
    /// `widestText` is asked only for columns that are sized, and only when there are rows.
    void setupColumnWidths(int visibleWidth, unsigned int numRows, WidestText const& widestText, bool force);
    /// Gives the resizable visible columns equal shares of what is missing or too much, and the last visible
    /// column what is still missing. Changes nothing when no visible column is resizable.
    void stretchColumnsToFit(int visibleWidth);

private:
    void makeAutomatic(std::size_t index, unsigned int numRows, WidestText const& widestText);

    std::span<ColumnWidth> columns_;
    std::vector<ColumnWidth*> visible_;
    ColumnMetrics metrics_;
};

} // namespace wainscot
