#include "menus/menu.h"

#include "containers/scroll_bar.h"
#include "host/base/configb.h"
#include "host/base/convert.h"
#include "host/base/diagnostics.h"
#include "host/drawing/drawable.h"
#include "host/drawing/uif_std.h"
#include "host/events/dispatch_scope.h"
#include "host/events/messages.h"
#include "host/services/preferences.h"
#include "host/services/text_ids.h"
#include "menus/menu_layout_p.h"
#include "menus/model/menu_item_action.h"

#include <algorithm>
#include <cwctype>

namespace wainscot {

namespace {

using Text = LightweightString<wchar_t>;

/// No screen is wider or higher.
constexpr int farthest = 1 << 20;
/// The least width, and the greatest, in heights of a button.
constexpr int leastWidth = 4;
constexpr int greatestWidth = 40;
/// Preferences keep at most so many characters of a group's name.
constexpr std::size_t longestKey = 64;

int widthOf(Text const& text, Glib::FontDesc const& font) {
    return text.empty() ? 0 : Glib::loadFont(font)->textWidth(text);
}

Text rightTextOf(MenuItem const& item) {
    Text const own = item.getShownRightAlignedText();
    Text const more = item.getIncidentalText();
    return own.empty() || more.empty() ? own + more : own + L"  " + more;
}

Menu::InitArgs argsFor(configb const& settings, Glob* owner) {
    auto items = Qv::makePtr<MenuData>();
    Text lines;
    settings.in("items", lines);
    std::wstring_view left = lines.view();
    while (!left.empty()) {
        std::size_t const end = std::min(left.find(L'\n'), left.size());
        items->addItem(MenuItem(UIString(Text(left.substr(0, end)))));
        left.remove_prefix(std::min(end + 1, left.size()));
    }
    return Menu::InitArgs(items, owner);
}

/// The adaptor may destroy the owner.
Menu::InitArgs argsFor(ListViewAdaptorBase const* adaptor, Glob* owner) {
    HandlerRef<Glob> const hearer(owner);
    auto items = Qv::makePtr<MenuData>(adaptor ? adaptor->getItems() : std::vector<MenuItem>());
    return Menu::InitArgs(items, hearer.get());
}

} // namespace

Menu::Menu(InitArgs const& args)
    : Focusable(StandardPanel::InitArgs(args, Border(args.border))), layout_(std::make_unique<MenuLayout>()),
      typed_([this] { makeDirty(); }) {
    init(args);
}

Menu::Menu(Qv::Ptr<MenuData> items, Glob* owner) : Menu(InitArgs(std::move(items), owner)) {}

Menu::Menu(std::vector<MenuItem> items, Glob* owner)
    : Menu(InitArgs(Qv::makePtr<MenuData>(std::move(items)), owner)) {}

Menu::Menu(std::vector<GenericParam::Section> const& parameters, Glob* owner)
    : Menu(GenericParam::makeItems(parameters), owner) {}

Menu::Menu(configb const& settings, Glob* owner) : Menu(argsFor(settings, owner)) {}

Menu::Menu(Qv::Ptr<ListViewAdaptorBase> adaptor, Glob* owner) : Menu(argsFor(adaptor.get(), owner)) {
    setListViewAdaptor(std::move(adaptor));
}

Menu::~Menu() = default;

void Menu::init(InitArgs const& args) {
    items_ = args.items ? args.items : Qv::makePtr<MenuData>();
    owner_ = HandlerRef<Glob>(args.owner);
    prefsKey_ = args.prefsKey;
    maxHeight_ = args.maxHeight;
    minWidth_ = args.minWidth;
    if (!args.surround.isEmpty()) addSurround(args.surround);
    automaticWidth_ = args.width == 0;
    automaticHeight_ = args.height == 0;
    if (!args.title.text().empty()) setTitle(args.title, eRedrawNo);
    if (args.standardWidgets != 0) addStandardWidgets(args.standardWidgets);
    restoreGroupStates();
    followActions();
    layout_->build(*items_);
    // What lies round the items is known only of a panel that has room for some.
    int const some = greatestWidth * UifStd::getButtonHeight();
    resize(some, some);
    XY<int> const wanted = calcDimensions();
    resize(automaticWidth_ ? wanted.x : args.width, automaticHeight_ ? wanted.y : args.height);
    isLaidOut_ = true;
    layOut();
}

bool Menu::open(PopUpOptions const& options) {
    return GlobManager::instance().openPopUp(this, options);
}

bool Menu::openAt(XY<int> const& place, Glob* opener) {
    PopUpOptions options;
    XY<int> const upper(std::clamp(place.x, -farthest, farthest), std::clamp(place.y, -farthest, farthest));
    options.anchor = IntBox(upper.x, upper.y, upper.x + 1, upper.y + 1);
    options.place = XY<int>(upper.x, upper.y - height());
    options.opener = opener;
    return open(options);
}

// Items

void Menu::redisplay() {
    DispatchScope const scope;
    if (isDying()) return;
    LifeGuard const life = guard();
    followActions();
    if (!life.alive()) return;
    layout_->build(*items_);
    if (highlighted_ >= static_cast<int>(items_->numItems())) highlighted_ = noItem;
    if (pressed_ >= static_cast<int>(items_->numItems())) pressed_ = noItem;
    XY<int> const size = calcDimensions();
    XY<int> const now{automaticWidth_ ? std::max(size.x, width()) : width(),
                      automaticHeight_ ? size.y : height()};
    // The upper edge stays where it is.
    if (now != XY<int>(width(), height())) {
        int const top = isChildGlob() ? 0 : screenBox().y2;
        resize(now.x, now.y);
        if (life.alive() && !isChildGlob() && isShown()) setScreenPos({screenBox().x1, top - height()});
    }
    if (!life.alive()) return;
    layOut();
    if (!life.alive()) return;
    makeDirty();
    describeChanged(DescriptionChange::children);
}

void Menu::showActions() {
    for (std::size_t i = 0; i < items_->numItems(); ++i) {
        MenuItem& item = items_->getItem(static_cast<unsigned short>(i));
        if (MenuItemAction const* const action = item.action()) action->showIn(item);
    }
}

void Menu::handleSourceChange() {
    DispatchScope const scope;
    LifeGuard const life = guard();
    showActions();
    if (life.alive()) createWidgetsForItems();
    if (life.alive()) makeDirty();
}

void Menu::followActions() {
    showActions();
    sources_.clear();
    NotifierBase* before = nullptr;
    for (MenuItem const& item : items_->items()) {
        MenuItemAction const* const action = item.action();
        NotifierBase* const source = action ? action->source() : nullptr;
        if (!source || std::exchange(before, source) == source) continue;
        sources_.push_back(source->subscribe({}, makeCallback<int, NotifyMsg>([this](NotifyMsg const&) {
                                                 handleSourceChange();
                                                 return 1;
                                             })));
    }
}

void Menu::redisplay(Qv::Ptr<MenuData> const& items) {
    DispatchScope const scope;
    deleteSubMenu();
    items_ = items ? items : Qv::makePtr<MenuData>();
    highlighted_ = pressed_ = flipped_ = noItem;
    restoreGroupStates();
    redisplay();
}

void Menu::redisplay(std::vector<MenuItem> const& items) {
    redisplay(Qv::makePtr<MenuData>(items));
}

void Menu::showItems(std::vector<MenuItem> items, eRedrawFlag) {
    redisplay(items);
}

unsigned short Menu::findItem(Text const& text, bool hidden) const {
    auto const items = items_->items();
    for (std::size_t i = 0; i < items.size(); ++i)
        if (items[i].shows(text.view()) && (hidden || !itemIsHidden(static_cast<unsigned short>(i))))
            return static_cast<unsigned short>(i);
    return MenuData::none;
}

unsigned short Menu::findItem(LightweightString<char> const& id) const {
    return items_->findItem(id);
}

int Menu::findItemAtPos(XY<int> const& place) const {
    if (!calcAreaForItems().contains(place)) return noItem;
    for (VisibleMenuItem const& row : visible_)
        if (place.y >= row.box.y1 && place.y < row.box.y2 && place.x < row.box.x2)
            return row.item < items_->numItems() ? row.item : noItem;
    return noItem;
}

int Menu::findVisibleItem(unsigned short item) const {
    auto const found = std::ranges::find(visible_, item, &VisibleMenuItem::item);
    return found == visible_.end() ? noItem : static_cast<int>(found - visible_.begin());
}

Text Menu::getCurrentChoice(Text const& text) const {
    unsigned short const item = findItem(text);
    MenuItem const* const option = item == MenuData::none ? nullptr : items_->getItem(item).currentOption();
    return option ? option->getDisplayString() : Text();
}

int Menu::getCurrentChoiceIndex(Text const& text) const {
    unsigned short const item = findItem(text);
    return item == MenuData::none ? -1 : static_cast<int>(items_->getItem(item).getCurOption());
}

bool Menu::setCurrentChoice(Text const& text, int option) {
    unsigned short const item = findItem(text);
    if (item == MenuData::none || option < 0) return false;
    items_->getItem(item).setCurOption(static_cast<unsigned int>(option));
    createWidgetsForItems();
    redrawRow(item);
    return true;
}

bool Menu::changeItem(Text const& text, Text const& newText) {
    unsigned short const item = findItem(text);
    if (item == MenuData::none) return false;
    items_->getItem(item).label(newText);
    redisplay();
    return true;
}

unsigned short Menu::numNonHiddenItems() const {
    return static_cast<unsigned short>(items_->rows().numRows());
}

bool Menu::itemIsHidden(unsigned short item) const {
    return items_->rows().isHidden(item);
}

bool Menu::itemIsEmpty(unsigned short item) const {
    return item >= items_->numItems() || MenuLayout::isSeparator(items_->getItem(item));
}

// Sizes

int Menu::getRowHeight() const {
    return MenuLayout::rowHeight();
}

int Menu::getItemHeight(unsigned short item) const {
    return item < items_->numItems() ? MenuLayout::heightOf(items_->getItem(item)) : 0;
}

int Menu::getItemsHeight() const {
    return layout_->height();
}

IntBox Menu::calcAreaForItems() const {
    IntBox const area = getUserArea();
    int const edge = std::min(UifStd::getIndentWidth() / 2, std::max(area.height() / 2, 0));
    return {area.x1, area.y1 + edge, area.x2, area.y2 - edge};
}

int Menu::calculateHeight() const {
    int const around = height() - calcAreaForItems().height();
    int most = 0xFFFF;
    if (GlobManager const* const manager = GlobManager::current())
        most = manager->activeMonitor().height() - UifStd::getButtonHeight();
    if (maxHeight_ > 0) most = std::min<int>(most, maxHeight_);
    int const wanted = std::min(layout_->height() + around, most);
    return std::max(wanted, std::min(getRowHeight() + around, most));
}

int Menu::leftOf(unsigned short item) const {
    switch (items_->getItem(item).type()) {
    case eGroupedMenuItem:
        return getRowHeight();
    case eExpandedGroupItem:
    case eCompressedGroupItem:
        return UifStd::getWidgetGap() / 2;
    case eSimpleMenuItem:
        break;
    }
    return UifStd::getIndentWidth();
}

int Menu::calculateWidth() const {
    int const button = UifStd::getButtonHeight();
    int wanted = leastWidth * button;
    for (unsigned short const index : MenuLayout::longestItems(*items_))
        wanted = std::max(wanted, widthOfRow(index));
    int const title = getTitleW().empty() ? 0 : calcTitleWidth(getTitle()) + 2 * button;
    int const around = width() - getUserArea().width();
    bool const scrolls = layout_->height() > calculateHeight();
    int const bar = scrolls ? ScrollBar::thickness() + UifStd::getWidgetGap() : 0;
    return std::max<int>(std::min(std::max(wanted + bar, title) + around, greatestWidth * button), minWidth_);
}

int Menu::widthOfRow(unsigned short index) const {
    // An icon that was asked for its size may have changed the list.
    if (index >= items_->numItems()) return 0;
    MenuItem const item = items_->getItem(index);
    Glib::FontDesc const font = getFontForItem(item);
    int const gap = UifStd::getWidgetGap();
    auto const formatted = item.formattedLabel();
    int width =
        leftOf(index) + gap +
        (formatted ? HTMLRenderer::calcMaxWidth(*formatted, font) : widthOf(item.getDisplayString(), font));
    if (auto const icon = item.iconRenderer()) width += icon->size().x + gap;
    if (Text const right = rightTextOf(item); !right.empty()) width += 2 * gap + widthOf(right, font);
    if (item.hasOptions()) width += widthOfOptions(item) + gap;
    if (isCascadingItem(item)) width += getRowHeight();
    return width + gap;
}

SizeNeeds Menu::sizeNeeds() const {
    SizeNeeds needs = Focusable::sizeNeeds();
    XY<int> const wanted = calcDimensions();
    needs.natural = {automaticWidth_ ? wanted.x : -1, automaticHeight_ ? wanted.y : -1};
    needs.minimum = {leastWidth * UifStd::getButtonHeight(), 2 * getRowHeight()};
    return needs;
}

// Rows

void Menu::layOut() {
    if (!isLaidOut_) return;
    LifeGuard const life = guard();
    offset_ = std::clamp(offset_, 0, mostOffset());
    calcVisibleItemAreas();
    updateScrollBar();
    if (life.alive()) createWidgetsForItems();
}

int Menu::mostOffset() const {
    return std::max(layout_->height() - calcAreaForItems().height(), 0);
}

void Menu::calcVisibleItemAreas() {
    visible_.clear();
    IntBox const area = calcAreaForItems();
    bool const scrolls = mostOffset() > 0;
    int const right = area.x2 - UifStd::getIndentWidth() -
                      (scrolls ? ScrollBar::thickness() + UifStd::getWidgetGap() + getBorder().getSize() : 0);
    MenuRows const& rows = items_->rows();
    std::size_t const count = std::min(layout_->numRows(), rows.numRows());
    for (std::size_t row = layout_->rowAt(offset_); row < count; ++row) {
        int const top = area.y2 + offset_ - layout_->top(row);
        if (top <= area.y1) break;
        unsigned short const item = rows.itemOfRow(row);
        int const bottom = area.y2 + offset_ - layout_->bottom(row);
        visible_.push_back(
            {IntBox(area.x1 + leftOf(item), bottom, std::max(right, area.x1 + leftOf(item)), top), item});
    }
}

void Menu::updateScrollBar() {
    int const most = mostOffset();
    ScrollBar* bar = scrollBar_.get();
    if (most == 0) {
        scrollBar_ = {};
        if (bar) destroy(bar);
        return;
    }
    LifeGuard const life = guard();
    IntBox const area = calcAreaForItems();
    int const thick = ScrollBar::thickness();
    if (!bar) {
        bar = new ScrollBar(ScrollBar::InitArgs(eVertical, toSize16(area.height())));
        scrollBar_ = HandlerRef<ScrollBar>(bar);
        bar->setPalette(getColoursForWidgets());
        bar->setControls(this);
        addWidget(bar, area.x2 - thick, area.y1);
    } else {
        setWidgetPos(bar, {area.x2 - thick, area.y1});
        bar->resize(thick, area.height());
    }
    if (!life.alive() || bar->isDragging()) return;
    bar->setThumbSize(double(area.height()) / layout_->height());
    bar->setThumbPos(double(offset_) / layout_->height());
}

void Menu::reshape() {
    LifeGuard const life = guard();
    Focusable::reshape();
    if (life.alive()) layOut();
}

void Menu::handleLookChange(LookChange changes) {
    LifeGuard const life = guard();
    Focusable::handleLookChange(changes);
    if (life.alive()) redisplay();
}

bool Menu::storeOffset(int offset) {
    offset = std::clamp(offset, 0, mostOffset());
    return std::exchange(offset_, offset) != offset;
}

void Menu::setScrollOffset(int offset) {
    DispatchScope const scope;
    if (storeOffset(offset)) noteScrolled();
}

void Menu::noteScrolled() {
    LifeGuard const life = guard();
    calcVisibleItemAreas();
    updateScrollBar();
    if (life.alive()) createWidgetsForItems();
    if (!life.alive()) return;
    makeDirty();
    describeChanged(DescriptionChange::children);
}

void Menu::reveal(unsigned short item) {
    std::size_t const row = items_->rows().rowOfItem(item);
    if (row >= layout_->numRows()) return;
    int const room = calcAreaForItems().height();
    // With what comes next beyond it.
    int const ahead = room / 4 / getRowHeight() * getRowHeight();
    if (layout_->top(row) < offset_) return setScrollOffset(layout_->top(row) - ahead);
    if (layout_->bottom(row) > offset_ + room) setScrollOffset(layout_->bottom(row) - room + ahead);
}

void Menu::redrawRow(int item) {
    int const row = item < 0 ? noItem : findVisibleItem(static_cast<unsigned short>(item));
    if (row < 0) return;
    IntBox const area = calcAreaForItems();
    IntBox const box = visible_[static_cast<std::size_t>(row)].box;
    damage(IntBox(area.x1, box.y1, area.x2, box.y2).intersection(area));
}

// Groups

namespace {

/// What stands in keys: letters and digits.
LightweightString<char> keyPart(Text const& text) {
    LightweightString<char> key;
    for (wchar_t const c : text.view())
        if (key.size() < longestKey) {
            if (c >= 128)
                key += "_" + toUTF8(Qv::WStringFromInteger(static_cast<int>(c)));
            else
                key += std::iswalnum(static_cast<wint_t>(c)) ? static_cast<char>(c) : '_';
        }
    return key;
}

} // namespace

LightweightString<char> Menu::makePrefsKey(MenuItem const& item, LightweightString<char> const& base) const {
    return base + "/" + keyPart(item.getDisplayString());
}

LightweightString<char> Menu::makeNestedPrefsKey(MenuItem const& item,
                                                 LightweightString<char> const& base) const {
    return makePrefsKey(item, base + "/" + prefsKey_);
}

void Menu::saveGroupStates() const {
    EditorPreferences* const store = EditorPreferences::current();
    if (prefsKey_.empty() || !store) return;
    for (MenuItem const& item : items_->items())
        if (isPersistableItem(item))
            store->setPreference(makePrefsKey(item, prefsKey_), item.type() == eExpandedGroupItem);
}

void Menu::restoreGroupStates() {
    EditorPreferences* const store = EditorPreferences::current();
    if (prefsKey_.empty() || !store) return;
    for (std::size_t i = 0; i < items_->numItems(); ++i) {
        MenuItem& item = items_->getItem(static_cast<unsigned short>(i));
        if (!isPersistableItem(item)) continue;
        bool const isOpen =
            store->getPreference(makePrefsKey(item, prefsKey_), item.type() == eExpandedGroupItem);
        item.setType(isOpen ? eExpandedGroupItem : eCompressedGroupItem);
    }
    ensureAtLeastOneExpandedGroup();
}

void Menu::ensureAtLeastOneExpandedGroup() {
    MenuItem* first = nullptr;
    for (std::size_t i = 0; i < items_->numItems(); ++i) {
        MenuItem& item = items_->getItem(static_cast<unsigned short>(i));
        if (item.type() == eExpandedGroupItem) return;
        if (item.isHeader() && !first) first = &item;
    }
    if (first) first->setType(eExpandedGroupItem);
}

void Menu::tellClosing() {
    if (Glob* const owner = getOwner()) callMessage(pootMsg_, owner, this);
}

void Menu::handlePoot() {
    DispatchScope const scope;
    LifeGuard const life = guard();
    saveGroupStates();
    deleteSubMenu();
    if (life.alive()) tellClosing();
    if (life.alive()) Focusable::handlePoot();
}

void Menu::handleDetached() {
    leaveListViewAdaptor();
    deletionWatch_ = {};
    moveWatch_ = {};
    sources_.clear();
    Glob* const open = getSubMenu();
    subMenu_ = {};
    Focusable::handleDetached();
    if (open) destroy(open);
}

} // namespace wainscot
