#include "foundation/report.h"

#include "host/events/messages.h"
#include "host/objects/glob.h"

#include <utility>

namespace wainscot {

LightweightString<char> MessageInfo::nameFor(LightweightString<char> const& own) const {
    LightweightString<char> const fixedPart(text);
    return naming == fixed ? fixedPart : naming == ownThenText ? own + fixedPart : fixedPart + own;
}

void Reporter::setCallback(WidgetCallback::Callback callback) {
    // The old callback is released last: its destructor may destroy the widget.
    WidgetCallback::Callback const old = std::exchange(callback_, std::move(callback));
}

int Reporter::report(Glob& sender, Glob* receiver, MessageInfo const& info,
                     LightweightString<char> const& own, Qv::Ptr<iObject> payload) const {
    NotifyMsg message(info.nameFor(own), std::move(payload));
    message.setCode(info.code);
    return report(sender, receiver, message, info.delivery);
}

int Reporter::report(Glob& sender, Glob* receiver, NotifyMsg const& message,
                     MessageInfo::Delivery delivery) const {
    // It may be replaced, or the widget destroyed, in its own call.
    WidgetCallback::Callback const held = callback_;
    if (held) return held->call(message);
    if (delivery == MessageInfo::called) return callNotification(message, receiver, &sender);
    sendNotification(message, receiver, &sender);
    return 0;
}

} // namespace wainscot
