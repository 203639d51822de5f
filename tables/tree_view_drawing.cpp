#include "host/drawing/canvas_renderer.h"
#include "host/drawing/image.h"
#include "host/drawing/shapes.h"
#include "host/drawing/standard_icons.h"
#include "host/drawing/symbols.h"
#include "host/drawing/uif_std.h"
#include "host/events/dispatch_scope.h"
#include "host/objects/description.h"
#include "host/objects/kbd_focus.h"
#include "host/objects/pixel_scroll.h"
#include "host/objects/tooltip_details.h"
#include "host/services/text_ids.h"
#include "look/focus_mark.h"
#include "tables/tree_body_p.h"
#include "tables/tree_view_p.h"

#include <algorithm>
#include <cmath>

namespace wainscot {

namespace {

/// Deeper rows are not moved further to the right.
constexpr unsigned int mostIndented = 10'000;
/// Of the mark before a row, in pixels.
constexpr int markThickness = 2;

/// So much of a name is brought into sight, and can be edited.
int leastLabelWidth() {
    return 4 * UifStd::getButtonHeight();
}

} // namespace

// Places

int TreeView::indent() const {
    return std::max(Glib::standardIconExtent, UifStd::getTableRowHeight() * 3 / 4);
}

int TreeView::expanderLeft(unsigned int depth) const {
    return static_cast<int>(std::min(depth, mostIndented)) * indent() - windowLeft_ +
           UifStd::getIndentWidth();
}

int TreeView::labelLeft(unsigned int depth, bool hasIcon) const {
    int const gap = UifStd::getWidgetGap();
    return expanderLeft(depth) + indent() + gap / 2 + (hasIcon ? Glib::standardIconExtent + gap : 0);
}

TreeView::Text TreeView::textOf(Item const& item) const {
    return ask([&](auto& adaptor) { return adaptor.getDisplayText(item); }, item.name);
}

unsigned short TreeView::getRowHeight() const {
    return rowHeight_ != 0 ? rowHeight_ : UifStd::getTableRowHeight();
}

void TreeView::setRowHeight(unsigned short height) {
    if (height == rowHeight_) return;
    rowHeight_ = height;
    layOut();
}

int TreeView::visibleHeight() const {
    return body_ ? body_->height() : 0;
}

int TreeView::visibleWidth() const {
    return body_ ? body_->width() : 0;
}

RowRange TreeView::rowsInSight() const {
    int const height = getRowHeight();
    auto const first = static_cast<unsigned int>(windowTop_ / height);
    auto const end = static_cast<unsigned int>((windowTop_ + visibleHeight() + height - 1) / height);
    return {std::min(first, numRows()), std::min(end, numRows())};
}

/// In the body; far away for rows that are far out of sight.
IntBox TreeView::rowBox(unsigned int row) const {
    constexpr std::int64_t far = 1 << 24;
    std::int64_t const top =
        std::clamp<std::int64_t>(std::int64_t{row} * getRowHeight() - windowTop_, -far, far);
    int const y2 = visibleHeight() - static_cast<int>(top);
    return {0, y2 - getRowHeight(), visibleWidth(), y2};
}

std::optional<unsigned int> TreeView::rowAtHeight(int y) const {
    std::int64_t const pixel = windowTop_ + visibleHeight() - 1 - y;
    std::int64_t const row = pixel < 0 ? -1 : pixel / getRowHeight();
    if (row < 0 || row >= std::int64_t{numRows()}) return std::nullopt;
    return static_cast<unsigned int>(row);
}

int TreeView::getItemFromPosition(XY<int> const& place) const {
    if (!body_ || !body_->box().contains(place)) return -1;
    auto const row = rowAtHeight(place.y - body_->box().y1);
    return row ? static_cast<int>(*row) : -1;
}

IntBox TreeView::getItemBounds(unsigned int row, eBoundsType type) const {
    if (!body_ || row >= numRows()) return {};
    DispatchScope const scope;
    IntBox box = rowBox(row);
    TreeRows::Row const data = type == eRowBounds ? TreeRows::Row() : rows_.at(row);
    if (type == eExpanderBounds) {
        if (!data.item.isBranch()) return {};
        box.x1 = expanderLeft(data.depth);
        box.x2 = box.x1 + indent();
    }
    if (type == eIconBounds || type == eLabelBounds) {
        bool const hasIcon =
            !ask([&](auto& adaptor) { return adaptor.getIcon(data.item, data.isExpanded); }, Text()).empty();
        if (type == eIconBounds && !hasIcon) return {};
        box.x1 = labelLeft(data.depth, type == eLabelBounds && hasIcon);
        int const width = type == eIconBounds
                              ? Glib::standardIconExtent
                              : Glib::loadFont(UifStd::getFont())->textWidth(textOf(data.item));
        box.x2 = box.x1 + width;
    }
    return body_ ? box.translated(body_->box().bottomLeft()) : IntBox();
}

void TreeView::damageRow(unsigned int row) {
    if (body_ && row < numRows()) body_->damage(rowBox(row));
}

void TreeView::damageRows() {
    if (body_) body_->makeDirty();
}

// Layout

void TreeView::reshape() {
    LifeGuard const life = guard();
    Focusable<StandardPanel>::reshape();
    if (life.alive()) layOut();
}

RowBars::Display TreeView::barsDisplay() const {
    if (scrollBars_ == eScrollBarsNever) return RowBars::Display::never;
    bool const isHidden = scrollBars_ == eScrollBarsUnderPointer && !containsPointer();
    return isHidden ? RowBars::Display::hidden : RowBars::Display::whereNeeded;
}

void TreeView::setScrollbarDisplay(eScrollBarDisplay display) {
    scrollBars_ = display;
    layOut();
}

void TreeView::layOut() {
    if (!body_ || isLayingOut_) return;
    isLayingOut_ = true;
    DispatchScope const scope;
    LifeGuard const life = guard();
    IntBox const rows = bars_.place(*this, getUserArea(), {totalHeight(), contentWidth_}, barsDisplay());
    if (life.alive()) reshapeWidgetAt(body_, rows.bottomLeft(), rows.size());
    if (!life.alive()) return;
    isLayingOut_ = false;
    std::int64_t const most = std::max<std::int64_t>(totalHeight() - visibleHeight(), 0);
    windowTop_ = std::clamp<std::int64_t>(windowTop_, 0, most);
    windowLeft_ = std::clamp(windowLeft_, 0, std::max(contentWidth_ - visibleWidth(), 0));
    scrolled();
}

void TreeView::handleMouseContainment(bool inside) {
    LifeGuard const life = guard();
    Focusable<StandardPanel>::handleMouseContainment(inside);
    if (life.alive() && scrollBars_ == eScrollBarsUnderPointer) layOut();
}

// Scrolling

void TreeView::setWindowTop(std::int64_t top) {
    std::int64_t const most = std::max<std::int64_t>(totalHeight() - visibleHeight(), 0);
    std::int64_t const wanted = std::clamp<std::int64_t>(top, 0, most);
    std::int64_t const way = wanted - windowTop_;
    if (way == 0) return;
    bool const hasMark = glib_showsKbdFocus(this);
    bool const markedRow = marksRow();
    windowTop_ = wanted;
    scrolled(way, !hasMark || (markedRow && marksRow()));
}

void TreeView::setWindowLeft(int left) {
    int const wanted = std::clamp(left, 0, std::max(contentWidth_ - visibleWidth(), 0));
    if (wanted == windowLeft_) return;
    windowLeft_ = wanted;
    scrolled();
}

/// `way` is how far the rows have moved upwards, where nothing else has changed.
void TreeView::scrolled(std::int64_t way, bool keepsMark) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    // What lies over the rows does not move with them.
    bool const isPlain = !isEditing() && drop_.kind == Drop::none && keepsMark;
    bool const isMoved = way != 0 && std::abs(way) < visibleHeight() && body_ && isPlain &&
                         scrollPixels(*body_, body_->bounds(), {0, static_cast<int>(way)});
    showBars();
    if (!life.alive()) return;
    placeNameBox();
    if (!isMoved) damageRows();
}

