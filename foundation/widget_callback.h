#pragma once

#include "host/messages/callback.h"
#include "host/messages/notify_msg.h"

namespace wainscot {

/// How a widget reports: the name of the message, and optionally a callback that takes it. Without a callback
/// the message goes to the widget's usual receiver.
class WidgetCallback {
public:
    using Callback = Qv::Ptr<iCallbackBase<int, NotifyMsg>>;

    explicit WidgetCallback(LightweightString<char> message) : message_(std::move(message)) {}
    WidgetCallback(Callback callback, LightweightString<char> message)
        : callback_(std::move(callback)), message_(std::move(message)) {}

    LightweightString<char> const& getMessage() const { return message_; }
    /// Keep a `Qv::Ptr` to it while it runs: it may be replaced in its own call.
    Callback const& getCallback() const { return callback_; }

private:
    Callback callback_;
    LightweightString<char> message_;
};

} // namespace wainscot
