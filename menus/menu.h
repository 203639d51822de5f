#pragma once

#include "foundation/focusable.h"
#include "foundation/key_table.h"
#include "foundation/report.h"
#include "foundation/standard_panel.h"
#include "foundation/type_ahead.h"
#include "host/events/key_codes.h"
#include "host/messages/notifier.h"
#include "host/objects/described_items.h"
#include "host/windows/glob_manager.h"
#include "menus/model/list_view_widget.h"
#include "menus/model/menu_data.h"
#include "menus/model/param_items.h"

#include <vector>

namespace wainscot {

class MenuLayout;
class ScrollBar;

/// A list of items to choose from: a pop-up (`open`), or a widget in a panel. Items that take options are
/// stepped through in place, or have a check box; groups fold; items with a sub-menu open it after the
/// pointer has rested on them for a quarter of a second, or at a click. It scrolls where it has no room.
///
/// A choice runs the item's callbacks: messages go to the owner. Then the menu closes, unless it is pinned or
/// the item leaves it open. Closing, it calls `pootMsg_` on the owner and destroys itself.
///
/// Keys: the arrows, Home, End, Page Up and Page Down move the highlight; Return and space choose; Right
/// opens a sub-menu, Left closes it; letters find items. Escape closes it, as all pop-ups.
///
/// The rows cost nothing until they are seen: a menu may have 65,535 items.
class WAINSCOT_API Menu : public Focusable<StandardPanel>, public ListViewWidget, private DescribedItems {
public:
    /// Called on the owner when it closes.
    static constexpr LightweightString<char> pootMsg_{"menu_poot"};
    /// Sent to the owner when something was chosen and the menu stays open because it is pinned.
    static constexpr LightweightString<char> itemSelectedMsg_{"menu_itemSelected"};
    /// Sent by widgets in rows: one was highlighted, or has another option.
    static constexpr LightweightString<char> buttonHighlightMsg{"BtnHighlight"};
    static constexpr LightweightString<char> freezeFlipMsg{"freeze_flip"};
    /// How long the pointer rests on an item before its sub-menu opens, in milliseconds.
    static constexpr double cascadeDelay = 250;
    static constexpr int noItem = -1;

    /// What it tells others.
    static constexpr MessageInfo messageTable[] = {
        {"closed", MessageInfo::fixed, pootMsg_.view(), MessageInfo::called, 0, "it closes"},
        {"selected", MessageInfo::fixed, itemSelectedMsg_.view(), MessageInfo::queued, 0,
         "an item was chosen while the menu is pinned"},
        {"items",
         MessageInfo::fixed,
         {},
         MessageInfo::callback,
         0,
         "before: the callbacks of the item, then the list's adaptor"},
    };

    enum class Step { up, down, home, end, pageUp, pageDown, choose, into, out };
    static constexpr KeyRow<Step> keyTable[] = {
        {Key::up, Step::up, "to the item above"},
        {Key::down, Step::down, "to the item below"},
        {Key::home, Step::home, "to the first item"},
        {Key::end, Step::end, "to the last item"},
        {Key::pageUp, Step::pageUp, "up by the rows that are seen"},
        {Key::pageDown, Step::pageDown, "down by the rows that are seen"},
        {Key::enter, Step::choose, "chooses the item"},
        {Key::space, Step::choose, "chooses the item"},
        {Key::right, Step::into, "opens the sub-menu, or the group"},
        {Key::left, Step::out, "to the header of the group, closes it; else closes the sub-menu"},
    };

    class WAINSCOT_API InitArgs : public GlobCreationInfo {
    public:
        /// Sizes of 0 are those that the items need.
        explicit InitArgs(Qv::Ptr<MenuData> list, Glob* hearer = nullptr, unsigned short w = 0,
                          unsigned short h = 0)
            : GlobCreationInfo(w, h), items(std::move(list)), owner(hearer) {}

