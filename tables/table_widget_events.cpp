#include "host/drawing/canvas_renderer.h"
#include "host/events/dispatch_scope.h"
#include "host/events/event.h"
#include "host/objects/kbd_focus.h"
#include "host/services/clipboard.h"
#include "tables/table_asking_p.h"
#include "tables/table_body_p.h"
#include "tables/table_header_p.h"

#include <algorithm>
#include <cmath>

namespace wainscot {

namespace {

constexpr int unhandled = 0;
constexpr int handled = 1;
/// A notch of the wheel scrolls so many lines.
constexpr int wheelLines = 3;
/// How often it scrolls while the pointer is held beyond the rows, in milliseconds.
constexpr double scrollInterval = 50;
/// So many rows are searched for typed letters.
constexpr unsigned int mostSearched = 20'000;
/// Characters that are copied at once.
constexpr std::size_t mostCopied = 1'000'000;
/// So many tags are worth a call for all of them.
constexpr int manyTags = 100;

} // namespace

// Presses

bool TableWidget::pressAt(Event const& event) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    bool const isRight = mouse_right_event(event);
    claimKbdFocus();
    if (!life.alive() || !isActive()) return true;
    forgetRange();
    XY<int> const position = positionAt(eventXYToGlobXY(event, *this));
    pressedRow_ = -1;
    isDragging_ = hasTagged_ = false;
    if (!validViewPos(position)) return !isRight;
    XY<int> const cell = viewToData(position);
    bool const isDouble = mouse_double_click_event(event) && !isRight;
    iCellEditor* const editor =
        findEditorForFieldType(ask([&] { return adaptor_->getFieldType(cell); }, DBFieldTypes::eNone));
    bool isUsed = false;
    if (editor && !isRight) {
        Qv::Ptr<iCellEditor> const held(editor);
        tellAdaptor([&] {
            iTableAdaptor::CellContext context(*this, *adaptor_, cell);
            context.area = getCellArea(position);
            isUsed = held->handleEvent(context, event);
        });
    }
    if (life.alive() && !isUsed) tellAdaptor([&] { adaptor_->handleMouseClickEvent(cell, event); });
    // The click may have changed the rows.
    if (!life.alive() || isUsed || !validViewPos(position)) return true;
    auto const row = static_cast<unsigned int>(position.y);
    if (isRight) {
        bool const hasTag = isTagged(row);
        if (setCurPos(position) && life.alive() && showsTags() && !hasTag) clickTag(row, 0);
        return false;
    }
    if (isTagColumnAt(position.x)) return clickTag(row, getModifier(event)), true;
    bool const wasCurrent = current_ == position;
    setCurPos(position);
    if (!life.alive()) return true;
    pressedRow_ = position.y;
    pressedCell_ = cell;
    if (isDouble) {
        pressedRow_ = -1;
        report(currentRowDoubleClicked);
        return true;
    }
    if (showsTags()) clickTag(row, getModifier(event));
    if (life.alive() && wasCurrent && editingEnabled_ && getModifier(event) == 0) beginEditing(position);
    return true;
}

void TableWidget::dragTo(Event const& event) {
    if (pressedRow_ < 0 || isEditing()) return;
    pointer_ = eventXYToGlobXY(event, *this);
    if (!isDragging_) {
        if (!isMouseMoveSignificant(event)) return;
        isDragging_ = true;
        LifeGuard const life = guard();
        bool isOwnDrag = false;
        if ((tagFlags_ & TableTagFlag::currentOnDemand) != 0) tagCurrentOnDemand();
        if (life.alive())
            tellAdaptor([&] { isOwnDrag = adaptor_->handleMouseDragStart(pressedCell_, event); });
        if (!life.alive()) return;
        if (isOwnDrag) {
            pressedRow_ = -1;
            return;
        }
    }
    scrollTimer_.start(scrollInterval);
    dragOverRows();
}

void TableWidget::dragOverRows() {
    if (!body_ || heights_.count() == 0) return;
    IntBox const cells = body_->box();
    int const y = std::clamp(pointer_.y, cells.y1, std::max(cells.y1, cells.y2 - 1));
    auto const row = heights_.rowAt(windowTop_ + cells.y2 - 1 - y);
    int const over = row ? static_cast<int>(*row) : static_cast<int>(heights_.count()) - 1;
    if (rowSwapping_) {
        if (over == dropRow_) return;
        for (int const changed : {std::exchange(dropRow_, over), over})
            if (validRow(changed)) drawRow(static_cast<unsigned int>(changed));
        return;
    }
    unsigned int const both = TableTagFlag::allowMulti | TableTagFlag::windowsStyle;
    if (showsTags() && (tagFlags_ & both) == both) tagRange(pressedRow_, over);
}

