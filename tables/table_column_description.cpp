#include "tables/table_column_description.h"

#include <algorithm>

namespace wainscot {

int TableColumnDescription::textMargin = 0;

TableColumnDescription::TableColumnDescription(UIString columnTitle, LightweightString<char> columnIdentifier)
    : title(std::move(columnTitle)), identifier(std::move(columnIdentifier)) {}

TableColumnDescription::TableColumnDescription(UIString columnTitle, LightweightString<char> columnIdentifier,
                                               Palette const& palette)
    : TableColumnDescription(std::move(columnTitle), std::move(columnIdentifier)) {
    palette_ = palette;
}

TableColumnDescription::TableColumnDescription(UIString columnTitle, LightweightString<char> columnIdentifier,
                                               Colour const& colour)
    : TableColumnDescription(std::move(columnTitle), std::move(columnIdentifier)) {
    colour_ = colour;
}

void TableColumnDescription::setWidth(unsigned short wanted) {
    width = std::max(wanted, minWidth);
}

} // namespace wainscot
