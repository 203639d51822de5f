#pragma once

#include "foundation/focusable.h"
#include "foundation/key_table.h"
#include "foundation/report.h"
#include "foundation/type_ahead.h"
#include "host/events/key_codes.h"
#include "host/events/one_shot_timer.h"
#include "host/messages/notifier.h"
#include "host/objects/described_items.h"
#include "tables/model/tree_rows.h"
#include "tables/row_bars.h"
#include "tables/tree_view_adaptor.h"

namespace wainscot {

class TreeBody;

/// A hierarchy as an indented list whose branches open and close. An adaptor supplies it branch by branch;
/// the tree keeps what is open as rows, and knows items by their names.
///
/// One item is selected; the keys begin there. Where `options` allow it, the user tags several. The selected
/// name stays when its item is hidden in a closed branch, or gone; tags go with their rows.
///
/// Listeners are called at once. The messages of the same meaning go to the parent, queued, with the tree as
/// sender.
class WAINSCOT_API TreeView : public Focusable<StandardPanel>, private DescribedItems {
public:
    using Text = TreeItem::Text;
    using Item = TreeItem;

    enum eEventType {
        /// The user has selected another item.
        eItemSelected = 1,
        /// The user has clicked an item twice, or pressed Return on it.
        eItemActivated = 2,
        /// Other items are tagged.
        eTagsChanged = 3,
        eItemRenamed = 4,
        /// Something was dropped on the tree.
        eItemDropped = 5,
        eBranchExpanded = 11,
        eBranchCollapsed = 12,
        /// After a change the selected item is not among the rows any more.
        eSelectionHidden = 13,
    };
    enum eBoundsType {
        eRowBounds,
        /// What opens and closes a branch.
        eExpanderBounds,
        eIconBounds,
        eLabelBounds,
    };
    enum eScrollBarDisplay {
        eScrollBarsAsNeeded,
        eScrollBarsUnderPointer,
        eScrollBarsNever,
    };
    /// The options word.
    enum Options : unsigned int {
        /// Only rows in one branch are tagged together.
        tagsSiblingsOnly = 1,
        /// The user may tag several rows.
        allowsTags = 2,
    };

    static constexpr LightweightString<char> itemSelectedMsg{"tree_selected"};
    static constexpr LightweightString<char> itemActivatedMsg{"tree_activated"};
    static constexpr LightweightString<char> tagsChangedMsg{"tree_tags"};
    static constexpr LightweightString<char> itemRenamedMsg{"tree_renamed"};
    static constexpr LightweightString<char> itemDroppedMsg{"tree_dropped"};
    static constexpr LightweightString<char> branchExpandedMsg{"tree_expanded"};
    static constexpr LightweightString<char> branchCollapsedMsg{"tree_collapsed"};
    static constexpr LightweightString<char> selectionHiddenMsg{"tree_selection_hidden"};
    static constexpr MessageInfo messageTable[] = {
        {"selected", MessageInfo::fixed, itemSelectedMsg.view(), MessageInfo::queued, eItemSelected,
         "the user has selected another item"},
        {"activated", MessageInfo::fixed, itemActivatedMsg.view(), MessageInfo::queued, eItemActivated,
         "an item was clicked twice, or Return was pressed on it"},
        {"tags", MessageInfo::fixed, tagsChangedMsg.view(), MessageInfo::queued, eTagsChanged,
         "other items are tagged"},
        {"renamed", MessageInfo::fixed, itemRenamedMsg.view(), MessageInfo::queued, eItemRenamed,
         "the user has renamed an item"},
        {"dropped", MessageInfo::fixed, itemDroppedMsg.view(), MessageInfo::queued, eItemDropped,
         "something was dropped on the tree"},
        {"expanded", MessageInfo::fixed, branchExpandedMsg.view(), MessageInfo::queued, eBranchExpanded,
         "a branch was opened"},
        {"collapsed", MessageInfo::fixed, branchCollapsedMsg.view(), MessageInfo::queued, eBranchCollapsed,
         "a branch was closed"},
        {"selection hidden", MessageInfo::fixed, selectionHiddenMsg.view(), MessageInfo::queued,
         eSelectionHidden, "the selected item is not among the rows any more"},
    };