void TableWidget::scrollWhileDragging() {
    if (pressedRow_ < 0 || !isDragging_ || !body_) return;
    scrollTimer_.start(scrollInterval);
    LifeGuard const life = guard();
    if (pointer_.y >= body_->box().y2) scroll(-1);
    if (pointer_.y < body_->box().y1) scroll(1);
    if (life.alive()) dragOverRows();
}

void TableWidget::endPress(PressEnd how) {
    scrollTimer_.stop();
    DispatchScope const scope;
    LifeGuard const life = guard();
    int const from = std::exchange(pressedRow_, -1);
    int const to = std::exchange(dropRow_, -1);
    bool const wasDragged = std::exchange(isDragging_, false);
    if (validRow(to)) drawRow(static_cast<unsigned int>(to));
    bool const isReleased = how == PressEnd::releasedInside || how == PressEnd::releasedOutside;
    if (wasDragged && rowSwapping_ && isReleased && validRow(from) && validRow(to) && from != to) {
        for (unsigned int column = 0; column < columns_.size() && life.alive(); ++column)
            tellAdaptor([&] {
                adaptor_->swapFields(column, static_cast<unsigned int>(from), static_cast<unsigned int>(to));
            });
        if (!life.alive()) return;
        drawRows();
        report(rowsSwapped);
    } else if (std::exchange(hasTagged_, false)) {
        report(tagsChanged);
    }
}

void TableWidget::hoverAt(XY<int> const* place) {
    XY<int> position = place ? positionAt(*place) : XY<int>(-1, -1);
    if (!validViewPos(position)) position = {-1, -1};
    XY<int> const before = std::exchange(hovered_, position);
    if (before == position) return;
    DispatchScope const scope;
    LifeGuard const life = guard();
    if (validViewPos(before))
        tellAdaptor([&] { adaptor_->handleMouseContainment(viewToData(before), false); });
    if (life.alive() && validViewPos(position))
        tellAdaptor([&] { adaptor_->handleMouseContainment(viewToData(position), true); });
}

bool TableWidget::wheel(Event const& event) {
    bool const isSideways = mouse_side_wheel_event(event) || (getModifier(event) & Key::shift) != 0;
    if (isSideways) {
        if (totalColumnWidth() <= visibleWidth()) return false;
        setWindowLeft(windowLeft_ - event.amount() * wheelLines * UifStd::getButtonHeight());
        return true;
    }
    if (heights_.total() <= visibleHeight()) return false;
    scroll(-event.amount() * wheelLines);
    return true;
}

// Tags

bool TableWidget::isTagged(unsigned int row) const {
    return ask([&] { return adaptor_->getTag(row); }, false);
}

bool TableWidget::isTagColumnAt(int viewColumn) const {
    int const data = order_.viewToData(viewColumn);
    return data >= 0 && TagColumn::isTagColumn(columns_[static_cast<std::size_t>(data)]->description);
}

void TableWidget::setTagFlags(unsigned int flags) {
    tagFlags_ = flags;
    drawRows();
}

void TableWidget::setTags(std::map<unsigned int, bool> const& tags, std::set<unsigned short>& columns,
                          bool byUser) {
    giveTags(tags, columns, byUser);
}

/// False when the adaptor has failed.
bool TableWidget::giveTags(std::map<unsigned int, bool> const& tags, std::set<unsigned short>& columns,
                           bool byUser) {
    if (tags.empty() || !adaptor_) return false;
    DispatchScope const scope;
    LifeGuard const life = guard();
    bool const isDone = ask([&] { return adaptor_->setTags(tags, byUser), true; }, false);
    if (!life.alive()) return isDone;
    // Rows in sight are looked up, so that a million tags cost no more.
    RowHeights::Visible const rows = getVisibleRows();
    for (auto changed = tags.lower_bound(static_cast<unsigned int>(std::max(rows.first, 0.0)));
         changed != tags.end() && changed->first <= rows.last; ++changed) {
        if (columns.empty()) drawRow(changed->first);
        for (unsigned short const column : columns) drawField({column, static_cast<int>(changed->first)});
    }
    describeChanged(DescriptionChange::selection);
    return isDone;
}

