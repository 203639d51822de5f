#include "tables/table_widget.h"

#include "containers/scroll_bar.h"
#include "host/base/diagnostics.h"
#include "host/drawing/drawable.h"
#include "host/events/dispatch_scope.h"
#include "host/objects/description.h"
#include "host/objects/kbd_focus.h"
#include "host/objects/pixel_scroll.h"
#include "look/focus_mark.h"
#include "tables/table_asking_p.h"
#include "tables/table_body_p.h"
#include "tables/table_header_p.h"

#include <algorithm>
#include <cmath>

namespace wainscot {

TableWidget::TableWidget(InitArgs const& args)
    : Focusable<StandardPanel>(args), header_(new TableHeader(*this)), body_(new TableBody(*this)),
      styleFlags_(args.styleFlags), scrollTimer_([this] { scrollWhileDragging(); }) {
    if (TableColumnDescription::textMargin == 0)
        TableColumnDescription::textMargin = UifStd::getWidgetGap() + UifStd::getIndentWidth();
    addWidget(body_, 0, 0);
    addWidget(header_, 0, 0);
    header_->setVisible((styleFlags_ & hidesHeader) == 0);
    bars_.make(*this, *body_);
    TableWidget::init(args.initValue);
    TableWidget::reshape();
    if (args.adaptor) TableWidget::setDataSource(args.adaptor);
}

TableWidget::~TableWidget() = default;

void TableWidget::init(unsigned short value) {
    if (value != 0) highlightFlags_ = value;
}

/// The adaptor may have died before it.
void TableWidget::handleDetached() {
    adaptorLife_.reset();
    editor_ = nullptr;
    header_ = nullptr;
    body_ = nullptr;
    Focusable<StandardPanel>::handleDetached();
}

void TableWidget::report(Messages which) {
    Reporter().report(*this, parent(), messageTable[which]);
}

// Data

void TableWidget::setDataSource(iTableAdaptor* adaptor) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    endEditing(adaptor_ != nullptr);
    if (!life.alive()) return;
    adaptor_ = adaptor;
    adaptorLife_.reset();
    if (adaptor) adaptorLife_.emplace(adaptor->life_);
    current_ = {-1, -1};
    sortColumn_ = shownSortColumn_ = -1;
    for (auto const& [cell, bound] : std::exchange(boundWidgets_, {}))
        if (bound.widget && life.alive()) destroy(bound.widget.get());
    if (!life.alive()) return;
    readRows();
    buildColumns(false);
    if (life.alive()) resetView();
}

void TableWidget::readRows() {
    if (isReading_) return;
    Reading const reading(*this);
    unsigned int const count = std::min(ask([&] { return adaptor_->getSize(); }, 0U), maxRows);
    unsigned short const line = getLineHeight();
    bool isRead = false;
    bool const asksRows =
        count <= iTableAdaptor::mostRowHeights && ask([&] { return adaptor_->hasRowHeights(); }, false);
    if (asksRows)
        isRead = ask(
            [&] {
                heights_.reset(count, line, [this, asked = adaptor_](unsigned int row) {
                    return adaptor_ == asked ? asked->getRowHeight(row) : toSize16(0);
                });
                return true;
            },
            false);
    if (!isRead) heights_.reset(adaptor_ ? count : 0, line);
}

void TableWidget::dataChanged(RowNotice const& notice) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    int const row = current_.y;
    std::uint64_t const identity = currentIdentity_;
    auto const numbered = row >= 0 ? rowAfter(notice, static_cast<unsigned int>(row)) : std::nullopt;
    bool const isReset = notice.kind == RowNotice::Kind::reset;
    // What the user still edits belongs to another row now, perhaps.
    if (isEditing()) endEditing(false);
    if (!life.alive()) return;
    if (notice.kind == RowNotice::Kind::changed && notice.count < heights_.count())
        ask([&] { return heights_.changed(notice.first, notice.count), true; }, false);
    else
        readRows();
    if (row >= 0) {
        std::optional<unsigned int> wanted =
            isReset ? std::optional(static_cast<unsigned int>(row)) : numbered;
        if (identity != 0)
            if (auto const found =
                    ask([&] { return adaptor_->findRow(identity); }, std::optional<unsigned int>()))
                wanted = found;
        int const last = static_cast<int>(heights_.count()) - 1;
        int const now = std::min(wanted ? static_cast<int>(*wanted) : row, last);
        current_ = now >= 0 ? XY<int>(current_.x, now) : XY<int>(-1, -1);
        noteIdentity();
        if (now != row) report(currentRowChanged);
    }
    if (life.alive()) moveBoundWidgets(notice);
    if (life.alive()) layOut();
    if (life.alive()) describeChanged(DescriptionChange::children);
}