    enum KeyAction {
        goUp,
        goDown,
        goToFirst,
        goToLast,
        pageUp,
        pageDown,
        enterBranch,
        leaveBranch,
        expandAllBelow,
        expandThis,
        collapseThis,
        activate,
        rename,
        toggleTag,
        tagEverything,
    };
    static constexpr KeyRow<KeyAction> keyTable[] = {
        {Key::up, goUp, "to the row above"},
        {Key::shift | Key::up, goUp, "the same, and tags it"},
        {Key::ctrl | Key::up, goUp, "the same, and leaves the tags"},
        {Key::down, goDown, "to the row below"},
        {Key::shift | Key::down, goDown, "the same, and tags it"},
        {Key::ctrl | Key::down, goDown, "the same, and leaves the tags"},
        {Key::home, goToFirst, "to the first row; Shift tags all between"},
        {Key::shift | Key::home, goToFirst, "to the first row; Shift tags all between"},
        {Key::ctrl | Key::home, goToFirst, "the same, and leaves the tags"},
        {Key::end, goToLast, "to the last row; Shift tags all between"},
        {Key::shift | Key::end, goToLast, "to the last row; Shift tags all between"},
        {Key::ctrl | Key::end, goToLast, "the same, and leaves the tags"},
        {Key::pageUp, pageUp, "up by the rows that are seen; Shift tags all between"},
        {Key::shift | Key::pageUp, pageUp, "up by the rows that are seen; Shift tags all between"},
        {Key::ctrl | Key::pageUp, pageUp, "the same, and leaves the tags"},
        {Key::pageDown, pageDown, "down by the rows that are seen; Shift tags all between"},
        {Key::shift | Key::pageDown, pageDown, "down by the rows that are seen; Shift tags all between"},
        {Key::ctrl | Key::pageDown, pageDown, "the same, and leaves the tags"},
        {Key::right, enterBranch, "opens a branch; goes into one that is open"},
        {Key::left, leaveBranch, "closes a branch; goes out of one that is closed"},
        {'*', expandAllBelow, "opens a branch and all in it"},
        {'+', expandThis, "opens a branch"},
        {'-', collapseThis, "closes a branch"},
        {Key::enter, activate, "tells the owner"},
        {Key::function(2), rename, "edits the name, where the adaptor allows it"},
        {Key::space, toggleTag, "tags the row, or untags it"},
        {Key::ctrl | Key::space, toggleTag, "tags the row, or untags it"},
        {Key::ctrl | 'A', tagEverything, "tags all rows, or none"},
    };

    /// One row of the view.
    struct WAINSCOT_API ItemEx {
        ItemEx() = default;
        ItemEx(Item const& of, bool expanded, std::uint16_t depthOf)
            : item(of), isExpanded(expanded), depth(depthOf) {}

        Item item;
        bool isExpanded = false;
        /// 0 for the uppermost rows; those in a branch have its depth plus 1.
        std::uint16_t depth = 0;
        /// The branch in which it lies; empty for the uppermost rows.
        Text parentName;
        /// Its children are not known yet.
        bool isPending = false;
        /// Nothing = the colour of the palette.
        std::optional<Colour> textColour;
        /// The box in which its name is edited; null = it is not.
        HandlerRef<Glob> nameBox;
    };

    class WAINSCOT_API InitArgs : public StandardPanel::InitArgs {
    public:
        using StandardPanel::InitArgs::InitArgs;

        /// Null = the tree stays empty until `setAdaptor`.
        iTreeViewAdaptor* adaptor = nullptr;
        unsigned int options = 0;
        eScrollBarDisplay scrollBars = eScrollBarsAsNeeded;
    };

