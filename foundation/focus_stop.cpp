#include "foundation/focus_stop.h"

#include "foundation/tab_orderable.h"
#include "host/drawing/canvas_renderer.h"
#include "host/objects/description.h"
#include "host/objects/glob.h"
#include "host/objects/kbd_focus.h"
#include "look/focus_mark.h"

namespace wainscot::FocusStop {

bool canTake(Glob const& control) {
    // It may lie on another object's canvas.
    return control.isActive() && control.isShown() && canvas_is_mapped_to_root(control.canvas());
}

void handleLoss(Glob& control, TabOrderable const& stop) {
    // It was the current stop already: this loss follows its own receipt.
    if (stop.isReceivingTabStopFocus()) return;
    control.relinquishKbdFocus(control.parent());
}

void handleKbdFocus(Glob& control, TabOrderable& stop) {
    control.makeDirty();
    LifeGuard const life = control.guard();
    control.describeChanged(DescriptionChange::state);
    if (!life.alive()) return;
    if (get_kbd_focus() == &control && !stop.isTabStopFocus()) stop.setTabStopFocus();
}

Glob* holderBeside(Glob& control) {
    return KbdFocus::holderIn(*Glob::getRootParent(&control));
}

void giveFocus(Glob& control, TabOrderable& stop) {
    LifeGuard const life = control.guard();
    if (!stop.setTabStopFocus() && life.alive()) control.claimKbdFocus();
    if (life.alive() && holderBeside(control) == &control) control.bringIntoView();
}

void drawMark(Glob const& control) {
    if (!glib_showsKbdFocus(&control)) return;
    CanvasRenderer renderer(control.canvas(), control.canvasArea());
    ControlLook::drawFocusMark(renderer, control.canvasArea(), control.getPalette());
}

void reveal() {
    if (Glob* const holder = get_kbd_focus()) holder->bringIntoView();
}

} // namespace wainscot::FocusStop
