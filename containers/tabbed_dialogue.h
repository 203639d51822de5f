#pragma once

#include "containers/standard_tab_page.h"
#include "containers/tab.h"
#include "containers/tab_details.h"
#include "foundation/key_table.h"
#include "host/events/key_codes.h"

#include <memory>
#include <span>
#include <vector>

namespace wainscot {

/// A panel with a row of named tabs along its upper edge and one page for each tab, of which one is shown.
/// Pages are children of the dialogue, which owns them. A page may be given at once, or made when it is first
/// shown: by `makePage`, or by the parent, which is asked with `buildPageMsg`.
///
/// Messages go to the parent; the sender is the dialogue, the payload a `TabDetails`.
///
/// Tabs are known by their index, or by name: of several with one name, the first counts. There can be 65,535
/// tabs; those beyond 32,768 cannot be selected.
class WAINSCOT_API TabbedDialogue : public StandardPanel {
public:
    static constexpr LightweightString<char> buildPageMsg{"PageRequired"};
    static constexpr LightweightString<char> changePageMsg{"PageChanged"};
    static constexpr LightweightString<char> closePageMsg{"PageClosed"};
    static constexpr LightweightString<char> renamePageMsg{"PageRenamed"};
    static constexpr LightweightString<char> changeOrderMsg{"PageOrderChanged"};
    /// What it tells its parent.
    enum Messages { pageRequired, pageChanged, pageClosed, pageRenamed, pageOrderChanged };
    static constexpr MessageInfo messageTable[] = {
        {"PageRequired", MessageInfo::fixed, buildPageMsg.view(), MessageInfo::called, 0,
         "a tab without a page is selected: the page is to be attached before the call returns"},
        {"PageChanged", MessageInfo::fixed, changePageMsg.view(), MessageInfo::called, 0,
         "another page is shown"},
        {"PageClosed", MessageInfo::fixed, closePageMsg.view(), MessageInfo::queued, 0,
         "a tab and its page are gone"},
        {"PageRenamed", MessageInfo::fixed, renamePageMsg.view(), MessageInfo::queued, 0,
         "a tab has another name"},
        {"PageOrderChanged", MessageInfo::fixed, changeOrderMsg.view(), MessageInfo::queued, 0,
         "the user has dragged a tab to another place"},
        {"close question",
         MessageInfo::fixed,
         {},
         MessageInfo::callback,
         0,
         "the user wants to close a page, after `setCloseQuestion`"},
    };

    enum KeyAction { nextPage, previousPage };
    /// Wherever the keyboard focus is in it.
    static constexpr KeyRow<KeyAction> keyTable[] = {
        {Key::ctrl | Key::tab, nextPage, "the next page; behind the last comes the first"},
        {Key::ctrl | Key::shiftTab, previousPage, "the page before"},
        {Key::ctrl | Key::pageDown, nextPage, "the next page"},
        {Key::ctrl | Key::pageUp, previousPage, "the page before"},
    };

    enum StripAction { previousTab, nextTab, firstTab, lastTab, renameTab, closeTab, toggleBox };
    /// While the row of tabs has the keyboard focus.
    static constexpr KeyRow<StripAction> stripKeyTable[] = {
        {Key::left, previousTab, "to the tab before"},
        {Key::right, nextTab, "to the next tab"},
        {Key::home, firstTab, "to the first tab"},
        {Key::end, lastTab, "to the last tab"},
        {Key::function(2), renameTab, "edits the name, where tabs can be renamed"},
        {Key::del, closeTab, "closes the page, where that is allowed"},
        {Key::space, toggleBox, "ticks the check box, or clears it"},
    };

    /// What a tab carries besides its name.
    enum eTabWidget : unsigned char { eTabPlain = 0, eTabCheckbox = 1 };

    /// Bits, which may be added.
    enum Style : unsigned int {
        /// Selecting a page does not scroll the strip to its tab, except by keys.
        keepsStripStill = 16,
        /// The buttons of the strip go on by the tab that crosses its edge, instead of by all that is seen.
        stepsByTab = 32,
    };

    static constexpr std::size_t maxTabs = 0xFFFF;
    static constexpr unsigned short noTab = 0xFFFF;

    class WAINSCOT_API InitArgs : public StandardPanel::InitArgs {
    public:
        using StandardPanel::InitArgs::InitArgs;

        unsigned int styleFlags = 0;
        /// What the user may do with tabs: close, rename, drag to other places.
        bool canClose = false;
        bool canRename = false;
        bool canReorder = false;
    };