    explicit TreeView(InitArgs const& args);
    ~TreeView() override;

    // --- Data
    /// Another adaptor, or null. Selection, tags and remembered branches are forgotten; nobody is told.
    void setAdaptor(iTreeViewAdaptor* adaptor);
    /// Null as well when it has died.
    iTreeViewAdaptor* getAdaptor() const { return static_cast<iTreeViewAdaptor*>(rows_.source()); }
    /// The items have changed: lists all open branches again. Tags and the view stay with their rows.
    void refresh();
    /// The same for one open branch and those in it; an empty name stands for all. A row that is no open
    /// branch is drawn again.
    void refresh(Text const& name);

    // --- Branches
    /// Opens a branch that is among the rows. True when it was opened.
    bool expand(Text const& name);
    bool collapse(Text const& name);
    /// Opens all branches, or a branch and all in it. Listeners hear of it once.
    void expandAll();
    bool expandAll(Text const& name);
    bool isExpanded(Text const& name) const;
    /// Opens what is closed and closes what is open, as the user does. False when the row is no branch.
    bool toggleBranchExpansion(unsigned int row);
    std::vector<Item> getExpandedItems() const { return rows_.expandedItems(); }

    // --- Rows
    unsigned int numRows() const { return rows_.numRows(); }
    /// An empty one when there is no such row.
    ItemEx getRow(unsigned int row) const;
    /// -1 when it is not among the rows. Where several have the name, the first one.
    int findItem(Text const& name) const;
    std::optional<ItemEx> findItemByName(Text const& name) const;
    /// -1 also when it is out of sight.
    int findVisibleItem(Text const& name) const;
    bool isPresent(Text const& name) const { return findItem(name) >= 0; }
    /// The row at a place in the tree's coordinates; -1 beside the rows.
    int getItemFromPosition(XY<int> const& place) const;
    /// In the tree's coordinates, also out of sight; empty when there is no such row or part.
    IntBox getItemBounds(unsigned int row, eBoundsType type) const;
    std::vector<Item> getVisibleItems() const;
    /// 0 = the standard one.
    void setRowHeight(unsigned short height);
    unsigned short getRowHeight() const;

    // --- Scrolling
    /// Scrolls as little as possible until the row is seen. False when there is no such row.
    bool reveal(unsigned int row);
    bool reveal(Text const& name);
    /// Whether some of it is seen, and all of it.
    bool isVisible(unsigned int row) const;
    bool isVisible(Text const& name) const;
    bool isFullyVisible(unsigned int row) const;
    /// How many pixels of the rows lie above the view; brought to what is possible.
    void setWindowTop(std::int64_t top);
    std::int64_t getWindowTop() const { return windowTop_; }
    void setWindowLeft(int left);
    int getWindowLeft() const { return windowLeft_; }
    void setScrollbarDisplay(eScrollBarDisplay display);

    // --- Selection
    /// Nobody is told. The item need not be there yet.
    void setSelectedItem(Text const& name);
    /// As a click does: reveals and tags it, and tells. False when it is not among the rows.
    bool changeSelectedItem(Text const& name);
    /// Nobody is told.
    void clearSelection();
    /// Nothing while none is selected.
    std::optional<Text> getSelectedItem() const { return selected_; }

    // --- Tags
    void setOptions(unsigned int options) { options_ = options; }
    unsigned int getOptions() const { return options_; }
    bool canTag(unsigned int row) const;
    /// Whether two rows may be tagged together.
    bool canTagBoth(unsigned int a, unsigned int b) const;
    bool isTagged(unsigned int row) const { return tags_.contains(row); }
    /// In the order of the rows.
    std::vector<Item> getTaggedItems() const;
    unsigned int getNumTagged() const { return tags_.count(); }
    bool anyTaggedItems() const { return !tags_.empty(); }
    /// Nobody is told.
    void clearTags();