void TableWidget::handleTagColumnClick(unsigned int row) {
    clickTag(row, currentModifiers());
}

/// Many tags give way to one without a list of them, where the adaptor can do that.
bool TableWidget::untagManyAtOnce(TagRules::Click const& click) {
    bool const isMulti = (tagFlags_ & TableTagFlag::allowMulti) != 0;
    bool const isAlone = (tagFlags_ & TableTagFlag::windowsStyle) != 0 && !click.shift && !click.ctrl;
    if (click.row >= heights_.count() || (isMulti && !isAlone)) return false;
    unsigned int from = 0;
    for (int i = 0; i < manyTags; ++i) {
        auto const next = ask([&] { return adaptor_->findTagged(from); }, std::optional<unsigned int>());
        if (!next) return false;
        from = *next + 1;
    }
    return ask([&] { return adaptor_->setAllTags(false); }, false);
}

void TableWidget::clickTag(unsigned int row, std::uint32_t modifiers) {
    TagRules::Click const click{row, (modifiers & Key::shift) != 0, (modifiers & Key::ctrl) != 0};
    DispatchScope const scope;
    LifeGuard const life = guard();
    if (untagManyAtOnce(click) && life.alive()) drawRows();
    if (!life.alive()) return;
    auto const find = [this](unsigned int from) {
        return ask([&] { return adaptor_->findTagged(from); }, std::optional<unsigned int>());
    };
    auto const tags = ask(
        [&] {
            return TagRules::tagsAfterClick(
                click, tagFlags_, heights_.count(), [this](unsigned int asked) { return isTagged(asked); },
                find);
        },
        TagRules::Tags());
    if (!life.alive() || tags.empty()) return;
    // A click on the only tagged row changes nothing.
    bool const isSame = tags.size() == 1 && isTagged(tags.begin()->first) == tags.begin()->second;
    if (!life.alive() || isSame) return;
    std::set<unsigned short> all;
    if (giveTags(tags, all, true) && life.alive()) report(tagsChanged);
}

/// The rows from one to another are tagged; those that were tagged by the same movement before are not.
void TableWidget::tagRange(int from, int to) {
    auto const [low, high] = std::minmax(from, to);
    int const oldLow = rangeFrom_ < 0 ? from : std::min(rangeFrom_, rangeTo_);
    int const oldHigh = rangeFrom_ < 0 ? from : std::max(rangeFrom_, rangeTo_);
    if (rangeFrom_ == from && rangeTo_ == to) return;
    std::map<unsigned int, bool> tags;
    for (int row = std::min(low, oldLow); row <= std::max(high, oldHigh); ++row) {
        bool const isIn = row >= low && row <= high;
        bool const wasIn = rangeFrom_ >= 0 && row >= oldLow && row <= oldHigh;
        if (isIn != wasIn) tags.emplace_hint(tags.end(), static_cast<unsigned int>(row), isIn);
    }
    rangeFrom_ = from;
    rangeTo_ = to;
    hasTagged_ = hasTagged_ || !tags.empty();
    std::set<unsigned short> all;
    setTags(tags, all, true);
}

void TableWidget::tagCurrentOnDemand() {
    bool const hasNone = validRow(current_.y) && !ask([&] { return adaptor_->anyTagged(); }, true);
    if (!hasNone) return;
    std::set<unsigned short> all;
    setTags({{static_cast<unsigned int>(current_.y), true}}, all, true);
}

/// True when the adaptor has done it without a list of rows. The table may be gone then.
bool TableWidget::tagAllAtOnce() {
    if (heights_.count() == 0) return false;
    LifeGuard const life = guard();
    bool const tags = !isTagged(0);
    if (!life.alive()) return true;
    bool const isDone = ask([&] { return adaptor_->setAllTags(tags); }, false);
    if (!isDone || !life.alive()) return isDone || !life.alive();
    drawRows();
    describeChanged(DescriptionChange::selection);
    if (!tags && (tagFlags_ & TableTagFlag::clearUnsetsCurrent) != 0) unsetCurPos();
    return true;
}

