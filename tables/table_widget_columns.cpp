#include "host/drawing/html_renderer.h"
#include "host/events/dispatch_scope.h"
#include "host/objects/description.h"
#include "tables/table_asking_p.h"
#include "tables/table_header_p.h"

#include <algorithm>
#include <cmath>

namespace wainscot {

// Making them

void TableWidget::rebuildColumns() {
    DispatchScope const scope;
    LifeGuard const life = guard();
    endEditing(true);
    if (life.alive()) buildColumns(true);
}

void TableWidget::buildColumns(bool keepsWidths) {
    if (isReading_) return;
    DispatchScope const scope;
    LifeGuard const life = guard();
    std::map<LightweightString<char>, unsigned short> widths;
    if (keepsWidths)
        for (auto const& column : columns_)
            widths.emplace(column->description.identifier, column->width.width);
    std::vector<TableColumnDescription> descriptions;
    {
        Reading const reading(*this);
        descriptions =
            ask([&] { return adaptor_->getColumnDefinitions(); }, std::vector<TableColumnDescription>());
    }
    if (!life.alive()) return;
    ++columnsNumber_;
    columns_.clear();
    ColumnOrder::Identifiers identifiers;
    int numSticky = 0;
    for (TableColumnDescription const& description : descriptions) {
        if (TagColumn::isTagColumn(description))
            columns_.push_back(std::make_unique<TagColumn>(description));
        else
            columns_.push_back(std::make_unique<TableColumn>(description));
        auto const known = widths.find(description.identifier);
        if (known != widths.end()) columns_.back()->width.width = known->second;
        if (description.isSticky && numSticky == static_cast<int>(identifiers.size())) ++numSticky;
        identifiers.push_back(description.identifier);
    }
    if (!keepsWidths) order_ = ColumnOrder();
    order_.setColumns(std::move(identifiers), numSticky);
    if (current_.x >= order_.numViewColumns()) current_.x = order_.numViewColumns() - 1;
    if (header_) header_->rebuild();
    // Which bars there are decides how wide the columns can be.
    if (life.alive()) layOut();
    if (life.alive()) setupColumnWidths(false);
    if (life.alive()) hasFirstWidths_ = !keepsWidths;
    if (life.alive()) describeChanged(DescriptionChange::children);
}

// Widths and order

int TableWidget::findColumn(LightweightString<char> const& identifier) const {
    auto const found = std::ranges::find_if(
        columns_, [&](auto const& column) { return column->description.identifier == identifier; });
    return found == columns_.end() ? -1 : static_cast<int>(found - columns_.begin());
}

int TableWidget::findColumn(LightweightString<wchar_t> const& title) const {
    auto const found = std::ranges::find_if(
        columns_, [&](auto const& column) { return column->description.title.text() == title; });
    return found == columns_.end() ? -1 : static_cast<int>(found - columns_.begin());
}

int TableWidget::findColumn(Glob const* header) const {
    auto const found = std::ranges::find_if(
        columns_, [&](auto const& column) { return header && column->button.get() == header; });
    return found == columns_.end() ? -1 : static_cast<int>(found - columns_.begin());
}

unsigned short TableWidget::getColumnWidth(unsigned short dataColumn) const {
    return dataColumn < columns_.size() ? columns_[dataColumn]->width.width : toSize16(0);
}

ColumnMetrics TableWidget::metrics() const {
    ColumnMetrics metrics;
    metrics.buttonHeight = UifStd::getButtonHeight();
    metrics.textMargin = TableColumnDescription::textMargin;
    return metrics;
}

std::vector<ColumnWidth> TableWidget::widthsForSizing() {
    std::vector<ColumnWidth> widths;
    widths.reserve(columns_.size());
    for (auto const& column : columns_) widths.push_back(column->width);
    return widths;
}

/// They are those of other columns when the adaptor has changed them meanwhile.
void TableWidget::takeWidths(std::vector<ColumnWidth> const& widths) {
    if (widths.size() != columns_.size()) return;
    widthsFor_ = visibleWidth();
    for (std::size_t i = 0; i < columns_.size(); ++i) columns_[i]->width = widths[i];
    determineColumnVisibility();
}

/// Before it is first seen the table may still get the size that it will have.
void TableWidget::setupFirstWidths() {
    if (!hasFirstWidths_ || visibleWidth() == widthsFor_) return;
    DispatchScope const scope;
    LifeGuard const life = guard();
    for (auto const& column : columns_) column->width.width = column->givenWidth;
    setupColumnWidths(false);
    if (life.alive()) hasFirstWidths_ = true;
}

void TableWidget::setupColumnWidths(bool force) {
    DispatchScope const scope;
    hasFirstWidths_ = false;
    std::vector<ColumnWidth> widths = widthsForSizing();
    ColumnWidths(widths, order_.viewColumns(), metrics())
        .setupColumnWidths(
            visibleWidth(), heights_.count(), [this](std::size_t column) { return widestText(column); },
            force);
    takeWidths(widths);
}

void TableWidget::stretchColumnsToFit() {
    DispatchScope const scope;
    hasFirstWidths_ = false;
    std::vector<ColumnWidth> widths = widthsForSizing();
    ColumnWidths(widths, order_.viewColumns(), metrics()).stretchColumnsToFit(visibleWidth());
    takeWidths(widths);
}

void TableWidget::determineColumnVisibility() {
    layOut();
}

int TableWidget::totalColumnWidth() const {
    std::int64_t total = 0;
    for (int const data : order_.viewColumns())
        total += columns_[static_cast<std::size_t>(data)]->width.width;
    return static_cast<int>(std::min<std::int64_t>(total, std::numeric_limits<int>::max()));
}

int TableWidget::stickyWidth() const {
    int total = 0;
    for (int view = 0; view < order_.numStickyViewColumns(); ++view)
        total += columns_[static_cast<std::size_t>(order_.viewToData(view))]->width.width;
    return total;
}

int TableWidget::leftOfColumn(int viewColumn) const {
    return viewColumn >= 0 && viewColumn < static_cast<int>(lefts_.size())
               ? lefts_[static_cast<std::size_t>(viewColumn)] -
                     (viewColumn < order_.numStickyViewColumns() ? 0 : windowLeft_)
               : 0;
}

void TableWidget::resizeColumn(unsigned short dataColumn, double width) {
    if (dataColumn >= columns_.size() || std::isnan(width)) return;
    ColumnWidth& column = columns_[dataColumn]->width;
    unsigned short const before = column.width;
    hasFirstWidths_ = false;
    column.setWidth(static_cast<std::int64_t>(std::clamp(width, 0.0, 65535.0)));
    if (column.width != before) layOut();
}

void TableWidget::fitColumn(unsigned short dataColumn) {
    if (dataColumn >= columns_.size()) return;
    DispatchScope const scope;
    LifeGuard const life = guard();
    Qv::Ptr<iFont> const font = Glib::loadFont(getFont());
    int widest = font->textWidth(columns_[dataColumn]->description.title.text());
    RowHeights::Visible const rows = getVisibleRows();
    auto const end = std::min(static_cast<unsigned int>(std::ceil(rows.last)), heights_.count());
    for (auto row = static_cast<unsigned int>(std::max(rows.first, 0.0)); row < end; ++row)
        widest = std::max(widest, widthOfText(dataColumn, row, *font));
    if (life.alive()) resizeColumn(dataColumn, widest + 2 * TableColumnDescription::textMargin);
}

/// Texts with mark-up do not count.
int TableWidget::widthOfText(std::size_t dataColumn, unsigned int row, iFont const& font) const {
    Text const text = ask(
        [&] {
            return adaptor_->getFieldText({static_cast<int>(dataColumn), static_cast<int>(row)});
        },
        Text());
    return text.empty() || HTMLRenderer::isHTML(text) ? 0 : font.textWidth(text);
}

int TableWidget::widestText(std::size_t dataColumn) const {
    Qv::Ptr<iFont> const font = Glib::loadFont(getFont());
    int widest = 0;
    for (unsigned int row = 0, end = metrics().numSampleRows(heights_.count()); row < end; ++row)
        widest = std::max(widest, widthOfText(dataColumn, row, *font));
    return widest;
}

bool TableWidget::moveColumn(unsigned short from, unsigned short to) {
    if (!order_.move(from, to)) return false;
    columnsChanged();
    return true;
}

bool TableWidget::swapColumns(unsigned short a, unsigned short b) {
    if (!order_.swap(a, b)) return false;
    columnsChanged();
    return true;
}

void TableWidget::setColumnHidden(unsigned short dataColumn, bool hidden) {
    if (!order_.setHidden(dataColumn, hidden)) return;
    columnsChanged();
}

void TableWidget::columnsChanged() {
    DispatchScope const scope;
    LifeGuard const life = guard();
    ++columnsNumber_;
    endEditing(true);
    if (!life.alive()) return;
    if (current_.x >= order_.numViewColumns()) current_.x = order_.numViewColumns() - 1;
    if (header_) header_->reviewMenu(nullptr);
    layOut();
    if (life.alive()) describeChanged(DescriptionChange::children);
}

void TableWidget::columnMovedByUser(int from, int to) {
    LifeGuard const life = guard();
    if (moveColumn(static_cast<unsigned short>(from), static_cast<unsigned short>(to)) && life.alive())
        report(columnOrderChanged);
}

void TableWidget::columnHiddenByUser(int dataColumn, bool hidden) {
    if (!validDataColumn(dataColumn) || order_.isHidden(dataColumn) == hidden) return;
    LifeGuard const life = guard();
    setColumnHidden(static_cast<unsigned short>(dataColumn), hidden);
    if (life.alive()) report(columnVisibilityChanged);
}

std::string TableWidget::columnsText() const {
    std::vector<unsigned short> widths;
    for (auto const& column : columns_) widths.push_back(column->width.width);
    return order_.text(widths);
}

bool TableWidget::restoreColumns(std::string_view text) {
    ColumnOrder::Identifiers identifiers;
    std::vector<unsigned short> widths;
    for (auto const& column : columns_) {
        identifiers.push_back(column->description.identifier);
        widths.push_back(column->width.width);
    }
    int numSticky = 0;
    while (numSticky < static_cast<int>(columns_.size()) &&
           columns_[static_cast<std::size_t>(numSticky)]->description.isSticky)
        ++numSticky;
    if (!order_.restore(text, std::move(identifiers), widths, numSticky)) return false;
    for (std::size_t i = 0; i < columns_.size(); ++i) columns_[i]->width.setWidth(widths[i]);
    hasFirstWidths_ = false;
    columnsChanged();
    return true;
}

// Sorting

void TableWidget::sortBy(unsigned short dataColumn) {
    if (dataColumn >= columns_.size() || !adaptor_) return;
    DispatchScope const scope;
    LifeGuard const life = guard();
    bool const reversed = dataColumn == sortColumn_;
    sortColumn_ = reversed ? -1 : dataColumn;
    shownSortColumn_ = dataColumn;
    isShownReversed_ = reversed;
    LightweightString<char> const identifier = columns_[dataColumn]->description.identifier;
    tellAdaptor([&] { adaptor_->sort(identifier, reversed); });
    if (!life.alive()) return;
    showSortMarks();
    if (life.alive()) dataChanged();
}

void TableWidget::showSortMarks() {
    using SortMark = ColumnButton::SortMark;
    LifeGuard const life = guard();
    for (int data = 0; life.alive() && data < static_cast<int>(columns_.size()); ++data) {
        auto* const button =
            dynamic_cast<ColumnButton*>(columns_[static_cast<std::size_t>(data)]->button.get());
        if (!button) continue;
        SortMark const direction = isShownReversed_ ? SortMark::descending : SortMark::ascending;
        button->setSortMark(data == shownSortColumn_ ? direction : SortMark::none);
    }
}

} // namespace wainscot
