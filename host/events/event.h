#pragma once

#include "host/base/lightweight_string.h"
#include "host/base/ptr.h"
#include "host/base/xy.h"
#include "host/events/event_kinds.h"
#include "host/events/key_codes.h"
#include "host/messages/event_handler.h"
#include "host/messages/handler_ref.h"

#include <cstdint>

namespace wainscot {

/// One input or message event. Its place is in root coordinates (logical, y upwards) and never changes on its
/// way; a receiver asks for the place relative to itself.
class WAINSCOT_API Event {
public:
    explicit Event(int kind) : kind_(kind) {}
    /// A mouse event at a place, addressed to `target` when it is posted.
    Event(int kind, XY<int> place, EventHandler* target = nullptr);
    /// A key press or release.
    Event(int kind, std::uint32_t keyCode, EventHandler* target = nullptr);

    int kind() const { return kind_; }
    XY<int> place() const { return place_; }
    void setPlace(XY<int> place) { place_ = place; }

    /// The key code of a key event; for a message, the modifiers that held when it was sent.
    std::uint32_t keyCode() const { return keyCode_; }
    void setKeyCode(std::uint32_t code) { keyCode_ = code; }
    /// `Key::shift` and so on, as they were when it happened.
    std::uint32_t modifiers() const { return modifiers_; }
    void setModifiers(std::uint32_t modifiers) { modifiers_ = modifiers & Key::modifierMask; }
    /// A held key repeats.
    bool isRepeat() const { return repeat_; }
    void setRepeat(bool repeat) { repeat_ = repeat; }
    /// The key was offered to the intercept stack already.
    bool wasOffered() const { return offered_; }
    void setOffered() { offered_ = true; }

    /// Wheel notches (positive = up; of a sideways wheel: to the right) or zoom steps (positive = in).
    int amount() const { return amount_; }
    void setAmount(int amount) { amount_ = amount; }
    /// Clicks in quick succession: 1 for a single press, 2 for a double click.
    int clicks() const { return clicks_; }
    void setClicks(int clicks) { clicks_ = clicks; }
    /// Buttons held after the event, as `EventKind::left`, `right`, `middle`.
    int heldButtons() const { return heldButtons_; }
    void setHeldButtons(int buttons) { heldButtons_ = buttons; }
    /// More than one button has been down since the first press.
    bool isChord() const { return chord_; }
    void setChord(bool chord) { chord_ = chord; }
    /// The place of the press to which a move or release belongs.
    XY<int> pressPlace() const { return pressPlace_; }
    void setPressPlace(XY<int> place) { pressPlace_ = place; }
    /// When it happened, on the millisecond clock.
    double time() const { return time_; }
    void setTime(double time) { time_ = time; }

    /// The message's name; empty for other kinds.
    LightweightString<char> const& message() const { return message_; }
    void setMessage(LightweightString<char> name) { message_ = std::move(name); }
    Qv::Ptr<iObject> const& data() const { return data_; }
    void setData(Qv::Ptr<iObject> data);
    /// Whether it is a message with data, which may be null.
    bool hasData() const { return hasData_; }
    /// The code of the `NotifyMsg` from which the message was made; 0 for other messages.
    int reportCode() const { return reportCode_; }
    void setReportCode(int code) { reportCode_ = code; }

    void setSender(iObject* sender);
    /// The `Glob` that sent the message; null when the sender is not a `Glob` or has died.
    Glob* sender() const;
    void setTarget(EventHandler* target) { target_ = HandlerRef<>(target); }
    /// The receiver; null when there is none, or when it has died.
    EventHandler* target() const { return target_.get(); }

private:
    int kind_;
    std::uint32_t keyCode_ = 0;
    std::uint32_t modifiers_ = 0;
    int amount_ = 0;
    int clicks_ = 1;
    int heldButtons_ = 0;
    int reportCode_ = 0;
    XY<int> place_;
    XY<int> pressPlace_;
    double time_ = 0.0;
    bool repeat_ = false;
    bool offered_ = false;
    bool chord_ = false;
    bool hasData_ = false;
    LightweightString<char> message_;
    Qv::Ptr<iObject> data_;
    HandlerRef<> sender_;
    HandlerRef<> target_;
};

// Classification.
WAINSCOT_API bool mouse_event(Event const& event);
WAINSCOT_API bool mouse_down_event(Event const& event);
WAINSCOT_API bool mouse_up_event(Event const& event);
WAINSCOT_API bool mouse_move_event(Event const& event);
WAINSCOT_API bool mouse_left_event(Event const& event);
WAINSCOT_API bool mouse_right_event(Event const& event);
WAINSCOT_API bool mouse_middle_event(Event const& event);
WAINSCOT_API bool mouse_wheel_event(Event const& event);
/// A wheel, or two fingers, turned sideways. Not a `mouse_wheel_event`.
WAINSCOT_API bool mouse_side_wheel_event(Event const& event);
WAINSCOT_API bool mouse_zoom_event(Event const& event);
/// The press that makes a double click.
WAINSCOT_API bool mouse_double_click_event(Event const& event);
/// More than one button is held.
WAINSCOT_API bool mouse_chord_event(Event const& event);
/// More than one button was held at some time since the first press.
WAINSCOT_API bool eventWasChordEvent(Event const& event);
/// A move that is far enough from its press to be intended.
WAINSCOT_API bool isMouseMoveSignificant(Event const& event);
WAINSCOT_API bool isKeyPressEvent(Event const& event);
WAINSCOT_API bool isKeyReleaseEvent(Event const& event);
WAINSCOT_API bool isTimerEvent(Event const& event);
WAINSCOT_API bool isMessageEvent(Event const& event);
/// No chord and no modifier.
WAINSCOT_API bool isPlainEvent(Event const& event);
WAINSCOT_API int getMouseClickState(Event const& event);
WAINSCOT_API std::uint32_t getModifier(Event const& event);

} // namespace wainscot
