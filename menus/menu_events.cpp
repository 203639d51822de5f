#include "containers/scroll_bar.h"
#include "host/drawing/drawable.h"
#include "host/drawing/uif_std.h"
#include "host/events/dispatch_scope.h"
#include "host/events/messages.h"
#include "host/events/pointer_state.h"
#include "host/services/clock.h"
#include "host/services/preferences.h"
#include "menus/menu.h"
#include "menus/menu_layout_p.h"
#include "menus/model/menu_change.h"

#include <algorithm>

namespace wainscot {

namespace {

constexpr int unhandled = 0;
constexpr int handled = 1;

/// Preferences that are read once in a process.
bool closesAlways() {
    static bool const closes = config_int("menu_auto_close", 0) != 0;
    return closes;
}

bool cascadesByItself() {
    static bool const cascades = config_int("menu_auto_cascade", 1) != 0;
    return cascades;
}

} // namespace

bool Menu::react(Event const& event) {
    return Focusable::react(event);
}

bool Menu::isTabStopActive() {
    return isChildGlob() && Focusable::isTabStopActive();
}

void Menu::handleKbdFocus() {
    redrawRow(highlighted_);
    Focusable::handleKbdFocus();
}

// Highlight

bool Menu::canHighlight(int item) const {
    if (item < 0 || item >= static_cast<int>(items_->numItems())) return false;
    auto const index = static_cast<unsigned short>(item);
    MenuItem const& wanted = items_->getItem(index);
    return wanted.isActive() && !wanted.isHeader() && !itemIsEmpty(index);
}

bool Menu::isKeyStop(int item) const {
    if (item < 0 || item >= static_cast<int>(items_->numItems())) return false;
    auto const index = static_cast<unsigned short>(item);
    MenuItem const& wanted = items_->getItem(index);
    return wanted.isHeader() ? wanted.isActive() && canFold(index) : canHighlight(item);
}

int Menu::itemUnderPointer() const {
    if (!isInside_) return noItem;
    int const item = findItemAtPos(screenXYToGlobXY(glib_getMousePos()));
    return canHighlight(item) ? item : noItem;
}

/// A sub-menu may have to be opened or closed.
void Menu::setHighlight(int item, bool byPointer) {
    int const before = std::exchange(highlighted_, item);
    if (before == item) return;
    redrawRow(before);
    redrawRow(item);
    describeChanged(DescriptionChange::selection);
    auto const cascades = [this](int index) {
        return index >= 0 && index < static_cast<int>(items_->numItems()) &&
               isCascadingItem(items_->getItem(static_cast<unsigned short>(index)));
    };
    if (!byPointer || !cascadesByItself() || !(cascades(before) || cascades(item))) return;
    setInterest(EventKind::timer);
    setNextTimer(cascadeDelay);
}

void Menu::handleMouseContainment(bool inside) {
    Glib::UpdateDeferrer const deferrer(canvas());
    LifeGuard const life = guard();
    Focusable::handleMouseContainment(inside);
    if (!life.alive()) return;
    isInside_ = inside;
    cascadeDue_ = service_get_msecs() + cascadeDelay;
    if (!inside || restingPointer_ != glib_getMousePos()) setHighlight(itemUnderPointer(), true);
}

void Menu::setHighlightedItem(int item) {
    DispatchScope const scope;
    item = std::max(item, noItem);
    if (item >= 0 && !isKeyStop(item)) return;
    LifeGuard const life = guard();
    restingPointer_ = glib_getMousePos();
    setHighlight(item, false);
    if (getSubMenu() && !isOwnerOfSubMenu(item)) deleteSubMenu();
    if (item >= 0 && life.alive()) reveal(static_cast<unsigned short>(item));
}

int Menu::handleTimerEvent() {
    double const now = service_get_msecs();
    if (now < cascadeDue_ || isMoving()) {
        setNextTimer(std::max(cascadeDue_ - now, isMoving() ? cascadeDelay : 0));
        return handled;
    }
    DispatchScope const scope;
    clearInterest(EventKind::timer);
    bool const cascades = canHighlight(highlighted_) &&
                          isCascadingItem(items_->getItem(static_cast<unsigned short>(highlighted_)));
    Glob* const open = getSubMenu();
    if (cascades && !isOwnerOfSubMenu(highlighted_))
        openSubMenu(static_cast<unsigned short>(highlighted_), true);
    else if (open && wasOpenedByTimer_ && !cascades && isFarFromSubMenu())
        deleteSubMenu();
    return handled;
}

/// Whether the pointer is further from the sub-menu than a button is high.
bool Menu::isFarFromSubMenu() const {
    int const reach = UifStd::getButtonHeight();
    IntBox const box = getSubMenu()->screenBox();
    IntBox const near(box.x1 - reach, box.y1 - reach, box.x2 + reach, box.y2 + reach);
    return !near.contains(glib_getMousePos());
}

// Pointer

int Menu::handleMouseEvent(Event const& event) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    XY<int> const place = eventXYToGlobXY(event, *this);
    int under = findItemAtPos(place);
    bool const isPress = mouse_down_event(event);
    // The release on its own row says what becomes of a sub-menu.
    if (isPress && getSubMenu() && !isOwnerOfSubMenu(under)) deleteSubMenu();
    if (isPress && life.alive() && isChildGlob() && isTabStopActive()) claimKbdFocus();
    if (!life.alive()) return handled;
    // The list may have changed.
    if (isPress) under = findItemAtPos(place);
    if (mouse_wheel_event(event)) {
        if (mostOffset() == 0) return unhandled;
        setScrollOffset(offset_ - event.amount() * getRowHeight());
        if (life.alive()) setHighlight(itemUnderPointer(), true);
        return handled;
    }
    if (mouse_move_event(event) && !mouse_left_event(event)) {
        int const wanted = canHighlight(under) ? under : noItem;
        if (wanted != highlighted_ && wanted != pointed_) handleMouseContainment(true);
        if (life.alive()) pointed_ = wanted;
        return unhandled;
    }
    if (!mouse_left_event(event)) return Focusable::handleMouseEvent(event);
    if (mouse_up_event(event)) {
        if (pressed_ < 0) return unhandled;
        handleRelease(static_cast<unsigned short>(pressed_));
        return handled;
    }
    if (isPress && under < 0) return Focusable::handleMouseEvent(event);
    bool const isUsable = under >= 0 && items_->getItem(static_cast<unsigned short>(under)).isActive() &&
                          !itemIsEmpty(static_cast<unsigned short>(under));
    int const before = std::exchange(pressed_, isUsable ? under : noItem);
    if (before != pressed_) {
        redrawRow(before);
        redrawRow(pressed_);
        setHighlight(canHighlight(pressed_) ? pressed_ : noItem, true);
    }
    return under >= 0 ? handled : unhandled;
}

