#include "host/windows/key_routing_p.h"

#include "host/events/dispatch_scope.h"
#include "host/events/messages.h"
#include "host/messages/notify_msg.h"
#include "host/objects/dispatch.h"
#include "host/windows/key_commands_p.h"
#include "host/windows/popup_chain.h"

#include <utility>

namespace wainscot {

namespace {

bool isReturnOrSpace(std::uint32_t code) {
    return Key::base(code) == Key::enter || Key::base(code) == Key::space;
}

} // namespace

KeyRouting::KeyRouting(Backend& backend, EventSystem& events, GlobManager& windows, InputTargets& targets,
                       PointerHover& hover, PointerPresses& presses)
    : events_(events), windows_(windows), targets_(targets), hover_(hover), presses_(presses),
      composition_(backend) {}

void KeyRouting::key(InputEvent const& input) {
    bool const press = input.kind == InputEvent::Kind::keyPressed;
    Event event(press ? EventKind::keyPress : EventKind::keyRelease, input.keyCode);
    event.setModifiers(input.modifiers | (input.keyCode & Key::modifierMask));
    event.setRepeat(press && input.repeat);
    event.setTime(input.time);
    event.setPlace(events_.pointer.place);
    if (press && !input.repeat) events_.focus.keyPressed();
    if (!press) events_.focus.keysReleased();
    dispatch(event);
}

void KeyRouting::composedText(InputEvent const& input) {
    if (input.text.empty()) return;
    endComposition();
    Event event(EventKind::message);
    event.setMessage(compoundTextInputMsg);
    event.setData(wrapData(input.text));
    event.setTime(input.time);
    if (Glob* holder = targets_.ofKeys()) deliverEvent(holder, event);
}

void KeyRouting::composing(InputEvent const& input) {
    composition_.show(targets_.ofKeys(), input.text, input.amount);
}

void KeyRouting::dispatch(Event& event) {
    DispatchScope const scope(event);
    bool const isPress = isKeyPressEvent(event);
    bool const isAfterEscape = isPress && std::exchange(escapeWasUnused_, false);
    if (isPress) hover_.dismissTip();
    if (presses_.takeBack(event) || KeyCommands::runTransport(event, targets_.ofKeys(), windows_)) return;
    if (offerToStack(event)) return;
    event.setOffered();
    if (isAfterEscape && leaveWithTab(event)) return;
    if (dispatchToHolder(event) || !isPress || useElsewhere(event)) return;
    escapeWasUnused_ = event.keyCode() == Key::escape;
}

/// Only entries of the active window, of open pop-ups and of no window are asked.
bool KeyRouting::offerToStack(Event const& event) {
    Glob* const target = targets_.ofKeys();
    IdStamp const active = target ? target->windowStamp() : events_.focus.activeWindow();
    return events_.intercepts.offer(event, [&](EventHandler& handler) {
        IdStamp const window = handler.windowStamp();
        bool const isAsked = !window.valid() || window == active || windows_.popUps().containsStamp(window);
        return isAsked && !targets_.blockerOf(handler.asGlob());
    });
}

bool KeyRouting::dispatchToHolder(Event const& event) {
    Glob* const holder = targets_.ofKeys();
    if (!holder) return false;
    bool const isUnwantedRepeat =
        event.isRepeat() && isReturnOrSpace(event.keyCode()) && !holder->repeatsReturnAndSpace();
    return isUnwantedRepeat || dispatchUpwards(holder, event);
}

bool KeyRouting::useElsewhere(Event const& event) {
    if (KeyCommands::sendClipboardMessage(event.keyCode(), targets_.ofKeys())) return true;
    if (KeyCommands::runBound(event.keyCode())) return true;
    Glob* const unused = targets_.ofKeys();
    return unused && windows_.handleUnusedKey(*unused, event);
}

bool KeyRouting::leaveWithTab(Event const& key) {
    bool const isTab = key.keyCode() == Key::tab || key.keyCode() == Key::shiftTab;
    Glob* const holder = isTab ? targets_.ofKeys() : nullptr;
    if (!holder) return false;
    Event toPane = key;
    toPane.setKeyCode(Key::function(6) | (key.keyCode() & Key::shift));
    return windows_.handleUnusedKey(*holder, toPane);
}

} // namespace wainscot
