#include "tables/model/column_widths.h"

#include <iterator>
#include <limits>

namespace wainscot {

namespace {

constexpr int dateType = 'M';
constexpr int timecodeType = 't';
/// The least widths of such columns, in button heights.
constexpr std::int64_t dateButtons = 8;
constexpr std::int64_t timecodeButtons = 4;

unsigned short toWidth(std::int64_t width) {
    constexpr std::int64_t largest = std::numeric_limits<unsigned short>::max();
    return static_cast<unsigned short>(std::clamp<std::int64_t>(width, 0, largest));
}

std::int64_t withMargins(std::int64_t width, ColumnMetrics const& metrics) {
    return width + std::int64_t{2} * metrics.textMargin;
}

} // namespace

void ColumnWidth::setWidth(std::int64_t wanted) {
    width = std::max(toWidth(wanted), minWidth);
}

int calcColumnWidth(std::span<int const> textWidths, ColumnMetrics const& metrics) {
    if (textWidths.empty()) return 0;
    return toWidth(withMargins(*std::max_element(textWidths.begin(), textWidths.end()), metrics));
}

int calcMinColumnWidth(ColumnWidth const& column, ColumnMetrics const& metrics) {
    switch (column.fieldType) {
    case dateType:
        return std::max(toWidth(dateButtons * metrics.buttonHeight), column.minWidth);
    case timecodeType:
        return std::max(toWidth(timecodeButtons * metrics.buttonHeight), column.minWidth);
    default:
        return toWidth(withMargins(column.titleWidth, metrics));
    }
}

ColumnWidths::ColumnWidths(std::span<ColumnWidth> columns, std::span<int const> viewColumns,
                           ColumnMetrics const& metrics)
    : columns_(columns), metrics_(metrics) {
    visible_.reserve(viewColumns.size());
    for (int const index : viewColumns) {
        // A negative index becomes a large one.
        auto const place = static_cast<std::size_t>(index);
        if (place < columns.size()) visible_.push_back(&columns[place]);
    }
}

std::int64_t ColumnWidths::total() const {
    std::int64_t sum = 0;
    for (ColumnWidth const* const column : visible_) sum += column->width;
    return sum;
}

void ColumnWidths::setupColumnWidths(int visibleWidth, unsigned int numRows, WidestText const& widestText,
                                     bool force) {
    // Not through setWidth: a column with a least width would keep that.
    if (force)
        for (ColumnWidth& column : columns_)
            if (column.isResizable()) column.width = 0;

    std::vector<ColumnWidth*> automatic;
    std::copy_if(visible_.begin(), visible_.end(), std::back_inserter(automatic),
                 [](ColumnWidth const* column) { return column->width == 0; });
    for (std::size_t index = 0; index < columns_.size(); ++index)
        if (columns_[index].width == 0) makeAutomatic(index, numRows, widestText);

    std::int64_t const spare = visibleWidth - total();
    if (spare <= 0) return;
    if (automatic.empty()) return stretchColumnsToFit(visibleWidth);
    auto const count = static_cast<std::int64_t>(automatic.size());
    for (ColumnWidth* const column : automatic) column->setWidth(column->width + spare / count);
    automatic.back()->setWidth(automatic.back()->width + spare % count);
}

void ColumnWidths::makeAutomatic(std::size_t index, unsigned int numRows, WidestText const& widestText) {
    ColumnWidth& column = columns_[index];
    int const content = metrics_.numSampleRows(numRows) == 0 ? column.minWidth : widestText(index);
    std::int64_t const cap = std::int64_t{metrics_.capFactor} * metrics_.buttonHeight;
    column.setWidth(std::min(withMargins(content, metrics_), cap));
}

void ColumnWidths::stretchColumnsToFit(int visibleWidth) {
    std::int64_t const numResizable = std::count_if(
        visible_.begin(), visible_.end(), [](ColumnWidth const* column) { return column->isResizable(); });
    std::int64_t const missing = visibleWidth - total();
    if (missing == 0 || numResizable == 0) return;
    for (ColumnWidth* const column : visible_)
        if (column->isResizable()) column->setWidth(column->width + missing / numResizable);
    std::int64_t const left = visibleWidth - total();
    if (left > 0) visible_.back()->setWidth(visible_.back()->width + left);
}

} // namespace wainscot