void TableWidget::tagAll() {
    DispatchScope const scope;
    if (tagAllAtOnce()) return;
    LifeGuard const life = guard();
    auto const all = ask(
        [&] {
            return TagRules::toggleAll(tagFlags_, heights_.count(),
                                       [this](unsigned int row) { return isTagged(row); });
        },
        TagRules::AllTagged());
    std::set<unsigned short> columns;
    setTags(all.tags, columns, false);
    if (life.alive() && all.unsetsCurrent) unsetCurPos();
}

void TableWidget::invertTags() {
    DispatchScope const scope;
    LifeGuard const life = guard();
    auto const tags = ask(
        [&] {
            return TagRules::invertedTags(heights_.count(),
                                          [this](unsigned int row) { return isTagged(row); });
        },
        TagRules::Tags());
    std::set<unsigned short> columns;
    setTags(tags, columns, true);
    if (life.alive() && !tags.empty()) report(tagsChanged);
}

// Keys

XY<int> TableWidget::menuPlaceForKeys() const {
    IntBox const cell = getCellArea(current_);
    bool const isSeen = body_ && !cell.intersection(body_->box()).isEmpty();
    return isSeen ? cell.bottomLeft() : Focusable<StandardPanel>::menuPlaceForKeys();
}

bool TableWidget::isEditable(XY<int> const& position) const {
    XY<int> const cell = viewToData(position);
    if (!editingEnabled_ || !validDataPos(cell)) return false;
    return columns_[static_cast<std::size_t>(cell.x)]->description.isEditable &&
           ask([&] { return !adaptor_->isReadOnly(cell) && adaptor_->canBeCurrent(cell); }, false);
}

int TableWidget::handleKeyboardEvent(int keyCode) {
    auto const key = static_cast<std::uint32_t>(keyCode);
    DispatchScope const scope;
    LifeGuard const life = guard();
    if (isNavigationKey(key)) {
        typed_.forget();
        bool const isTab = key == Key::tab || key == Key::shiftTab;
        XY<int> from = current_;
        if (!validViewPos(from)) {
            if (isTab || heights_.count() == 0 || order_.numViewColumns() == 0) return unhandled;
            // The first key makes a row in sight current.
            from = {0, static_cast<int>(std::min(std::ceil(getVisibleRows().first), heights_.count() - 1.0))};
            return setCurPos(from) || !life.alive() ? handled : unhandled;
        }
        XY<int> const to = calcPostKeypressPosition(*this, from, key);
        // Without a further cell to edit, Tab leaves the table.
        if (isTab && to == from) return unhandled;
        moveByKey(key, to);
        return handled;
    }
    if (key == Key::function(2) && editingEnabled_ && isEditable(current_))
        return beginEditing(current_), handled;
    auto const action = actionFor(keyTable, key);
    bool const isTyped = key == Key::space && !typed_.isEmpty();
    if (action && !isTyped) return performKey(*action) ? handled : unhandled;
    return typeAhead(key) ? handled : Focusable<StandardPanel>::handleKeyboardEvent(keyCode);
}

/// With tags on rows the current row is tagged with it; Shift extends from where that began.
void TableWidget::moveByKey(std::uint32_t key, XY<int> const& to) {
    LifeGuard const life = guard();
    int const from = current_.y;
    bool const hasMoved = to != current_ && setCurPos(to);
    if (!life.alive() || !hasMoved || from == to.y || !showsTags() ||
        (tagFlags_ & TableTagFlag::windowsStyle) == 0)
        return;
    bool const extends = (key & Key::shift) != 0 && (tagFlags_ & TableTagFlag::allowMulti) != 0;
    if (!extends) {
        forgetRange();
        clickTag(static_cast<unsigned int>(to.y), 0);
        return;
    }
    tagRange(rangeFrom_ >= 0 ? rangeFrom_ : from, to.y);
    hasTagged_ = false;
    if (life.alive()) report(tagsChanged);
}

bool TableWidget::performKey(KeyAction action) {
    switch (action) {
    case pressReturn:
        report(returnPressed);
        return true;
    case tagEverything: {
        if ((tagFlags_ & TableTagFlag::allowMulti) == 0) return false;
        LifeGuard const life = guard();
        tagAll();
        if (life.alive()) report(tagsChanged);
        return true;
    }
    case toggleTag:
        if (tagFlags_ == 0 || !validRow(current_.y)) return false;
        clickTag(static_cast<unsigned int>(current_.y), Key::ctrl);
        return true;
    case copyRows:
        copy();
        return true;
    }
    return false;
}

