#pragma once

#include "tests/host_fixture.h"

#include "foundation/widget_callback.h"

namespace wainscot {

/// Widgets in a window, and what they send to it or report to a callback.
class WidgetTest : public OneWindowTest {
protected:
    /// Shows a new widget and forgets what it sent meanwhile.
    template <class T>
    T* show(T* widget, int x = 20, int y = 20) {
        addTo(root_, widget, BottomLeft(x, y));
        driver_.settle();
        root_->forgetMessages();
        return widget;
    }
    /// The names of the messages that the window has got, separated by blanks.
    std::string sent() { return root_->names().c_str(); }
    /// Calls the function with each report.
    static WidgetCallback calling(std::function<void(NotifyMsg const&)> const& act) {
        auto const callback = makeCallback<int, NotifyMsg>([act](NotifyMsg const& message) {
            act(message);
            return 1;
        });
        return WidgetCallback(callback, "");
    }
};

} // namespace wainscot
