#pragma once

#include "host/messages/callback.h"
#include "host/messages/notify_msg.h"

namespace wainscot {

/// How a widget reports: the name of the message, and where given the callback that takes it; without one the
/// message goes where the widget sends its messages otherwise.
class WidgetCallback {
public:
    using Callback = Qv::Ptr<iCallbackBase<int, NotifyMsg>>;

    explicit WidgetCallback(LightweightString<char> message) : message_(std::move(message)) {}
    WidgetCallback(Callback callback, LightweightString<char> message)
        : callback_(std::move(callback)), message_(std::move(message)) {}

    LightweightString<char> const& getMessage() const { return message_; }
    /// Hold it by a pointer of your own while it runs: it may be replaced in its own call.
    Callback const& getCallback() const { return callback_; }

private:
    Callback callback_;
    LightweightString<char> message_;
};

} // namespace wainscot