/// Whether the mark of the focus is on a row, and moves with it.
bool TreeView::marksRow() const {
    return current_ >= 0 && isVisible(static_cast<unsigned int>(current_));
}

bool TreeView::reveal(unsigned int row) {
    if (row >= numRows()) return false;
    std::int64_t const top = std::int64_t{row} * getRowHeight();
    std::int64_t const bottom = top + getRowHeight();
    if (top < windowTop_ || getRowHeight() > visibleHeight())
        setWindowTop(top);
    else if (bottom > windowTop_ + visibleHeight())
        setWindowTop(bottom - visibleHeight());
    revealSideways(row);
    return true;
}

/// So far that the text can be read from its beginning, as far as there is room.
void TreeView::revealSideways(unsigned int row) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    TreeRows::Row const data = rows_.at(row);
    if (!life.alive()) return;
    int const begin = expanderLeft(data.depth) + windowLeft_ - UifStd::getIndentWidth();
    int const least = labelLeft(data.depth, true) + windowLeft_ + leastLabelWidth();
    if (begin >= windowLeft_ && least <= windowLeft_ + visibleWidth()) return;
    int const width = widthOf(data);
    if (!life.alive()) return;
    takeWidth(width);
    if (begin < windowLeft_ || width > windowLeft_ + visibleWidth())
        setWindowLeft(std::min(begin, std::max(width - visibleWidth(), 0)));
}