    // --- Renaming
    /// Lets the user edit the name of an item in its place. False when it is not among the rows, or when the
    /// adaptor does not allow it.
    bool enableEditing(Text const& name);
    bool isEditing() const { return static_cast<bool>(nameBox_); }

    // --- Listeners
    using Listener = std::function<void(eEventType)>;
    /// It is told until the answer dies or is ended. It may do anything, and destroy the tree.
    [[nodiscard]] NotifierSubscription addListener(Listener listener);

    // --- Called by its parts
    void drawRows(Glob& body);
    bool pressAt(Event const& event);
    /// True when a drag of the item has begun.
    bool dragTo(Event const& event);
    void endPress(bool isReleased);
    bool wheel(Event const& event);
    bool tipAt(XY<int> const& place, TooltipDetails& details) const;
    bool canDropAt(DragDropItem const& item, XY<int> const& place, eDropReason reason);
    bool dropAt(DragDropItem& item, XY<int> const& place, eDropReason reason);
    MouseCursorID dropCursorAt(DragDropItem const& item, XY<int> const& place) const;
    void dragHovers(DragDropItem const& item, XY<int> const& place, bool inside);
    void dragEnded() { draggedNames_.clear(); }

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
    /// The menu of the tagged items, or of the selected one; beside the rows that of no items.
    void reviewMenu(Event const* event) override;
    void describe(GlobDescription& description) const override;
    DescribedItems* describedItems() override { return this; }

protected:
    /// Tells the listeners, and then the parent.
    virtual void informListeners(eEventType type);
    /// The mark that shows where a dragged item would go: on a row, or before it.
    virtual void indicateAcceptability(CanvasRenderer& renderer, IntBox const& row, bool isBefore);
    /// Below the text of the row at which the keys are.
    XY<int> menuPlaceForKeys() const override;
    /// Letters are typed to find an item by the text that is shown.
    virtual bool handleTextTyped(std::uint32_t key);

private:
    /// Where a dragged item would go.
    struct Drop {
        enum Kind : unsigned char { none, onRow, beforeRow, onTree };
        Kind kind = none;
        int row = -1;
        Text target;
        Text before;
        /// Of what would lie there.
        unsigned int depth = 0;
        bool operator==(Drop const&) const = default;
    };

    // DescribedItems
    std::size_t numItems(ItemKey in) const override;
    Range itemsInSight(ItemKey in) const override;
    ItemKey itemAt(ItemKey in, std::size_t index) const override;
    bool describeItem(ItemKey item, GlobDescription& description) const override;
    bool performItemAction(ItemKey item, std::uint32_t action) override;

    template <class Ask, class Answer>
    Answer ask(Ask const& question, Answer otherwise) const;
    Text textOf(Item const& item) const;
    /// How the rows are placed.
    int indent() const;
    int expanderLeft(unsigned int depth) const;
    int labelLeft(unsigned int depth, bool hasIcon) const;
    IntBox rowBox(unsigned int row) const;
    std::optional<unsigned int> rowAtHeight(int y) const;
    std::int64_t totalHeight() const { return std::int64_t{numRows()} * getRowHeight(); }
    int visibleHeight() const;
    int visibleWidth() const;
    RowRange rowsInSight() const;
    void layOut();
    void showBars() {
        bars_.show({visibleWidth(), visibleHeight()}, {totalHeight(), contentWidth_}, windowTop_,
                   windowLeft_);
    }
    RowBars::Display barsDisplay() const;
    void scrolled(std::int64_t way = 0, bool keepsMark = true);
    bool marksRow() const;
    void moveBar(RowBars::Move const& move);
    void takeWidth(int width);
    /// Of all that is shown of a row.
    int widthOf(TreeRows::Row const& data, bool hasIcon, int textWidth) const;
    /// The same, where the adaptor has not been asked yet.
    int widthOf(TreeRows::Row const& data) const;
    void measureRows();
    void drawRow(CanvasRenderer& renderer, IntBox const& box, unsigned int row, TreeRows::Row const& data);
    void drawExpander(CanvasRenderer& renderer, IntBox const& box, TreeRows::Row const& data,
                      Colour const& ink);
    void damageRow(unsigned int row);
    void damageRows();
    void revealSideways(unsigned int row);