        Qv::Ptr<MenuData> items;
        /// Who hears of choices.
        Glob* owner = nullptr;
        UIString title;
        /// `StandardWidgetFlags`; with a pin the user can keep the menu open.
        int standardWidgets = 0;
        Border::eType border = Border::line;
        /// Drawn round it, for instance a shadow.
        Surround surround;
        /// The key in the preferences under which the states of groups are kept; empty = they are not.
        LightweightString<char> prefsKey;
        /// It grows no higher than that; 0 = as high as the screen.
        unsigned short maxHeight = 0;
        /// It is at least that wide.
        unsigned short minWidth = 0;
    };

    /// One row in sight, in the menu's coordinates.
    struct VisibleMenuItem {
        IntBox box;
        unsigned short item = 0;
    };

    explicit Menu(InitArgs const& args);
    explicit Menu(Qv::Ptr<MenuData> items, Glob* owner = nullptr);
    explicit Menu(std::vector<MenuItem> items, Glob* owner = nullptr);
    explicit Menu(std::vector<GenericParam::Section> const& parameters, Glob* owner = nullptr);
    /// From saved settings: "items" is a text with a label on each line.
    Menu(configb const& settings, Glob* owner);
    /// The items of an adaptor, which hears what is selected.
    explicit Menu(Qv::Ptr<ListViewAdaptorBase> adaptor, Glob* owner = nullptr);
    ~Menu() override;

    /// Opens the menu as a pop-up, which then belongs to the screen. False, and it still belongs to the
    /// caller, as for `GlobManager::openPopUp`.
    bool open(PopUpOptions const& options = {});
    /// The same at a place in root coordinates: its upper left corner lies there, if there is room.
    bool openAt(XY<int> const& place, Glob* opener = nullptr);

    // --- Items. Indices are those of `MenuData`; `MenuData::none` and refused indices mean no item.
    Qv::Ptr<MenuData> const& getItems() const { return items_; }
    Glob* getOwner() const { return owner_.get(); }
    void setOwner(Glob* owner) { owner_ = HandlerRef<Glob>(owner); }
    /// Shows the items anew, after they were changed.
    void redisplay();
    void redisplay(Qv::Ptr<MenuData> const& items);
    void redisplay(std::vector<MenuItem> const& items);
    void showItems(std::vector<MenuItem> items, eRedrawFlag redraw) override;
    /// The first item with that display string; with `hidden` those of folded groups count too.
    unsigned short findItem(LightweightString<wchar_t> const& text, bool hidden = true) const;
    unsigned short findItem(LightweightString<char> const& id) const;
    /// At a place in the menu's coordinates; -1 when there is none.
    int findItemAtPos(XY<int> const& place) const;
    unsigned short findItemFromWidget(Glob const* widget) const;
    /// The place of an item among the rows in sight; -1 when it is out of sight.
    int findVisibleItem(unsigned short item) const;
    /// The label of the current option; empty when there is none.
    LightweightString<wchar_t> getCurrentChoice(LightweightString<wchar_t> const& text) const;
    /// -1 when there is no such item.
    int getCurrentChoiceIndex(LightweightString<wchar_t> const& text) const;
    bool setCurrentChoice(LightweightString<wchar_t> const& text, int option);
    bool changeItem(LightweightString<wchar_t> const& text, LightweightString<wchar_t> const& newText);
    unsigned short numNonHiddenItems() const;
    bool itemIsHidden(unsigned short item) const;
    bool itemIsEmpty(unsigned short item) const;
    bool isCascadingItem(MenuItem const& item) const { return item.hasFlag(MenuItemFlag::cascading); }
    /// Whether it has two options of which one is "off".
    static bool isBinaryItem(MenuItem const& item);
    /// Whether such an item is on.
    static bool convertToBool(MenuItem const& item);
    /// Whether its state is kept in the preferences: of headers whether they are folded.
    bool isPersistableItem(MenuItem const& item) const { return item.isHeader(); }

    // --- Sizes, in pixels
    int getItemHeight(unsigned short item) const;
    /// Of all rows.
    int getItemsHeight() const;
    int calculateHeight() const;
    /// What the texts need; of long menus those of the longest texts.
    int calculateWidth() const;
    XY<int> calcDimensions() const { return {calculateWidth(), calculateHeight()}; }
    virtual IntBox calcAreaForItems() const;
    std::vector<VisibleMenuItem> const& visibleItems() const { return visible_; }
    int getRowHeight() const;
    int getScrollOffset() const { return offset_; }
    void setScrollOffset(int offset);

