#include "tables/table_columns.h"

#include "host/drawing/uif_std.h"
#include "tables/column_button.h"

#include <algorithm>

namespace wainscot {

DataColumn::DataColumn(TableColumnDescription const& columnDescription) : description(columnDescription) {
    width.width = givenWidth = description.width;
    width.minWidth = description.minWidth;
    width.resizability = description.getResizability();
    width.fieldType = description.fieldType;
}

DataColumn::~DataColumn() = default;

LightweightString<char> DataColumn::sortMsg() {
    return "DataColumnSortMs%";
}

ColumnButton* TableColumn::makeButton() {
    return new ColumnButton(description);
}

TagColumn::TagColumn(TableColumnDescription const& columnDescription) : DataColumn(columnDescription) {
    width.setWidth(std::max<int>(width.width, UifStd::getButtonHeight()));
    givenWidth = width.width;
    width.resizability = TableColumnDescription::fixedWidth;
    description.isEditable = false;
    description.isHideable = false;
}

ColumnButton* TagColumn::makeButton() {
    return new TagButton(description);
}

bool TagColumn::isTagColumn(TableColumnDescription const& description) {
    return description.identifier == tagAllMsg;
}

} // namespace wainscot
