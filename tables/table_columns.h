#pragma once

#include "host/messages/handler_ref.h"
#include "host/objects/glob.h"
#include "tables/model/column_widths.h"
#include "tables/table_column_description.h"

namespace wainscot {

class ColumnButton;

/// A column of a table, with its present width. The table makes one for each description.
class WAINSCOT_API DataColumn {
public:
    explicit DataColumn(TableColumnDescription const& columnDescription);
    virtual ~DataColumn();

    /// Sent by the header of a column to its table when it is clicked.
    static LightweightString<char> sortMsg();
    /// What stands at the top of the column; owned by the header.
    virtual ColumnButton* makeButton() = 0;

    TableColumnDescription description;
    ColumnWidth width;
    /// Before the widths were computed; 0 = that of the texts.
    unsigned short givenWidth = 0;
    HandlerRef<Glob> button;
};

/// An ordinary column.
class WAINSCOT_API TableColumn final : public DataColumn {
public:
    using DataColumn::DataColumn;
    ColumnButton* makeButton() override;
};

/// The column of the tags: one whose identifier is `identifier`. Its cells show whether their rows are
/// tagged, and are clicked to change that.
class WAINSCOT_API TagColumn final : public DataColumn {
public:
    /// The tag-all message as well.
    static constexpr LightweightString<char> tagAllMsg{"tag_all"};
    static constexpr LightweightString<char> invertTagsMsg{"invert_tags"};

    explicit TagColumn(TableColumnDescription const& columnDescription);
    ColumnButton* makeButton() override;
    static bool isTagColumn(TableColumnDescription const& description);
};

} // namespace wainscot
