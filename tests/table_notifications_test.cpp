#include "tests/sent_notifications.h"

#include "host/base/convert.h"
#include "tables/table_widget.h"
#include "text/text_box.h"

namespace wainscot {
namespace {

/// Holds nothing; the tables ask it for ever.
class Plain final : public iTableAdaptor {
public:
    Text getFieldText(XY<int> const& cell) const override {
        return length > 0 ? Text(length, L'x') : Qv::WStringFromInteger(cell.y);
    }
    unsigned int getSize() const override { return 5; }
    std::vector<TableColumnDescription> getColumnDefinitions() const override {
        std::vector<TableColumnDescription> columns{{L"A", "a"}, {L"B", "b"}};
        for (TableColumnDescription& column : columns) column.width = 60;
        return columns;
    }
    std::size_t length = 0;
};

/// Has always been changed.
class Editor final : public iCellEditor {
public:
    Glob* getWidget(Glob* parent) override {
        return parent->addWidget(new TextBox(TextBox::InitArgs(9, 9)), 0, 0);
    }
    void releaseWidget() override {}
    void storeData(CellContext&) const override {}
    void initWidgetFromData(CellContext const&) override {}
    bool hasChanged() const override { return true; }
    void clearChanged() override {}
    void hide() override {}
    void reset() override {}
    bool isResponsibleForMessage(LightweightString<char> const&, Glob*) override { return false; }
    bool drawField(CellContext&) override { return false; }
    bool handleEvent(CellContext const&, Event const&) override { return false; }
    bool hasFocus() const override { return false; }
    MouseCursorID contextCursor(CellContext const&, XY<int> const&) const override { return arrowCursor; }
    LightweightString<wchar_t> contextString(CellContext const&, XY<int> const&) const override { return {}; }
};

class TableNotifications : public SentNotifications {
protected:
    TableWidget& table() { return *static_cast<TableWidget*>(widget_); }
    XY<int> placeOf(int column, int row) {
        return table().getCellArea({column, row}).centre() + table().screenBox().bottomLeft();
    }
    void drag(XY<int> from, XY<int> to) {
        driver_.moveTo(from);
        driver_.press(Driver::Button::left);
        driver_.moveTo((from + to) - from);
        driver_.moveTo(to + XY<int>(1, 0));
        driver_.release();
    }
    Glob* header(wchar_t const* title) { return driver_.find(Role::columnHeading, title); }

    Plain plain_;
};

} // namespace

TEST_F(TableNotifications, OfTables) {
    auto const setCurrent = [&] {
        table().claimKbdFocus();
        table().setCurPos({0, 1});
        passing_ = 0;
    };
    runAll<TableWidget>(
        {{"column order", "MDCColOrder",
          [&] { drag(header(L"A")->screenBox().centre(), header(L"B")->screenBox().centre()); }},
         {"column visibility", "MDCColVis",
          [&] {
              driver_.clickAt(header(L"A")->screenBox().centre(), Driver::Button::right);
              driver_.key(Key::down);
              driver_.key(Key::enter);
          }},
         {"rows swapped", "MDCRowSwap",
          [&] {
              table().setRowSwapping(true);
              drag(placeOf(0, 1), placeOf(0, 3));
          }},
         {"row visibility", "MDCRowVis", [&] { table().rowVisibilityHasChanged(); }},
         {"stored", "MDCDataStored",
          [&] {
              table().registerFieldEditor(DBFieldTypes::eText, Qv::Ptr<iCellEditor>(new Editor));
              table().enableEditing(true);
              table().setEditingEnabled(true, {0, 1});
              table().setEditingEnabled(false, {0, 1});
          }},
         {"return", "MDCReturnPressed",
          [&] {
              setCurrent();
              driver_.key(Key::enter);
          }},
         {"tags", "MDCTagsChanged",
          [&] {
              table().setTagFlags(TableTagFlag::useRows);
              driver_.clickAt(placeOf(0, 2));
          }},
         {"double click", "MDCCurRowDoubleClicked",
          [&] { driver_.doubleClick(driver_.findItem(Role::row, L"2")); }},
         {"current row", "MDCCurRowChanged", [&] { driver_.clickAt(placeOf(0, 2)); }},
         {"copy refused", "MDCCopyRefused",
          [&] {
              setCurrent();
              plain_.length = 600'000;
              driver_.key(Key::ctrl | 'C');
          }}},
        [&] {
            plain_.length = 0;
            TableWidget::InitArgs args(140, 150);
            args.adaptor = &plain_;
            return new TableWidget(args);
        });
}

} // namespace wainscot
