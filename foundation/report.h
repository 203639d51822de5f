#pragma once

#include "foundation/widget_callback.h"

#include <string_view>

namespace wainscot {

class Glob;

/// One thing that a class of widgets tells others. Each class has a `constexpr` table of them,
/// `messageTable`: what it sends, what its guide says, and in what the tests destroy everything.
struct WAINSCOT_API MessageInfo {
    enum Naming : unsigned char {
        /// `text` is the whole name.
        fixed,
        /// The widget's own name, then `text`.
        ownThenText,
        /// `text`, then what is told.
        textThenValue,
    };
    enum Delivery : unsigned char {
        queued,
        /// Delivered before the widget goes on.
        called,
        /// No message: a function of the owner's is called.
        callback,
    };

    /// What the tests call it.
    std::string_view what;
    Naming naming;
    std::string_view text;
    Delivery delivery;
    /// What the report carries beside its name (`NotifyMsg::code`, `Event::reportCode`).
    int code;
    /// For the guide.
    std::string_view when;

    /// The name of the message; `own` is the widget's own name, or what is told.
    LightweightString<char> nameFor(LightweightString<char> const& own) const;
};

/// Whom a widget tells: its callback, where it has one, else another object by message. A member of each
/// widget that reports.
class WAINSCOT_API Reporter {
public:
    /// Null = messages again.
    void setCallback(WidgetCallback::Callback callback);
    WidgetCallback::Callback const& getCallback() const { return callback_; }

    /// Tells what a row of the table says, with a payload where one is given. `sender` may be gone
    /// afterwards, and this with it. The answer is the callback's or the called receiver's; else 0.
    int report(Glob& sender, Glob* receiver, MessageInfo const& info, LightweightString<char> const& own = {},
               Qv::Ptr<iObject> payload = {}) const;
    /// The same with a message that is made already.
    int report(Glob& sender, Glob* receiver, NotifyMsg const& message, MessageInfo::Delivery delivery) const;

private:
    WidgetCallback::Callback callback_;
};

} // namespace wainscot
