#include "tables/table_body_p.h"

#include "host/events/event.h"
#include "host/objects/tooltip_details.h"
#include "tables/table_widget.h"

namespace wainscot {

TableBody::TableBody(TableWidget& table) : Pressable<Glob>(0, 0), table_(&table) {
    setLightweight(true);
    setPressButtons(EventKind::left | EventKind::right);
}

bool TableBody::react(Event const& event) {
    TableWidget* const table = table_.get();
    // What widgets in cells say is for the owner of the table.
    if (table && table->parent() && isMessageEvent(event)) return table->parent()->react(event);
    if (!table || !table->isActive()) return Pressable<Glob>::react(event);
    if (mouse_wheel_event(event)) return table->wheel(event) || Pressable<Glob>::react(event);
    if (mouse_move_event(event) && !press().isHeld()) {
        XY<int> const place = eventXYToGlobXY(event, *table);
        table->hoverAt(&place);
    }
    return reactToPress(event) || Pressable<Glob>::react(event);
}

void TableBody::draw() {
    if (TableWidget* const table = table_.get()) table->drawCells(*this);
}

void TableBody::handleMouseContainment(bool inside) {
    LifeGuard const life = guard();
    Pressable<Glob>::handleMouseContainment(inside);
    if (!life.alive()) return;
    if (TableWidget* const table = table_.get(); table && !inside) table->hoverAt(nullptr);
}

bool TableBody::pressBegan(Event const& event) {
    TableWidget* const table = table_.get();
    return table && table->pressAt(event);
}

void TableBody::pressMoved(Event const& event) {
    if (TableWidget* const table = table_.get()) table->dragTo(event);
}

void TableBody::pressEnded(PressEnd how) {
    if (TableWidget* const table = table_.get()) table->endPress(how);
}

MouseCursorID TableBody::contextCursor(XY<int> const& place) const {
    TableWidget const* const table = table_.get();
    return table ? table->cursorAt(place + box().bottomLeft()) : inheritCursor;
}

bool TableBody::getTooltipDetails(XY<int> const& place, TooltipDetails& details) const {
    TableWidget const* const table = table_.get();
    if (!table || !table->tipAt(place + box().bottomLeft(), details)) return false;
    details.area = details.area.translated(XY<int>() - box().bottomLeft());
    return true;
}

} // namespace wainscot
