#include "host/drawing/uif_std.h"
#include "host/events/dispatch_scope.h"
#include "host/events/event.h"
#include "host/objects/drag_drop_item.h"
#include "host/objects/kbd_focus.h"
#include "host/windows/drag_drop_manager.h"
#include "menus/model/menu_item.h"
#include "tables/tree_body_p.h"
#include "tables/tree_view_p.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace wainscot {

namespace {

constexpr int unhandled = 0;
constexpr int handled = 1;
/// A notch of the wheel scrolls so many lines.
constexpr int wheelLines = 3;
/// How long a dragged item rests on a closed branch until that opens, and how often the rows are scrolled
/// while it is near their edge, in milliseconds.
constexpr double hoverDelay = 700;
constexpr double scrollInterval = 60;
/// So many rows are searched for typed letters.
constexpr unsigned int mostSearched = 20'000;

/// What the objects round it leave of an object's box, on the screen.
IntBox seenOnScreen(Glob const& glob) {
    IntBox seen = glob.screenBox();
    for (Glob const* above = glob.parent(); above; above = above->parent())
        seen = seen.intersection(above->screenBox());
    return seen;
}

} // namespace

// Presses

bool TreeView::pressAt(Event const& event) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    bool const isRight = mouse_right_event(event);
    claimKbdFocus();
    if (!life.alive() || !isActive()) return true;
    typed_.forget();
    pressedRow_ = -1;
    picksOnRelease_ = false;
    XY<int> const place = eventXYToGlobXY(event, *this);
    int const row = getItemFromPosition(place);
    if (row < 0) {
        bool const isPlain = (getModifier(event) & (Key::shift | Key::ctrl)) == 0;
        if (!isRight && isPlain) takeTags({});
        return !isRight;
    }
    auto const number = static_cast<unsigned int>(row);
    bool const isOnExpander = getItemBounds(number, eExpanderBounds).contains(place);
    if (!life.alive()) return true;
    if (isRight) {
        bool const isTaken = tags_.contains(number);
        if (selectRow(number) && life.alive() && !isTaken && current_ >= 0)
            pick(static_cast<unsigned int>(current_), 0);
        return false;
    }
    if (isOnExpander) {
        if (current_ < 0) current_ = row;
        toggleBranchExpansion(number);
        return true;
    }
    std::uint32_t const modifiers = getModifier(event);
    bool const isPlain = (modifiers & (Key::shift | Key::ctrl)) == 0;
    pressedRow_ = row;
    pressPlace_ = place;
    picksOnRelease_ = isPlain && tags_.contains(number) && tags_.count() > 1;
    Text const name = rows_.at(number).item.name;
    if (!life.alive()) return true;
    selectRow(number);
    if (!life.alive()) return true;
    // The listeners may have changed the rows; the current one has gone with its item.
    if (!picksOnRelease_ && current_ >= 0) pick(static_cast<unsigned int>(current_), modifiers);
    if (!life.alive() || !mouse_double_click_event(event) || !isPlain) return true;
    pressedRow_ = -1;
    picksOnRelease_ = false;
    int const now = findItem(name);
    if (now >= 0 && rows_.at(static_cast<unsigned int>(now)).item.isBranch())
        toggleBranchExpansion(static_cast<unsigned int>(now));
    if (life.alive()) informListeners(eItemActivated);
    return true;
}

void TreeView::endPress(bool isReleased) {
    int const row = std::exchange(pressedRow_, -1);
    if (std::exchange(picksOnRelease_, false) && isReleased && row >= 0 && row < static_cast<int>(numRows()))
        pick(static_cast<unsigned int>(row), 0);
}

bool TreeView::dragTo(Event const&) {
    int const row = std::exchange(pressedRow_, -1);
    if (row < 0 || row >= static_cast<int>(numRows()) || isEditing() || !body_) return false;
    DispatchScope const scope;
    LifeGuard const life = guard();
    auto const number = static_cast<unsigned int>(row);
    Item const item = rows_.at(number).item;
    XY<int> const place = pressPlace_ - getItemBounds(number, eRowBounds).bottomLeft();
    bool const mayGo =
        life.alive() &&
        !ask([&](auto& adaptor) { return adaptor.getDragType(item); }, LightweightString<char>()).empty();
    if (!life.alive()) return true;
    auto const dragged = mayGo ? ask([&](auto& adaptor) { return adaptor.createDragDropItem(item, place); },
                                     Qv::Ptr<DragDropItem>())
                               : nullptr;
    if (!life.alive()) return true;
    if (!dragged) return false;
    draggedNames_.clear();
    bool const isTagged = tags_.contains(number);
    if (isTagged)
        for (Item const& tagged : getTaggedItems()) draggedNames_.insert(tagged.name);
    draggedNames_.insert(item.name);
    if (!life.alive() || !body_) return true;
    picksOnRelease_ = false;
    return DragDropManager::instance().beginDrag(dragged, body_);
}

