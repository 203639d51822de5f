#include "host/windows/input_targets_p.h"

#include "host/objects/kbd_focus.h"
#include "host/objects/tree.h"
#include "host/windows/modality_p.h"
#include "host/windows/popup_chain.h"
#include "host/windows/top_level_window.h"

namespace wainscot {

int InputTargets::buttonBit(InputEvent::Button button) {
    switch (button) {
    case InputEvent::Button::left:
        return EventKind::left;
    case InputEvent::Button::right:
        return EventKind::right;
    case InputEvent::Button::middle:
        return EventKind::middle;
    case InputEvent::Button::none:
        break;
    }
    return 0;
}

void InputTargets::pointerIsAt(InputEvent const& input) {
    events_.pointer.place = input.place;
    pointerWindow_ = input.window;
    pointerIsInside_ = true;
}

Glob* InputTargets::blockerOf(Glob const* target) const {
    return target ? windows_.modality().blockerOf(*target) : nullptr;
}

Glob* InputTargets::under(InputEvent const& input) const {
    Glob* const found = anyUnder(input);
    return blockerOf(found) ? nullptr : found;
}

Glob* InputTargets::anyUnder(InputEvent const& input) const {
    TopLevelWindow* window = input.window ? windows_.windowOf(input.window) : nullptr;
    // Notes take no input: what they cover does.
    if (!input.window || (window && window->isNote())) window = windows_.windowAt(input.place);
    if (!window || !window->root().isShown()) return nullptr;
    return Tree::globAt(window->root(), window->root().screenXYToGlobXY(input.place));
}

bool InputTargets::isOutsidePopUps(Glob const* target) const {
    PopUpChain const& chain = windows_.popUps();
    return chain.isOpen() && !chain.contains(Glob::getRootParent(const_cast<Glob*>(target))) &&
           !Glob::isWithin(target, chain.opener());
}

Glob* InputTargets::underPointer() const {
    if (!pointerIsInside_) return nullptr;
    InputEvent here;
    here.place = events_.pointer.place;
    here.window = windows_.windowOf(pointerWindow_) ? pointerWindow_ : 0;
    return under(here);
}

Glob* InputTargets::captureHolder() const {
    EventHandler* const holder = events_.pointer.captureHolder();
    return holder ? holder->asGlob() : nullptr;
}

Glob* InputTargets::ofPointer(InputEvent const& input) const {
    if (Glob* holder = captureHolder()) return shownOrNull(holder);
    bool const pressedOnNobody = events_.pointer.heldButtons != 0;
    return pressedOnNobody ? nullptr : under(input);
}

Glob* InputTargets::ofKeys() const {
    Glob* const holder = get_kbd_focus();
    Glob* const blocker = blockerOf(holder);
    if (!blocker) return shownOrNull(holder);
    Glob* const within = KbdFocus::holderIn(*Glob::getRootParent(blocker));
    return within && !blockerOf(within) ? shownOrNull(within) : blocker;
}

Event InputTargets::pointerEvent(int kind, InputEvent const& input) const {
    PointerState const& pointer = events_.pointer;
    Event event(kind, input.place);
    event.setModifiers(input.modifiers);
    event.setHeldButtons(pointer.heldButtons);
    event.setChord(pointer.chord);
    event.setClicks(pointer.clicks);
    event.setPressPlace(pointer.pressPlace);
    event.setTime(input.time);
    return event;
}

} // namespace wainscot
