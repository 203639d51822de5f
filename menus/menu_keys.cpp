#include "host/events/dispatch_scope.h"
#include "host/events/event.h"
#include "menus/menu.h"
#include "menus/menu_layout_p.h"

#include <algorithm>
#include <cwctype>

namespace wainscot {

namespace {

constexpr int unhandled = 0;
constexpr int handled = 1;
/// How long what was typed stays, in milliseconds.
constexpr double typingTime = 1500;

wchar_t lowered(wchar_t c) {
    return static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c)));
}

} // namespace

/// Pop-ups are asked for all keys.
bool Menu::intercept(Event const& event) {
    if (!isKeyPressEvent(event)) return StandardPanel::intercept(event);
    return handleKeyboardEvent(static_cast<int>(event.keyCode())) == handled;
}

int Menu::handleKeyboardEvent(int keyCode) {
    DispatchScope const scope;
    auto const key = static_cast<std::uint32_t>(keyCode);
    LifeGuard const life = guard();
    // While something is typed, a space is part of it.
    bool const isTyped = key == Key::space && !typed_.empty();
    if (auto const step = isTyped ? std::nullopt : actionFor(keyTable, key)) {
        forgetTyped();
        return performStep(*step) || !life.alive() ? handled : unhandled;
    }
    return typeAhead(key) ? handled : StandardPanel::handleKeyboardEvent(keyCode);
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
        if (highlighted_ < 0) return true;
        if (isCascadingItem(items_->getItem(static_cast<unsigned short>(highlighted_)))) return stepInto();
        handleRelease(static_cast<unsigned short>(highlighted_));
        return true;
    case Step::into:
        return stepInto();
    case Step::out:
        return stepOut();
    }
    return false;
}

/// To the next item that can be highlighted, and from the last one to the first. Headers are stops of the
/// keyboard where groups can be folded.
bool Menu::moveHighlight(int from, int direction) {
    auto const count = static_cast<int>(items_->numItems());
    MenuRows const& rows = items_->rows();
    int item = from;
    for (int i = 0; i <= count; ++i) {
        item += direction;
        if (item < 0) item = count - 1;
        if (item >= count) item = 0;
        if (count > 0 && !rows.isHidden(static_cast<std::size_t>(item)) && canHighlight(item)) {
            setHighlightedItem(item);
            return true;
        }
    }
    return true;
}

bool Menu::moveByPage(int direction) {
    int const room = calcAreaForItems().height();
    MenuRows const& rows = items_->rows();
    if (layout_->numRows() == 0) return true;
    std::size_t const highlightedRow =
        highlighted_ < 0 ? layout_->rowAt(offset_) : rows.rowOfItem(static_cast<std::size_t>(highlighted_));
    std::size_t const row = std::min(highlightedRow, layout_->numRows() - 1);
    int const wanted =
        std::clamp(layout_->top(row) + direction * (room - getRowHeight()), 0, layout_->height() - 1);
    int const item = rows.itemOfRow(layout_->rowAt(wanted));
    if (canHighlight(item))
        setHighlightedItem(item);
    else
        moveHighlight(item, -direction);
    return true;
}

bool Menu::stepInto() {
    if (highlighted_ < 0) return true;
    auto const item = static_cast<unsigned short>(highlighted_);
    if (!isCascadingItem(items_->getItem(item))) return true;
    LifeGuard const life = guard();
    if (!isOwnerOfSubMenu(item)) openSubMenu(item, false);
    auto* const open = life.alive() ? dynamic_cast<Menu*>(getSubMenu()) : nullptr;
    if (open) open->moveHighlight(noItem, 1);
    return true;
}

/// Out of a sub-menu.
bool Menu::stepOut() {
    if (!dynamic_cast<Menu*>(getOwner())) return true;
    closeLater();
    return true;
}

// Typed letters

bool Menu::matches(unsigned short index) const {
    LightweightString<wchar_t> const text = items_->getItem(index).getDisplayString();
    if (typed_.empty() || text.size() < typed_.size()) return false;
    return std::equal(typed_.begin(), typed_.end(), text.begin(),
                      [](wchar_t a, wchar_t b) { return lowered(a) == lowered(b); });
}

bool Menu::typeAhead(std::uint32_t key) {
    if (key == Key::backspace && !typed_.empty()) {
        typed_ = typed_.substr(0, typed_.size() - 1);
    } else {
        constexpr std::uint32_t notTyped = Key::ctrl | Key::alt | Key::meta | Key::special;
        std::uint32_t const code = key & ~(Key::shift | Key::keypad);
        if ((key & notTyped) != 0 || code < Key::space) return false;
        typed_ += static_cast<wchar_t>(code);
    }
    LifeGuard const life = guard();
    typing_.start(typingTime);
    makeDirty();
    // One letter again and again goes through the items that begin with it.
    bool const isRepeated =
        typed_.size() > 1 && std::ranges::all_of(typed_, [this](wchar_t c) { return c == typed_[0]; });
    if (!findTyped(std::max(highlighted_, 0)) && isRepeated && life.alive()) {
        typed_ = typed_.substr(0, 1);
        findTyped(highlighted_ + 1);
    }
    return true;
}

bool Menu::findTyped(int from) {
    auto const count = static_cast<int>(items_->numItems());
    MenuRows const& rows = items_->rows();
    for (int i = 0; i < count; ++i) {
        int const item = (from + i) % count;
        if (rows.isHidden(static_cast<std::size_t>(item)) || !canHighlight(item)) continue;
        if (!matches(static_cast<unsigned short>(item))) continue;
        setHighlightedItem(item);
        return true;
    }
    return false;
}

void Menu::forgetTyped() {
    typing_.stop();
    if (typed_.empty()) return;
    typed_ = {};
    makeDirty();
}

} // namespace wainscot