    // --- State
    int getHighlightedItem() const { return highlighted_; }
    /// Scrolls to the item.
    void setHighlightedItem(int item);
    /// The open sub-menu; null when there is none.
    Glob* getSubMenu() const { return subMenu_.get(); }
    /// Opens the sub-menu of an item in the place of another one. False when there is none.
    bool makeSubMenu(unsigned short item);
    void deleteSubMenu();

    // --- Groups
    void setPrefsKey(LightweightString<char> const& key) { prefsKey_ = key; }
    void saveGroupStates() const;
    void restoreGroupStates();
    LightweightString<char> makePrefsKey(MenuItem const& item, LightweightString<char> const& base) const;
    /// The same for a group that lies in a list under another key.
    LightweightString<char> makeNestedPrefsKey(MenuItem const& item,
                                               LightweightString<char> const& base) const;
    /// Unfolds the first group when all are folded.
    void ensureAtLeastOneExpandedGroup();
    /// False for a group that stands alone at the top.
    bool canFold(unsigned short header) const;

    // --- Hooks
    /// An item was chosen: runs its callbacks. An overrider may destroy the menu.
    virtual void informOwner(unsigned short item);
    /// The same for an item whose option was changed by a widget in its row. Calls `informOwner`.
    virtual void itemChanged(unsigned int item);
    /// Whether it stays open after a choice. Here: whether its pin is down, or it is no pop-up.
    virtual bool pinned();
    bool shouldCloseMenuAfterSelection(unsigned short item) const;

    // --- Events
    bool react(Event const& event) override;
    bool intercept(Event const& event) override;
    int handleKeyboardEvent(int keyCode) override;
    int handleMouseEvent(Event const& event) override;
    void handleMouseContainment(bool inside) override;
    int handleTimerEvent() override;
    int handleMessageEvent(LightweightString<char> name, Glob* sender) override;
    int handleDataMessageEvent(LightweightString<char> name, Glob* sender, Qv::Ptr<iObject> data) override;
    void handleKbdFocus() override;
    void handlePressCancelled(Event const& press) override;
    void handleCaptureLost() override;
    void handlePoot() override;
    void handleDetached() override;
    /// In a panel it is a tab stop; a pop-up is none.
    bool isTabStopActive() override;
    void reshape() override;
    void draw() override;
    void drawBackground() override;
    void handleLookChange(LookChange changes) override;
    SizeNeeds sizeNeeds() const override;
    bool getTooltipDetails(XY<int> const& place, TooltipDetails& details) const override;
    void describe(GlobDescription& description) const override;
    DescribedItems* describedItems() override { return this; }

protected:
    /// Tells the owner that it closes. An overrider may destroy the menu.
    virtual void tellClosing();
    /// Draws a row, which lies in canvas coordinates. Only while the menu is drawn.
    virtual void drawItem(VisibleMenuItem const& row);
    /// Right (1) or Left (-1) was pressed where there is nothing to be opened or closed. True = used.
    virtual bool stepBeyond(int direction);
    /// Whether a row has the mark of what is chosen. Here: as its item's layout says.
    virtual bool isMarked(unsigned short item) const;

private:
    struct RowWidget {
        LightweightString<char> id;
        unsigned short item;
        HandlerRef<Glob> widget;
    };

    void init(InitArgs const& args);
    /// Brings items up to date with what they stand for, and watches that.
    void followActions();
    void showActions();
    void handleSourceChange();

    // Rows
    void layOut();
    void calcVisibleItemAreas();
    void createWidgetsForItems();
    Glob* makeRowWidget(MenuItem const& item) const;
    /// A widget shows the option of its item. False when it has other options.
    static bool showOption(Glob& widget, MenuItem const& item);
    int widthOfOptions(MenuItem const& item) const;
    void updateScrollBar();
    int mostOffset() const;
    int leftOf(unsigned short item) const;
    int widthOfRow(unsigned short item) const;
    bool storeOffset(int offset);
    void noteScrolled();
    void reveal(unsigned short item);
    void redrawRow(int item);