void TableWidget::rowVisibilityHasChanged() {
    LifeGuard const life = guard();
    dataChanged();
    if (life.alive()) report(rowVisibilityChanged);
}

void TableWidget::resetView() {
    DispatchScope const scope;
    LifeGuard const life = guard();
    unsetCurPos();
    if (!life.alive()) return;
    windowTop_ = 0;
    windowLeft_ = 0;
    layOut();
}

// Current position

std::uint64_t TableWidget::identityOf(int row) const {
    if (!validRow(row)) return 0;
    return ask([&] { return adaptor_->getRowIdentity(static_cast<unsigned int>(row)); }, std::uint64_t(0));
}

void TableWidget::noteIdentity() {
    currentIdentity_ = identityOf(current_.y);
}

bool TableWidget::canBeCurrent(XY<int> const& position) const {
    return ask([&] { return adaptor_->canBeCurrent(viewToData(position)); }, false);
}

bool TableWidget::setCurPos(XY<int> const& position, unsigned int reveal) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    if (!validViewPos(position) || !canBeCurrent(position) || !life.alive() || !validViewPos(position))
        return false;
    XY<int> const before = current_;
    Mark const markBefore = focusMark();
    current_ = position;
    if (before != position) {
        noteIdentity();
        if (validRow(before.y)) drawRow(static_cast<unsigned int>(before.y));
        drawRow(static_cast<unsigned int>(position.y));
        if (focusMark() != markBefore) drawRows();
        describeChanged(DescriptionChange::selection);
    }
    if (reveal != 0 && life.alive()) {
        revealRow(static_cast<unsigned int>(position.y));
        if (life.alive()) revealColumn(position.x);
    }
    if (life.alive() && isEditing() && before != position) beginEditing(position);
    if (life.alive() && before.y != position.y) report(currentRowChanged);
    return true;
}

bool TableWidget::setCurRow(int row) {
    return setCurPos({std::max(current_.x, 0), row});
}

bool TableWidget::setCurCol(int column) {
    return setCurPos({column, std::max(current_.y, 0)});
}

void TableWidget::unsetCurPos() {
    if (current_ == XY<int>(-1, -1)) return;
    DispatchScope const scope;
    LifeGuard const life = guard();
    endEditing(true);
    if (!life.alive()) return;
    current_ = {-1, -1};
    currentIdentity_ = 0;
    // The mark of the focus goes round all of it.
    drawRows();
    report(currentRowChanged);
}

// Scrolling

void TableWidget::setWindowTop(std::int64_t top, eRedrawFlag redraw) {
    std::int64_t const most = std::max<std::int64_t>(heights_.total() - visibleHeight(), 0);
    std::int64_t const wanted = std::clamp<std::int64_t>(top, 0, most);
    if (wanted == windowTop_) return;
    std::int64_t const way = wanted - windowTop_;
    Mark const before = focusMark();
    windowTop_ = wanted;
    if (redraw) scrolled(way, before);
}

void TableWidget::setWindowLeft(int left) {
    int const wanted = std::clamp(left, 0, std::max(totalColumnWidth() - visibleWidth(), 0));
    if (wanted == windowLeft_) return;
    windowLeft_ = wanted;
    if (header_) header_->layOut();
    scrolled();
}

/// `way` is how far the rows have moved upwards, where nothing else has changed.
void TableWidget::scrolled(std::int64_t way, Mark before) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    bool const isNear = way != 0 && std::abs(way) < visibleHeight();
    bool isMoved = isNear && body_ && before == focusMark();
    if (isMoved) {
        // A mark round all cells stays where it is.
        int const edge = before == Mark::roundCells ? ControlLook::focusMarkThickness() : 0;
        isMoved = scrollPixels(*body_, body_->bounds().inset(edge), {0, static_cast<int>(way)});
    }
    showBars();
    if (life.alive()) placeBoundWidgets();
    if (life.alive() && isEditing()) positionEditingWidget();
    if (life.alive() && body_ && !isMoved) body_->makeDirty();
}

