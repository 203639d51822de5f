#include "tests/sent_notifications.h"
#include "tests/widget_fixture.h"

#include "buttons/button.h"
#include "containers/scroll_bar.h"
#include "host/base/convert.h"
#include "host/drawing/canvas_renderer.h"
#include "host/objects/description.h"
#include "host/services/clipboard.h"
#include "tables/column_button.h"
#include "tables/remote_table_adaptor.h"
#include "tables/table_widget.h"
#include "text/text_box.h"

#include <deque>
#include <numeric>
#include <random>

namespace wainscot {
namespace {

using Text = LightweightString<wchar_t>;

/// Cells "column.row", whose calls are counted.
class Cells final : public iTableAdaptor {
public:
    explicit Cells(unsigned int rows = 100, int columns = 4) : numRows(rows), numColumns(columns) {
        order.resize(std::min(rows, 1000U));
        std::iota(order.begin(), order.end(), 0U);
    }
    Text getFieldText(XY<int> const& cell) const override {
        ++texts;
        if (throws) throw std::runtime_error("no text");
        auto const stored = edited.find({cell.y, cell.x});
        if (stored != edited.end()) return stored->second;
        unsigned int const row = sourceOf(static_cast<unsigned int>(cell.y));
        return Qv::WStringFromInteger(cell.x) + L"." + Qv::WStringFromInteger(static_cast<int>(row));
    }
    unsigned int getSize() const override { return numRows; }
    std::vector<TableColumnDescription> getColumnDefinitions() const override {
        std::vector<TableColumnDescription> columns;
        for (int i = 0; i < numColumns; ++i) {
            Text const number = Qv::WStringFromInteger(i);
            columns.emplace_back(L"C" + number, toUTF8(number));
            columns.back().width = 60;
            columns.back().isSticky = i < numSticky;
        }
        return columns;
    }
    unsigned short getRowHeight(unsigned int row) const override {
        return isVariable && row % 3 == 0 ? toSize16(40) : toSize16(0);
    }
    bool getTag(unsigned int row) const override {
        ++tagsAsked;
        return tags.count(row) != 0;
    }
    void setTags(std::map<unsigned int, bool> const& changes, bool) override {
        for (auto const& [row, isTagged] : changes) {
            if (isTagged)
                tags.insert(row);
            else
                tags.erase(row);
        }
    }
    bool setAllTags(bool tagged) override {
        if (!tagsAtOnce) return false;
        tags.clear();
        for (unsigned int row = 0; tagged && row < numRows; ++row) tags.insert(row);
        return true;
    }
    bool canBeCurrent(XY<int> const& cell) const override { return cell.y != barred; }
    void sort(LightweightString<char> const& column, bool reversed) override {
        sorted += std::string(column.c_str()) + (reversed ? "- " : "+ ");
        std::reverse(order.begin(), order.end());
    }
    std::uint64_t getRowIdentity(unsigned int row) const override { return sourceOf(row) + 1; }
    std::optional<unsigned int> findRow(std::uint64_t identity) const override {
        auto const found = std::ranges::find(order, static_cast<unsigned int>(identity - 1));
        return found == order.end() ? std::nullopt
                                    : std::optional(static_cast<unsigned int>(found - order.begin()));
    }
    void handleMouseContainment(XY<int> const& cell, bool inside) override {
        heard += (inside ? "in" : "out") + std::to_string(cell.y) + " ";
    }
    void handleMouseClickEvent(XY<int> const&, Event const&) override {
        if (auto const act = onClick) act();
    }
    void swapFields(unsigned int column, unsigned int a, unsigned int b) override {
        if (column == 0) std::swap(order[a], order[b]);
    }
    void storeFieldText(Text const& text, XY<int> const& cell) override { edited[{cell.y, cell.x}] = text; }

    unsigned int sourceOf(unsigned int row) const { return row < order.size() ? order[row] : row; }

