#pragma once

#include "tables/column_button.h"
#include "tables/table_widget.h"

namespace wainscot {

/// The row of column headers. It cuts them off at its edges.
class TableHeader final : public rect {
public:
    explicit TableHeader(TableWidget& table);

    TableWidget* table() const { return table_.get(); }
    /// Makes the buttons of all columns anew.
    void rebuild();
    /// Puts the buttons where the columns are.
    void layOut();

    // --- What buttons tell
    void clicked(ColumnButton& button, LightweightString<char> const& message);
    void resizeFrom(ColumnButton& button, int wayFromPress);
    void beginResize(ColumnButton& button);
    void endResize(ColumnButton& button, bool isTakenBack);
    void fit(ColumnButton& button);
    /// The column before this one, where its edge can be dragged; null otherwise.
    ColumnButton* before(ColumnButton const& button) const;
    /// The header is dragged with the pointer at a place in root coordinates.
    void moveTo(ColumnButton& button, XY<int> const& place);
    void endMove(ColumnButton& button, bool isTakenBack);

    bool react(Event const& event) override;
    void reviewMenu(Event const* event) override;
    void draw() override;

private:
    int viewColumnOf(ColumnButton const& button) const;
    int targetAt(int x, int from) const;

    HandlerRef<TableWidget> table_;
    unsigned short widthBefore_ = 0;
    /// Where a dragged column would go; -1 = nowhere.
    int target_ = -1;
    int dragged_ = -1;
};

} // namespace wainscot
