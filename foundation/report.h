#pragma once

#include "foundation/widget_callback.h"

#include <string_view>

namespace wainscot {

class Glob;

/// One report of a class of widgets. Each class has a `constexpr` table of its reports, `messageTable`. The
/// widget sends them, the guide lists them, and the tests destroy everything in each.
struct WAINSCOT_API MessageInfo {
    enum Naming : unsigned char {
        /// `text` is the whole name.
        fixed,
        /// The widget's own name, then `text`.
        ownThenText,
        /// `text`, then the value.
        textThenValue,
    };
    enum Delivery : unsigned char {
        queued,
        /// Delivered before the widget goes on.
        called,
        /// Not a message: a function of the owner is called.
        callback,
    };

    /// Its name in tests.
    std::string_view what;
    Naming naming;
    std::string_view text;
    Delivery delivery;
    /// The code of the report (`NotifyMsg::code`, `Event::reportCode`).
    int code;
    /// For the guide.
    std::string_view when;

    /// The name of the message; `own` is the widget's own name, or the value as text.
    LightweightString<char> nameFor(LightweightString<char> const& own) const;
};

/// Reports for a widget: to its callback, or else to another object by message. A member of each widget that
/// reports.
class WAINSCOT_API Reporter {
public:
    /// Null = messages again.
    void setCallback(WidgetCallback::Callback callback);
    WidgetCallback::Callback const& getCallback() const { return callback_; }

    /// Reports a row of the table, with a payload unless it is null. `sender`, and this object with it, may
    /// be dead afterwards. The answer is that of the callback or of the called receiver; else 0.
    int report(Glob& sender, Glob* receiver, MessageInfo const& info, LightweightString<char> const& own = {},
               Qv::Ptr<iObject> payload = {}) const;
    /// The same with a ready message.
    int report(Glob& sender, Glob* receiver, NotifyMsg const& message, MessageInfo::Delivery delivery) const;

private:
    WidgetCallback::Callback callback_;
};

} // namespace wainscot