    void takeAdaptor();
    using ListAgain = std::function<TreeRows::Places(std::vector<unsigned int> const& rows)>;
    /// All branches, or one and those in it.
    void listAgain(std::optional<unsigned int> branchRow, ListAgain const& list);
    bool expandAllAt(unsigned int row);
    /// To be called after rows have come and gone: all of them, or those in one branch.
    void rowsChanged(bool wasSelectionShown, std::optional<unsigned int> branchRow = {});
    /// The row of the selected item; -1 while it is not among the rows.
    int selectedRow() const;
    int editedRow() const;
    /// The row if it still has the name, else the first one that has it; -1 when none has.
    int rowOf(Text const& name, int row) const;
    void tellSelectionHidden(bool wasShown);
    bool selectRow(unsigned int row);
    void moveTo(unsigned int row, std::uint32_t modifiers);
    void pick(unsigned int row, std::uint32_t modifiers);
    void tagRange(unsigned int from, unsigned int to);
    /// Only those in a branch, when it is named.
    void tagRows(unsigned int first, unsigned int last, std::optional<Text> const& parentName);
    void takeTags(RowRanges tags);
    bool performKey(KeyAction action, std::uint32_t key);
    /// Selects the next row that begins with what was typed. False when there is none.
    bool goToTyped();
    void endEditing(std::optional<Text> const& name);
    void placeNameBox();
    Drop dropFor(DragDropItem const& item, XY<int> const& place, eDropReason reason);
    bool isInDragged(int row) const;
    void setDrop(Drop const& drop);
    int edgeAt(XY<int> const& place) const;
    void noteHovered();
    void openHovered();
    void scrollWhileDragging();

    TreeRows rows_;
    /// An adaptor that was set while another one was asked.
    iTreeViewAdaptor* nextAdaptor_ = nullptr;
    std::optional<LifeGuard> nextLife_;
    OneShotTimer later_;
    /// The rows are to be listed again when the adaptor has answered.
    OneShotTimer refreshTimer_;
    TreeBody* body_ = nullptr;
    RowBars bars_;
    Notifier listeners_;
    std::optional<Text> selected_;
    /// It was told that the selected item is not among the rows: the next click on it selects it anew.
    bool isHiddenTold_ = false;
    /// Where the keys begin: the row of the selected item, or the branch in which it is hidden; -1 = none.
    int current_ = -1;
    RowRanges tags_;
    int anchor_ = -1;
    unsigned int options_;
    eScrollBarDisplay scrollBars_;
    unsigned short rowHeight_ = 0;
    std::int64_t windowTop_ = 0;
    int windowLeft_ = 0;
    /// The widest row that was seen.
    int contentWidth_ = 0;
    bool isLayingOut_ = false;
    OneShotTimer layoutTimer_;
    // While the rows are painted.
    Qv::Ptr<iFont> paintFont_;
    int paintedSelection_ = -1;
    TypeAhead typed_;
    HandlerRef<Glob> nameBox_;
    Text editedName_;
    int editedRow_ = -1;
    int pressedRow_ = -1;
    /// A press on a tagged row picks it alone when it is released, so that all tagged ones can be dragged.
    bool picksOnRelease_ = false;
    XY<int> pressPlace_;
    std::unordered_set<Text> draggedNames_;
    Drop drop_;
    int hoveredRow_ = -1;
    XY<int> dragPlace_;
    OneShotTimer hoverTimer_;
    OneShotTimer scrollTimer_;
};

} // namespace wainscot
