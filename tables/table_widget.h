#pragma once

#include "foundation/focusable.h"
#include "foundation/type_ahead.h"
#include "host/drawing/uif_std.h"
#include "host/drawing/word_wrapping_text_renderer.h"
#include "host/events/one_shot_timer.h"
#include "host/objects/described_items.h"
#include "tables/cell_editor.h"
#include "tables/model/column_order.h"
#include "tables/model/row_heights.h"
#include "tables/model/row_notices.h"
#include "tables/model/table_keys.h"
#include "tables/model/tag_rules.h"
#include "tables/row_bars.h"
#include "tables/table_columns.h"

#include <map>
#include <memory>
#include <set>

namespace wainscot {

class TableBody;
class TableHeader;

/// A table of rows and columns over data that it does not own: an `iTableAdaptor` answers for every cell in
/// sight. The table keeps a current position, scrolls, sizes, moves and hides columns, lets the user pick
/// rows ("tags", which the adaptor holds) and lays a widget over the cell that is being edited.
///
/// View positions count the columns that are shown, in their order on screen; data positions count those of
/// the adaptor. Rows are the same in both.
///
/// The messages go to the parent, queued, with the table as sender.
class WAINSCOT_API TableWidget : public Focusable<StandardPanel>,
                                 private TableKeyView,
                                 private DescribedItems {
public:
    using iCellEditor = wainscot::iCellEditor;
    using Text = LightweightString<wchar_t>;

    static constexpr LightweightString<char> columnOrderChangedMsg{"MDCColOrder"};
    static constexpr LightweightString<char> columnVisiblityChangedMsg{"MDCColVis"};
    static constexpr LightweightString<char> rowSwapMsg{"MDCRowSwap"};
    static constexpr LightweightString<char> rowVisiblityChangedMsg{"MDCRowVis"};
    static constexpr LightweightString<char> dataStoredMsg{"MDCDataStored"};
    static constexpr LightweightString<char> returnPressedMsg{"MDCReturnPressed"};
    static constexpr LightweightString<char> tagsChangedMsg{"MDCTagsChanged"};
    static constexpr LightweightString<char> currentRowDoubleClickedMsg{"MDCCurRowDoubleClicked"};
    static constexpr LightweightString<char> currentRowChangedMsg{"MDCCurRowChanged"};
    static constexpr LightweightString<char> copyRefusedMsg{"MDCCopyRefused"};
    // What the widgets of cell editors send.
    static constexpr LightweightString<char> editReturnMsg{"WSEditReturn"};
    static constexpr LightweightString<char> editExitMsg{"WSEditExit"};
    static constexpr LightweightString<char> lineAddedMsg{"WSLineAdded"};
    static constexpr LightweightString<char> editDoubleClickMsg{"WSEditDoubleClick"};
    enum Messages {
        columnOrderChanged,
        columnVisibilityChanged,
        rowsSwapped,
        rowVisibilityChanged,
        dataStored,
        returnPressed,
        tagsChanged,
        currentRowDoubleClicked,
        currentRowChanged,
        copyRefused,
    };
    static constexpr MessageInfo messageTable[] = {
        {"column order", MessageInfo::fixed, columnOrderChangedMsg.view(), MessageInfo::queued, 0,
         "the user has moved a column"},
        {"column visibility", MessageInfo::fixed, columnVisiblityChangedMsg.view(), MessageInfo::queued, 0,
         "the user has shown or hidden a column"},
        {"rows swapped", MessageInfo::fixed, rowSwapMsg.view(), MessageInfo::queued, 0,
         "the user has dragged a row onto another one, after `setRowSwapping(true)`"},
        {"row visibility", MessageInfo::fixed, rowVisiblityChangedMsg.view(), MessageInfo::queued, 0,
         "the adaptor shows other rows, after `rowVisibilityHasChanged`"},
        {"stored", MessageInfo::fixed, dataStoredMsg.view(), MessageInfo::queued, 0,
         "an edited value was stored"},
        {"return", MessageInfo::fixed, returnPressedMsg.view(), MessageInfo::queued, 0, "Return was pressed"},
        {"tags", MessageInfo::fixed, tagsChangedMsg.view(), MessageInfo::queued, 0,
         "the user has tagged or untagged rows"},
        {"double click", MessageInfo::fixed, currentRowDoubleClickedMsg.view(), MessageInfo::queued, 0,
         "the current row was clicked twice"},
        {"current row", MessageInfo::fixed, currentRowChangedMsg.view(), MessageInfo::queued, 0,
         "another row is current"},
        {"copy refused", MessageInfo::fixed, copyRefusedMsg.view(), MessageInfo::queued, 0,
         "Ctrl+C on more rows than can be copied"},
    };

    enum KeyAction { pressReturn, tagEverything, toggleTag, copyRows };
    /// Besides those of `TableKeys::keyTable`.
    static constexpr KeyRow<KeyAction> keyTable[] = {
        {Key::enter, pressReturn, "tells the owner"},
        {Key::ctrl | 'A', tagEverything, "tags all rows, or none"},
        {Key::space, toggleTag, "tags the current row, or untags it"},
        {Key::ctrl | 'C', copyRows, "copies the tagged rows, or the current one, as text"},
    };

    enum HighlightFlags : unsigned int { highlightRow = 1, highlightField = 2 };
    enum StyleFlags : unsigned int {
        /// The scroll bars are seen only while the pointer is in the table.
        barsUnderPointer = 16,
        /// Room at the end of the headers, as wide as a scroll bar and its indent.
        insetHeader = 32,
        /// There are no headers.
        hidesHeader = 8,
        /// All rows have the same ground.
        plainRows = 64,
    };

    class WAINSCOT_API InitArgs : public StandardPanel::InitArgs {
    public:
        using StandardPanel::InitArgs::InitArgs;

        /// Null = the table stays empty until `setDataSource`.
        iTableAdaptor* adaptor = nullptr;
        unsigned int styleFlags = 0;
        /// The highlight flags at first; 0 = the current row is highlighted.
        unsigned short initValue = 0;
    };

    explicit TableWidget(InitArgs const& args);
    ~TableWidget() override;

    // --- Data
    /// Another adaptor, or null: makes the columns anew and goes back to the top.
    void setDataSource(iTableAdaptor* adaptor);
    /// Null as well when it has died.
    iTableAdaptor* getDataSource() const {
        return adaptorLife_ && adaptorLife_->alive() ? adaptor_ : nullptr;
    }
    /// To be called when rows have changed. Current position and view stay with their rows where the adaptor
    /// names identities, else with their numbers.
    void dataChanged(RowNotice const& notice = {});
    /// The same for an adaptor that shows other rows than before; tells the owner.
    void rowVisibilityHasChanged();
    /// Asks for the columns again; those whose identifiers are known keep their places and widths.
    void rebuildColumns();
    /// No rows and no columns any more.
    void clear() { setDataSource(nullptr); }
    /// To the top, without a current position.
    void resetView();

    // --- Current position
    /// Makes a view position current and, with `reveal` other than 0, brings it into sight. False when there
    /// is no such cell, or when it cannot be current.
    bool setCurPos(XY<int> const& position, unsigned int reveal = 1);
    /// (-1, -1) while there is none.
    XY<int> getCurPos() const { return current_; }
    int getCurRow() const { return current_.y; }
    int getCurCol() const { return current_.x; }
    bool setCurRow(int row);
    bool setCurCol(int column);
    void unsetCurPos();

    // --- Scrolling
    /// How many pixels of the rows lie above the view; brought to what is possible.
    void setWindowTop(std::int64_t top, eRedrawFlag redraw = eRedrawYes);
    std::int64_t getWindowTop() const { return windowTop_; }
    /// Scrolls as little as possible until a row is seen; with `centre` until it is in the middle.
    void revealRow(unsigned int row, bool centre = false, eRedrawFlag redraw = eRedrawYes);
    /// Down by so many lines.
    void scroll(int lines);
    void setWindowLeft(int left);
    int getWindowLeft() const { return windowLeft_; }

    // --- Rows
    /// The height of rows whose adaptor gives none; 0 = the standard one.
    void setLineHeight(unsigned short height);
    unsigned short getLineHeight() const;
    unsigned short getRowHeight(unsigned int row) const { return heights_.heightOf(row); }
    bool variableRowHeights() const { return heights_.isVariable(); }
    std::int64_t getTotalHeight() const { return heights_.total(); }
    /// The rows in sight, with fractions.
    RowHeights::Visible getVisibleRows() const;
    /// How many rows of the line height the view shows.
    int numLines() const override;
    void setFont(LightweightString<char> const& name, unsigned short size);
    Glib::FontDesc getFont() const { return font_.value_or(UifStd::getFont()); }
    /// Shown while there are no rows.
    void setEmptyLabel(UIString const& label);

    // --- Positions
    XY<int> viewToData(XY<int> const& position) const { return order_.viewToData(position); }
    XY<int> dataToView(XY<int> const& position) const { return order_.dataToView(position); }
    bool validRow(int row) const { return row >= 0 && row < static_cast<int>(heights_.count()); }
    bool validViewColumn(int column) const { return order_.validViewColumn(column); }
    bool validDataColumn(int column) const { return order_.validDataColumn(column); }
    bool validViewPos(XY<int> const& position) const {
        return validViewColumn(position.x) && validRow(position.y);
    }
    bool validDataPos(XY<int> const& position) const {
        return validDataColumn(position.x) && validRow(position.y);
    }
    /// The view position under a place in the table's coordinates; -1 for what is beside rows and columns.
    XY<int> positionAt(XY<int> const& place) const;
    /// Where a cell lies in the table's coordinates, also when it is out of sight.
    IntBox getCellArea(XY<int> const& position) const;

    // --- Columns
    /// By identifier, by title and by header; -1 when there is none. Data columns.
    int findColumn(LightweightString<char> const& identifier) const;
    int findColumn(LightweightString<wchar_t> const& title) const;
    int findColumn(Glob const* header) const;
    unsigned short getColumnWidth(unsigned short dataColumn) const;
    /// View columns.
    bool swapColumns(unsigned short a, unsigned short b);
    bool moveColumn(unsigned short from, unsigned short to);
    /// Gives a data column a width, not below its least one.
    void resizeColumn(unsigned short dataColumn, double width);
    void setColumnHidden(unsigned short dataColumn, bool hidden);
    bool isColumnHidden(unsigned short dataColumn) const { return order_.isHidden(dataColumn); }
    void autoSizeColumns() { setupColumnWidths(true); }
    void setupColumnWidths(bool force);
    void stretchColumnsToFit();
    /// Fits a data column to its title and the rows in sight.
    void fitColumn(unsigned short dataColumn);
    int getNumStickyColumns() const { return order_.numStickyViewColumns(); }
    /// Order, widths and hidden columns as a text, and back; for the preferences. False when the text is not
    /// of `columnsText`.
    std::string columnsText() const;
    bool restoreColumns(std::string_view text);
    /// Sorts by a data column as a click on its header does.
    void sortBy(unsigned short dataColumn);
    /// -1 when there is none, or when it was sorted in reverse.
    int getSortColumn() const { return sortColumn_; }

    // --- Tags
    void setTagFlags(unsigned int flags);
    unsigned int getTagFlags() const { return tagFlags_; }
    void setUseRowsForTags(bool use) { setTagFlag(TableTagFlag::useRows, use); }
    void setAllowMultiTags(bool allow) { setTagFlag(TableTagFlag::allowMulti, allow); }
    void setWindowsStyleTagging(bool on) { setTagFlag(TableTagFlag::windowsStyle, on); }
    void setCurrentTaggedOnDemand(bool on) { setTagFlag(TableTagFlag::currentOnDemand, on); }
    /// What a click on the tag column does, with Shift and Ctrl as they are held now.
    void handleTagColumnClick(unsigned int row);
    /// Hands tags to the adaptor and paints the rows; only these data columns when some are named.
    void setTags(std::map<unsigned int, bool> const& tags, std::set<unsigned short>& columns, bool byUser);
    void tagAll();
    void invertTags();

    // --- Look
    void setHighlightFlags(unsigned int flags);
    unsigned int getHighlightFlags() const { return highlightFlags_; }
    void setHighlightCurrentRow(bool on) { setHighlightFlag(highlightRow, on); }
    void setHighlightCurrentField(bool on) { setHighlightFlag(highlightField, on); }
    void drawRow(unsigned int row);
    void drawRows();
    /// A data position.
    void drawField(XY<int> const& cell);
    unsigned int getStyleFlags() const { return styleFlags_; }

    // --- Widgets in cells
    /// Keeps a widget, which the table then owns, over a cell (a data position). Null takes the one that is
    /// there away and destroys it. False when it is refused.
    bool bindWidgetToCell(Glob* widget, XY<int> const& cell);
    Glob* getBoundWidget(XY<int> const& cell) const;

    // --- Editing
    void registerFieldEditor(DBFieldTypes::eType type, Qv::Ptr<iCellEditor> editor);
    iCellEditor* findEditorForFieldType(DBFieldTypes::eType type) const;
    /// Whether cells can be edited; not at first.
    void enableEditing(bool enable);
    bool isEditingEnabled() const { return editingEnabled_; }
    /// Begins or ends editing at a view position; one that is not valid stands for the current one.
    void setEditingEnabled(bool enable, XY<int> position);
    bool isEditing() const { return editor_ != nullptr; }
    void saveCurrentFieldData();

    /// Whether the user may drag a row onto another one, so that they change places.
    void setRowSwapping(bool on) { rowSwapping_ = on; }

    // --- Called by its parts
    void drawCells(Glob& body);
    bool pressAt(Event const& event);
    void dragTo(Event const& event);
    void endPress(PressEnd how);
    void hoverAt(XY<int> const* place);
    bool wheel(Event const& event);
    MouseCursorID cursorAt(XY<int> const& place) const;
    bool tipAt(XY<int> const& place, TooltipDetails& details) const;
    std::vector<std::unique_ptr<DataColumn>> const& columns() const { return columns_; }
    ColumnOrder const& columnOrder() const { return order_; }
    /// The left edge of a view column in the table's body, and whether it is sticky.
    int leftOfColumn(int viewColumn) const;
    int stickyWidth() const;
    void columnMovedByUser(int from, int to);
    void columnHiddenByUser(int dataColumn, bool hidden);
    bool insetsHeader() const { return (styleFlags_ & insetHeader) != 0; }

    // Glob
    int handleKeyboardEvent(int keyCode) override;
    int handleMessageEvent(LightweightString<char> name, Glob* sender) override;
    void handleMouseContainment(bool inside) override;
    void handleKbdFocus() override;
    void reshape() override;
    void setPalette(Palette const& palette) override;
    void setActive(bool active, eRedrawFlag redraw = eRedrawYes) override;
    void handleLookChange(LookChange changes) override;
    void handleDetached() override;
    void describe(GlobDescription& description) const override;
    /// Rows, and the cells in them.
    DescribedItems* describedItems() override { return this; }

protected:
    virtual void init(unsigned short value);
    /// The ground of a cell, before its text.
    virtual void drawCellBackground(iTableAdaptor::CellContext& cell);
    virtual void drawCellText(iTableAdaptor::CellContext& cell);
    virtual void positionEditingWidget();
    /// Below the current cell.
    XY<int> menuPlaceForKeys() const override;

private:
    struct CellLess {
        bool operator()(XY<int> const& a, XY<int> const& b) const {
            return a.y != b.y ? a.y < b.y : a.x < b.x;
        }
    };

    // TableKeyView
    unsigned int numRows() const override { return heights_.count(); }
    int numColumns() const override { return order_.numViewColumns(); }
    bool isEditable(XY<int> const& position) const override;
    bool canBeCurrent(XY<int> const& position) const override;
    double firstVisible() const override { return getVisibleRows().first; }
    double lastVisible() const override { return getVisibleRows().last; }

    // DescribedItems
    std::size_t numItems(ItemKey in) const override;
    Range itemsInSight(ItemKey in) const override;
    ItemKey itemAt(ItemKey in, std::size_t index) const override;
    bool describeItem(ItemKey item, GlobDescription& description) const override;
    bool performItemAction(ItemKey item, std::uint32_t action) override;

    /// Asks the adaptor. A failure is counted, and the answer is then `otherwise`.
    template <class Ask, class Answer>
    Answer ask(Ask const& question, Answer otherwise) const;
    template <class Act>
    void tellAdaptor(Act const& act);

    void noteIdentity();
    void columnsChanged();
    void revealColumn(int viewColumn);
    bool showsBars() const;
    int widthOfText(std::size_t dataColumn, unsigned int row, iFont const& font) const;
    void buildColumns(bool keepsWidths);
    void readRows();
    class Reading;
    ColumnMetrics metrics() const;
    std::vector<ColumnWidth> widthsForSizing();
    void setupFirstWidths();
    void takeWidths(std::vector<ColumnWidth> const& widths);
    int widestText(std::size_t dataColumn) const;
    void determineColumnVisibility();
    int totalColumnWidth() const;
    int visibleWidth() const;
    int visibleHeight() const;
    void layOut();
    void showBars() {
        bars_.show({visibleWidth(), visibleHeight()}, {heights_.total(), totalColumnWidth()}, windowTop_,
                   windowLeft_);
    }
    /// Where the mark of the focus is.
    enum class Mark : unsigned char { none, onCell, roundCells };
    Mark focusMark() const;
    void scrolled(std::int64_t way = 0, Mark before = Mark::none);
    void placeBoundWidgets();
    void moveBoundWidgets(RowNotice const& notice);
    std::uint64_t identityOf(int row) const;
    /// Where a row lies on the body; far away for what is far out of sight.
    IntBox rowBox(unsigned int row) const;
    IntBox bodyBoxOf(XY<int> const& position) const;
    void drawRowAt(CanvasRenderer& renderer, XY<int> const& origin, unsigned int row);
    void drawCell(iTableAdaptor::CellContext& cell, bool isTagColumn);
    void drawWrapped(iTableAdaptor::CellContext& cell, Text const& text, IntBox const& area,
                     Colour const& ink);
    void drawTagBox(iTableAdaptor::CellContext& cell);
    void drawEmptyLabel(CanvasRenderer& renderer, IntBox const& body);
    void report(Messages which);
    void setTagFlag(unsigned int flag, bool on) { setTagFlags(on ? tagFlags_ | flag : tagFlags_ & ~flag); }
    void setHighlightFlag(unsigned int flag, bool on) {
        setHighlightFlags(on ? highlightFlags_ | flag : highlightFlags_ & ~flag);
    }
    bool isTagged(unsigned int row) const;
    bool showsTags() const { return (tagFlags_ & TableTagFlag::useRows) != 0; }
    bool giveTags(std::map<unsigned int, bool> const& tags, std::set<unsigned short>& columns, bool byUser);
    void clickTag(unsigned int row, std::uint32_t modifiers);
    void tagRange(int from, int to);
    void tagCurrentOnDemand();
    bool tagAllAtOnce();
    bool untagManyAtOnce(TagRules::Click const& click);
    void forgetRange() { rangeFrom_ = rangeTo_ = -1; }
    void scrollWhileDragging();
    void dragOverRows();
    bool performKey(KeyAction action);
    void moveByKey(std::uint32_t key, XY<int> const& to);
    bool typeAhead(std::uint32_t key);
    void copy();
    bool isTagColumnAt(int viewColumn) const;
    void moveBar(RowBars::Move const& move);
    void endEditing(bool save);
    void beginEditing(XY<int> const& position);
    void initEditingWidgetForNewField();
    void storeCurrentFieldData();
    void showSortMarks();

    iTableAdaptor* adaptor_ = nullptr;
    std::optional<LifeGuard> adaptorLife_;
    std::vector<std::unique_ptr<DataColumn>> columns_;
    ColumnOrder order_;
    RowHeights heights_;
    TableHeader* header_ = nullptr;
    TableBody* body_ = nullptr;
    RowBars bars_;
    struct Bound {
        HandlerRef<Glob> widget;
        /// Of the row; 0 = none.
        std::uint64_t identity = 0;
    };
    std::map<XY<int>, Bound, CellLess> boundWidgets_;
    std::map<int, Qv::Ptr<iCellEditor>> editors_;
    Qv::Ptr<iCellEditor> editor_;
    HandlerRef<Glob> editingWidget_;
    XY<int> editing_{-1, -1};
    XY<int> current_{-1, -1};
    XY<int> hovered_{-1, -1};
    UIString emptyLabel_;
    std::optional<Glib::FontDesc> font_;
    TypeAhead typed_;
    unsigned int styleFlags_;
    unsigned int highlightFlags_ = highlightRow;
    unsigned int tagFlags_ = 0;
    unsigned short lineHeight_ = 0;
    std::int64_t windowTop_ = 0;
    int windowLeft_ = 0;
    int sortColumn_ = -1;
    int shownSortColumn_ = -1;
    bool isShownReversed_ = false;
    /// The left edges of the view columns as they are not scrolled, and the end of the last.
    std::vector<int> lefts_{0};
    /// Of the current row; 0 = none.
    std::uint64_t currentIdentity_ = 0;
    bool isLayingOut_ = false;
    /// The adaptor is being asked for its rows, or its columns; what it does meanwhile changes nothing.
    bool isReading_ = false;
    /// Changes with the columns: who has asked the adaptor sees that they are others.
    unsigned int columnsNumber_ = 0;
    /// The widths are those of the adaptor, for this width of the view; nobody has seen or changed them.
    bool hasFirstWidths_ = false;
    int widthsFor_ = -1;
    bool editingEnabled_ = false;
    bool rowSwapping_ = false;
    bool isDragging_ = false;
    bool hasTagged_ = false;
    /// The rows that a drag, or Shift with the arrow keys, has tagged.
    int rangeFrom_ = -1;
    int rangeTo_ = -1;
    XY<int> pointer_;
    OneShotTimer scrollTimer_;
    /// While the cells are painted.
    Qv::Ptr<iFont> paintFont_;
    /// The lines of wrapped cells.
    struct Wrapped {
        Text text;
        int width;
        Glib::FontDesc font;
        Glib::WordWrappingTextRenderer renderer;
    };
    std::map<XY<int>, Wrapped, CellLess> wrapped_;
    /// The row that was pressed, and over which it is dragged; -1 = none.
    int pressedRow_ = -1;
    int dropRow_ = -1;
    XY<int> pressedCell_;
    DBFieldTypes::eType editingType_ = DBFieldTypes::eNone;
};

} // namespace wainscot