TableWidget::Mark TableWidget::focusMark() const {
    if (!glib_showsKbdFocus(this)) return Mark::none;
    IntBox const cell = body_ && validViewPos(current_) ? bodyBoxOf(current_) : IntBox();
    return cell.isEmpty() || cell.intersection(body_->bounds()).isEmpty() ? Mark::roundCells : Mark::onCell;
}

void TableWidget::revealRow(unsigned int row, bool centre, eRedrawFlag redraw) {
    if (row >= heights_.count()) return;
    std::int64_t const top = heights_.topOf(row);
    int const height = heights_.heightOf(row);
    int const room = visibleHeight();
    if (centre) return setWindowTop(top - (room - height) / 2, redraw);
    if (top < windowTop_ || height > room) return setWindowTop(top, redraw);
    if (top + height > windowTop_ + room) setWindowTop(top + height - room, redraw);
}

void TableWidget::revealColumn(int viewColumn) {
    if (!validViewColumn(viewColumn) || viewColumn < order_.numStickyViewColumns()) return;
    auto const data = static_cast<std::size_t>(order_.viewToData(viewColumn));
    int const left = leftOfColumn(viewColumn);
    int const right = left + columns_[data]->width.width;
    int const from = stickyWidth();
    if (left < from || right - left > visibleWidth() - from)
        setWindowLeft(windowLeft_ + left - from);
    else if (right > visibleWidth())
        setWindowLeft(windowLeft_ + right - visibleWidth());
}

void TableWidget::scroll(int lines) {
    setWindowTop(windowTop_ + std::int64_t{lines} * getLineHeight());
}

// Rows

unsigned short TableWidget::getLineHeight() const {
    return lineHeight_ != 0 ? lineHeight_ : UifStd::getTableRowHeight();
}

void TableWidget::setLineHeight(unsigned short height) {
    if (height == lineHeight_) return;
    lineHeight_ = height;
    heights_.setDefaultHeight(getLineHeight());
    layOut();
}

RowHeights::Visible TableWidget::getVisibleRows() const {
    return heights_.visibleRows(windowTop_, visibleHeight());
}

int TableWidget::numLines() const {
    return visibleHeight() / getLineHeight();
}

void TableWidget::setFont(LightweightString<char> const& name, unsigned short size) {
    font_ = Glib::FontDesc(name, size);
    layOut();
}

void TableWidget::setEmptyLabel(UIString const& label) {
    emptyLabel_ = label;
    drawRows();
}

// Layout

int TableWidget::visibleWidth() const {
    return body_ ? body_->width() : 0;
}

int TableWidget::visibleHeight() const {
    return body_ ? body_->height() : 0;
}

void TableWidget::reshape() {
    LifeGuard const life = guard();
    Focusable<StandardPanel>::reshape();
    if (life.alive()) layOut();
    if (life.alive()) setupFirstWidths();
}

void TableWidget::layOut() {
    if (!body_ || !header_ || isLayingOut_) return;
    isLayingOut_ = true;
    DispatchScope const scope;
    LifeGuard const life = guard();
    IntBox const area = getUserArea();
    int const top = (styleFlags_ & hidesHeader) != 0 ? 0 : UifStd::getButtonHeight();
    lefts_.assign(1, 0);
    for (int const data : order_.viewColumns())
        lefts_.push_back(lefts_.back() + columns_[static_cast<std::size_t>(data)]->width.width);
    int const wide = totalColumnWidth();
    IntBox const below{area.x1, area.y1, area.x2, std::max(area.y1, area.y2 - top)};
    auto const display = showsBars() ? RowBars::Display::whereNeeded : RowBars::Display::hidden;
    IntBox const cells = bars_.place(*this, below, {heights_.total(), wide}, display);
    int const inset = insetsHeader() ? ScrollBar::thickness() + UifStd::getIndentWidth() : 0;
    if (life.alive()) reshapeWidgetAt(body_, cells.bottomLeft(), cells.size());
    if (life.alive())
        reshapeWidgetAt(header_, {area.x1, area.y2 - top}, {std::max(area.width() - inset, 0), top});
    if (!life.alive()) return;
    isLayingOut_ = false;
    std::int64_t const most = std::max<std::int64_t>(heights_.total() - visibleHeight(), 0);
    windowTop_ = std::clamp<std::int64_t>(windowTop_, 0, most);
    windowLeft_ = std::clamp(windowLeft_, 0, std::max(wide - visibleWidth(), 0));
    header_->layOut();
    if (life.alive()) scrolled();
}

