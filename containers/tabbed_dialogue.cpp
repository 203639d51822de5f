#include "containers/tabbed_dialogue.h"

#include "buttons/checkbox.h"
#include "containers/tab_strip_p.h"
#include "host/base/diagnostics.h"
#include "host/events/dispatch_scope.h"
#include "host/events/messages.h"

#include <algorithm>
#include <unordered_map>

namespace wainscot {

namespace {

TabbedDialogue::InitArgs argsFor(unsigned short width, unsigned short height, bool opaque, Canvas* canvas) {
    TabbedDialogue::InitArgs args(width, height);
    args.opaque = opaque;
    args.canvas = canvas;
    return args;
}

} // namespace

TabbedDialogue::TabbedDialogue(InitArgs const& args)
    : StandardPanel(args), strip_(new TabStrip(*this)), styleFlags_(args.styleFlags),
      canClose_(args.canClose), canRename_(args.canRename), canReorder_(args.canReorder) {
    addWidget(strip_, 0, 0);
    addTabStop(*strip_);
    setTabGoesOn(true);
    TabbedDialogue::reshape();
}

TabbedDialogue::TabbedDialogue(unsigned short width, unsigned short height, bool opaque, Canvas* canvas)
    : TabbedDialogue(argsFor(width, height, opaque, canvas)) {}

TabbedDialogue::~TabbedDialogue() = default;

void TabbedDialogue::handleDetached() {
    strip_ = nullptr;
    StandardPanel::handleDetached();
}

// Tabs

std::size_t TabbedDialogue::numTabs() const {
    return strip_ ? strip_->numTabs() : 0;
}

Tab* TabbedDialogue::getTab(unsigned short index) const {
    return strip_ ? strip_->tabAt(index) : nullptr;
}

unsigned short TabbedDialogue::findPageIdx(UIString const& name) const {
    Tab const* const tab = tabNamed(name);
    return tab ? static_cast<unsigned short>(strip_->indexOf(tab)) : noTab;
}

Tab* TabbedDialogue::tabNamed(UIString const& name) const {
    if (!strip_) return nullptr;
    auto const found = std::ranges::find_if(
        strip_->tabs(), [text = name.text()](Tab const* tab) { return tab->getName().text() == text; });
    return found == strip_->tabs().end() ? nullptr : *found;
}

Tab* TabbedDialogue::addTab(UIString const& name, eTabWidget widget) {
    if (!strip_ || numTabs() >= maxTabs) {
        Diagnostics::count("too many tabs", "TabbedDialogue");
        return nullptr;
    }
    DispatchScope const scope;
    Tab* const tab = strip_->add(name);
    if (!tab) return nullptr;
    LifeGuard const life = tab->guard();
    tab->id_ = name.text();
    if (widget == eTabCheckbox) tab->addCheckbox();
    if (life.alive() && canClose_) tab->setClosable(true);
    return life.alive() ? tab : nullptr;
}

void TabbedDialogue::setPages(std::vector<UIString> const& names, eTabWidget widget) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    removePages();
    for (UIString const& name : names)
        if (!life.alive() || !addTab(name, widget)) return;
}

LightweightString<wchar_t> TabbedDialogue::getPageID(unsigned short index) const {
    Tab const* const tab = getTab(index);
    return tab ? tab->id_ : LightweightString<wchar_t>();
}

unsigned short TabbedDialogue::findPageByID(LightweightString<wchar_t> const& id) const {
    if (!strip_) return noTab;
    auto const found = std::ranges::find_if(strip_->tabs(), [&](Tab const* tab) { return tab->id_ == id; });
    return found == strip_->tabs().end() ? noTab : findPageIdx(**found);
}

unsigned short TabbedDialogue::findPageIdx(Tab const& tab) const {
    int const index = strip_ ? strip_->indexOf(&tab) : -1;
    return index < 0 ? noTab : static_cast<unsigned short>(index);
}

LightweightString<wchar_t> TabbedDialogue::getTabName(unsigned short index) const {
    Tab const* const tab = getTab(index);
    return tab ? tab->getName().text() : LightweightString<wchar_t>();
}