bool TreeView::reveal(Text const& name) {
    DispatchScope const scope;
    int const row = findItem(name);
    return row >= 0 && reveal(static_cast<unsigned int>(row));
}

bool TreeView::isVisible(unsigned int row) const {
    return rowsInSight().contains(row);
}

bool TreeView::isVisible(Text const& name) const {
    return findVisibleItem(name) >= 0;
}

bool TreeView::isFullyVisible(unsigned int row) const {
    std::int64_t const top = std::int64_t{row} * getRowHeight();
    return row < numRows() && top >= windowTop_ && top + getRowHeight() <= windowTop_ + visibleHeight();
}

int TreeView::widthOf(TreeRows::Row const& data, bool hasIcon, int textWidth) const {
    return labelLeft(data.depth, hasIcon) + windowLeft_ + textWidth + UifStd::getWidgetGap();
}

int TreeView::widthOf(TreeRows::Row const& data) const {
    LifeGuard const life = guard();
    bool const hasIcon =
        !ask([&](auto& adaptor) { return adaptor.getIcon(data.item, data.isExpanded); }, Text()).empty();
    if (!life.alive()) return 0;
    int const textWidth = Glib::loadFont(UifStd::getFont())->textWidth(textOf(data.item));
    return life.alive() ? widthOf(data, hasIcon, textWidth) : 0;
}

/// The rows that were widest may have gone.
void TreeView::measureRows() {
    DispatchScope const scope;
    LifeGuard const life = guard();
    RowRange const seen = rowsInSight();
    int widest = 0;
    rows_.visit(seen.first, seen.end, [&](unsigned int, TreeRows::Row const& data) {
        widest = std::max(widest, widthOf(data));
        return life.alive();
    });
    if (!life.alive() || widest == contentWidth_) return;
    contentWidth_ = widest;
    layOut();
}

/// The bar comes when the rows have been painted.
void TreeView::takeWidth(int width) {
    if (width <= contentWidth_) return;
    contentWidth_ = width;
    if (contentWidth_ > visibleWidth()) layoutTimer_.start(0);
}

// Drawing

void TreeView::drawRows(Glob& body) {
    IntBox const area = body.canvasArea();
    CanvasRenderer renderer(body.canvas(), area);
    Palette const& palette = getPalette();
    XY<int> const origin = area.bottomLeft();
    DispatchScope const scope;
    LifeGuard const life = guard();
    paintFont_ = Glib::loadFont(UifStd::getFont());
    int const selected = selectedRow();
    if (!life.alive()) return;
    paintedSelection_ = selected;
    RowRange const seen = rowsInSight();
    rows_.visit(seen.first, seen.end, [&](unsigned int row, TreeRows::Row const& data) {
        IntBox const box = rowBox(row).translated(origin);
        if (renderer.isVisible(box)) drawRow(renderer, box, row, data);
        return life.alive();
    });
    if (!life.alive()) return;
    std::int64_t const rest = windowTop_ + visibleHeight() - totalHeight();
    if (rest > 0) {
        int const height = static_cast<int>(std::min<std::int64_t>(rest, area.height()));
        renderer.renderPrimitive(Glib::RectDescription({area.x1, area.y1, area.x2, area.y1 + height},
                                                       palette.window(eWindowRecessed)));
    }
    if (glib_showsKbdFocus(this)) {
        IntBox const marked = marksRow() ? rowBox(static_cast<unsigned int>(current_)) : body.bounds();
        ControlLook::drawFocusMark(renderer, marked.translated(origin), palette, 0);
    }
    if (drop_.kind == Drop::onTree) {
        Glib::drawRoundedRectOutline(renderer, palette.mark(eMarkAccent), area, markThickness, 0);
    } else if (drop_.kind != Drop::none) {
        IntBox row = rowBox(static_cast<unsigned int>(drop_.row));
        if (drop_.kind == Drop::beforeRow) row.x1 = std::clamp(expanderLeft(drop_.depth), row.x1, row.x2);
        indicateAcceptability(renderer, row.translated(origin), drop_.kind == Drop::beforeRow);
    }
}

void TreeView::indicateAcceptability(CanvasRenderer& renderer, IntBox const& row, bool isBefore) {
    Colour const ink = getPalette().mark(eMarkAccent);
    if (isBefore)
        renderer.renderPrimitive(
            Glib::RectDescription({row.x1, row.y2 - markThickness, row.x2, row.y2}, ink));
    else
        Glib::drawRoundedRectOutline(renderer, ink, row, markThickness, 0);
}

