#include "tables/table_header_p.h"

#include "host/drawing/canvas_renderer.h"
#include "host/drawing/shapes.h"
#include "host/events/dispatch_scope.h"
#include "host/events/event.h"
#include "host/events/messages.h"
#include "menus/model/menu_item.h"
#include "tables/table_widget.h"

#include <algorithm>

namespace wainscot {

namespace {

/// The mark where a dragged column would go.
constexpr int markThickness = 2;

} // namespace

TableHeader::TableHeader(TableWidget& table) : rect(0, 0), table_(&table) {}

void TableHeader::rebuild() {
    DispatchScope const scope;
    LifeGuard const life = guard();
    std::vector<Glob*> former;
    getChildren(former);
    for (Glob* const button : former)
        if (life.alive() && is_good_glob_ptr(button)) destroy(button);
    if (!life.alive() || !table_) return;
    // The last of the adaptor lie below, so that sticky ones cover those that are scrolled under them.
    auto const& columns = table_.get()->columns();
    for (auto column = columns.rbegin(); column != columns.rend(); ++column) {
        ColumnButton* const button = (*column)->makeButton();
        (*column)->button = HandlerRef<Glob>(button);
        addWidget(button, 0, 0);
    }
    reviewMenu(nullptr);
    layOut();
}

void TableHeader::layOut() {
    TableWidget* const table = table_.get();
    if (!table) return;
    DispatchScope const scope;
    ColumnOrder const& order = table->columnOrder();
    for (int data = 0; data < order.numDataColumns(); ++data) {
        DataColumn const& column = *table->columns()[static_cast<std::size_t>(data)];
        Glob* const button = column.button.get();
        if (!button) continue;
        int const view = order.dataToView(data);
        int const left = view >= 0 ? table->leftOfColumn(view) : 0;
        bool const isSeen = view >= 0 && left < width() && left + column.width.width > 0;
        if (isSeen) reshapeWidgetAt(button, {left, 0}, {column.width.width, height()});
        button->setVisible(isSeen);
    }
    makeDirty();
}

int TableHeader::viewColumnOf(ColumnButton const& button) const {
    TableWidget const* const table = table_.get();
    return table ? table->columnOrder().dataToView(table->findColumn(&button)) : -1;
}

bool TableHeader::react(Event const& event) {
    if (isMessageEvent(event)) return true;
    return rect::react(event);
}

// Clicks

/// The table may destroy anything in it.
void TableHeader::clicked(ColumnButton& button, LightweightString<char> const& message) {
    if (TableWidget* const table = table_.get()) sendMessage(message, table, static_cast<Glob*>(&button));
}

// Widths

ColumnButton* TableHeader::before(ColumnButton const& button) const {
    TableWidget const* const table = table_.get();
    int const view = viewColumnOf(button);
    // The edge of a sticky column is no edge of what is scrolled under it.
    if (!table || view <= 0 || view == table->columnOrder().numStickyViewColumns()) return nullptr;
    int const data = table->columnOrder().viewToData(view - 1);
    auto* const former =
        dynamic_cast<ColumnButton*>(table->columns()[static_cast<std::size_t>(data)]->button.get());
    return former && former->isResizeable_ ? former : nullptr;
}

void TableHeader::beginResize(ColumnButton& button) {
    TableWidget* const table = table_.get();
    int const column = table ? table->findColumn(&button) : -1;
    widthBefore_ = column >= 0 ? table->getColumnWidth(static_cast<unsigned short>(column)) : toSize16(0);
}

void TableHeader::resizeFrom(ColumnButton& button, int wayFromPress) {
    TableWidget* const table = table_.get();
    int const column = table ? table->findColumn(&button) : -1;
    if (column >= 0)
        table->resizeColumn(static_cast<unsigned short>(column),
                            std::max(widthBefore_ + wayFromPress, int{UifStd::getIndentWidth()}));
}

void TableHeader::endResize(ColumnButton& button, bool isTakenBack) {
    TableWidget* const table = table_.get();
    int const column = table ? table->findColumn(&button) : -1;
    if (column >= 0 && isTakenBack) table->resizeColumn(static_cast<unsigned short>(column), widthBefore_);
}

void TableHeader::fit(ColumnButton& button) {
    TableWidget* const table = table_.get();
    int const column = table ? table->findColumn(&button) : -1;
    if (column < 0) return;
    table->fitColumn(static_cast<unsigned short>(column));
    beginResize(button);
}

// Places

/// Sticky columns stay among themselves, and so do the others.
int TableHeader::targetAt(int x, int from) const {
    TableWidget const* const table = table_.get();
    if (!table) return -1;
    ColumnOrder const& order = table->columnOrder();
    int const numSticky = order.numStickyViewColumns();
    bool const isSticky = from < numSticky;
    int const first = isSticky ? 0 : numSticky;
    int const last = isSticky ? numSticky - 1 : order.numViewColumns() - 1;
    for (int view = 0; view < order.numViewColumns(); ++view) {
        int const left = table->leftOfColumn(view);
        auto const data = static_cast<std::size_t>(order.viewToData(view));
        if (x >= left && x < left + table->columns()[data]->width.width) return std::clamp(view, first, last);
    }
    return x < 0 ? first : last;
}

void TableHeader::moveTo(ColumnButton& button, XY<int> const& place) {
    dragged_ = viewColumnOf(button);
    int const target = dragged_ < 0 ? -1 : targetAt(screenXYToGlobXY(place).x, dragged_);
    if (target == target_) return;
    target_ = target;
    makeDirty();
}

void TableHeader::endMove(ColumnButton& button, bool isTakenBack) {
    int const target = std::exchange(target_, -1);
    dragged_ = -1;
    makeDirty();
    int const from = viewColumnOf(button);
    if (TableWidget* const table = table_.get(); table && !isTakenBack && target >= 0 && from >= 0)
        table->columnMovedByUser(from, target);
}

/// Which columns are shown.
void TableHeader::reviewMenu(Event const*) {
    clearMenu();
    TableWidget* const table = table_.get();
    if (!table) return;
    ColumnOrder const& order = table->columnOrder();
    for (int data = 0; data < order.numDataColumns(); ++data) {
        TableColumnDescription const& column = table->columns()[static_cast<std::size_t>(data)]->description;
        if (!column.isHideable) continue;
        bool const isHidden = order.isHidden(data);
        auto const change =
            makeCallback<int, NotifyMsg>([ref = table_, id = column.identifier, isHidden](NotifyMsg const&) {
                if (TableWidget* const live = ref.get())
                    live->columnHiddenByUser(live->findColumn(id), !isHidden);
                return 1;
            });
        MenuItem item = MenuItem::plain(column.title.text(), WidgetCallback(change, ""));
        // One column at least stays.
        item.setActive(isHidden || order.numViewColumns() > 1);
        MenuItem::Layout layout = item.getLayout();
        layout.isMarked = !isHidden;
        item.setLayout(layout);
        addMenuItem(item);
    }
}

void TableHeader::draw() {
    CanvasRenderer renderer(canvas(), canvasArea());
    IntBox const box = canvasArea();
    Palette const& palette = getPalette();
    renderer.renderPrimitive(Glib::RectDescription(box, palette.window(eWindowRaised)));
    drawWidgets();
    TableWidget const* const table = table_.get();
    if (!table || target_ < 0) return;
    // It goes behind a column to which it is dragged from the left.
    auto const data = static_cast<std::size_t>(table->columnOrder().viewToData(target_));
    bool const goesBehind = target_ > dragged_ && data < table->columns().size();
    int const width = goesBehind ? table->columns()[data]->width.width - markThickness : 0;
    int const left = table->leftOfColumn(target_) + width + box.x1;
    renderer.renderPrimitive(
        Glib::RectDescription({left, box.y1, left + markThickness, box.y2}, palette.mark(eMarkAccent)));
}

} // namespace wainscot