/// The columns as they are shown, with tabs between them. More than other programs would take, or than the
/// user would wait for, is not copied.
void TableWidget::copy() {
    auto const next = [this](unsigned int from) {
        return ask([&] { return adaptor_->findTagged(from); }, std::optional<unsigned int>());
    };
    std::optional<unsigned int> copied = tagFlags_ != 0 ? next(0) : std::nullopt;
    bool const hasTags = copied.has_value();
    if (!hasTags && validRow(current_.y)) copied = static_cast<unsigned int>(current_.y);
    std::wstring text;
    std::vector<int> const columns(order_.viewColumns().begin(), order_.viewColumns().end());
    unsigned int const count = heights_.count();
    for (; copied && *copied < count; copied = hasTags ? next(*copied + 1) : std::nullopt) {
        unsigned int const row = *copied;
        if (!text.empty()) text += L'\n';
        bool isFirst = true;
        for (int const data : columns) {
            if (!isFirst) text += L'\t';
            isFirst = false;
            Text const cell = ask(
                [&] {
                    return adaptor_->getFieldText({data, static_cast<int>(row)});
                },
                Text());
            text.append(cell.view());
        }
        if (text.size() > mostCopied) return report(copyRefused);
    }
    if (!text.empty()) WindowsClipboard::addText(Text(text));
}

/// In the current column, from the current row on.
bool TableWidget::typeAhead(std::uint32_t key) {
    if (!validViewColumn(std::max(current_.x, 0)) || !typed_.take(key)) return false;
    int const view = std::max(current_.x, 0);
    int const data = order_.viewToData(view);
    auto const textOf = [&](int row) {
        return ask([&] { return adaptor_->getFieldText({data, row}); }, Text());
    };
    unsigned int searched = 0;
    int const found = typed_.find(
        static_cast<int>(heights_.count()), current_.y,
        [&](int row) { return ++searched <= mostSearched && typed_.matches(textOf(row)); },
        [&](int row) { return typed_.isAll(textOf(row)); });
    if (found >= 0) moveByKey(0, {view, found});
    return true;
}

// Messages

int TableWidget::handleMessageEvent(LightweightString<char> name, Glob* sender) {
    DispatchScope const scope;
    if (name == TagColumn::tagAllMsg) return tagAll(), handled;
    if (name == TagColumn::invertTagsMsg) return invertTags(), handled;
    if (auto const move = RowBars::moveOf(name, sender)) return moveBar(*move), handled;
    if (name == editDoubleClickMsg) return report(currentRowDoubleClicked), handled;
    LifeGuard const life = guard();
    if (name == lineAddedMsg) {
        saveCurrentFieldData();
        if (life.alive()) report(returnPressed);
        return handled;
    }
    if (editor_ && editor_->isResponsibleForMessage(name, sender)) {
        bool const isReturn = name == editReturnMsg;
        saveCurrentFieldData();
        if (life.alive() && (isReturn || name == editExitMsg)) setEditingEnabled(false, current_);
        if (!life.alive() || !isReturn) return handled;
        claimKbdFocus();
        if (life.alive()) report(returnPressed);
        return handled;
    }
    if (name == DataColumn::sortMsg()) {
        int const column = findColumn(sender);
        if (column >= 0 && TagColumn::isTagColumn(columns_[static_cast<std::size_t>(column)]->description))
            tagAll();
        else if (column >= 0)
            sortBy(static_cast<unsigned short>(column));
        return handled;
    }
    return Focusable<StandardPanel>::handleMessageEvent(name, sender);
}

// State

void TableWidget::handleKbdFocus() {
    LifeGuard const life = guard();
    Focusable<StandardPanel>::handleKbdFocus();
    if (life.alive()) drawRows();
}

void TableWidget::setActive(bool active, eRedrawFlag redraw) {
    LifeGuard const life = guard();
    Focusable<StandardPanel>::setActive(active, redraw);
    if (life.alive()) drawRows();
}

void TableWidget::setPalette(Palette const& palette) {
    LifeGuard const life = guard();
    Focusable<StandardPanel>::setPalette(palette);
    if (life.alive()) drawRows();
}

void TableWidget::handleLookChange(LookChange changes) {
    LifeGuard const life = guard();
    Focusable<StandardPanel>::handleLookChange(changes);
    if (!life.alive()) return;
    wrapped_.clear();
    heights_.setDefaultHeight(getLineHeight());
    layOut();
}

} // namespace wainscot