    // Choosing
    bool canHighlight(int item) const;
    /// Keys also reach the headers of groups that fold.
    bool isKeyStop(int item) const;
    /// With `byPointer`, sub-menus open and close when the pointer has rested.
    void setHighlight(int item, bool byPointer);
    int itemUnderPointer() const;
    void handleRelease(unsigned short item);
    void choose(unsigned short item);
    void flipGroup(unsigned short header, bool laterToo);
    void foldGroup(unsigned short header, MenuItemType type, bool laterToo);
    void revealGroup(unsigned short header);
    void closeLater();
    void finishChoice(unsigned short item, bool closes);
    static bool isRowWidgetMsg(LightweightString<char> const& name);
    int handleRowWidget(Glob* sender);
    int handleScrollBarMessages(LightweightString<char> const& name);
    int handleMessage(LightweightString<char> const& name, Glob* sender, Qv::Ptr<iObject> const& data);
    bool isFromSubMenu(Glob const* sender) const;
    /// On to the owner, as if it were its own.
    void forward(LightweightString<char> const& name, Qv::Ptr<iObject> const& data);

    // Sub-menus
    bool openSubMenu(unsigned short item, bool byTimer);
    Glob* makeSubMenuGlob(unsigned short item);
    bool isOwnerOfSubMenu(int item) const { return getSubMenu() && subMenuItem_ == item; }
    bool isFarFromSubMenu() const;
    void handleGlobDeletion();
    void handleGlobMoved();

    // Keys
    bool performStep(Step step);
    bool moveHighlight(int from, int direction);
    bool moveByPage(int direction);
    bool chooseByKey(unsigned short index);
    bool stepInto();
    bool stepOut();
    bool foldByKey(unsigned short header, MenuItemType type);
    /// The header of the group to which the highlighted item belongs, or which it is; `noItem` if none.
    int headerOfHighlighted() const;
    bool typeAhead(std::uint32_t key);
    bool matches(unsigned short item) const;
    void forgetTyped();

    void drawRowText(CanvasRenderer& renderer, VisibleMenuItem const& row, Colour const& ground);
    int drawRightSide(CanvasRenderer& renderer, VisibleMenuItem const& row, Colour const& ink);
    void drawTyped(CanvasRenderer& renderer);
    Glib::FontDesc getFontForItem(MenuItem const& item) const;
    Colour getItemBackCol(VisibleMenuItem const& row) const;
    bool isInUse() const;

    // Items for drivers and tools
    std::size_t numItems(ItemKey in) const override;
    Range itemsInSight(ItemKey in) const override;
    ItemKey itemAt(ItemKey in, std::size_t index) const override;
    bool describeItem(ItemKey item, GlobDescription& description) const override;
    bool performItemAction(ItemKey item, std::uint32_t action) override;

    Qv::Ptr<MenuData> items_;
    HandlerRef<Glob> owner_;
    std::unique_ptr<MenuLayout> layout_;
    std::vector<VisibleMenuItem> visible_;
    std::vector<RowWidget> widgets_;
    /// Of what the items stand for.
    std::vector<NotifierSubscription> sources_;
    HandlerRef<ScrollBar> scrollBar_;
    LightweightString<char> prefsKey_;
    unsigned short maxHeight_ = 0;
    unsigned short minWidth_ = 0;
    int offset_ = 0;
    int highlighted_ = noItem;
    int pressed_ = noItem;
    /// Where the pointer was last.
    int pointed_ = noItem;
    int flipped_ = noItem;
    /// Where the pointer was when keys moved the highlight: as long as it rests there, the highlight stays.
    std::optional<XY<int>> restingPointer_;
    bool isInside_ = false;
    bool isLaidOut_ = false;
    bool automaticWidth_ = false;
    bool automaticHeight_ = false;

    HandlerRef<Glob> subMenu_;
    int subMenuItem_ = noItem;
    bool wasOpenedByTimer_ = false;
    double subMenuOpenedAt_ = 0;
    double cascadeDue_ = 0;
    NotifierSubscription deletionWatch_;
    NotifierSubscription moveWatch_;

    /// While the rows are drawn.
    CanvasRenderer* renderer_ = nullptr;
    TypeAhead typed_;
};

} // namespace wainscot