    unsigned int numRows;
    int numColumns;
    int numSticky = 0;
    int barred = -1;
    bool isVariable = false;
    bool throws = false;
    bool tagsAtOnce = false;
    std::set<unsigned int> tags;
    std::vector<unsigned int> order;
    std::map<std::pair<int, int>, Text> edited;
    std::string sorted;
    std::string heard;
    std::function<void()> onClick;
    mutable int texts = 0;
    mutable int tagsAsked = 0;
};

/// Edits with a text box.
class TextEditor final : public iCellEditor {
public:
    Glob* getWidget(Glob* parent) override {
        if (!box_) {
            auto* const made = new TextBox(TextBox::InitArgs(10, 10));
            made->requestCallback("WSEditReturn", parent->parent(), eReturn);
            box_ = HandlerRef<TextBox>(made);
            parent->addWidget(made, 0, 0);
        }
        return box_.get();
    }
    void releaseWidget() override { box_ = {}; }
    void storeData(CellContext& cell) const override {
        cell.adaptor.storeFieldText(box_.get()->getText(), cell.position);
    }
    void initWidgetFromData(CellContext const& cell) override {
        box_.get()->setText(cell.getText());
        box_.get()->clearChanged();
    }
    bool hasChanged() const override { return box_ && box_.get()->getChanged(); }
    void clearChanged() override {
        if (box_) box_.get()->clearChanged();
    }
    void hide() override {}
    void reset() override {}
    bool isResponsibleForMessage(LightweightString<char> const&, Glob* sender) override {
        return box_ && sender == box_.get();
    }
    bool drawField(CellContext&) override { return false; }
    bool handleEvent(CellContext const&, Event const&) override { return false; }
    bool hasFocus() const override { return box_ && get_kbd_focus() == box_.get(); }
    MouseCursorID contextCursor(CellContext const&, XY<int> const&) const override { return arrowCursor; }
    Text contextString(CellContext const&, XY<int> const&) const override { return {}; }

private:
    HandlerRef<TextBox> box_;
};

/// Notes what it is asked for; a test answers.
class Late final : public RemoteTableAdaptor {
public:
    using RemoteTableAdaptor::RemoteTableAdaptor;
    std::vector<TableColumnDescription> getColumnDefinitions() const override { return {{L"C0", "C0"}}; }
    void answer(RowRange rows) {
        std::vector<RowTexts> texts;
        for (unsigned int row = rows.first; row < rows.end; ++row)
            texts.push_back({Qv::WStringFromInteger(static_cast<int>(row))});
        rowsHaveCome(rows.first, std::move(texts));
    }
    std::vector<RowRange> asked;
    std::function<void()> onRequest;

protected:
    void requestRows(RowRange rows) override {
        asked.push_back(rows);
        if (auto const act = onRequest) act();
    }
};

class Tables : public WidgetTest {
protected:
    static constexpr int line = 22;

