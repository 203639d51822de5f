#include "text/multi_line_text_box.h"
#include "text/text_rows_view_p.h"

#include <algorithm>

namespace wainscot {

namespace {

/// How many rows a notch of the wheel scrolls.
constexpr int rowsPerNotch = 3;

} // namespace

// Keys

bool MultiLineTextBox::isEditingKey(std::uint32_t key) const {
    if (isPrintable(static_cast<int>(key))) return true;
    if (auto const shortcut = TextKeys::shortcutFor(key))
        return *shortcut != TextKeys::Shortcut::selectAll && *shortcut != TextKeys::Shortcut::copy;
    auto const action = TextKeys::lineActionFor(key);
    return action && TextKeys::isEdit(*action);
}

int MultiLineTextBox::performKey(std::uint32_t key) {
    if (!takesInput() && isEditingKey(key)) return unhandled;
    rowEndBefore_ = std::exchange(rowEnd_, -1);
    wantedBefore_ = std::exchange(wantedX_, std::nullopt);
    int const cursor = document().cursor();
    LifeGuard const life = guard();
    int const answer = TextEntry::performKey(key);
    if (!life.alive()) return answer;
    if (document().cursor() == cursor && rowEndBefore_ == cursor) rowEnd_ = cursor;
    rowEndBefore_ = -1;
    return answer;
}

MultiLineTextBox::Use MultiLineTextBox::performAction(std::uint32_t key, bool) {
    auto const action = TextKeys::lineActionFor(key);
    if (!action) return Use::no;
    bool const byWord = (key & Key::ctrl) != 0;
    switch (*action) {
    case TextKeys::LineAction::backspace:
        noteEdit(engine().eraseBackwards(byWord));
        break;
    case TextKeys::LineAction::del:
        noteEdit(engine().eraseForwards(byWord));
        break;
    case TextKeys::LineAction::newLine:
        handleReturnKeypress((key & Key::shift) == 0);
        break;
    case TextKeys::LineAction::left:
    case TextKeys::LineAction::right:
        moveBy(key, *action == TextKeys::LineAction::left);
        break;
    case TextKeys::LineAction::up:
    case TextKeys::LineAction::down:
        moveByRows(*action == TextKeys::LineAction::up ? -1 : 1);
        break;
    case TextKeys::LineAction::home:
    case TextKeys::LineAction::end:
        moveInRow(*action == TextKeys::LineAction::end);
        break;
    case TextKeys::LineAction::pageUp:
    case TextKeys::LineAction::pageDown:
        moveByPage(*action == TextKeys::LineAction::pageDown);
        break;
    case TextKeys::LineAction::textStart:
        putCursor(0);
        break;
    case TextKeys::LineAction::textEnd:
        putCursor(static_cast<int>(document().length()));
        break;
    case TextKeys::LineAction::scrollUp:
    case TextKeys::LineAction::scrollDown:
        scrollRows(*action == TextKeys::LineAction::scrollUp ? -1 : 1);
        // The selection stays too.
        return Use::last;
    }
    // The cursor is scrolled into sight, also where it could not be moved.
    followed_ = -1;
    return Use::yes;
}

void MultiLineTextBox::handleReturnKeypress(bool) {
    paste(Text(1, L'\n'));
}

/// A character takes the place of none in the next line.
bool MultiLineTextBox::overwritesNext() const {
    auto const cursor = static_cast<std::size_t>(document().cursor());
    bool const isAtLineEnd = cursor < document().length() && document().at(cursor) == L'\n';
    return !isAtLineEnd && TextEntry::overwritesNext();
}

std::size_t MultiLineTextBox::cursorRow() const {
    int const cursor = document().cursor();
    return view_->rowOf(cursor, rowEnd_ == cursor || rowEndBefore_ == cursor);
}

void MultiLineTextBox::putCursor(int index, bool isAtRowEnd) {
    document().setCursor(index);
    rowEnd_ = isAtRowEnd ? index : -1;
    rowEndBefore_ = -1;
}

void MultiLineTextBox::moveByRows(std::int64_t rows) {
    std::size_t const from = cursorRow();
    int const x = wantedBefore_.value_or(view_->gapX(document().cursor(), from) + view_->scrollX());
    auto const last = static_cast<std::int64_t>(view_->numRows()) - 1;
    auto const to = std::clamp<std::int64_t>(static_cast<std::int64_t>(from) + rows, 0, last);
    putInRow(static_cast<std::size_t>(to), view_->gapAt(static_cast<std::size_t>(to), x - view_->scrollX()));
    wantedX_ = x;
}

void MultiLineTextBox::putInRow(std::size_t row, int gap) {
    TextRow const stands = view_->row(row);
    putCursor(gap, !stands.endsLine && static_cast<std::size_t>(gap) == stands.end());
}

void MultiLineTextBox::moveByPage(bool down) {
    auto const page = std::max<std::int64_t>(static_cast<std::int64_t>(view_->numFitting()) - 1, 1);
    auto const top = static_cast<std::int64_t>(view_->topRow());
    view_->setTopRow(static_cast<std::size_t>(std::max<std::int64_t>(top + (down ? page : -page), 0)));
    moveByRows(down ? page : -page);
}

void MultiLineTextBox::moveInRow(bool toEnd) {
    std::size_t const row = cursorRow();
    TextRow const stands = view_->row(row);
    std::size_t place = toEnd ? stands.end() : stands.start;
    // The blanks at which it is wrapped stand beyond the end.
    while (toEnd && !stands.endsLine && place > stands.start && document().at(place - 1) == L' ') --place;
    putInRow(row, static_cast<int>(place > stands.start ? place : toEnd ? stands.end() : stands.start));
}

// Pointer

bool MultiLineTextBox::showsTextAt(XY<int> const& place) const {
    return textArea().contains(place);
}

int MultiLineTextBox::gapAt(XY<int> const& place) {
    IntBox const area = textArea();
    std::size_t const row = view_->rowAt(area.y2 - 1 - place.y);
    int const gap = view_->gapAt(row, place.x - area.x1);
    TextRow const stands = view_->row(row);
    rowEnd_ = !stands.endsLine && static_cast<std::size_t>(gap) == stands.end() ? gap : -1;
    wantedX_.reset();
    return gap;
}

/// A third click selects the line, with its end.
std::pair<int, int> MultiLineTextBox::unitAt(int index, Unit unit) const {
    if (unit == Unit::character) return {index, index};
    auto const start =
        static_cast<int>(document().lineStart(document().lineOf(static_cast<std::size_t>(index))));
    auto const end = static_cast<int>(document().lineEndFrom(static_cast<std::size_t>(start)));
    if (unit == Unit::all) return {start, std::min(end + 1, static_cast<int>(document().length()))};
    auto const [from, to] = document().wordAt(index);
    return {std::clamp(from, start, end), std::clamp(to, start, end)};
}

/// The place of the bars is theirs.
bool MultiLineTextBox::isOnText(XY<int> const& place) const {
    IntBox const area = textArea();
    bool const isBeside = isVerticalShown_ && place.x >= area.x2 + margins().right;
    bool const isBelow = isHorizontalShown_ && place.y < area.y1 - UifStd::getIndentWidth();
    return !isBeside && !isBelow;
}

bool MultiLineTextBox::pressBegan(Event const& event) {
    return isOnText(eventXYToGlobXY(event, *this)) && TextEntry::pressBegan(event);
}

MouseCursorID MultiLineTextBox::contextCursor(XY<int> const& place) const {
    return isOnText(place) ? TextEntry::contextCursor(place) : StandardPanel::contextCursor(place);
}

int MultiLineTextBox::handleMouseEvent(Event const& event) {
    if (mouse_wheel_event(event) || mouse_side_wheel_event(event)) return turnWheel(event);
    return TextEntry::handleMouseEvent(event);
}

/// A wheel that could scroll nothing is left to what lies round the box.
int MultiLineTextBox::turnWheel(Event const& event) {
    unsigned int const modifier = getModifier(event);
    bool const isSideways = mouse_side_wheel_event(event) || modifier == Key::shift;
    if (modifier != 0 && modifier != Key::shift) return unhandled;
    if (isSideways ? view_->mostScrollX() == 0 : view_->mostTop() == 0) return unhandled;
    // To the right, and down, is onwards; a wheel turned up is one to the left.
    int const rows = (mouse_side_wheel_event(event) ? 1 : -1) * event.amount() * rowsPerNotch;
    if (isSideways)
        setScroll(view_->scrollX() + rows * view_->rowHeight());
    else
        scrollRows(rows);
    return handled;
}

} // namespace wainscot