bool TableWidget::showsBars() const {
    return (styleFlags_ & barsUnderPointer) == 0 || containsPointer();
}

void TableWidget::handleMouseContainment(bool inside) {
    LifeGuard const life = guard();
    Focusable<StandardPanel>::handleMouseContainment(inside);
    if (life.alive() && (styleFlags_ & barsUnderPointer) != 0) layOut();
}

void TableWidget::moveBar(RowBars::Move const& move) {
    if (move.isVertical && move.step != 0) return scroll(move.step);
    if (move.isVertical)
        setWindowTop(std::llround(move.share * static_cast<double>(heights_.total())));
    else
        setWindowLeft(move.step != 0 ? windowLeft_ + move.step * UifStd::getButtonHeight()
                                     : static_cast<int>(std::lround(move.share * totalColumnWidth())));
}

// Widgets in cells

bool TableWidget::bindWidgetToCell(Glob* widget, XY<int> const& cell) {
    DispatchScope const scope;
    if (!validDataPos(cell) || !body_ || (widget && !body_->mayTake(widget))) return false;
    LifeGuard const life = guard();
    LifeGuard const widgetLife = widget ? widget->guard() : life;
    auto const known = boundWidgets_.find(cell);
    Glob* const former = known == boundWidgets_.end() ? nullptr : known->second.widget.get();
    if (former && former == widget) return true;
    if (known != boundWidgets_.end()) boundWidgets_.erase(known);
    if (former) destroy(former);
    if (!life.alive() || !widgetLife.alive()) return false;
    if (!widget) return true;
    boundWidgets_[cell] = {HandlerRef<Glob>(widget), identityOf(cell.y)};
    if (!life.alive() || !widgetLife.alive()) return false;
    body_->addChild(widget, BottomLeft(0, 0));
    if (life.alive()) placeBoundWidgets();
    return widgetLife.alive();
}

Glob* TableWidget::getBoundWidget(XY<int> const& cell) const {
    auto const found = boundWidgets_.find(cell);
    return found == boundWidgets_.end() ? nullptr : found->second.widget.get();
}

/// They go with their rows; those of rows that have gone are destroyed.
void TableWidget::moveBoundWidgets(RowNotice const& notice) {
    bool const isReset = notice.kind == RowNotice::Kind::reset;
    if (boundWidgets_.empty() || notice.kind == RowNotice::Kind::changed) return;
    LifeGuard const life = guard();
    std::vector<HandlerRef<Glob>> gone;
    for (auto const& entry : std::exchange(boundWidgets_, {})) {
        XY<int> const cell = entry.first;
        Bound const& bound = entry.second;
        auto const before = static_cast<unsigned int>(cell.y);
        std::optional<unsigned int> row = isReset ? before : rowAfter(notice, before);
        if (bound.identity != 0) {
            auto const found =
                ask([&] { return adaptor_->findRow(bound.identity); }, std::optional<unsigned int>());
            bool const stays = row && identityOf(static_cast<int>(*row)) == bound.identity;
            if (found || !stays) row = found;
        }
        if (!life.alive()) return;
        XY<int> const now{cell.x, row ? static_cast<int>(*row) : -1};
        if (bound.widget && (now.y < 0 || !boundWidgets_.emplace(now, bound).second))
            gone.push_back(bound.widget);
    }
    for (HandlerRef<Glob> const& widget : gone)
        if (life.alive() && widget) destroy(widget.get());
}

/// Those of cells out of sight are hidden.
void TableWidget::placeBoundWidgets() {
    if (boundWidgets_.empty() || !body_) return;
    LifeGuard const life = guard();
    auto const bound = boundWidgets_;
    for (auto const& [cell, entry] : bound) {
        if (!life.alive()) return;
        HandlerRef<Glob> const& widget = entry.widget;
        Glob* const glob = widget.get();
        if (!glob) {
            boundWidgets_.erase(cell);
            continue;
        }
        XY<int> const position = dataToView(cell);
        IntBox const box = validViewPos(position) ? bodyBoxOf(position) : IntBox();
        bool const isSeen = !box.intersection(body_->bounds()).isEmpty();
        if (isSeen) body_->reshapeWidgetAt(glob, box.bottomLeft(), box.size());
        if (life.alive() && widget) glob->setVisible(isSeen);
    }
}

} // namespace wainscot