void TabbedDialogue::setTabName(unsigned short index, UIString const& name) {
    if (Tab* const tab = getTab(index)) tab->setName(name);
}

bool TabbedDialogue::renamePage(unsigned short index, UIString const& name) {
    DispatchScope const scope;
    Tab* const tab = getTab(index);
    if (!tab) return false;
    LifeGuard const life = tab->guard();
    tab->setName(name);
    if (life.alive()) tell(pageRenamed, *tab);
    return true;
}

void TabbedDialogue::setTabFont(unsigned short index, Glib::FontDesc const& font) {
    if (Tab* const tab = getTab(index)) tab->setFont(font);
}

void TabbedDialogue::setTabContextString(unsigned short index, UIString const& text) {
    if (Tab* const tab = getTab(index)) tab->setContextString(text);
}

void TabbedDialogue::setTabTextColour(unsigned short index, Colour const& colour) {
    if (Tab* const tab = getTab(index)) tab->setTextColour(colour);
}

void TabbedDialogue::setActive(unsigned short index, bool active, eRedrawFlag redraw) {
    if (Tab* const tab = getTab(index)) tab->setActive(active, redraw);
}

void TabbedDialogue::setActive(UIString const& name, bool active, eRedrawFlag redraw) {
    if (Tab* const tab = tabNamed(name)) tab->setActive(active, redraw);
}

void TabbedDialogue::setCanClose(bool can) {
    DispatchScope const scope;
    canClose_ = can;
    if (!strip_) return;
    LifeGuard const life = guard();
    for (Tab* const tab : std::vector<Tab*>(strip_->tabs()))
        if (life.alive() && is_good_glob_ptr(tab)) tab->setClosable(can);
}

std::vector<LightweightString<wchar_t>> TabbedDialogue::getPageOrder() const {
    std::vector<LightweightString<wchar_t>> ids;
    if (strip_)
        for (Tab const* const tab : strip_->tabs()) ids.push_back(tab->id_);
    return ids;
}

void TabbedDialogue::setPageOrder(std::span<LightweightString<wchar_t> const> ids) {
    if (!strip_) return;
    // Of several tabs with one id, the first one left is meant.
    std::unordered_multimap<std::wstring_view, std::size_t> places;
    for (std::size_t i = 0; i < ids.size(); ++i) places.emplace(ids[i].view(), i);
    std::vector<Tab*> front(ids.size(), nullptr);
    std::vector<Tab*> rest;
    for (Tab* const tab : strip_->tabs()) {
        auto const [from, to] = places.equal_range(tab->id_.view());
        auto const first =
            std::min_element(from, to, [](auto const& a, auto const& b) { return a.second < b.second; });
        if (first == to) {
            rest.push_back(tab);
            continue;
        }
        front[first->second] = tab;
        places.erase(first);
    }
    std::erase(front, nullptr);
    front.insert(front.end(), rest.begin(), rest.end());
    strip_->setOrder(std::move(front));
}

bool TabbedDialogue::moveTab(unsigned short from, unsigned short to) {
    if (from >= numTabs() || to >= numTabs()) return false;
    strip_->move(from, to);
    return true;
}

// Pages

/// Only a page that still lies here.
Glob* TabbedDialogue::pageOf(Tab const& tab) const {
    Glob* const page = tab.page_.get();
    return page && page->parent() == this ? page : nullptr;
}

Glob* TabbedDialogue::getPage(unsigned short index) const {
    Tab const* const tab = getTab(index);
    return tab ? pageOf(*tab) : nullptr;
}

Glob* TabbedDialogue::getPageBaseGlob(UIString const& name) const {
    Tab const* const tab = tabNamed(name);
    return tab ? pageOf(*tab) : nullptr;
}

bool TabbedDialogue::addPageForTab(unsigned short index, Glob* page) {
    Tab* const tab = getTab(index);
    return tab && attach(*tab, page);
}

bool TabbedDialogue::setPageBaseGlob(Glob* page, UIString const& name) {
    Tab* const tab = tabNamed(name);
    return tab && attach(*tab, page);
}

