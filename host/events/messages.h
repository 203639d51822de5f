#pragma once

#include "host/events/event.h"
#include "host/messages/notify_msg.h"

#include <optional>

namespace wainscot {

/// Brings text to the holder of the keyboard focus that no key code can hold, or that an input method has
/// made. Its data is wide text (`wrapData`).
inline constexpr LightweightString<char> compoundTextInputMsg{"CompoundTextInput"};

/// Queues a named message. It is delivered before the next input event, unless the target has died by then;
/// The receiver gets `sender` as a `Glob`; null when it is not a `Glob` or has died. The last argument
/// changes nothing: the queue is first in, first out. False when there is no target.
WAINSCOT_API bool sendMessage(LightweightString<char> name, EventHandler* target, iObject* sender = nullptr,
                              bool urgent = false);
/// Delivers a named message before it returns. The answer is the handler's. 1 = consumed, by the handler or
/// by the receiver itself; 0 when there is no target.
WAINSCOT_API int callMessage(LightweightString<char> name, EventHandler* target, iObject* sender = nullptr);
/// The same with data; the receiver hears it through `handleDataMessageEvent`.
WAINSCOT_API bool sendMessageWithData(LightweightString<char> name, EventHandler* target,
                                      Qv::Ptr<iObject> data, iObject* sender = nullptr);
WAINSCOT_API int callMessageWithData(LightweightString<char> name, EventHandler* target,
                                     Qv::Ptr<iObject> data, iObject* sender = nullptr);
/// The same for a notification: its name, its payload as data where it has one, and its code as the event's
/// report code. The receiver gets `modifiers`, or without them those of the present dispatch.
WAINSCOT_API bool sendNotification(NotifyMsg const& message, EventHandler* target, iObject* sender = nullptr,
                                   std::optional<std::uint32_t> modifiers = {});
WAINSCOT_API int callNotification(NotifyMsg const& message, EventHandler* target, iObject* sender = nullptr);
/// For receivers that call their message handlers themselves: tells `callMessage` the handler's answer.
WAINSCOT_API void noteMessageAnswer(int answer);

/// Queues a copy of an event for the target named in it. The last argument changes nothing.
/// False when it has no live target.
WAINSCOT_API bool event_send(Event const* event, bool urgent = false);

/// Delivers an event to a handler before it returns, inside a dispatch scope; exceptions pass to the caller.
/// A dead or null handler answers false.
WAINSCOT_API bool deliverEvent(EventHandler* target, Event const& event);

} // namespace wainscot
