#include "containers/tab_strip_p.h"
#include "containers/tabbed_dialogue.h"
#include "foundation/focus_stop.h"
#include "host/base/diagnostics.h"
#include "host/base/first_exception.h"
#include "host/drawing/drawable.h"
#include "host/events/dispatch_scope.h"

namespace wainscot {

namespace {

/// The last index that can be selected.
constexpr unsigned short lastSelectable = 0x7FFF;
/// Something has to be dragged over a tab for so long, in milliseconds, until its page comes forward.
constexpr double bringForwardAfter = 600;
constexpr int unhandled = 0;
constexpr int handled = 1;

} // namespace

short TabbedDialogue::getCurrentTab() const {
    return static_cast<short>(strip_ ? strip_->indexOf(strip_->current()) : -1);
}

Glob* TabbedDialogue::getCurrentPage() const {
    Tab const* const tab = strip_ ? strip_->current() : nullptr;
    return tab ? pageOf(*tab) : nullptr;
}

Glob* TabbedDialogue::makePage(unsigned short) {
    return nullptr;
}

void TabbedDialogue::handlePageLeft(LightweightString<wchar_t> const&) {}

// Selecting

bool TabbedDialogue::selectPage(UIString const& name, bool redraw, bool notify) {
    return selectPage(findPageIdx(name), redraw, notify);
}

bool TabbedDialogue::selectPage(unsigned short index, bool redraw, bool notify) {
    return selectPageInternal(index, redraw, notify);
}

bool TabbedDialogue::selectPageInternal(unsigned short index, bool redraw, bool notify) {
    Tab* const tab = getTab(index);
    if (!tab || !isActive()) return false;
    if (index > lastSelectable) {
        Diagnostics::count("tab cannot be selected", "TabbedDialogue");
        return false;
    }
    if (tab->isCurrent() && pageOf(*tab)) return false;
    DispatchScope const scope;
    LifeGuard const life = guard();
    LifeGuard const tabLife = tab->guard();
    auto const goesOn = [&] { return life.alive() && tabLife.alive() && tab->strip_.get() == strip_; };
    unsigned int const selection = ++selections_;
    if (Tab const* const left = strip_->current(); notify && left && pageOf(*left)) {
        handlePageLeft(left->id_);
        if (!goesOn() || selection != selections_) return false;
    }
    // A name that is being edited is taken, as when the user leaves it otherwise.
    Glob* const holder = FocusStop::holderBeside(*this);
    if (holder && holder != strip_ && isWithin(holder, strip_)) strip_->claimKbdFocus();
    if (!goesOn() || selection != selections_) return false;
    RedrawHold const hold;
    bool const hadFocus = leavePage();
    if (!goesOn() || selection != selections_) return false;
    strip_->setCurrent(tab);
    if ((styleFlags_ & keepsStripStill) == 0) strip_->revealLater(*tab);
    // The page is shown although the owner fails.
    FirstException thrown;
    bool isRequired = false;
    bool hasFailed = true;
    thrown.run([&] {
        isRequired = requirePage(*tab);
        hasFailed = false;
    });
    if (hasFailed) isRequired = goesOn() && pageOf(*tab);
    if (!isRequired || !goesOn() || !tab->isCurrent() || selection != selections_) {
        // What was attached meanwhile, in a selection that has ended, was not shown.
        Tab* const now = life.alive() && selecting_ == 0 && strip_ ? strip_->current() : nullptr;
        if (now && pageOf(*now) && !pageOf(*now)->isVisible()) thrown.run([&] { showPage(*now, hadFocus); });
        thrown.rethrow();
        return goesOn();
    }
    if (notify) thrown.run([&] { tell(pageChanged, *tab); });
    if (goesOn() && tab->isCurrent() && selection == selections_) {
        thrown.run([&] { showPage(*tab, hadFocus); });
        if (life.alive() && redraw) makeDirty();
    }
    thrown.rethrow();
    return goesOn();
}

/// Hides the page in front, and notes what had the focus in it. Whether that was so.
bool TabbedDialogue::leavePage() {
    Tab* const tab = strip_->current();
    Glob* const page = tab ? pageOf(*tab) : nullptr;
    if (!page) return false;
    Glob* const holder = FocusStop::holderBeside(*this);
    bool const isInPage = holder && isWithin(holder, page);
    bool const wasParked = std::exchange(isFocusParked_, false) && holder == strip_;
    tab->focus_ = HandlerRef<Glob>(isInPage ? holder : tab->focus_.get());
    page->setVisible(false);
    return isInPage || wasParked;
}

/// False when everything was destroyed by it.
bool TabbedDialogue::requirePage(Tab& tab) {
    if (pageOf(tab)) return true;
    LifeGuard const life = guard();
    LifeGuard const tabLife = tab.guard();
    // One that was there before has taken what it was built of with it.
    if (tab.page_.stamp().valid()) tab.isBuilt_ = false;
    struct Selecting {
        explicit Selecting(TabbedDialogue& dialogue) : dialogue_(dialogue), life_(dialogue.guard()) {
            ++dialogue.selecting_;
        }
        ~Selecting() {
            if (life_.alive()) --dialogue_.selecting_;
        }
        TabbedDialogue& dialogue_;
        LifeGuard life_;
    } const selecting(*this);
    Glob* const made = makePage(static_cast<unsigned short>(strip_->indexOf(&tab)));
    if (made && (!life.alive() || !tabLife.alive())) destroy(made);
    if (!life.alive() || !tabLife.alive()) return false;
    if (made) {
        LifeGuard const madeLife = made->guard();
        if (!attach(tab, made) && madeLife.alive() && !made->parent()) destroy(made);
    } else {
        tell(pageRequired, tab);
    }
    return life.alive() && tabLife.alive();
}

void TabbedDialogue::showPage(Tab& tab, bool hadFocus) {
    Glob* const page = pageOf(tab);
    LifeGuard const life = guard();
    LifeGuard const tabLife = tab.guard();
    LifeGuard const pageLife = page ? page->guard() : life;
    auto const goesOn = [&] {
        return life.alive() && tabLife.alive() && pageLife.alive() && tab.isCurrent() && pageOf(tab) == page;
    };
    if (!page) {
        if (hadFocus) strip_->claimKbdFocus();
        return;
    }
    FirstException thrown;
    thrown.run([&] { placePage(*page); });
    if (goesOn()) thrown.run([&] { page->setVisible(true); });
    if (goesOn() && hadFocus) thrown.run([&] { focusPage(tab, *page); });
    thrown.rethrow();
}

/// The focus was in the page that has gone, so it goes into this one: to where it was, else to its first
/// stop. It waits in the strip where the page has none.
void TabbedDialogue::focusPage(Tab& tab, Glob& page) {
    Glob* const former = tab.focus_.get();
    if (former && isWithin(former, &page) && former->claimKbdFocus()) return;
    LifeGuard const life = guard();
    auto* const panel = dynamic_cast<StandardPanel*>(&page);
    if (panel && panel->incrementTabStop() != TabOrderManager::noTabStop) return;
    if (!life.alive() || !strip_) return;
    isFocusParked_ = true;
    strip_->claimKbdFocus();
}

// By the user

void TabbedDialogue::selectByUser(Tab& tab) {
    DispatchScope const scope;
    int const index = strip_ ? strip_->indexOf(&tab) : -1;
    if (index < 0 || !tab.isActive()) return;
    LifeGuard const life = guard();
    LifeGuard const tabLife = tab.guard();
    selectPage(static_cast<unsigned short>(index), true, true);
    // The strip may be one that stays still.
    if (life.alive() && tabLife.alive() && strip_ && tab.isCurrent()) strip_->revealLater(tab);
}

bool TabbedDialogue::stepPage(int direction) {
    auto const count = static_cast<int>(numTabs());
    int const from = getCurrentTab() >= 0 ? getCurrentTab() : direction > 0 ? -1 : count;
    for (int i = 1; i <= count; ++i) {
        int const index = ((from + i * direction) % count + count) % count;
        Tab* const tab = strip_->tabAt(static_cast<std::size_t>(index));
        if (index > lastSelectable || index == from || !tab->isActive()) continue;
        selectByUser(*tab);
        return true;
    }
    return false;
}

void TabbedDialogue::closeByUser(Tab& tab) {
    DispatchScope const scope;
    int const index = strip_ ? strip_->indexOf(&tab) : -1;
    if (index < 0 || !isActive()) return;
    LifeGuard const life = guard();
    LifeGuard const tabLife = tab.guard();
    auto const question = question_;
    if (question && !question(static_cast<unsigned short>(index))) return;
    if (!life.alive() || !tabLife.alive()) return;
    Glob* const before = FocusStop::holderBeside(*this);
    bool const hadFocus = before && isWithin(before, this);
    FirstException thrown;
    thrown.run([&] { removePage(static_cast<unsigned short>(strip_->indexOf(&tab))); });
    if (life.alive() && hadFocus) thrown.run([&] { keepFocus(); });
    thrown.rethrow();
}

/// What had the focus has gone with its tab or page: the page in front gets it, else the strip.
void TabbedDialogue::keepFocus() {
    Glob* const holder = FocusStop::holderBeside(*this);
    Glob* const page = getCurrentPage();
    bool const isKept = holder && (holder == strip_ || dynamic_cast<TabOrderable*>(holder)) &&
                        isWithin(holder, this) && holder->isShown();
    if (isKept || !strip_) return;
    // It has gone elsewhere on purpose.
    if (holder && !isWithin(holder, this) && !isWithin(this, holder)) return;
    Tab* const tab = strip_->current();
    if (tab && page && page->isShown())
        focusPage(*tab, *page);
    else
        strip_->claimKbdFocus();
}

void TabbedDialogue::hoverByDrag(Tab* tab) {
    if (hovered_.get() == tab) return;
    hovered_ = HandlerRef<Tab>(tab);
    if (!tab) return clearInterest(EventKind::timer);
    setInterest(EventKind::timer);
    setNextTimer(bringForwardAfter);
}

int TabbedDialogue::handleTimerEvent() {
    Tab* const tab = hovered_.get();
    if (!tab) return StandardPanel::handleTimerEvent();
    hoverByDrag(nullptr);
    selectByUser(*tab);
    return handled;
}

int TabbedDialogue::handleKeyboardEvent(int keyCode) {
    auto const action = actionFor(keyTable, static_cast<std::uint32_t>(keyCode));
    if (!action || numTabs() == 0) return StandardPanel::handleKeyboardEvent(keyCode);
    DispatchScope const scope;
    stepPage(*action == nextPage ? 1 : -1);
    return handled;
}

int TabbedDialogue::handleMessageEvent(LightweightString<char> message, Glob* sender) {
    if (message == tabGoneMsg && sender == this) return finishTabsGone(), handled;
    if (message != Tab::nameChangedMsg) return StandardPanel::handleMessageEvent(message, sender);
    auto const* const tab = dynamic_cast<Tab const*>(sender);
    if (!tab || !strip_ || strip_->indexOf(tab) < 0) return unhandled;
    tell(pageRenamed, *tab);
    return handled;
}

} // namespace wainscot