    TableWidget* make(iTableAdaptor& cells, unsigned int tagFlags = 0) {
        TableWidget::InitArgs args(toSize16(240 + ScrollBar::thickness()), 24 + 10 * line);
        args.adaptor = &cells;
        auto* const table = show(new TableWidget(args), 20, 20);
        table->setTagFlags(tagFlags);
        table->claimKbdFocus();
        driver_.settle();
        return table;
    }
    XY<int> placeOf(TableWidget const& table, XY<int> position) {
        return table.getCellArea(position).centre() + table.screenBox().bottomLeft();
    }
    void click(TableWidget const& table, XY<int> position, std::uint32_t modifiers = 0) {
        driver_.moveTo(placeOf(table, position));
        driver_.holdModifiers(modifiers);
        driver_.clickAt(placeOf(table, position));
        driver_.holdModifiers(0);
        driver_.advance(1000);
    }
    static std::string tagsOf(Cells const& cells) {
        std::string text;
        for (unsigned int const row : cells.tags) text += std::to_string(row) + " ";
        return text;
    }
    // They outlive the tables.
    std::deque<Cells> cells_;
    std::deque<Late> late_;
    Glob* header(wchar_t const* title) { return driver_.find(Role::columnHeading, title); }
};

TEST_F(Tables, AskForWhatIsInSightWhateverTheirSize) {
    int texts = 0;
    for (unsigned int const rows : {1000U, 1'000'000U}) {
        Cells& cells = cells_.emplace_back(rows);
        auto* const table = make(cells, TableTagFlag::useRows);
        cells.texts = cells.tagsAsked = 0;
        table->drawRows();
        driver_.settle();
        EXPECT_TRUE(texts == 0 || cells.texts == texts);
        texts = cells.texts;
        EXPECT_EQ(cells.texts, 40);
        EXPECT_LE(cells.tagsAsked, 11);
        cells.texts = 0;
        table->setWindowTop(table->getTotalHeight());
        driver_.settle();
        EXPECT_EQ(cells.texts, 40);
        EXPECT_EQ(table->getVisibleRows().last, rows);
        destroy(table);
    }
    // Sizes at the ends of what there is.
    for (unsigned int const rows : {0U, 1U, 0x7FFFFFFFU}) {
        Cells& cells = cells_.emplace_back(rows);
        auto* const table = make(cells, TableTagFlag::useRows);
        EXPECT_EQ(table->getTotalHeight(), std::int64_t{rows} * line);
        for (std::uint32_t const key : {Key::end, Key::down, Key::pageDown, Key::ctrl | Key::end})
            driver_.key(key);
        EXPECT_EQ(table->getCurRow(), rows == 0 ? -1 : static_cast<int>(rows) - 1);
        // It shrinks behind the table's back.
        cells.numRows = std::min(rows, 3U);
        table->dataChanged();
        driver_.settle();
        EXPECT_LE(table->getCurRow(), 2);
        EXPECT_EQ(driver_.pixel(table, {5, 5}),
                  table->getPalette().window(eWindowRecessed).getAsLong() & 0xFFFFFF)
            << "below the rows";
        destroy(table);
    }
}

TEST_F(Tables, KeysAndThePointerMoveTheCurrentCell) {
    Cells& cells = cells_.emplace_back();
    cells.barred = 2;
    auto* const table = make(cells);
    driver_.key(Key::down);
    EXPECT_EQ(table->getCurPos(), XY<int>(0, 0)) << "the first key makes the first row current";
    struct Case {
        std::uint32_t key;
        XY<int> to;
    };
    for (Case const& c : {Case{Key::down, {0, 1}},
                          {Key::down, {0, 3}},
                          {Key::left, {3, 2}},
                          {Key::end, {3, 3}},
                          {Key::right, {0, 4}},
                          {Key::pageDown, {0, 9}},
                          {Key::pageDown, {0, 19}},
                          {Key::ctrl | Key::end, {0, 99}},
                          {Key::end, {3, 99}},
                          {Key::right, {3, 99}},
                          {Key::ctrl | Key::home, {3, 0}}}) {
        driver_.key(c.key);
        // What cannot be current is passed, or refused.
        EXPECT_TRUE(c.to.y == cells.barred || table->getCurPos() == c.to) << c.key;
    }
    EXPECT_FALSE(table->setCurPos({0, 2}) || table->setCurPos({4, 0}) || table->setCurPos({0, 100}));
    driver_.key(Key::enter);
    click(*table, {1, 5});
    EXPECT_EQ(table->getCurPos(), XY<int>(1, 5));
    root_->forgetMessages();
    driver_.doubleClick(driver_.findItem(Role::cell, L"1.6"));
    EXPECT_EQ(told(), "MDCCurRowChanged MDCCurRowDoubleClicked");
    driver_.wheelAt(placeOf(*table, {1, 6}), -1);
    EXPECT_EQ(table->getWindowTop(), 3 * line);
    driver_.type(L"1.77");
    EXPECT_EQ(table->getCurRow(), 77) << "what is typed is found in the current column";
    EXPECT_TRUE(table->bounds().contains(table->getCellArea({1, 77})));
    driver_.key(Key::ctrl | 'C');
    EXPECT_EQ(WindowsClipboard::getText(), L"0.77\t1.77\t2.77\t3.77");
    table->unsetCurPos();
    EXPECT_EQ(table->getCurPos(), XY<int>(-1, -1));
    EXPECT_EQ(Consistency(driver_).fault(), "");
}

TEST_F(Tables, TagsFollowClicksKeysAndDrags) {
    Cells& cells = cells_.emplace_back();
    auto* const table =
        make(cells, TableTagFlag::useRows | TableTagFlag::allowMulti | TableTagFlag::windowsStyle);
    click(*table, {0, 2});
    EXPECT_EQ(tagsOf(cells), "2 ");
    click(*table, {0, 5}, Key::shift);
    EXPECT_EQ(tagsOf(cells), "2 3 4 5 ");
    click(*table, {0, 3}, Key::ctrl);
    EXPECT_EQ(tagsOf(cells), "2 4 5 ");
    click(*table, {0, 7});
    driver_.key(Key::shift | Key::down);
    driver_.key(Key::shift | Key::down);
    driver_.key(Key::shift | Key::up);
    EXPECT_EQ(tagsOf(cells), "7 8 ");
    driver_.key(Key::up);
    EXPECT_EQ(tagsOf(cells), "7 ");
    driver_.key(Key::space);
    EXPECT_EQ(tagsOf(cells), "");
    driver_.moveTo(placeOf(*table, {0, 1}));
    driver_.press(Driver::Button::left);
    for (int const row : {2, 4, 3}) driver_.moveTo(placeOf(*table, {0, row}));
    EXPECT_EQ(tagsOf(cells), "1 2 3 ");
    // Beyond the edge it scrolls.
    driver_.moveTo(table->screenBox().bottomLeft() + XY<int>(50, -30));
    driver_.advance(500);
    EXPECT_GT(table->getWindowTop(), 5 * line);
    driver_.release();
    std::size_t const dragged = cells.tags.size();
    EXPECT_GT(dragged, 12U);
    driver_.advance(500);
    EXPECT_EQ(cells.tags.size(), dragged);
    for (bool const atOnce : {false, true}) {
        cells.tagsAtOnce = atOnce;
        driver_.key(Key::ctrl | 'A');
        EXPECT_EQ(cells.tags.size(), 100U);
        driver_.key(Key::ctrl | 'A');
        EXPECT_EQ(cells.tags.size(), 0U);
    }
    EXPECT_THAT(told(), testing::EndsWith("MDCTagsChanged"));
}

TEST_F(Tables, RowsThatComeLaterAreAskedForOnceAndShownWhenTheyCome) {
    Late& rows = late_.emplace_back(1'000'000);
    rows.setNumKept(256);
    auto* const table = make(rows);
    rows.setTable(table);
    driver_.settle();
    driver_.advance(50);
    ASSERT_EQ(rows.asked, (std::vector<RowRange>{{0, 64}}));
    EXPECT_EQ(rows.getGhostText({0, 0}), L"\u2026");
    auto const before = picture();
    rows.answer(rows.asked[0]);
    driver_.settle();
    EXPECT_EQ(rows.getFieldText({0, 63}), L"63");
    EXPECT_NE(picture(), before);
    // Reading beyond what is seen asks for nothing; going there does, and the rows seen before are dropped.
    EXPECT_EQ(rows.getFieldText({0, 5000}), L"");
    driver_.advance(50);
    EXPECT_EQ(rows.asked.size(), 1U);
    for (unsigned int row = 1000; row < 9000; row += 1000) {
        table->revealRow(row, true);
        driver_.advance(50);
        ASSERT_TRUE(rows.asked.back().contains(row));
        rows.answer(rows.asked.back());
        driver_.advance(50);
        EXPECT_TRUE(rows.isHere(row));
    }
    EXPECT_FALSE(rows.isHere(0));
    // A failure is asked again when the rows are next drawn. Answers may come at once, throw, or end it all.
    rows.forgetRows();
    expectDiagnostic("adaptor failed");
    rows.onRequest = [] { throw std::runtime_error("no line"); };
    driver_.advance(50);
    std::size_t const numAsked = rows.asked.size();
    driver_.advance(500);
    EXPECT_EQ(rows.asked.size(), numAsked);
    rows.onRequest = [&] { rows.answer(rows.asked.back()); };
    table->drawRows();
    driver_.advance(50);
    EXPECT_TRUE(rows.isHere(8000));
    auto dying = std::make_unique<Late>(100);
    dying->setTable(table);
    dying->onRequest = [&] { dying.reset(); };
    table->setDataSource(dying.get());
    driver_.advance(50);
    EXPECT_EQ(dying, nullptr);
    EXPECT_EQ(table->getDataSource(), nullptr);
    table->setDataSource(nullptr);
}

TEST_F(Tables, HeadersSortMoveAndSizeColumns) {
    Cells& cells = cells_.emplace_back();
    auto* const table = make(cells);
    table->setCurPos({0, 10});
    driver_.click(header(L"C1"));
    EXPECT_EQ(table->getCurRow(), 89) << "the current row follows its identity";
    driver_.click(header(L"C1"));
    driver_.click(header(L"C1"));
    driver_.click(header(L"C2"));
    EXPECT_EQ(cells.sorted, "1+ 1- 1+ 2+ ");
    EXPECT_EQ(static_cast<ColumnButton*>(header(L"C2"))->getSortMark(), ColumnButton::SortMark::ascending);
    EXPECT_EQ(static_cast<ColumnButton*>(header(L"C1"))->getSortMark(), ColumnButton::SortMark::none);
    told();
    auto const dragFrom = [&](Glob* button, XY<int> grip, int way, bool isTakenBack = false) {
        XY<int> const from = button->globXYToScreenXY(grip);
        driver_.moveTo(from);
        driver_.press(Driver::Button::left);
        driver_.moveTo(from + XY<int>(way / 2, 0));
        driver_.moveTo(from + XY<int>(way, 0));
        if (isTakenBack) driver_.key(Key::escape);
        driver_.release();
    };
    dragFrom(header(L"C0"), {58, 12}, 30);
    EXPECT_EQ(table->getColumnWidth(0), 90);
    dragFrom(header(L"C0"), {88, 12}, 30, true);
    EXPECT_EQ(table->getColumnWidth(0), 90);
    dragFrom(header(L"C1"), {1, 12}, 10);
    EXPECT_EQ(table->getColumnWidth(0), 100) << "an edge has two sides";
    dragFrom(header(L"C1"), {1, 12}, -10);
    dragFrom(header(L"C0"), {20, 12}, 130);
    EXPECT_EQ(table->viewToData(XY<int>(0, 0)).x, 1);
    EXPECT_EQ(told(), "MDCColOrder");
    EXPECT_EQ(cells.sorted, "1+ 1- 1+ 2+ ") << "a drag is no click";
    driver_.clickAt(header(L"C3")->screenBox().centre(), Driver::Button::right);
    driver_.type(L"C3");
    driver_.key(Key::enter);
    EXPECT_EQ(told(), "MDCColVis");
    EXPECT_TRUE(table->isColumnHidden(3));
    std::string const text = table->columnsText();
    auto* const again = make(cells);
    EXPECT_TRUE(again->restoreColumns(text));
    EXPECT_EQ(again->columnsText(), text);
    EXPECT_FALSE(again->restoreColumns("nothing of the kind"));
    again->autoSizeColumns();
    EXPECT_NE(again->getColumnWidth(0), 90);
    again->resizeColumn(0, 10);
    driver_.doubleClick(Driver::Target(again));
    EXPECT_EQ(Consistency(driver_).fault(), "");
}

TEST_F(Tables, StickyColumnsStayWhileTheOthersScroll) {
    Cells& cells = cells_.emplace_back(50, 20);
    cells.numSticky = 1;
    auto* const table = make(cells);
    EXPECT_EQ(table->getNumStickyColumns(), 1);
    table->setCurPos({15, 0});
    EXPECT_EQ(table->getCellArea({0, 0}).x1, table->getCellArea({0, 5}).x1);
    EXPECT_EQ(table->getCellArea({0, 0}).x1, 0);
    EXPECT_LE(table->getCellArea({15, 0}).x2, 240);
    EXPECT_GE(table->getCellArea({15, 0}).x1, 60);
    EXPECT_EQ(table->positionAt({10, 100}).x, 0);
    cells.isVariable = true;
    table->dataChanged();
    EXPECT_TRUE(table->variableRowHeights());
    EXPECT_EQ(table->getTotalHeight(), 17 * 40 + 33 * line);
    EXPECT_EQ(table->getRowHeight(3), 40);
    // Random scrolls look as if they were painted anew; the fixture compares.
    std::mt19937 random(21);
    for (int i = 0; i < 80; ++i) {
        // Far, and by steps that move what is painted already.
        bool const isFar = i % 8 == 0;
        table->setWindowTop(isFar ? static_cast<std::int64_t>(random() % 1500)
                                  : table->getWindowTop() + static_cast<int>(random() % 120) - 60);
        if (isFar) table->setWindowLeft(static_cast<int>(random() % 1200));
        if (i % 5 == 0) table->setCurRow(static_cast<int>(random() % 50));
        driver_.settle();
        ASSERT_EQ(Consistency(driver_).fault(), "") << i;
    }
}

TEST_F(Tables, WidgetsAndEditorsLieOverCells) {
    Cells& cells = cells_.emplace_back();
    auto* const table = make(cells);
    auto* const button = new Button(L"b", "b", 10, 10);
    EXPECT_TRUE(table->bindWidgetToCell(button, {1, 3}));
    EXPECT_EQ(button->screenBox().translated(XY<int>() - table->screenBox().bottomLeft()),
              table->getCellArea({1, 3}));
    // It goes with its row, and what it says reaches the owner.
    driver_.click(Driver::Target(button));
    EXPECT_THAT(told(), testing::HasSubstr("b"));
    std::swap(cells.order[3], cells.order[6]);
    table->dataChanged();
    EXPECT_EQ(table->getBoundWidget({1, 6}), button);
    std::swap(cells.order[3], cells.order[6]);
    table->dataChanged();
    table->setWindowTop(50 * line);
    EXPECT_FALSE(button->isVisible());
    table->setWindowTop(0);
    EXPECT_TRUE(button->isVisible());
    destroy(button);
    table->setWindowTop(line);
    EXPECT_FALSE(table->getBoundWidget({1, 3}));
    EXPECT_FALSE(table->bindWidgetToCell(root_, {1, 3}) || table->bindWidgetToCell(nullptr, {9, 9}));
    table->setWindowTop(0);
    // Editing: Tab goes from cell to cell with the same widget, Return ends it.
    table->registerFieldEditor(DBFieldTypes::eText, Qv::Ptr<iCellEditor>(new TextEditor));
    table->enableEditing(true);
    table->setCurPos({1, 1});
    driver_.key(Key::function(2));
    ASSERT_TRUE(table->isEditing());
    auto* const box = dynamic_cast<TextBox*>(get_kbd_focus());
    ASSERT_TRUE(box);
    EXPECT_EQ(box->getText(), L"1.1");
    box->highlightAllText(true);
    driver_.type(L"new");
    table->setCurPos({2, 1});
    EXPECT_EQ(get_kbd_focus(), box) << "the same widget for another cell of the type";
    EXPECT_EQ(cells.getFieldText({1, 1}), L"new");
    driver_.type(L"x");
    driver_.key(Key::enter);
    EXPECT_FALSE(table->isEditing());
    EXPECT_EQ(get_kbd_focus(), table);
    EXPECT_THAT(told(), testing::HasSubstr("MDCCurRowChanged MDCDataStored MDCDataStored MDCReturnPressed"));
}

TEST_F(Tables, AdaptorsMayThrowDestroyAndGo) {
    auto cells = std::make_unique<Cells>();
    auto* table = make(*cells, TableTagFlag::useRows);
    expectDiagnostic("adaptor failed");
    cells->throws = true;
    table->drawRows();
    driver_.settle();
    cells->throws = false;
    cells->onClick = [&] { destroy(table); };
    driver_.clickAt(placeOf(*table, {0, 1}));
    EXPECT_FALSE(is_good_glob_ptr(table));
    cells->onClick = {};
    table = make(*cells);
    cells->onClick = [&] { table->setDataSource(nullptr); };
    driver_.clickAt(placeOf(*table, {0, 1}));
    EXPECT_EQ(table->getTotalHeight(), 0);
    table->setDataSource(cells.get());
    table->setRowSwapping(true);
    cells->onClick = {};
    driver_.moveTo(placeOf(*table, {0, 1}));
    driver_.press(Driver::Button::left);
    driver_.moveTo(placeOf(*table, {0, 2}));
    driver_.moveTo(placeOf(*table, {0, 4}));
    driver_.release();
    EXPECT_EQ(cells->order[4], 1U);
    EXPECT_THAT(told(), testing::HasSubstr("MDCRowSwap"));
    table->setDataSource(nullptr);
    cells.reset();
    table->setEmptyLabel(L"Nothing");
    driver_.settle();
    driver_.key(Key::down);
}

} // namespace
} // namespace wainscot