    explicit TabbedDialogue(InitArgs const& args);
    TabbedDialogue(unsigned short width, unsigned short height, bool opaque = true, Canvas* canvas = nullptr);
    ~TabbedDialogue() override;

    // --- Tabs
    /// Takes all tabs and pages away, and makes these tabs. Nothing is selected then.
    void setPages(std::vector<UIString> const& names, eTabWidget widget = eTabPlain);
    /// A tab without a page behind the others; null when there are too many. The text is the page's id, too.
    virtual Tab* addTab(UIString const& name, eTabWidget widget = eTabPlain);
    std::size_t numTabs() const;
    /// Null when there is none.
    Tab* getTab(unsigned short index) const;
    /// `noTab` when there is none.
    unsigned short findPageIdx(UIString const& name) const;
    /// The name with which the tab was added: it stays when the tab is renamed. Empty when there is no tab.
    LightweightString<wchar_t> getPageID(unsigned short index) const;
    // Where a tab is now, by the name with which it was added, and by the tab; `noTab` when it is not here.
    unsigned short findPageByID(LightweightString<wchar_t> const& id) const;
    unsigned short findPageIdx(Tab const& tab) const;
    LightweightString<wchar_t> getTabName(unsigned short index) const;
    // These do nothing when there is no such tab.
    /// Nobody is told.
    void setTabName(unsigned short index, UIString const& name);
    /// The same, and sends `renamePageMsg`. False when there is no such tab.
    bool renamePage(unsigned short index, UIString const& name);
    void setTabFont(unsigned short index, Glib::FontDesc const& font);
    /// The tool tip.
    void setTabContextString(unsigned short index, UIString const& text);
    void setTabTextColour(unsigned short index, Colour const& colour);
    /// Whether the user can select it.
    void setActive(unsigned short index, bool active, eRedrawFlag redraw = eRedrawYes);
    void setActive(UIString const& name, bool active, eRedrawFlag redraw = eRedrawYes);
    using StandardPanel::setActive;
    /// The ids in the order of the tabs.
    std::vector<LightweightString<wchar_t>> getPageOrder() const;
    /// Those tabs come first, in this order; unknown ids are passed over. Nobody is told.
    void setPageOrder(std::span<LightweightString<wchar_t> const> ids);
    bool moveTab(unsigned short from, unsigned short to);

    // --- Pages
    /// Makes a standard page, and a tab where there is none with that name. Null when that is refused.
    StandardTabPage* createStandardPage(UIString const& name, Palette const& palette,
                                        eTabWidget widget = eTabPlain);
    StandardTabPage* createStandardPage(UIString const& name, eTabWidget widget = eTabPlain);
    /// The same with a check box in the tab, bound to data.
    StandardTabPage* createTaggableStandardPage(UIString const& name, Palette const& palette,
                                                ValAdaptorBase<bool>* adaptor);
    /// Makes a page of a class of your own, which is constructed from its size, a palette and `args`.
    template <class Page, class... Args>
    Page* createPage(UIString const& name, Palette const& palette, eTabWidget widget, Args&&... args) {
        auto page = std::make_unique<Page>(getMaxPageSize(), palette, std::forward<Args>(args)...);
        Page* const made = page.get();
        return attachNew(std::move(page), name, widget) ? made : nullptr;
    }
    /// Gives a tab its page, which the dialogue then owns; the page that it had is destroyed. Null takes that
    /// away. False, and the page still belongs to the caller, when there is no such tab, or when the page is
    /// that of another tab or cannot be a child.
    bool addPageForTab(unsigned short index, Glob* page);
    bool setPageBaseGlob(Glob* page, UIString const& name);
    /// The same; null, and the page is destroyed, when it is refused.
    template <class Page>
    Page* addPageForTab(unsigned short index, std::unique_ptr<Page> page) {
        Page* const given = page.get();
        if (!given || !addPageForTab(index, static_cast<Glob*>(given))) return nullptr;
        static_cast<void>(page.release());
        return given;
    }
    /// Null when there is no such tab, or it has no page.
    Glob* getPage(unsigned short index) const;
    Glob* getPageBaseGlob(UIString const& name) const;
    /// Destroys a tab and its page, and sends `closePageMsg`. Behind the current page comes the next one, or
    /// the last, which is selected with notification. False when there is no such tab.
    bool removePage(unsigned short index);
    bool removePage(UIString const& name);
    /// Destroys all of them, and tells nobody.
    void removePages();