void Menu::handlePressCancelled(Event const& press) {
    redrawRow(std::exchange(pressed_, noItem));
    Focusable::handlePressCancelled(press);
}

void Menu::handleCaptureLost() {
    redrawRow(std::exchange(pressed_, noItem));
    Focusable::handleCaptureLost();
}

void Menu::handleRelease(unsigned short index) {
    if (index >= items_->numItems()) return redrawRow(std::exchange(pressed_, noItem));
    MenuItem const& item = items_->getItem(index);
    if (item.isHeader()) {
        pressed_ = noItem;
        return flipGroup(index, (currentModifiers() & Key::shift) != 0);
    }
    if (!item.isActive()) return redrawRow(std::exchange(pressed_, noItem));
    if (!isCascadingItem(item)) {
        if (item.hasOptions()) items_->getItem(index).incCurOption();
        return choose(index);
    }
    redrawRow(std::exchange(pressed_, noItem));
    bool const isOpen = isOwnerOfSubMenu(index);
    bool const isNew = service_get_msecs() - subMenuOpenedAt_ < cascadeDelay;
    if (isOpen && !isNew) return deleteSubMenu();
    if (!isOpen) openSubMenu(index, false);
}

// Choosing

void Menu::informOwner(unsigned short item) {
    Qv::Ptr<MenuData> const items = items_;
    items->issueCallback(item, getOwner(), this);
}

void Menu::itemChanged(unsigned int item) {
    if (item < MenuData::none) informOwner(static_cast<unsigned short>(item));
}

bool Menu::pinned() {
    GlobManager const* const manager = GlobManager::current();
    return isPinned() || !manager || !manager->isPopUp(getRootParent(this));
}

bool Menu::shouldCloseMenuAfterSelection(unsigned short index) const {
    if (index >= items_->numItems()) return true;
    MenuItem const& item = items_->getItem(index);
    if (!item.hasOptions()) return item.hasFlag(MenuItemFlag::closesMenu);
    MenuItem const* const option = item.currentOption();
    return !option || closesAlways() || option->hasFlag(MenuItemFlag::optionClosesMenu);
}

void Menu::choose(unsigned short index) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    FirstException thrown;
    bool const closes = shouldCloseMenuAfterSelection(index);
    createWidgetsForItems();
    if (life.alive()) thrown.run([&] { informOwner(index); });
    if (life.alive()) thrown.run([&] { requestItemSelect(index); });
    if (life.alive()) finishChoice(index, closes);
    thrown.rethrow();
}