bool TreeView::wheel(Event const& event) {
    bool const isSideways = mouse_side_wheel_event(event) || (getModifier(event) & Key::shift) != 0;
    int const lines = event.amount() * wheelLines;
    if (isSideways) {
        if (contentWidth_ <= visibleWidth()) return false;
        setWindowLeft(windowLeft_ - lines * indent());
        return true;
    }
    if (totalHeight() <= visibleHeight()) return false;
    setWindowTop(windowTop_ - std::int64_t{lines} * getRowHeight());
    return true;
}

// Drags over it

/// Whether the row is dragged itself, or lies in a branch that is.
bool TreeView::isInDragged(int row) const {
    if (draggedNames_.empty()) return false;
    LifeGuard const life = guard();
    if (row < 0) return false;
    std::vector<Text> const path = rows_.pathOf(static_cast<unsigned int>(row));
    return life.alive() &&
           std::ranges::any_of(path, [this](Text const& name) { return draggedNames_.contains(name); });
}

TreeView::Drop TreeView::dropFor(DragDropItem const& item, XY<int> const& place, eDropReason reason) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    auto const takes = [&](Text const& target) {
        return ask([&](auto& adaptor) { return adaptor.canAcceptDrop(target, &item, reason); }, false);
    };
    int const row = getItemFromPosition(place);
    if (row < 0) {
        if (takes({}) && life.alive()) return {Drop::onTree, -1, {}, {}, 0};
        return {};
    }
    if (isInDragged(row)) return {};
    auto const number = static_cast<unsigned int>(row);
    IntBox const box = getItemBounds(number, eRowBounds);
    int const quarter = box.height() / 4;
    bool const isAbove = place.y >= box.y2 - quarter;
    bool const isBelow = place.y < box.y1 + quarter;
    if (isAbove || isBelow) {
        // Below an open branch comes its first child.
        unsigned int const before = isAbove ? number : number + 1;
        TreeRows::Row const next = before < numRows() ? rows_.at(before) : TreeRows::Row();
        TreeRows::Row const here = rows_.at(number);
        if (!life.alive()) return {};
        bool const isBefore = before < numRows() && (isAbove || next.depth >= here.depth);
        Drop drop{Drop::beforeRow, static_cast<int>(before), isBefore ? next.parentName : here.parentName,
                  isBefore ? next.item.name : Text(), isBefore ? next.depth : here.depth};
        bool const inserts =
            ask([&](auto& adaptor) { return adaptor.canInsertDrop(drop.target, drop.before, &item); }, false);
        if (!life.alive()) return {};
        if (inserts && !isInDragged(isBefore ? rows_.parentRow(before) : rows_.parentRow(number)))
            return drop;
    }
    Text const name = rows_.at(number).item.name;
    if (!life.alive() || !takes(name) || !life.alive()) return {};
    return {Drop::onRow, row, name, {}, 0};
}

bool TreeView::canDropAt(DragDropItem const& item, XY<int> const& place, eDropReason reason) {
    LifeGuard const life = guard();
    if (dropFor(item, place, reason).kind != Drop::none || !life.alive()) return life.alive();
    if (reason == dropFinal || !body_) return false;
    // Over a branch that may open, and near an edge, it is the tree's all the same.
    int const row = getItemFromPosition(place);
    bool const mayOpen = row >= 0 && !rows_.isExpanded(static_cast<unsigned int>(row)) &&
                         rows_.at(static_cast<unsigned int>(row)).item.isBranch();
    return life.alive() && (mayOpen || edgeAt(place) != 0);
}

/// -1 near the upper edge where there are rows above, 1 near the lower one where there are rows below.
int TreeView::edgeAt(XY<int> const& place) const {
    if (!body_) return 0;
    // It may lie in an area that is scrolled itself.
    IntBox const rows = seenOnScreen(*body_).translated(XY<int>() - screenBox().bottomLeft());
    int const near = getRowHeight();
    if (place.y >= rows.y2 - near && windowTop_ > 0) return -1;
    return place.y < rows.y1 + near && windowTop_ < totalHeight() - visibleHeight() ? 1 : 0;
}

bool TreeView::dropAt(DragDropItem& item, XY<int> const& place, eDropReason reason) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    Qv::Ptr<DragDropItem> const held(&item);
    Drop const drop = dropFor(item, place, reason);
    if (!life.alive()) return false;
    setDrop({});
    hoverTimer_.stop();
    scrollTimer_.stop();
    if (drop.kind == Drop::none) return false;
    bool const isTaken = ask(
        [&](auto& adaptor) {
            return drop.kind == Drop::beforeRow ? adaptor.insertDrop(drop.target, drop.before, &item)
                                                : adaptor.acceptDrop(drop.target, &item, reason);
        },
        false);
    if (life.alive() && isTaken) informListeners(eItemDropped);
    return isTaken;
}

