#pragma once

#include "tests/host_fixture.h"

#include "foundation/val_adaptor.h"
#include "foundation/widget_callback.h"
#include "host/drawing/surface.h"

namespace wainscot {

/// Data that answers as the test says, and keeps what it was asked.
template <class T>
class TestData final : public ValAdaptorBase<T> {
public:
    T getDataValue() const override { return value; }
    bool requestSetNewDataValue(T const& wanted, DataChangeType why) override {
        asked.push_back(wanted);
        whys.push_back(static_cast<int>(why));
        auto const ask = onAsk;
        if (ask) ask();
        if (accepts) value = wanted;
        return accepts;
    }
    bool isMixed() const override { return mixed; }

    T value{};
    bool accepts = true;
    bool mixed = false;
    std::function<void()> onAsk;
    std::vector<T> asked;
    std::vector<int> whys;
};

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
    /// The middle of a flat control of the usual height.
    static constexpr int midY = 12;
    void pressAt(Glob* glob, int x, int y = midY, Driver::Button button = Driver::Button::left) {
        moveIn(glob, x, y);
        driver_.press(button);
    }
    /// The names of the messages that the window has got, separated by blanks.
    std::string sent() { return root_->names().c_str(); }
    /// The same since the last call.
    std::string told() {
        driver_.settle();
        std::string const names = sent();
        root_->forgetMessages();
        return names;
    }
    /// All pixels of the window.
    std::vector<std::uint32_t> picture() {
        driver_.settle();
        Surface const& surface = host_->globManager().windowOf(root_)->surface();
        return {surface.pixels(),
                surface.pixels() + static_cast<std::ptrdiff_t>(surface.deviceSize().y) * surface.stride()};
    }
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