bool TabbedDialogue::attach(Tab& tab, Glob* page) {
    DispatchScope const scope;
    if (page && pageOf(tab) == page) return true;
    if (page) {
        bool const isPageHere =
            page->parent() == this &&
            std::ranges::any_of(strip_->tabs(), [&](Tab* other) { return other->page_.get() == page; });
        if (isWithin(page, strip_) || isPageHere || !mayTake(page)) {
            Diagnostics::count("page is in use", "TabbedDialogue");
            return false;
        }
    }
    LifeGuard const life = guard();
    LifeGuard const tabLife = tab.guard();
    LifeGuard const pageLife = page ? page->guard() : life;
    if (Glob* const former = pageOf(tab)) destroy(former);
    if (!life.alive() || !tabLife.alive() || !pageLife.alive()) return false;
    tab.focus_ = {};
    tab.isBuilt_ = false;
    tab.page_ = HandlerRef<Glob>(page);
    if (!page) return true;
    page->setVisible(false);
    if (life.alive() && pageLife.alive()) addChild(page, BottomLeft(getPageBounds().x1, getPageBounds().y1));
    if (!life.alive() || !pageLife.alive()) return false;
    // The page that is waited for is shown at once.
    if (tabLife.alive() && tab.isCurrent() && pageOf(tab) == page && !selecting_) showPage(tab, false);
    return true;
}

bool TabbedDialogue::attachNew(std::unique_ptr<Glob> page, UIString const& name, eTabWidget widget) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    Tab* tab = tabNamed(name);
    if (!tab) tab = addTab(name, widget);
    if (!life.alive() || !tab || !attach(*tab, page.get())) return false;
    static_cast<void>(page.release());
    return true;
}

StandardTabPage* TabbedDialogue::createStandardPage(UIString const& name, Palette const& palette,
                                                    eTabWidget widget) {
    return createPage<StandardTabPage>(name, palette, widget);
}

StandardTabPage* TabbedDialogue::createStandardPage(UIString const& name, eTabWidget widget) {
    return createStandardPage(name, getColoursForWidgets(), widget);
}

StandardTabPage* TabbedDialogue::createTaggableStandardPage(UIString const& name, Palette const& palette,
                                                            ValAdaptorBase<bool>* adaptor) {
    DispatchScope const scope;
    Qv::Ptr<ValAdaptorBase<bool>> const held(adaptor);
    LifeGuard const life = guard();
    StandardTabPage* const page = createStandardPage(name, palette, eTabCheckbox);
    if (!page || !life.alive()) return nullptr;
    LifeGuard const pageLife = page->guard();
    if (Tab* const tab = tabNamed(name)) tab->setCheckboxDataAdaptor(adaptor);
    return pageLife.alive() ? page : nullptr;
}

// Removing

bool TabbedDialogue::removePage(UIString const& name) {
    Tab* const tab = tabNamed(name);
    return tab && removePage(static_cast<unsigned short>(strip_->indexOf(tab)));
}

bool TabbedDialogue::removePage(unsigned short index) {
    Tab* const tab = getTab(index);
    if (!tab) return false;
    DispatchScope const scope;
    LifeGuard const life = guard();
    TabDetails const details{tab->getName().text(), index};
    bool const wasCurrent = tab->isCurrent();
    Glob* const page = pageOf(*tab);
    strip_->remove(index);
    if (page && life.alive()) destroy(page);
    if (!life.alive()) return true;
    tell(pageClosed, details);
    if (wasCurrent) selectAfter(index);
    return true;
}

/// The tab that is now in the place of a current one that is gone, else the last.
void TabbedDialogue::selectAfter(std::size_t removed) {
    if (numTabs() == 0 || strip_->current()) return;
    selectPage(static_cast<unsigned short>(std::min(removed, numTabs() - 1)), true, true);
}

void TabbedDialogue::removePages() {
    if (!strip_) return;
    DispatchScope const scope;
    LifeGuard const life = guard();
    std::vector<HandlerRef<Glob>> pages;
    for (Tab const* const tab : strip_->tabs())
        if (Glob* const page = pageOf(*tab)) pages.push_back(HandlerRef<Glob>(page));
    strip_->removeAll();
    for (HandlerRef<Glob> const& page : pages)
        if (page && life.alive()) destroy(page.get());
}

