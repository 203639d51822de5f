#include "foundation/panel_tab_keys_p.h"

#include "foundation/focus_stop.h"
#include "foundation/tab_order_geometry.h"
#include "host/events/key_codes.h"
#include "host/objects/kbd_focus.h"

namespace wainscot {

bool PanelTabKeys::step(StandardPanel& panel, std::uint32_t keyCode) {
    // Exactly this key, or this with Shift.
    if (keyCode != Key::tab && keyCode != Key::shiftTab) return false;
    LifeGuard const life = panel.guard();
    bool const forward = keyCode == Key::tab;
    if (wasPassedOn(panel)) return false;
    bool const goesOn = panel.doesTabGoOn() &&
                        !panel.hasTabStopAhead(forward ? TabOrderable::forward : TabOrderable::backward);
    if (goesOn || !life.alive()) return !life.alive();
    unsigned int const index = forward ? panel.incrementTabStop() : panel.decrementTabStop();
    if (!life.alive() || index == TabOrderManager::noTabStop) return !life.alive();
    FocusStop::reveal();
    return true;
}

/// Tab comes from a panel in this panel that lets it go on: this panel does not use it.
bool PanelTabKeys::wasPassedOn(StandardPanel const& panel) {
    for (Glob const* glob = get_kbd_focus(); glob && glob != &panel; glob = glob->parent()) {
        auto const* const inner = dynamic_cast<StandardPanel const*>(glob);
        if (inner && inner->doesTabGoOn() && inner->numTabStops() > 0) return true;
    }
    return false;
}

bool PanelTabKeys::isStopHere(StandardPanel const& panel, TabOrderable& stop) {
    Glob* const widget = TabOrderGeometry::widgetOf(&stop);
    return !widget || Glob::getRootParent(widget) == Glob::getRootParent(const_cast<StandardPanel*>(&panel));
}

} // namespace wainscot