/// What the item stands for may have refused.
void Menu::finishChoice(unsigned short index, bool closes) {
    LifeGuard const life = guard();
    showActions();
    if (life.alive()) createWidgetsForItems();
    if (!life.alive()) return;
    int const pressed = std::exchange(pressed_, noItem);
    if (pinned()) {
        redrawRow(pressed);
        if (Glob* const owner = getOwner()) sendMessage(itemSelectedMsg_, owner, this);
        return;
    }
    if (closes) return closeLater();
    redrawRow(index);
}

void Menu::closeLater() {
    sendMessage(pootMsg, this, this);
}

// Groups

bool Menu::canFold(unsigned short header) const {
    return items_->getNumGroups() >= 2 || items_->rows().rowOfItem(header) != 0;
}

void Menu::flipGroup(unsigned short header, bool laterToo) {
    if (!canFold(header)) return redrawRow(header);
    bool const isOpen = items_->getItem(header).type() == eExpandedGroupItem;
    foldGroup(header, isOpen ? eCompressedGroupItem : eExpandedGroupItem, laterToo);
}

void Menu::foldGroup(unsigned short header, MenuItemType type, bool laterToo) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    flipped_ = header;
    items_->getItem(header).setType(type);
    for (std::size_t i = header + std::size_t(1); laterToo && i < items_->numItems(); ++i)
        if (MenuItem& item = items_->getItem(static_cast<unsigned short>(i)); item.isHeader())
            item.setType(type);
    saveGroupStates();
    layout_->build(*items_);
    if (type == eExpandedGroupItem && scrollBar_) revealGroup(header);
    redisplay();
    if (life.alive()) setHighlight(itemUnderPointer(), true);
}

/// A group that opens in the lower half comes into sight, as far as its header stays.
void Menu::revealGroup(unsigned short header) {
    std::size_t const row = items_->rows().rowOfItem(header);
    int const room = calcAreaForItems().height();
    if (layout_->top(row) - offset_ < room / 2) return;
    unsigned short const last = items_->getLastInGroup(header);
    std::size_t const lastRow = last == MenuData::none ? row : items_->rows().rowOfItem(last);
    storeOffset(std::min(std::max(layout_->bottom(lastRow) - room, offset_), layout_->top(row)));
}

// Messages

bool Menu::isFromSubMenu(Glob const* sender) const {
    return isWithin(sender, getSubMenu());
}

/// A choice in a sub-menu closes the whole cascade.
void Menu::forward(LightweightString<char> const& name, Qv::Ptr<iObject> const& data) {
    LifeGuard const life = guard();
    if (Glob* const owner = getOwner()) {
        if (data)
            sendMessageWithData(name, owner, data, this);
        else
            sendMessage(name, owner, this);
    }
    if (life.alive() && !pinned()) closeLater();
}

int Menu::handleMessageEvent(LightweightString<char> name, Glob* sender) {
    return handleMessage(name, sender, {});
}

int Menu::handleDataMessageEvent(LightweightString<char> name, Glob* sender, Qv::Ptr<iObject> data) {
    return handleMessage(name, sender, data);
}

int Menu::handleMessage(LightweightString<char> const& name, Glob* sender, Qv::Ptr<iObject> const& data) {
    DispatchScope const scope;
    bool const isClosing = name == pootMsg || name == pootMsg_;
    if (isFromSubMenu(sender)) {
        if (isClosing) return handled;
        if (name != itemSelectedMsg_)
            forward(name, data);
        else if (!pinned())
            closeLater();
        return handled;
    }
    if (name == freezeFlipMsg) flipped_ = noItem;
    if (sender && sender == scrollBar_.get() && ScrollBar::isScrollBarMsg(name))
        return handleScrollBarMessages(name);
    if (isRowWidgetMsg(name) && findItemFromWidget(sender) != MenuData::none) return handleRowWidget(sender);
    return data ? Focusable::handleDataMessageEvent(name, sender, data)
                : Focusable::handleMessageEvent(name, sender);
}

int Menu::handleScrollBarMessages(LightweightString<char> const& name) {
    Glib::UpdateDeferrer const deferrer(canvas());
    LifeGuard const life = guard();
    ScrollBar const* const bar = scrollBar_.get();
    int wanted = offset_;
    if (name == ScrollBar::downButtonPressedMsg) wanted += getRowHeight();
    if (name == ScrollBar::upButtonPressedMsg && offset_ >= 1) wanted -= getRowHeight();
    if (name == ScrollBar::thumbMovedMsg && bar)
        wanted = static_cast<int>(layout_->height() * bar->getThumbPos() + 0.5);
    setScrollOffset(wanted);
    if (life.alive()) setHighlight(itemUnderPointer(), true);
    return handled;
}

} // namespace wainscot