MouseCursorID TreeView::dropCursorAt(DragDropItem const& item, XY<int> const&) const {
    if (drop_.kind == Drop::none) return forbiddenCursor;
    if (drop_.kind == Drop::beforeRow) return inheritCursor;
    return ask([&](auto& adaptor) { return adaptor.getDropCursor(drop_.target, &item); }, inheritCursor);
}

void TreeView::dragHovers(DragDropItem const& item, XY<int> const& place, bool inside) {
    LifeGuard const life = guard();
    if (!inside) {
        hoverTimer_.stop();
        scrollTimer_.stop();
        hoveredRow_ = -1;
        setDrop({});
        return;
    }
    dragPlace_ = place;
    Drop const drop = dropFor(item, place, dropHover);
    if (!life.alive()) return;
    setDrop(drop);
    noteHovered();
    if (edgeAt(place) == 0)
        scrollTimer_.stop();
    else if (!scrollTimer_.isRunning())
        scrollTimer_.start(scrollInterval);
}

void TreeView::setDrop(Drop const& drop) {
    if (drop == drop_) return;
    drop_ = drop;
    damageRows();
}

/// The time on a branch begins anew on another one.
void TreeView::noteHovered() {
    int const row = getItemFromPosition(dragPlace_);
    if (row == hoveredRow_) return;
    hoveredRow_ = row;
    hoverTimer_.start(hoverDelay);
}

void TreeView::openHovered() {
    if (hoveredRow_ < 0 || hoveredRow_ >= static_cast<int>(numRows())) return;
    auto const row = static_cast<unsigned int>(hoveredRow_);
    LifeGuard const life = guard();
    if (rows_.isExpanded(row) || isInDragged(hoveredRow_) || !life.alive()) return;
    toggleBranchExpansion(row);
    // Now there may be rows below.
    if (life.alive() && body_) scrollWhileDragging();
}

void TreeView::scrollWhileDragging() {
    int const way = edgeAt(dragPlace_);
    if (way == 0 || !DragDropManager::instance().getCurrentItem()) return;
    scrollTimer_.start(scrollInterval);
    LifeGuard const life = guard();
    setWindowTop(windowTop_ + way * getRowHeight());
    Qv::Ptr<DragDropItem> const item(DragDropManager::instance().getCurrentItem());
    if (!life.alive() || !item) return;
    noteHovered();
    Drop const drop = dropFor(*item, dragPlace_, dropHover);
    if (life.alive()) setDrop(drop);
}

// Keys

int TreeView::handleKeyboardEvent(int keyCode) {
    auto const key = static_cast<std::uint32_t>(keyCode);
    DispatchScope const scope;
    // Signs may need Shift, and are on the number pad as well.
    std::uint32_t const sign = key & ~(Key::shift | Key::keypad);
    bool const isSign = sign == '*' || sign == '+' || sign == '-';
    auto const action = actionFor(keyTable, isSign ? sign : key);
    // In the middle of a name these are letters; some only where a name goes on so.
    bool const isTyped = !typed_.isEmpty() && (key == Key::space || isSign);
    if (action && isTyped && (sign == '*' || sign == '+') && typed_.take(key)) {
        LifeGuard const life = guard();
        if (goToTyped() || !life.alive()) return handled;
        typed_.forget();
        return performKey(*action, key) ? handled : unhandled;
    }
    if (action && !isTyped) {
        typed_.forget();
        return performKey(*action, key) ? handled : unhandled;
    }
    return handleTextTyped(key) ? handled : Focusable<StandardPanel>::handleKeyboardEvent(keyCode);
}

/// As a click, with Shift too; with Ctrl the tags stay as they are.
void TreeView::moveTo(unsigned int row, std::uint32_t modifiers) {
    LifeGuard const life = guard();
    if (selectRow(row) && life.alive() && current_ >= 0 && (modifiers & Key::ctrl) == 0)
        pick(static_cast<unsigned int>(current_), modifiers & Key::shift);
}

