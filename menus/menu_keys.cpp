#include "host/events/dispatch_scope.h"
#include "host/events/event.h"
#include "menus/menu.h"
#include "menus/menu_layout_p.h"

#include <algorithm>

namespace wainscot {

namespace {

constexpr int unhandled = 0;
constexpr int handled = 1;

} // namespace

/// Pop-ups are asked for all keys.
bool Menu::intercept(Event const& event) {
    if (!isKeyPressEvent(event)) return Focusable::intercept(event);
    return handleKeyboardEvent(static_cast<int>(event.keyCode())) == handled;
}

int Menu::handleKeyboardEvent(int keyCode) {
    DispatchScope const scope;
    auto const key = static_cast<std::uint32_t>(keyCode);
    LifeGuard const life = guard();
    // While something is typed, a space is part of it.
    bool const isTyped = key == Key::space && !typed_.isEmpty();
    if (auto const step = isTyped ? std::nullopt : actionFor(keyTable, key)) {
        forgetTyped();
        return performStep(*step) || !life.alive() ? handled : unhandled;
    }
    return typeAhead(key) ? handled : Focusable::handleKeyboardEvent(keyCode);
}

/// A sub-menu in which nothing is highlighted leaves the keys to the menu that has opened it.
bool Menu::performStep(Step step) {
    auto const last = static_cast<int>(items_->numItems());
    if (highlighted_ >= last) highlighted_ = noItem;
    bool const isSubMenu = dynamic_cast<Menu*>(getOwner()) != nullptr;
    if (isSubMenu && highlighted_ < 0 && step != Step::out) return false;
    switch (step) {
    case Step::up:
        return moveHighlight(highlighted_ < 0 ? last : highlighted_, -1);
    case Step::down:
        return moveHighlight(highlighted_, 1);
    case Step::home:
        return moveHighlight(noItem, 1);
    case Step::end:
        return moveHighlight(last, -1);
    case Step::pageUp:
        return moveByPage(-1);
    case Step::pageDown:
        return moveByPage(1);
    case Step::choose:
        return highlighted_ < 0 || chooseByKey(static_cast<unsigned short>(highlighted_));
    case Step::into:
        return stepInto();
    case Step::out:
        return stepOut();
    }
    return false;
}

/// To the next stop of the keys, and from the last one to the first.
bool Menu::moveHighlight(int from, int direction) {
    auto const count = static_cast<int>(items_->numItems());
    MenuRows const& rows = items_->rows();
    int item = from;
    for (int i = 0; i <= count; ++i) {
        item += direction;
        if (item < 0) item = count - 1;
        if (item >= count) item = 0;
        if (count > 0 && !rows.isHidden(static_cast<std::size_t>(item)) && isKeyStop(item)) {
            setHighlightedItem(item);
            return true;
        }
    }
    return true;
}

bool Menu::chooseByKey(unsigned short index) {
    MenuItem const& item = items_->getItem(index);
    if (isCascadingItem(item)) return stepInto();
    if (item.isHeader())
        return foldByKey(index,
                         item.type() == eExpandedGroupItem ? eCompressedGroupItem : eExpandedGroupItem);
    handleRelease(index);
    return true;
}

bool Menu::moveByPage(int direction) {
    LifeGuard const life = guard();
    int const room = calcAreaForItems().height();
    MenuRows const& rows = items_->rows();
    if (layout_->numRows() == 0) return true;
    std::size_t const highlightedRow =
        highlighted_ < 0 ? layout_->rowAt(offset_) : rows.rowOfItem(static_cast<std::size_t>(highlighted_));
    std::size_t const row = std::min(highlightedRow, layout_->numRows() - 1);
    int const wanted =
        std::clamp(layout_->top(row) + direction * (room - getRowHeight()), 0, layout_->height() - 1);
    int const item = rows.itemOfRow(layout_->rowAt(wanted));
    int const before = highlighted_;
    if (isKeyStop(item))
        setHighlightedItem(item);
    else
        moveHighlight(item, -direction);
    // What cannot be highlighted is scrolled to.
    if (life.alive() && highlighted_ == before)
        setScrollOffset(offset_ + direction * (room - getRowHeight()));
    return true;
}

/// A sub-menu leaves it to the menu that has opened it.
bool Menu::stepBeyond(int direction) {
    auto* const opener = dynamic_cast<Menu*>(getOwner());
    return !opener || opener->stepBeyond(direction);
}

bool Menu::stepInto() {
    if (highlighted_ < 0) return stepBeyond(1);
    auto const item = static_cast<unsigned short>(highlighted_);
    if (items_->getItem(item).type() == eCompressedGroupItem) return foldByKey(item, eExpandedGroupItem);
    if (!isCascadingItem(items_->getItem(item))) return stepBeyond(1);
    LifeGuard const life = guard();
    if (!isOwnerOfSubMenu(item)) openSubMenu(item, false);
    auto* const open = life.alive() ? dynamic_cast<Menu*>(getSubMenu()) : nullptr;
    if (open) open->moveHighlight(noItem, 1);
    return true;
}

int Menu::headerOfHighlighted() const {
    int item = std::min(highlighted_, static_cast<int>(items_->numItems()) - 1);
    while (item >= 0 && items_->getItem(static_cast<unsigned short>(item)).type() == eGroupedMenuItem) --item;
    return item >= 0 && items_->getItem(static_cast<unsigned short>(item)).isHeader() ? item : noItem;
}

bool Menu::foldByKey(unsigned short header, MenuItemType type) {
    LifeGuard const life = guard();
    foldGroup(header, type, false);
    // The pointer may be elsewhere.
    if (life.alive()) setHighlightedItem(header);
    return true;
}

/// To the header of the group, then the group is closed; else out of a sub-menu.
bool Menu::stepOut() {
    int const header = headerOfHighlighted();
    if (isKeyStop(header) && header != highlighted_) return setHighlightedItem(header), true;
    if (isKeyStop(header) &&
        items_->getItem(static_cast<unsigned short>(header)).type() == eExpandedGroupItem)
        return foldByKey(static_cast<unsigned short>(header), eCompressedGroupItem);
    if (!dynamic_cast<Menu*>(getOwner())) return stepBeyond(-1);
    closeLater();
    return true;
}

// Typed letters

bool Menu::matches(unsigned short index) const {
    return !typed_.isEmpty() && typed_.matches(items_->getItem(index).getDisplayString());
}

bool Menu::typeAhead(std::uint32_t key) {
    if (!typed_.take(key)) return false;
    makeDirty();
    MenuRows const& rows = items_->rows();
    auto const canBeFound = [&](int item) {
        return !rows.isHidden(static_cast<std::size_t>(item)) && canHighlight(item) &&
               matches(static_cast<unsigned short>(item));
    };
    auto const isExact = [&](int item) {
        return typed_.isAll(items_->getItem(static_cast<unsigned short>(item)).getDisplayString());
    };
    int const found = typed_.find(static_cast<int>(items_->numItems()), highlighted_, canBeFound, isExact);
    if (found >= 0) setHighlightedItem(found);
    return true;
}

void Menu::forgetTyped() {
    if (typed_.forget()) makeDirty();
}

} // namespace wainscot
