#include "text/multi_line_text_box.h"

#include "containers/scroll_bar.h"
#include "host/drawing/drawable.h"
#include "host/events/dispatch_scope.h"
#include "text/scrollable_text_box_base.h"
#include "text/text_rows_view_p.h"

#include <algorithm>
#include <cmath>

namespace wainscot {

namespace {

using Text = LightweightString<wchar_t>;

/// The standard size, in heights of a button and in rows, and the least one.
constexpr int standardWidth = 12;
constexpr int standardRows = 5;
constexpr int leastWidth = 3;
constexpr int leastRows = 2;
/// A text up to so many characters is wrapped at once, a longer one bit by bit, every so many milliseconds.
constexpr std::size_t wrappedAtOnce = 200'000;
constexpr std::size_t wrappedTogether = 50'000;
constexpr double settlePeriod = 10;

GlobCreationInfo sized(MultiLineTextBox::InitArgs const& args) {
    int const button = UifStd::getButtonHeight();
    int const rows = standardRows * Glib::loadFont(args.font)->lineHeight();
    return {args, args.width > 0 ? args.width : toSize16(standardWidth * button),
            args.height > 0 ? args.height : toSize16(rows + 2 * UifStd::getIndentWidth())};
}

} // namespace

MultiLineTextBox::MultiLineTextBox(InitArgs const& args)
    : TextEntry(sized(args)), view_(std::make_unique<TextRowsView>(document())),
      settling_([this] { settleMore(); }) {
    standardWidth_ = args.width == 0;
    standardHeight_ = args.height == 0;
    init(args);
}

MultiLineTextBox::MultiLineTextBox(unsigned short width, unsigned short height, Palette const& palette,
                                   Canvas* canvas)
    : TextEntry(width, height, palette, canvas), view_(std::make_unique<TextRowsView>(document())),
      settling_([this] { settleMore(); }) {
    init(InitArgs(width, height));
}

MultiLineTextBox::~MultiLineTextBox() = default;

void MultiLineTextBox::init(InitArgs const& args) {
    allowLineFeeds();
    view_->setFont(getFontPtr());
    view_->setWrapping(args.wrap);
    view_->setAlignment(args.alignment);
    TextEntry::init(args);
}

// Lines

unsigned int MultiLineTextBox::numLines() const {
    return static_cast<unsigned int>(document().numLines());
}

Text MultiLineTextBox::getLine(unsigned int line) const {
    std::size_t const start = document().lineStart(line);
    return document().substr(start, document().lineEndFrom(start) - start);
}

Text MultiLineTextBox::getLine(unsigned int line, int from, int count) const {
    int const length = getLineLength(line);
    int const first = std::clamp(from, 0, length);
    return document().substr(static_cast<std::size_t>(getLineStart(line) + first),
                             static_cast<std::size_t>(std::clamp(count, 0, length - first)));
}

int MultiLineTextBox::getLineLength(unsigned int line) const {
    std::size_t const start = document().lineStart(line);
    return static_cast<int>(document().lineEndFrom(start) - start);
}

int MultiLineTextBox::getLineStart(unsigned int line) const {
    return static_cast<int>(document().lineStart(line));
}

unsigned int MultiLineTextBox::getLineOf(int index) const {
    return static_cast<unsigned int>(document().lineOf(static_cast<std::size_t>(std::max(index, 0))));
}

unsigned int MultiLineTextBox::getCursorLine() const {
    return getLineOf(document().cursor());
}

int MultiLineTextBox::getCursorColumn() const {
    return document().cursor() - getLineStart(getCursorLine());
}

void MultiLineTextBox::setCursorPlace(unsigned int line, int column) {
    setCursorIndex(getLineStart(line) + std::clamp(column, 0, getLineLength(line)));
}

void MultiLineTextBox::append(UIString const& text) {
    DispatchScope const scope;
    Text const whole = text.text();
    // The second half of a line end whose first half came last.
    bool const isRest = document().revision() == returnRevision_ && whole.startsWith(L"\n");
    Text const added = admitted(isRest ? whole.substr(1) : whole);
    if (whole.empty()) return;
    if (added.empty()) returnRevision_ = 0;
    if (added.empty()) return;
    bool const isUntold = isChangeUntold();
    bool const isAtEnd = isAtEnd_ || view_->topRow() == view_->mostTop();
    int const cursor = document().cursor();
    TextSelection const selection = document().selection();
    document().replace(static_cast<int>(document().length()), 0, added, TextDocument::Record::no);
    document().setCursor(cursor);
    document().setSelection(selection.start, selection.end);
    if (!isUntold) noteChangeByProgram();
    returnRevision_ = whole.endsWith(L"\r") ? document().revision() : 0;
    followedRevision_ = document().revision();
    staysAtEnd_ = staysAtEnd_ || isAtEnd;
    if (isAtEnd) view_->setTopRow(view_->mostTop());
    isAppended_ = true;
    askForLayout();
    describeChanged(DescriptionChange::value);
}

/// However much was added, it is shown once.
void MultiLineTextBox::handleLayout() {
    DispatchScope const scope;
    LifeGuard const life = guard();
    TextEntry::handleLayout();
    if (!life.alive() || !std::exchange(isAppended_, false)) return;
    layOut();
    if (std::exchange(staysAtEnd_, false)) view_->setTopRow(view_->mostTop());
    noteScrolled();
    if (life.alive()) handleCursorChange();
}

bool MultiLineTextBox::updateText(Text const& text) {
    if (document().length() == 0 || !document().updateText(text)) return false;
    followed_ = document().cursor();
    followedRevision_ = document().revision();
    return true;
}

Text MultiLineTextBox::admitted(Text const& text) const {
    return TextRules::withLineFeeds(text);
}

// What is shown

void MultiLineTextBox::takeFont() {
    view_->setFont(getFontPtr());
}

void MultiLineTextBox::showAll() {
    noteGhost();
    makeDirty();
}

void MultiLineTextBox::resetScroll() {
    view_->setTopRow(0);
    view_->setScrollX(0);
}

void MultiLineTextBox::textEdited(TextEdit const& edit) {
    bool const isOther = edit.removed > 0 && edit.inserted.size() == document().length();
    rowEnd_ = -1;
    wantedX_.reset();
    if (isOther)
        view_->reset();
    else
        view_->edit(edit);
    if (showsGhost() || isGhostLabelVisible()) showAll();
}

void MultiLineTextBox::setWrap(bool wraps) {
    if (wraps == view_->wraps()) return;
    DispatchScope const scope;
    view_->setWrapping(wraps);
    layOut();
    noteScrolled();
}

bool MultiLineTextBox::getWrap() const {
    return view_->wraps();
}

void MultiLineTextBox::setAlignment(TextAlignment alignment) {
    view_->setAlignment(alignment);
    TextEntry::setAlignment(alignment);
}

IntBox MultiLineTextBox::roomWith(bool vertical, bool horizontal) const {
    auto const [left, right] = margins();
    int const bar = ScrollBar::thickness();
    int const indent = UifStd::getIndentWidth();
    int const x2 = width() - right - (vertical ? bar : 0);
    int const y1 = indent + (horizontal ? bar : 0);
    return {left, std::min(y1, height() - indent), std::max<int>(x2, left), std::max(height() - indent, 0)};
}

/// A wrapped text keeps the room of its bar free, so that it is not wrapped anew when the bar appears.
IntBox MultiLineTextBox::textArea() const {
    return roomWith(isVerticalShown_ || view_->wraps(), isHorizontalShown_);
}

void MultiLineTextBox::layOut() {
    constexpr int mostRounds = 3;
    for (int round = 0; round < mostRounds; ++round) {
        IntBox const room = textArea();
        view_->setRoom(room.width(), room.height());
        if (!view_->isSettled()) {
            if (document().length() <= wrappedAtOnce) view_->settle(2 * wrappedAtOnce);
            if (!view_->isSettled() && !settling_.isRunning()) settling_.start(settlePeriod);
        }
        auto const needsRows = [&](bool horizontal) {
            int const fitting = roomWith(false, horizontal).height() / view_->rowHeight();
            return view_->numRows() > static_cast<std::size_t>(std::max(fitting, 1));
        };
        auto const needsWidth = [&](bool vertical) {
            return !view_->wraps() && view_->contentWidth() >= roomWith(vertical, false).width();
        };
        bool const isWide = needsWidth(needsRows(false));
        bool const isHigh = needsRows(isWide);
        bool const isWideThen = needsWidth(isHigh);
        if (isHigh == isVerticalShown_ && isWideThen == isHorizontalShown_) break;
        isVerticalShown_ = isHigh;
        isHorizontalShown_ = isWideThen;
    }
    if (laidOut_ == textArea()) return;
    makeDirty();
    laidOut_ = textArea();
    if (isAtEnd_ && !isEditing()) view_->setTopRow(view_->mostTop());
}

void MultiLineTextBox::settleMore() {
    view_->settle(wrappedTogether);
    DispatchScope const scope;
    layOut();
    noteScrolled();
}

void MultiLineTextBox::updateVisibleWindow() {
    int const cursor = document().cursor();
    bool const hasMoved = cursor != followed_ || document().revision() != followedRevision_;
    bool const wasSeen = isCaretSeen_;
    layOut();
    if (hasMoved || (isEditing() && wasSeen)) view_->show(cursor, isAtRowEnd());
    followed_ = cursor;
    followedRevision_ = document().revision();
    noteTop();
    updateBars();
}

void MultiLineTextBox::noteTop() {
    std::size_t const top = view_->topRow();
    isAtEnd_ = view_->mostTop() > 0 && top == view_->mostTop();
    if (std::exchange(shownTop_, top) != top) handleScrolled();
}

void MultiLineTextBox::handleScrolled() {}

void MultiLineTextBox::damageText() {
    IntBox const area = textArea();
    int const height = view_->rowHeight();
    for (auto const& [from, to] : view_->takeChanged(document().selection())) {
        IntBox const rows(1, area.y2 - to * height, area.x2 + margins().right, area.y2 - from * height);
        damage(rows.intersection({1, area.y1, width() - 1, area.y2}));
    }
}

/// A caret that is out of sight stands below the box.
XY<int> MultiLineTextBox::caretPlace() const {
    IntBox const area = textArea();
    int const size = getFont().size;
    XY<int> const nowhere{0, -2 * size};
    std::size_t const row = cursorRow();
    std::size_t const top = view_->topRow();
    isCaretSeen_ = row >= top && row - top < view_->numFitting();
    if (!isCaretSeen_) return nowhere;
    int const x = view_->gapX(document().cursor(), row);
    if (!view_->wraps() && (x < 0 || x > area.width())) return nowhere;
    auto const below = static_cast<int>(row - top + 1) * view_->rowHeight();
    // Blanks at the end of a wrapped row stand beyond it.
    return {area.x1 + std::min(x, std::max(area.width() - 1, 0)),
            area.y2 - below + (view_->rowHeight() - size + 1) / 2};
}

// Scrolling

std::size_t MultiLineTextBox::numRows() const {
    return view_->numRows();
}

int MultiLineTextBox::getRowHeight() const {
    return view_->rowHeight();
}

unsigned int MultiLineTextBox::getLineOfRow(std::size_t row) const {
    return getLineOf(static_cast<int>(view_->row(row).start));
}

std::size_t MultiLineTextBox::getTopRow() const {
    return view_->topRow();
}

void MultiLineTextBox::setTopRow(std::size_t row) {
    DispatchScope const scope;
    staysAtEnd_ = false;
    view_->setTopRow(row);
    noteScrolled();
}

int MultiLineTextBox::getScroll() const {
    return view_->scrollX();
}

void MultiLineTextBox::setScroll(int pixels) {
    DispatchScope const scope;
    view_->setScrollX(pixels);
    noteScrolled();
}

void MultiLineTextBox::showLine(unsigned int line) {
    DispatchScope const scope;
    std::size_t const row = view_->rowOf(getLineStart(line), false);
    std::size_t const top = view_->topRow();
    std::size_t const fitting = view_->numFitting();
    if (row < top || row - top >= fitting) view_->setTopRow(row - std::min(row, fitting / 2));
    noteScrolled();
}

void MultiLineTextBox::scrollRows(std::int64_t rows) {
    auto const top = static_cast<std::int64_t>(view_->topRow());
    setTopRow(static_cast<std::size_t>(std::max<std::int64_t>(top + rows, 0)));
}

void MultiLineTextBox::noteScrolled() {
    LifeGuard const life = guard();
    updateBars();
    if (life.alive()) placeCaret();
    if (life.alive()) damageText();
    if (life.alive()) noteTop();
}

void MultiLineTextBox::updateBars() {
    LifeGuard const life = guard();
    updateBar(verticalBar_, eVertical, isVerticalShown_);
    if (life.alive()) updateBar(horizontalBar_, eHorizontal, isHorizontalShown_);
}

/// The bars lie inside the edge of the field.
void MultiLineTextBox::updateBar(HandlerRef<ScrollBar>& ref, Orientation orientation, bool isShown) {
    int const thick = ScrollBar::thickness();
    constexpr int edge = 1;
    bool const isVertical = orientation == eVertical;
    int const other = edge + (isVertical && isHorizontalShown_ ? thick : 0);
    IntBox const box =
        isVertical ? IntBox(width() - edge - thick, other, width() - edge, height() - edge)
                   : IntBox(edge, edge, width() - edge - (isVerticalShown_ ? thick : 0), edge + thick);
    ScrollBar* bar = ref.get();
    bool const hasRoom = box.width() >= thick && box.height() >= thick && box.x1 > 0;
    if (!isShown || !hasRoom) {
        if (bar && bar->isVisible()) bar->setVisible(false);
        return;
    }
    LifeGuard const life = guard();
    if (!bar) {
        bar = new ScrollBar(
            ScrollBar::InitArgs(orientation, toSize16(isVertical ? box.height() : box.width())));
        ref = HandlerRef<ScrollBar>(bar);
        bar->setPalette(getPalette());
        bar->setControls(this);
        addWidget(bar, box.x1, box.y1);
    } else {
        if (!bar->isVisible()) bar->setVisible(true);
        setWidgetPos(bar, {box.x1, box.y1});
        bar->resize(box.width(), box.height());
    }
    if (!life.alive() || bar->isDragging()) return;
    double const all = isVertical ? static_cast<double>(view_->numRows()) : view_->contentWidth() + 1;
    double const seen = isVertical ? static_cast<double>(view_->numFitting()) : textArea().width();
    double const first = isVertical ? static_cast<double>(view_->topRow()) : view_->scrollX();
    bar->setThumbSize(std::min(seen / all, 1.0));
    bar->setThumbPos(first / all);
}

int MultiLineTextBox::handleMessageEvent(LightweightString<char> name, Glob* sender) {
    for (HandlerRef<ScrollBar> const& ref : {verticalBar_, horizontalBar_})
        if (ScrollBar const* const bar = ref.get(); bar && bar == sender && ScrollBar::isScrollBarMsg(name))
            return followBar(*bar, name), handled;
    return TextEntry::handleMessageEvent(name, sender);
}

void MultiLineTextBox::followBar(ScrollBar const& bar, LightweightString<char> const& name) {
    bool const isBack = name == ScrollBar::upButtonPressedMsg || name == ScrollBar::leftButtonPressedMsg;
    bool const isStep =
        isBack || name == ScrollBar::downButtonPressedMsg || name == ScrollBar::rightButtonPressedMsg;
    int const step = isBack ? -1 : 1;
    if (bar.isVertical()) {
        if (isStep) return scrollRows(step);
        return setTopRow(static_cast<std::size_t>(
            std::llround(bar.getThumbPos() * static_cast<double>(view_->numRows()))));
    }
    if (isStep) return setScroll(view_->scrollX() + step * view_->rowHeight());
    setScroll(static_cast<int>(std::lround(bar.getThumbPos() * (view_->contentWidth() + 1))));
}

void MultiLineTextBox::setPalette(Palette const& palette) {
    LifeGuard const life = guard();
    TextEntry::setPalette(palette);
    for (HandlerRef<ScrollBar> const& ref : {verticalBar_, horizontalBar_})
        if (ScrollBar* const bar = life.alive() ? ref.get() : nullptr) bar->setPalette(palette);
}

SizeNeeds MultiLineTextBox::sizeNeeds() const {
    int const button = UifStd::getButtonHeight();
    int const edges = 2 * UifStd::getIndentWidth();
    SizeNeeds needs;
    needs.natural = {standardWidth_ ? standardWidth * button : -1,
                     standardHeight_ ? standardRows * view_->rowHeight() + edges : -1};
    needs.minimum = {leastWidth * button, leastRows * view_->rowHeight() + edges};
    return needs;
}

void MultiLineTextBox::describe(GlobDescription& description) const {
    TextEntry::describe(description);
    if (description.role == Role::textBox) description.role = Role::textArea;
    // Labels name the panel that it fills.
    auto const* const panel = dynamic_cast<ScrollableTextBoxBase const*>(parent());
    if (panel && description.name.empty()) description.name = GlobDescription::of(*panel).name;
    if (isActive()) description.states |= GlobDescription::focusable;
}

} // namespace wainscot