void TreeView::drawRow(CanvasRenderer& renderer, IntBox const& box, unsigned int row,
                       TreeRows::Row const& data) {
    Palette const& palette = getPalette();
    bool const isTagged = tags_.contains(row);
    bool const isSelected = static_cast<int>(row) == paintedSelection_ || isTagged;
    // Where rows are tagged, the selected one is faint unless it is, too.
    bool const hasFocus = get_kbd_focus() == this || isEditing();
    bool const isStrong = hasFocus && (isTagged || (options_ & allowsTags) == 0);
    Colour const ground = isSelected ? palette.selection(isStrong ? eSelectionActive : eSelectionInactive)
                                     : palette.window(eWindowRecessed);
    renderer.renderPrimitive(Glib::RectDescription(box, ground));
    eTextAppearance const appearance = !isActive()  ? eTextDisabled
                                       : isSelected ? eTextSelected
                                                    : eTextEnabled;
    Colour ink = palette.text(appearance);
    if (isActive() && !isSelected)
        if (auto const own =
                ask([&](auto& adaptor) { return adaptor.getTextColour(data.item); }, std::optional<Colour>()))
            ink = *own;
    // Lines that show the levels.
    int const step = indent();
    int const firstSeen = std::max(0, (windowLeft_ - step) / step);
    for (int level = firstSeen; level < static_cast<int>(std::min<unsigned int>(data.depth, mostIndented));
         ++level) {
        int const x = box.x1 + expanderLeft(static_cast<unsigned int>(level)) + step / 2;
        if (x >= box.x2) break;
        renderer.renderPrimitive(Glib::RectDescription({x, box.y1, x + 1, box.y2}, palette.separator()));
    }
    if (data.item.isBranch()) drawExpander(renderer, box, data, ink);
    Text const icon = ask([&](auto& adaptor) { return adaptor.getIcon(data.item, data.isExpanded); }, Text());
    if (!icon.empty()) {
        int const extent = Glib::standardIconExtent;
        XY<int> const place{box.x1 + labelLeft(data.depth, false), box.centre().y - extent / 2};
        if (Qv::Ptr<Glib::Image> const image = Glib::loadIcon(icon))
            renderer.renderPrimitive(Glib::ImageDescription(image, IntBox::sized(place, {extent, extent})));
    }
    int const left = labelLeft(data.depth, !icon.empty());
    XY<int> const place{box.x1 + left, box.y1 + getFontYOffset(box.height(), paintFont_)};
    Text const text = textOf(data.item);
    int const width = paintFont_->textWidth(text);
    takeWidth(widthOf(data, !icon.empty(), width));
    bool const isCut = scrollBars_ == eScrollBarsNever && box.x1 + left + width > box.x2;
    Text const shown =
        isCut ? Glib::fitTextToWidth(paintFont_, text, toSize16(std::max(box.x2 - place.x, 0))) : text;
    renderer.renderPrimitive(Glib::TextDescription(shown, place, paintFont_, ink, eAlignLeft));
    if (!data.isPending) return;
    Colour const faint = isSelected ? ink : palette.text(eTextSecondary);
    renderer.renderPrimitive(Glib::TextDescription(resourceStrW(TextId::stillLoading),
                                                   {place.x + width + 2 * UifStd::getWidgetGap(), place.y},
                                                   paintFont_, faint, eAlignLeft));
}

void TreeView::drawExpander(CanvasRenderer& renderer, IntBox const& box, TreeRows::Row const& data,
                            Colour const& ink) {
    Glib::FontDesc const font(getQvUtilityFontName(), getQvUtilityFontSize());
    XY<int> const place{box.x1 + expanderLeft(data.depth) + indent() / 2,
                        box.y1 + getFontYOffset(box.height(), Glib::loadFont(font))};
    QvTTF::eGlyph const glyph = data.isExpanded ? QvTTF::eBranchOpen : QvTTF::eBranchClosed;
    renderer.renderPrimitive(
        Glib::TextDescription(wainscot::getString(glyph), place, font, ink, eAlignCentre));
}

