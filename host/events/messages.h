#pragma once

#include "host/events/event.h"
#include "host/messages/notify_msg.h"

#include <optional>

namespace wainscot {

/// Carries text that no key code can hold, or that an input method has made, to whoever has the keyboard
/// focus: its data is wide text (`wrapData`).
inline constexpr LightweightString<char> compoundTextInputMsg{"CompoundTextInput"};

/// Queues a named message. It is delivered before the next input event, unless the target has died by then;
/// `sender` reaches the receiver as a `Glob`, or as null when it is none or has died.
/// The last argument changes nothing: the queue is first in, first out. False when there is no target.
WAINSCOT_API bool sendMessage(LightweightString<char> name, EventHandler* target, iObject* sender = nullptr,
                              bool urgent = false);
/// Delivers a named message before it returns. The answer is the handler's: 1 = consumed, by it or by what
/// the receiver does with that message itself; 0 when there is no target.
WAINSCOT_API int callMessage(LightweightString<char> name, EventHandler* target, iObject* sender = nullptr);
/// The same with data; the receiver hears it through `handleDataMessageEvent`.
WAINSCOT_API bool sendMessageWithData(LightweightString<char> name, EventHandler* target,
                                      Qv::Ptr<iObject> data, iObject* sender = nullptr);
WAINSCOT_API int callMessageWithData(LightweightString<char> name, EventHandler* target,
                                     Qv::Ptr<iObject> data, iObject* sender = nullptr);
/// The same for a notification: its name, its payload as data where it has one, and its code as the event's
/// report code. `modifiers` are those that the receiver is told; without them those of the present dispatch.
WAINSCOT_API bool sendNotification(NotifyMsg const& message, EventHandler* target, iObject* sender = nullptr,
                                   std::optional<std::uint32_t> modifiers = {});
WAINSCOT_API int callNotification(NotifyMsg const& message, EventHandler* target, iObject* sender = nullptr);
/// For receivers that call the message handlers themselves: what the handler answered, for `callMessage`.
WAINSCOT_API void noteMessageAnswer(int answer);

/// Queues a copy of an event for the target named in it. The last argument changes nothing.
/// False when it has no live target.
WAINSCOT_API bool event_send(Event const* event, bool urgent = false);

/// Delivers an event to a handler before it returns, inside a dispatch scope; exceptions pass to the caller.
/// A dead or null handler answers false.
WAINSCOT_API bool deliverEvent(EventHandler* target, Event const& event);

} // namespace wainscot
