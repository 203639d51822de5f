#pragma once

#include "foundation/val_widget.h"
#include "foundation/widget_callback.h"

namespace wainscot {

/// The value of a button, which is its label. Messages that arrive at the button, from controls that lie on
/// it, are passed to a callback.
template <class T>
class WAINSCOT_API ButtonWidget : public ValWidget<T> {
public:
    ButtonWidget() = default;
    ~ButtonWidget() override;

    /// The callback gets messages that arrive at the button; the answer 1 consumes them. Null = no callback.
    void setInnerMessageCallback(WidgetCallback::Callback callback) {
        innerMessageCallback_ = std::move(callback);
    }

protected:
    /// The callback's answer; 0 without a callback. The button may be dead afterwards.
    int callInnerMessageCallback(NotifyMsg const& message);

private:
    WidgetCallback::Callback innerMessageCallback_;
};

extern template class ButtonWidget<LightweightString<char>>;
extern template class ButtonWidget<LightweightString<wchar_t>>;

} // namespace wainscot
