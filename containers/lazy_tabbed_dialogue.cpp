#include "containers/lazy_tabbed_dialogue.h"

#include "host/drawing/uif_std.h"
#include "host/events/dispatch_scope.h"
#include "host/events/messages.h"

namespace wainscot {

namespace {

/// To itself.
constexpr LightweightString<char> startMsg{"StartPage"};

} // namespace

LazyTabbedDialogue::LazyTabbedDialogue(InitArgs const& args, UIString startPage)
    : TabbedDialogue(args), startPage_(std::move(startPage)) {}

LazyTabbedDialogue::LazyTabbedDialogue(unsigned short width, unsigned short height, bool opaque,
                                       Canvas* canvas, UIString startPage)
    : TabbedDialogue(width, height, opaque, canvas), startPage_(std::move(startPage)) {}

LazyTabbedDialogue::~LazyTabbedDialogue() = default;

bool LazyTabbedDialogue::pageBuilt(UIString const& name) const {
    Tab const* const tab = getTab(findPageIdx(name));
    return tab && tab->isBuilt_;
}

void LazyTabbedDialogue::setStartPage(UIString const& name) {
    startPage_ = {};
    selectPage(name);
}

void LazyTabbedDialogue::redrawCurrentPage() {
    if (Glob* const page = getCurrentPage()) page->makeDirty();
}

void LazyTabbedDialogue::buildPage(LightweightString<wchar_t> const&) {}

bool LazyTabbedDialogue::selectPage(unsigned short index, bool redraw, bool notify) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    if (!TabbedDialogue::selectPage(index, redraw, notify) || !life.alive()) return false;
    Tab* const tab = getCurrentTab() >= 0 ? getTab(static_cast<unsigned short>(getCurrentTab())) : nullptr;
    if (!tab) return true;
    LifeGuard const tabLife = tab->guard();
    if (!tab->isBuilt_) {
        tab->isBuilt_ = true;
        try {
            buildPage(LightweightString<wchar_t>(tab->id_));
        } catch (...) {
            // It is built again when it is next selected.
            if (life.alive() && tabLife.alive()) tab->isBuilt_ = false;
            throw;
        }
        if (!life.alive() || !tabLife.alive()) return false;
        // Attaching the page in the hook is part of building it.
        tab->isBuilt_ = true;
    }
    // The hook may have selected another page, and told of that.
    if (!tab->isCurrent()) return true;
    if (Glob* const page = getCurrentPage()) placePage(*page);
    if (life.alive() && notify) Reporter().report(*this, parent(), messageTable[0]);
    return life.alive();
}

/// Standard pages fill the room from that corner on.
void LazyTabbedDialogue::placePage(Glob& page) {
    if (!dynamic_cast<StandardPanel*>(&page)) return reshapePage(page);
    int const indent = UifStd::getIndentWidth();
    reshapeWidgetAt(&page, {indent, indent}, getMaxPageSize());
}

void LazyTabbedDialogue::reshapePage(Glob& page) {
    TabbedDialogue::placePage(page);
}

// The start page

/// Selected by a message: a derived class is still being constructed, perhaps.
Tab* LazyTabbedDialogue::addTab(UIString const& name, eTabWidget widget) {
    if (!startPage_.text().isEmpty() && numTabs() == 0) sendMessage(startMsg, this, this);
    return TabbedDialogue::addTab(name, widget);
}

int LazyTabbedDialogue::handleMessageEvent(LightweightString<char> message, Glob* sender) {
    if (message != startMsg || sender != this) return TabbedDialogue::handleMessageEvent(message, sender);
    UIString const start = std::exchange(startPage_, {});
    if (getCurrentTab() < 0 && findPageIdx(start) != noTab) selectPage(start);
    return 1;
}

} // namespace wainscot