bool TreeView::performKey(KeyAction action, std::uint32_t key) {
    unsigned int const count = numRows();
    if (count == 0) return false;
    if (current_ < 0) {
        // The first key goes to the first row that is fully seen.
        bool const goesToRow = action <= leaveBranch;
        int const height = getRowHeight();
        auto const first = static_cast<unsigned int>((windowTop_ + height - 1) / height);
        unsigned int const to = action == goToLast ? count - 1 : action == goToFirst ? 0 : first;
        if (goesToRow) moveTo(std::min(to, count - 1), 0);
        return goesToRow;
    }
    LifeGuard const life = guard();
    auto const row = static_cast<unsigned int>(current_);
    TreeRows::Row const data = rows_.at(row);
    if (!life.alive()) return true;
    auto const page = static_cast<unsigned int>(std::max(1, visibleHeight() / getRowHeight() - 1));
    switch (action) {
    case goUp:
        moveTo(row - std::min(row, 1U), key);
        return true;
    case goDown:
        moveTo(std::min(row + 1, count - 1), key);
        return true;
    case goToFirst:
        moveTo(0, key);
        return true;
    case goToLast:
        moveTo(count - 1, key);
        return true;
    case pageUp:
        moveTo(row - std::min(row, page), key);
        return true;
    case pageDown:
        moveTo(std::min(row + page, count - 1), key);
        return true;
    case enterBranch:
        if (!data.item.isBranch()) return false;
        if (!data.isExpanded)
            toggleBranchExpansion(row);
        else if (rows_.findLastChild(row) > row)
            moveTo(row + 1, 0);
        return true;
    case leaveBranch:
        if (data.isExpanded) return toggleBranchExpansion(row);
        if (int const parent = rows_.parentRow(row); parent >= 0)
            return moveTo(static_cast<unsigned int>(parent), 0), true;
        return false;
    case expandThis:
        return data.item.isBranch() && (data.isExpanded || toggleBranchExpansion(row));
    case collapseThis:
        return data.item.isBranch() && (!data.isExpanded || toggleBranchExpansion(row));
    case expandAllBelow:
        return expandAllAt(row);
    case activate:
        informListeners(eItemActivated);
        return true;
    case rename:
        return enableEditing(data.item.name);
    case toggleTag:
        if ((options_ & allowsTags) == 0) return false;
        pick(row, Key::ctrl);
        return true;
    case tagEverything: {
        if ((options_ & allowsTags) == 0) return false;
        RowRanges const before = tags_;
        // Rows beside the current one where only these may be tagged together.
        bool const siblings = (options_ & tagsSiblingsOnly) != 0;
        tagRows(0, count - 1, siblings ? std::optional(data.parentName) : std::nullopt);
        if (life.alive() && tags_ == before) takeTags({});
        return true;
    }
    }
    return false;
}

bool TreeView::handleTextTyped(std::uint32_t key) {
    if (numRows() == 0 || !typed_.take(key)) return false;
    goToTyped();
    return true;
}

bool TreeView::goToTyped() {
    LifeGuard const life = guard();
    auto const textAt = [&](int row) {
        return life.alive() ? textOf(rows_.at(static_cast<unsigned int>(row)).item) : Text();
    };
    unsigned int searched = 0;
    int const found = typed_.find(
        static_cast<int>(std::min(numRows(), maxRows)), current_,
        [&](int row) { return ++searched <= mostSearched && life.alive() && typed_.matches(textAt(row)); },
        [&](int row) { return life.alive() && typed_.isAll(textAt(row)); });
    if (!life.alive() || found < 0) return false;
    moveTo(static_cast<unsigned int>(found), 0);
    return true;
}

// Menus and messages

XY<int> TreeView::menuPlaceForKeys() const {
    bool const isSeen = current_ >= 0 && isVisible(static_cast<unsigned int>(current_));
    if (!isSeen) return Focusable<StandardPanel>::menuPlaceForKeys();
    return getItemBounds(static_cast<unsigned int>(current_), eLabelBounds).bottomLeft();
}

void TreeView::reviewMenu(Event const* event) {
    clearMenu();
    DispatchScope const scope;
    LifeGuard const life = guard();
    // Beside the rows it is the menu of the tree.
    bool const isOfItems = !event || getItemFromPosition(eventXYToGlobXY(*event, *this)) >= 0;
    std::vector<Item> items = isOfItems ? getTaggedItems() : std::vector<Item>();
    if (isOfItems && items.empty() && current_ >= 0)
        items.push_back(rows_.at(static_cast<unsigned int>(current_)).item);
    if (!life.alive()) return;
    auto const offered =
        ask([&](auto& adaptor) { return adaptor.getMenuItems(items); }, std::vector<MenuItem>());
    if (!life.alive()) return;
    for (MenuItem const& item : offered) addMenuItem(item);
}

void TreeView::moveBar(RowBars::Move const& move) {
    if (move.isVertical)
        setWindowTop(move.step != 0 ? windowTop_ + move.step * getRowHeight()
                                    : std::llround(move.share * static_cast<double>(totalHeight())));
    else
        setWindowLeft(move.step != 0 ? windowLeft_ + move.step * indent()
                                     : static_cast<int>(std::lround(move.share * contentWidth_)));
}

int TreeView::handleMessageEvent(LightweightString<char> name, Glob* sender) {
    DispatchScope const scope;
    if (auto const move = RowBars::moveOf(name, sender)) return moveBar(*move), handled;
    return Focusable<StandardPanel>::handleMessageEvent(name, sender);
}

} // namespace wainscot