bool TreeView::tipAt(XY<int> const& place, TooltipDetails& details) const {
    int const row = getItemFromPosition(place);
    if (row < 0) return false;
    DispatchScope const scope;
    auto const number = static_cast<unsigned int>(row);
    Item const item = rows_.at(number).item;
    Text text = ask([&](auto& adaptor) { return adaptor.contextString(item); }, Text());
    if (text.empty()) {
        // A text that goes beyond the edge.
        IntBox const label = getItemBounds(number, eLabelBounds);
        bool const isCut = body_ && (label.x2 > body_->box().x2 || label.x1 < body_->box().x1);
        if (!isCut) return false;
        text = textOf(item);
    }
    details.text = text;
    details.area = getItemBounds(number, eRowBounds);
    return true;
}

void TreeView::placeNameBox() {
    Glob* const box = nameBox_.get();
    if (!box || !body_) return;
    LifeGuard const life = guard();
    int const row = editedRow();
    bool const isSeen = life.alive() && row >= 0 && isVisible(static_cast<unsigned int>(row));
    if (!life.alive() || !nameBox_) return;
    int const gap = UifStd::getWidgetGap();
    // Out of sight it keeps the focus, so that the user can write on.
    IntBox line{0, -box->height(), visibleWidth(), 0};
    int left = 0;
    if (isSeen) {
        auto const number = static_cast<unsigned int>(row);
        IntBox const label = getItemBounds(number, eLabelBounds);
        // The adaptor may have ended the editing, or the tree.
        if (!life.alive() || !nameBox_) return;
        line = rowBox(number);
        left = label.x1 - body_->box().x1 - gap / 2;
    }
    int const width = std::max(leastLabelWidth(), line.x2 - left - gap);
    int const height = std::min(box->height(), std::max(line.height(), 1));
    body_->reshapeWidgetAt(box, {left, line.centre().y - height / 2}, {width, height});
}

// State

void TreeView::handleKbdFocus() {
    LifeGuard const life = guard();
    Focusable<StandardPanel>::handleKbdFocus();
    if (life.alive()) damageRows();
}

void TreeView::setActive(bool active, eRedrawFlag redraw) {
    LifeGuard const life = guard();
    if (!active) endEditing(std::nullopt);
    if (life.alive()) Focusable<StandardPanel>::setActive(active, redraw);
    if (life.alive()) damageRows();
}

void TreeView::setPalette(Palette const& palette) {
    Focusable<StandardPanel>::setPalette(palette);
    damageRows();
}

void TreeView::handleLookChange(LookChange changes) {
    LifeGuard const life = guard();
    Focusable<StandardPanel>::handleLookChange(changes);
    if (!life.alive()) return;
    contentWidth_ = 0;
    layOut();
}

// For drivers and tools

void TreeView::describe(GlobDescription& description) const {
    Focusable<StandardPanel>::describe(description);
    description.role = Role::tree;
    if (selected_) description.value = *selected_;
}

namespace {

ItemKey keyOf(std::size_t row) {
    return {row + 1};
}

} // namespace

std::size_t TreeView::numItems(ItemKey in) const {
    return in.isEmpty() ? numRows() : 0;
}

DescribedItems::Range TreeView::itemsInSight(ItemKey in) const {
    if (!in.isEmpty()) return {0, 0};
    RowRange const seen = rowsInSight();
    return {seen.first, seen.count()};
}

ItemKey TreeView::itemAt(ItemKey in, std::size_t index) const {
    return in.isEmpty() && index < numRows() ? keyOf(index) : ItemKey();
}

bool TreeView::describeItem(ItemKey item, GlobDescription& description) const {
    if (item.isEmpty() || item.value > numRows()) return false;
    auto const row = static_cast<unsigned int>(item.value - 1);
    DispatchScope const scope;
    TreeRows::Row const data = rows_.at(row);
    description.role = Role::treeItem;
    description.name = textOf(data.item);
    bool const isCurrent = static_cast<int>(row) == current_;
    if (isCurrent) description.states |= GlobDescription::focused;
    if (tags_.contains(row) || (isCurrent && selectedRow() == current_))
        description.states |= GlobDescription::selected;
    if (data.isExpanded) description.states |= GlobDescription::expanded;
    if (isActive()) description.states |= GlobDescription::enabled;
    IntBox const seen = rowBox(row).intersection(body_ ? body_->bounds() : IntBox());
    if (!seen.isEmpty()) {
        description.states |= GlobDescription::visible;
        description.box = seen.translated(body_->screenBox().bottomLeft());
    }
    description.actions = GlobDescription::press | GlobDescription::select | GlobDescription::reveal;
    return true;
}

bool TreeView::performItemAction(ItemKey item, std::uint32_t action) {
    if (item.isEmpty() || item.value > numRows()) return false;
    auto const row = static_cast<unsigned int>(item.value - 1);
    if (action == GlobDescription::select) return selectRow(row);
    return action == GlobDescription::reveal && reveal(row);
}

} // namespace wainscot
