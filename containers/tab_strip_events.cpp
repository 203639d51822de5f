#include "buttons/checkbox.h"
#include "containers/tab_strip_p.h"
#include "containers/tabbed_dialogue.h"
#include "host/drawing/shapes.h"
#include "host/events/dispatch_scope.h"
#include "host/objects/description.h"
#include "host/objects/kbd_focus.h"
#include "look/focus_mark.h"
#include "menus/model/menu_item.h"

#include <utility>

namespace wainscot {

bool TabStrip::react(Event const& event) {
    if (isMessageEvent(event) && dialogue_) {
        if (event.message() == backMsg) return dialogue_.get()->handlePrevPressed(), true;
        if (event.message() == forwardMsg) return dialogue_.get()->handleNextPressed(), true;
        if (event.message() == listMsg) return openList(), true;
    }
    if (isTimerEvent(event)) return scrollWhileDragging(), true;
    if (!isActive()) return Focusable<rect>::react(event);
    // It scrolls, and never changes the page.
    if (mouse_wheel_event(event) && totalWidth() > visibleWidth()) {
        setFirstTabPos(firstTabPos_ + event.amount() * wheelStep * UifStd::getButtonHeight());
        if (dragged_) dragOn();
        return true;
    }
    if (isKeyPressEvent(event) && reactToKey(event)) return true;
    return Focusable<rect>::react(event);
}

bool TabStrip::reactToKey(Event const& event) {
    auto const action = actionFor(TabbedDialogue::stripKeyTable, event.keyCode());
    TabbedDialogue* const dialogue = dialogue_.get();
    // Keys of the box in which a name is edited come by as well.
    if (!action || !dialogue || get_kbd_focus() != this) return false;
    DispatchScope const scope;
    dialogue->isFocusParked_ = false;
    Tab* const tab = current();
    switch (*action) {
    case TabbedDialogue::previousTab:
        return dialogue->stepPage(-1), true;
    case TabbedDialogue::nextTab:
        return dialogue->stepPage(1), true;
    case TabbedDialogue::firstTab:
        return selectFrom(0, 1), true;
    case TabbedDialogue::lastTab:
        return selectFrom(static_cast<int>(tabs_.size()) - 1, -1), true;
    case TabbedDialogue::renameTab:
        if (tab && dialogue->canRename()) tab->startRenaming();
        return true;
    case TabbedDialogue::closeTab:
        if (tab && dialogue->canClose()) dialogue->closeByUser(*tab);
        return true;
    case TabbedDialogue::toggleBox:
        if (Checkbox* const box = tab ? tab->getCheckbox() : nullptr) box->react(event);
        return true;
    }
    return false;
}

/// The first tab from there on that the user can select.
void TabStrip::selectFrom(int index, int direction) {
    for (; index >= 0 && index < static_cast<int>(tabs_.size()); index += direction) {
        Tab* const tab = tabs_[static_cast<std::size_t>(index)];
        if (tab->isActive()) return dialogue_.get()->selectByUser(*tab);
    }
}

bool TabStrip::openList() {
    Button* const button = listButton_.get();
    if (!button) return false;
    DispatchScope const scope;
    button->clearMenu();
    for (Tab* const tab : tabs_) {
        auto const choose = makeCallback<int, NotifyMsg>([ref = HandlerRef<Tab>(tab)](NotifyMsg const&) {
            Tab* const chosen = ref.get();
            TabStrip* const strip = chosen ? chosen->strip_.get() : nullptr;
            if (strip && strip->dialogue()) strip->dialogue()->selectByUser(*chosen);
            return 1;
        });
        MenuItem item = MenuItem::plain(tab->getName().text(), WidgetCallback(choose, ""));
        item.setActive(tab->isActive());
        MenuItem::Layout layout = item.getLayout();
        layout.isMarked = tab->isCurrent();
        item.setLayout(layout);
        button->addMenuItem(item);
    }
    return button->openMenu(button->screenBox().bottomLeft());
}

// Drags of others

int TabStrip::sideAt(XY<int> const& place) const {
    auto const isOn = [&](HandlerRef<Button> const& button) {
        return button && button.get()->isVisible() && button.get()->isActive() &&
               button.get()->box().contains(place);
    };
    if (!isActive()) return 0;
    return isOn(backButton_) ? -1 : isOn(forwardButton_) ? 1 : 0;
}

bool TabStrip::canAccept(DragDropItem const&, XY<int> const& place, eDropReason reason) {
    return reason == dropHover && sideAt(place) != 0;
}

void TabStrip::handleDragHover(DragDropItem const&, XY<int> const& place, bool inside) {
    int const side = inside ? sideAt(place) : 0;
    if (side == std::exchange(hoverSide_, side) || side == 0) return;
    setInterest(EventKind::timer);
    setNextTimer(scrollInterval);
}

/// It takes nothing itself.
MouseCursorID TabStrip::getDropCursor(DragDropItem const&, XY<int> const&) const {
    return arrowCursor;
}

// Look

void TabStrip::handleKbdFocus() {
    LifeGuard const life = guard();
    Focusable<rect>::handleKbdFocus();
    if (!life.alive()) return;
    Tab* const tab = current();
    if (!tab) return;
    tab->makeDirty();
    if (get_kbd_focus() == this) revealLater(*tab);
}

/// The line above the pages, which the current tab interrupts. The mark of the focus is on the current tab,
/// or here where there is none.
void TabStrip::draw() {
    CanvasRenderer renderer(canvas(), canvasArea());
    IntBox const box = canvasArea();
    IntBox line{box.x1, box.y1, box.x2, box.y1 + 1};
    Tab const* const tab = current();
    Colour const colour = getPalette().separator();
    if (tab && tab->isVisible()) {
        IntBox const open = tab->box().translated(area_->box().bottomLeft()).translated(box.bottomLeft());
        int const left = std::clamp(open.x1, line.x1, line.x2);
        int const right = std::clamp(std::min(open.x2, area_->box().x2 + box.x1), left, line.x2);
        renderer.renderPrimitive(Glib::RectDescription({line.x1, line.y1, left, line.y2}, colour));
        line.x1 = right;
    }
    renderer.renderPrimitive(Glib::RectDescription(line, colour));
    if (!tab) drawFocusMark();
}

void TabStrip::handleLookChange(LookChange changes) {
    Focusable<rect>::handleLookChange(changes);
    remeasure();
}

void TabStrip::describe(GlobDescription& description) const {
    Focusable<rect>::describe(description);
    description.role = Role::tabStrip;
}

} // namespace wainscot
