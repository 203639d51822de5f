#pragma once

#include "buttons/button.h"
#include "tables/table_columns.h"

namespace wainscot {

class TableHeader;

/// The header of a column: a click sorts by it, a drag moves the column, its right edge is dragged to give it
/// another width (its left edge gives one to the column before), a double click there fits it to its texts.
class WAINSCOT_API ColumnButton : public Button {
public:
    enum class SortMark : unsigned char { none, ascending, descending };

    explicit ColumnButton(TableColumnDescription const& description);
    ~ColumnButton() override;

    LightweightString<char> const& getIdentifier() const { return identifier_; }
    void setSortMark(SortMark mark);
    SortMark getSortMark() const { return mark_; }

    bool isTabStopActive() override;
    bool react(Event const& event) override;
    void drawBackground() override;
    void drawBorder() override;
    MouseCursorID contextCursor(XY<int> const& place) const override;
    void describe(GlobDescription& description) const override;

protected:
    void drawText() override;
    int rightMargin() const override;
    bool pressBegan(Event const& event) override;
    void pressMoved(Event const& event) override;
    void pressEnded(PressEnd how) override;
    /// It was clicked.
    virtual void clicked();
    TableHeader* header() const;

private:
    friend class TableHeader;
    enum class Grip : unsigned char { none, face, edge };

    /// Whose edge is there; null = nobody's.
    ColumnButton* edgeAt(XY<int> const& place) const;
    bool isHeldHere() const;

    LightweightString<char> identifier_;
    SortMark mark_ = SortMark::none;
    Grip grip_ = Grip::none;
    /// The column whose edge is held.
    HandlerRef<ColumnButton> resized_;
    bool isResizeable_;
    bool isMovable_;
    bool isSortable_;
    bool isDragged_ = false;
};

/// The header of the tag column: a click tags all rows, or none; with Ctrl it turns all tags round.
class WAINSCOT_API TagButton final : public ColumnButton {
public:
    explicit TagButton(TableColumnDescription const& description);

protected:
    void clicked() override;
};

} // namespace wainscot