/// Nobody may be called now: the rest is done by a message.
void TabbedDialogue::handleTabGone(Glob* page, bool wasCurrent, std::size_t index) {
    if (page) lost_.push_back(HandlerRef<Glob>(page));
    if (wasCurrent) lostCurrent_ = index;
    if (page || wasCurrent) sendMessage(tabGoneMsg, this, this);
}

void TabbedDialogue::finishTabsGone() {
    DispatchScope const scope;
    LifeGuard const life = guard();
    for (HandlerRef<Glob> const& page : std::exchange(lost_, {}))
        if (page && life.alive() && page.get()->parent() == this) destroy(page.get());
    if (!life.alive()) return;
    if (auto const index = std::exchange(lostCurrent_, {})) selectAfter(*index);
}

// Geometry

unsigned short TabbedDialogue::tabHeight(unsigned int) {
    return toSize16(UifStd::getButtonHeight() + UifStd::getIndentWidth());
}

IntBox TabbedDialogue::getPageBounds() const {
    IntBox const area = getUserArea();
    int const indent = UifStd::getIndentWidth();
    IntBox bounds{area.x1 + indent, area.y1 + indent, area.x2 - indent, area.y2 - tabHeight() - indent};
    bounds.x2 = std::max(bounds.x1, bounds.x2);
    bounds.y2 = std::max(bounds.y1, bounds.y2);
    return bounds;
}

XY<int> TabbedDialogue::getMaxPageSize() const {
    return getPageBounds().size();
}

XY<int> TabbedDialogue::calcSize(XY<int> const& pageSize, unsigned int styleFlags) {
    int const indent = UifStd::getIndentWidth();
    return pageSize + XY<int>{2 * indent, 2 * indent + tabHeight(styleFlags)};
}

int TabbedDialogue::calcTotalTabsWidth() const {
    return strip_ ? strip_->totalWidth() : 0;
}

void TabbedDialogue::checkTabWidths() {
    if (strip_) strip_->remeasure();
}

void TabbedDialogue::ensureTabIsVisible(unsigned short index) {
    if (index < numTabs()) strip_->ensureTabIsVisible(index);
}

int TabbedDialogue::getFirstTabPos() const {
    return strip_ ? strip_->firstTabPos() : 0;
}

void TabbedDialogue::setFirstTabPos(int position) {
    if (strip_) strip_->setFirstTabPos(position);
}

void TabbedDialogue::handleNextPressed() {
    if (strip_) strip_->stepForward();
}

void TabbedDialogue::handlePrevPressed() {
    if (strip_) strip_->stepBack();
}

void TabbedDialogue::reshape() {
    DispatchScope const scope;
    LifeGuard const life = guard();
    StandardPanel::reshape();
    if (!life.alive() || !strip_) return;
    IntBox const area = getUserArea();
    reshapeWidgetAt(strip_, {area.x1, area.y2 - tabHeight()}, {area.width(), tabHeight()});
    if (Glob* const page = life.alive() ? getCurrentPage() : nullptr) placePage(*page);
}

void TabbedDialogue::placePage(Glob& page) {
    IntBox const bounds = getPageBounds();
    reshapeWidgetAt(&page, bounds.bottomLeft(), bounds.size());
}

void TabbedDialogue::handleLookChange(LookChange changes) {
    LifeGuard const life = guard();
    StandardPanel::handleLookChange(changes);
    if (!life.alive()) return;
    checkTabWidths();
    reshape();
}

// Telling

int TabbedDialogue::tell(Messages which, Tab const& tab) {
    int const index = strip_ ? strip_->indexOf(&tab) : -1;
    return tell(which, TabDetails{tab.getName().text(), static_cast<unsigned short>(index)});
}

int TabbedDialogue::tell(Messages which, TabDetails const& details) {
    return Reporter().report(*this, parent(), messageTable[which], {},
                             Qv::Ptr<iObject>(new EventMsgData<TabDetails>(details)));
}

} // namespace wainscot
