#include "host/drawing/canvas_renderer.h"
#include "host/drawing/html_renderer.h"
#include "host/drawing/shapes.h"
#include "host/drawing/symbols.h"
#include "host/drawing/word_wrapping_text_renderer.h"
#include "host/objects/description.h"
#include "host/objects/kbd_focus.h"
#include "host/objects/tooltip_details.h"
#include "look/focus_mark.h"
#include "tables/table_asking_p.h"
#include "tables/table_body_p.h"

#include <algorithm>
#include <cmath>

namespace wainscot {

namespace {

/// Bits of `iTableAdaptor::getTextStyle`.
constexpr int wrapsText = 2;
/// More cells than are in sight.
constexpr std::size_t mostWrapped = 2000;

} // namespace

// Places

/// Far away for rows that are far out of sight.
IntBox TableWidget::rowBox(unsigned int row) const {
    constexpr std::int64_t far = 1 << 24;
    std::int64_t const top = std::clamp<std::int64_t>(heights_.topOf(row) - windowTop_, -far, far);
    int const y2 = visibleHeight() - static_cast<int>(top);
    return {0, y2 - heights_.heightOf(row), visibleWidth(), y2};
}

IntBox TableWidget::bodyBoxOf(XY<int> const& position) const {
    IntBox box = rowBox(static_cast<unsigned int>(position.y));
    box.x1 = leftOfColumn(position.x);
    box.x2 = box.x1 + columns_[static_cast<std::size_t>(order_.viewToData(position.x))]->width.width;
    return box;
}

IntBox TableWidget::getCellArea(XY<int> const& position) const {
    return body_ && validViewPos(position) ? bodyBoxOf(position).translated(body_->box().bottomLeft())
                                           : IntBox();
}

XY<int> TableWidget::positionAt(XY<int> const& place) const {
    if (!body_ || !body_->box().contains(place)) return {-1, -1};
    XY<int> const inBody = place - body_->box().bottomLeft();
    XY<int> found{-1, -1};
    if (auto const row = heights_.rowAt(windowTop_ + visibleHeight() - 1 - inBody.y))
        found.y = static_cast<int>(*row);
    // Sticky columns lie over the others.
    for (int view = 0; view < order_.numViewColumns() && found.x < 0; ++view) {
        int const left = leftOfColumn(view);
        auto const data = static_cast<std::size_t>(order_.viewToData(view));
        if (inBody.x >= left && inBody.x < left + columns_[data]->width.width) found.x = view;
    }
    return found;
}

// Damage

void TableWidget::drawRow(unsigned int row) {
    if (body_ && row < heights_.count()) body_->damage(rowBox(row));
}

void TableWidget::drawRows() {
    if (body_) body_->makeDirty();
}

void TableWidget::drawField(XY<int> const& cell) {
    XY<int> const position = dataToView(cell);
    if (body_ && validViewPos(position)) body_->damage(bodyBoxOf(position));
}

void TableWidget::setHighlightFlags(unsigned int flags) {
    highlightFlags_ = flags;
    drawRows();
}

// Drawing

void TableWidget::drawCells(Glob& body) {
    IntBox const area = body.canvasArea();
    CanvasRenderer renderer(body.canvas(), area);
    Palette const& palette = getPalette();
    XY<int> const origin = area.bottomLeft();
    paintFont_ = Glib::loadFont(getFont());
    hasFirstWidths_ = false;
    RowHeights::Visible const rows = getVisibleRows();
    auto const end =
        std::min(static_cast<unsigned int>(std::ceil(std::max(rows.last, 0.0))), heights_.count());
    for (auto row = static_cast<unsigned int>(std::max(rows.first, 0.0)); row < end; ++row)
        if (body_ && row < heights_.count() && renderer.isVisible(rowBox(row).translated(origin)))
            drawRowAt(renderer, origin, row);
    if (!body_) return;
    renderer.clearClipRect();
    // Each row has painted its own ground.
    std::int64_t const rest = windowTop_ + visibleHeight() - heights_.total();
    if (rest > 0) {
        int const height = static_cast<int>(std::min<std::int64_t>(rest, area.height()));
        renderer.renderPrimitive(Glib::RectDescription({area.x1, area.y1, area.x2, area.y1 + height},
                                                       palette.window(eWindowRecessed)));
    }
    if (heights_.count() == 0) drawEmptyLabel(renderer, area);
    if (dropRow_ >= 0 && validRow(dropRow_))
        Glib::drawRoundedRectOutline(renderer, palette.mark(eMarkAccent),
                                     rowBox(static_cast<unsigned int>(dropRow_)).translated(origin), 2, 0);
    Mark const mark = focusMark();
    if (mark == Mark::none) return;
    IntBox const marked = mark == Mark::onCell ? bodyBoxOf(current_) : body_->bounds();
    ControlLook::drawFocusMark(renderer, marked.translated(origin), palette, 0);
}

void TableWidget::drawEmptyLabel(CanvasRenderer& renderer, IntBox const& body) {
    Text const text = emptyLabel_.text();
    if (text.empty()) return;
    XY<int> const place{body.centre().x, body.centre().y - paintFont_->lineHeight() / 2};
    Text const fitted = Glib::fitTextToWidth(paintFont_, text, toSize16(std::max(body.width(), 0)));
    renderer.renderPrimitive(
        Glib::TextDescription(fitted, place, paintFont_, getPalette().text(eTextSecondary), eAlignCentre));
}

/// Columns that are scrolled first, then the sticky ones over them.
void TableWidget::drawRowAt(CanvasRenderer& renderer, XY<int> const& origin, unsigned int row) {
    Palette const& palette = getPalette();
    bool const hasTag = tagFlags_ != 0 && isTagged(row);
    bool const isCurrentRow = static_cast<int>(row) == current_.y;
    bool const isSelected =
        (hasTag && showsTags()) || (isCurrentRow && (highlightFlags_ & highlightRow) != 0);
    IntBox const box = rowBox(row).translated(origin);
    bool const hasFocus = get_kbd_focus() == this;
    Colour const selection = palette.selection(hasFocus ? eSelectionActive : eSelectionInactive);
    bool const isAlternate = row % 2 != 0 && (styleFlags_ & plainRows) == 0;
    Colour const ground = isSelected    ? selection
                          : isAlternate ? palette.window(eWindowAlternate)
                                        : palette.window(eWindowRecessed);
    renderer.renderPrimitive(Glib::RectDescription(box, ground));
    int const numSticky = order_.numStickyViewColumns();
    int const sticky = stickyWidth();
    bool const isScrolledUnder = numSticky > 0 && windowLeft_ > 0;
    unsigned int const columnsNumber = columnsNumber_;
    auto const drawColumn = [&](int view) {
        // What has changed meanwhile is painted again.
        if (columnsNumber != columnsNumber_) return;
        int const data = order_.viewToData(view);
        auto const width = columns_[static_cast<std::size_t>(data)]->width.width;
        IntBox cell = box;
        cell.x1 = origin.x + leftOfColumn(view);
        cell.x2 = cell.x1 + width;
        if (width == 0 || !renderer.isVisible(cell)) return;
        ask(
            [&] {
                iTableAdaptor::CellContext context(*this, *adaptor_, {data, static_cast<int>(row)});
                context.area = cell;
                context.renderer = &renderer;
                context.isTagged = hasTag;
                context.isInCurrentRow = isCurrentRow;
                context.isCurrent = isCurrentRow && view == current_.x;
                context.isHighlighted =
                    isSelected || (context.isCurrent && (highlightFlags_ & highlightField) != 0);
                drawCell(context, isTagColumnAt(view));
                return true;
            },
            false);
    };
    if (isScrolledUnder) renderer.setClipRect({box.x1 + sticky, box.y1, box.x2, box.y2});
    int first = numSticky;
    if (windowLeft_ > 0) {
        auto const behind = std::upper_bound(lefts_.begin() + numSticky, lefts_.end(), windowLeft_ + sticky);
        first = std::max(numSticky, static_cast<int>(behind - lefts_.begin()) - 1);
    }
    for (int view = first; view < order_.numViewColumns() && leftOfColumn(view) < visibleWidth(); ++view)
        drawColumn(view);
    if (isScrolledUnder) {
        renderer.clearClipRect();
        renderer.renderPrimitive(Glib::RectDescription({box.x1, box.y1, box.x1 + sticky, box.y2}, ground));
    }
    for (int view = 0; view < numSticky; ++view) drawColumn(view);
}

void TableWidget::drawCell(iTableAdaptor::CellContext& cell, bool isTagColumn) {
    drawCellBackground(cell);
    if (isTagColumn) return drawTagBox(cell);
    // An adaptor may die when it is asked.
    if (cell.adaptor.drawField(cell) || getDataSource() != &cell.adaptor) return;
    iCellEditor* const editor =
        editors_.empty() ? nullptr : findEditorForFieldType(cell.adaptor.getFieldType(cell.position));
    if (getDataSource() != &cell.adaptor) return;
    if (!editor || !editor->drawField(cell)) drawCellText(cell);
}

/// Cells with a palette of their own, and the current cell, have their own ground.
void TableWidget::drawCellBackground(iTableAdaptor::CellContext& cell) {
    bool const isField = cell.isCurrent && (highlightFlags_ & highlightField) != 0;
    bool const isOwn = !cell.isHighlighted && !(cell.palette == getPalette());
    if (!isField && !isOwn) return;
    bool const hasFocus = get_kbd_focus() == this;
    Colour const ground = isField ? cell.palette.selection(hasFocus ? eSelectionActive : eSelectionInactive)
                                  : cell.palette.window(eWindowRecessed);
    cell.renderer->renderPrimitive(Glib::RectDescription(cell.area, ground));
}

void TableWidget::drawTagBox(iTableAdaptor::CellContext& cell) {
    if (!cell.isTagged) return;
    Glib::FontDesc const font(getQvUtilityFontName(), getQvUtilityFontSize());
    XY<int> const place{cell.area.centre().x,
                        cell.area.y1 + getFontYOffset(cell.area.height(), Glib::loadFont(font))};
    Colour const ink = cell.isHighlighted ? cell.textColour() : cell.palette.mark(eMarkAccent);
    cell.renderer->renderPrimitive(
        Glib::TextDescription(wainscot::getString(QvTTF::eTick), place, font, ink, eAlignCentre));
}

void TableWidget::drawCellText(iTableAdaptor::CellContext& cell) {
    Text text = cell.getText();
    if (getDataSource() != &cell.adaptor) return;
    Colour ink = cell.textColour();
    if (text.empty()) {
        text = cell.adaptor.getGhostText(cell.position);
        if (text.empty() || getDataSource() != &cell.adaptor) return;
        if (!cell.isHighlighted) ink = cell.palette.text(eTextSecondary);
    }
    int const margin = std::min(TableColumnDescription::textMargin, cell.area.width() / 2);
    IntBox const area{cell.area.x1 + margin, cell.area.y1, cell.area.x2 - margin, cell.area.y2};
    if (text.find(L'<') != Text::npos && HTMLRenderer::isHTML(text)) {
        HTMLRenderer::render(*cell.renderer, *HTMLRenderer::parse(text, cell.palette), cell.font, area);
        return;
    }
    Qv::Ptr<iFont> const font = cell.font == paintFont_->desc() ? paintFont_ : Glib::loadFont(cell.font);
    auto const [horizontal, vertical] = cell.alignment;
    auto const alignment = horizontal < 0 ? eAlignLeft : horizontal > 0 ? eAlignRight : eAlignCentre;
    if ((cell.adaptor.getTextStyle(cell.position) & wrapsText) != 0)
        return drawWrapped(cell, text, area, ink);
    int const x = horizontal < 0 ? area.x1 : horizontal > 0 ? area.x2 : area.centre().x;
    int const y = vertical < 0 ? area.y1 + font->descent() : area.y1 + getFontYOffset(area.height(), font);
    cell.renderer->renderPrimitive(Glib::TextDescription(
        Glib::fitTextToWidth(font, text, toSize16(std::max(area.width(), 0))), {x, y}, font, ink, alignment));
}

/// What was wrapped for other cells goes when there is too much of it.
void TableWidget::drawWrapped(iTableAdaptor::CellContext& cell, Text const& text, IntBox const& area,
                              Colour const& ink) {
    if (wrapped_.size() > mostWrapped) wrapped_.clear();
    auto found = wrapped_.find(cell.position);
    bool const isKnown = found != wrapped_.end() && found->second.text == text &&
                         found->second.width == area.width() && found->second.font == cell.font;
    if (!isKnown) {
        Glib::WordWrappingTextRenderer renderer(Glib::loadFont(cell.font), area.width());
        renderer.analyse(text);
        wrapped_.erase(cell.position);
        found = wrapped_.emplace(cell.position, Wrapped{text, area.width(), cell.font, renderer}).first;
    }
    int const inset = UifStd::getIndentWidth() / 2;
    found->second.renderer.renderString(*cell.renderer, text, {area.x1, area.y1, area.x2, area.y2 - inset},
                                        ink);
}

// Tips and pointer

bool TableWidget::tipAt(XY<int> const& place, TooltipDetails& details) const {
    XY<int> const position = positionAt(place);
    if (!validViewPos(position)) return false;
    XY<int> const cell = viewToData(position);
    // The adaptor may change the columns when it is asked.
    IntBox const area = getCellArea(position);
    int const room = area.width() - 2 * TableColumnDescription::textMargin;
    Text text = ask([&] { return adaptor_->contextString(cell); }, Text());
    if (text.empty()) {
        // A text that is cut.
        text = ask([&] { return adaptor_->getFieldText(cell); }, Text());
        bool const wraps = (ask([&] { return adaptor_->getTextStyle(cell); }, 1) & wrapsText) != 0;
        auto const own = ask([&] { return adaptor_->getFont(cell); }, std::optional<Glib::FontDesc>());
        bool const isCut = !text.empty() && !wraps && !HTMLRenderer::isHTML(text) &&
                           Glib::loadFont(own.value_or(getFont()))->textWidth(text) > room;
        if (!isCut) return false;
    }
    details.text = text;
    details.area = area;
    return true;
}

MouseCursorID TableWidget::cursorAt(XY<int> const& place) const {
    XY<int> const position = positionAt(place);
    if (!validViewPos(position)) return inheritCursor;
    XY<int> const inCell = place - getCellArea(position).bottomLeft();
    return ask([&] { return adaptor_->contextCursor(viewToData(position), inCell); }, arrowCursor);
}

// For drivers and tools

void TableWidget::describe(GlobDescription& description) const {
    Focusable<StandardPanel>::describe(description);
    description.role = Role::table;
    if (validViewPos(current_))
        description.value = ask([&] { return adaptor_->getFieldText(viewToData(current_)); }, Text());
}

namespace {

constexpr unsigned int cellBits = 20;

ItemKey keyOf(int row, int viewColumn) {
    return {(static_cast<std::uint64_t>(row + 1) << cellBits) | static_cast<std::uint64_t>(viewColumn + 1)};
}

/// -1 as column stands for the whole row.
XY<int> positionOf(ItemKey key) {
    return {static_cast<int>(key.value & ((1U << cellBits) - 1)) - 1,
            static_cast<int>(key.value >> cellBits) - 1};
}

} // namespace

std::size_t TableWidget::numItems(ItemKey in) const {
    if (in.isEmpty()) return heights_.count();
    bool const isRow = positionOf(in).x < 0 && validRow(positionOf(in).y);
    return isRow ? static_cast<std::size_t>(order_.numViewColumns()) : 0;
}

DescribedItems::Range TableWidget::itemsInSight(ItemKey in) const {
    if (!in.isEmpty()) return {0, numItems(in)};
    RowHeights::Visible const rows = getVisibleRows();
    auto const first = static_cast<std::size_t>(std::max(rows.first, 0.0));
    auto const end = std::min<std::size_t>(static_cast<std::size_t>(std::ceil(std::max(rows.last, 0.0))),
                                           heights_.count());
    return {std::min(first, end), end - std::min(first, end)};
}

ItemKey TableWidget::itemAt(ItemKey in, std::size_t index) const {
    if (index >= numItems(in)) return {};
    return in.isEmpty() ? keyOf(static_cast<int>(index), -1)
                        : keyOf(positionOf(in).y, static_cast<int>(index));
}

bool TableWidget::describeItem(ItemKey item, GlobDescription& description) const {
    XY<int> const position = positionOf(item);
    DispatchScope const scope;
    if (item.isEmpty() || !validRow(position.y)) return false;
    if (position.x >= 0 && !validViewColumn(position.x)) return false;
    bool const isCell = position.x >= 0;
    description.role = isCell ? Role::cell : Role::row;
    auto const row = static_cast<unsigned int>(position.y);
    IntBox const box = isCell ? bodyBoxOf(position) : rowBox(row);
    XY<int> const cell = viewToData({isCell ? position.x : 0, position.y});
    if (validDataColumn(cell.x)) description.name = ask([&] { return adaptor_->getFieldText(cell); }, Text());
    if (position.y == current_.y && (!isCell || position.x == current_.x))
        description.states |= GlobDescription::focused;
    if (isTagged(row)) description.states |= GlobDescription::selected;
    if (isActive()) description.states |= GlobDescription::enabled;
    IntBox const seen = box.intersection(body_ ? body_->bounds() : IntBox());
    if (!seen.isEmpty()) {
        description.states |= GlobDescription::visible;
        description.box = seen.translated(body_->screenBox().bottomLeft());
    }
    description.actions = GlobDescription::press | GlobDescription::select | GlobDescription::reveal;
    return true;
}

bool TableWidget::performItemAction(ItemKey item, std::uint32_t action) {
    XY<int> const position = positionOf(item);
    if (!validRow(position.y)) return false;
    if (action == GlobDescription::select) return setCurPos({std::max(position.x, 0), position.y});
    if (action != GlobDescription::reveal) return false;
    revealRow(static_cast<unsigned int>(position.y));
    if (position.x >= 0) revealColumn(position.x);
    return true;
}

} // namespace wainscot