    // --- Selection
    /// -1 before any selection.
    short getCurrentTab() const;
    /// Null when there is none.
    Glob* getCurrentPage() const;
    /// Shows a page. With `notify` the parent is told. False when it is shown already, when there is no such
    /// tab, when the dialogue is inactive, or when the dialogue or the tab has died meanwhile.
    virtual bool selectPage(unsigned short index, bool redraw = true, bool notify = true);
    bool selectPage(UIString const& name, bool redraw = true, bool notify = true);
    /// The next one that the user could select (1), or the one before (-1), round the ends, with
    /// notification. False when there is none.
    bool stepPage(int direction);

    // --- Geometry
    /// The area of pages, in its own coordinates.
    IntBox getPageBounds() const;
    XY<int> getMaxPageSize() const;
    /// The size of a dialogue with that area.
    static XY<int> calcSize(XY<int> const& pageSize, unsigned int styleFlags = 0);
    using StandardPanel::calcSize;
    static unsigned short tabHeight(unsigned int styleFlags = 0);
    int calcTotalTabsWidth() const;
    /// Measures all tabs again.
    void checkTabWidths();
    /// Scrolls the strip until all of a tab is seen.
    void ensureTabIsVisible(unsigned short index);
    /// Where the first tab begins, from the left end of the strip: 0, or less.
    int getFirstTabPos() const;
    void setFirstTabPos(int position);
    void resetFirstTabPos() { setFirstTabPos(0); }
    /// The buttons of the strip.
    void handleNextPressed();
    void handlePrevPressed();
    unsigned int getStyleFlags() const { return styleFlags_; }
    void setStyleFlags(unsigned int flags) { styleFlags_ = flags; }

    // --- What the user may do
    bool canClose() const { return canClose_; }
    void setCanClose(bool can);
    bool canRename() const { return canRename_; }
    void setCanRename(bool can) { canRename_ = can; }
    bool canReorder() const { return canReorder_; }
    void setCanReorder(bool can) { canReorder_ = can; }
    /// Asked before the user closes a page, with the tab's index; false keeps it. It may destroy everything.
    void setCloseQuestion(std::function<bool(unsigned short)> question) { question_ = std::move(question); }

    // --- Called by tabs
    void selectByUser(Tab& tab);
    void closeByUser(Tab& tab);
    /// Something is dragged over a tab; null = no longer.
    void hoverByDrag(Tab* tab);

    // StandardPanel
    int handleKeyboardEvent(int keyCode) override;
    int handleMessageEvent(LightweightString<char> message, Glob* sender) override;
    int handleTimerEvent() override;
    void reshape() override;
    void handleLookChange(LookChange changes) override;
    void handleDetached() override;

protected:
    /// Makes the page of a tab that has none. Null = the parent is asked. Null here. It may destroy
    /// everything.
    virtual Glob* makePage(unsigned short index);
    /// The current page is about to be left, and the parent will be told. Does nothing here. It may destroy
    /// everything.
    virtual void handlePageLeft(LightweightString<wchar_t> const& pageID);
    /// Selects, without what derived classes add.
    bool selectPageInternal(unsigned short index, bool redraw, bool notify);
    /// Puts the page in front in its place.
    virtual void placePage(Glob& page);

private:
    friend class TabStrip;

    Tab* tabNamed(UIString const& name) const;
    Glob* pageOf(Tab const& tab) const;
    bool attachNew(std::unique_ptr<Glob> page, UIString const& name, eTabWidget widget);
    bool attach(Tab& tab, Glob* page);
    bool leavePage();
    bool requirePage(Tab& tab);
    void showPage(Tab& tab, bool hadFocus);
    void keepFocus();
    void focusPage(Tab& tab, Glob& page);
    int tell(Messages which, Tab const& tab);
    int tell(Messages which, TabDetails const& details);
    /// A tab has died by itself.
    void handleTabGone(Glob* page, bool wasCurrent, std::size_t index);
    void finishTabsGone();
    void selectAfter(std::size_t removed);

    /// To itself.
    static constexpr LightweightString<char> tabGoneMsg{"TabGone"};

    /// Child of this, as long as this lives.
    TabStrip* strip_;
    std::function<bool(unsigned short)> question_;
    HandlerRef<Tab> hovered_;
    /// Pages of tabs that have died by themselves.
    std::vector<HandlerRef<Glob>> lost_;
    std::optional<std::size_t> lostCurrent_;
    /// Tells one selection from the next, and how many are waiting for their page.
    unsigned int selections_ = 0;
    int selecting_ = 0;
    unsigned int styleFlags_;
    /// The focus is in the strip because the page has no place for it.
    bool isFocusParked_ = false;
    bool canClose_;
    bool canRename_;
    bool canReorder_;
};

} // namespace wainscot
