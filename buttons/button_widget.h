#pragma once

#include "foundation/val_widget.h"
#include "foundation/widget_callback.h"

namespace wainscot {

/// The value face of a button: its value is its label. Messages that arrive at the button, from controls that
/// lie on it, are passed to the face's callback.
template <class T>
class WAINSCOT_API ButtonWidget : public ValWidget<T> {
public:
    ButtonWidget() = default;
    ~ButtonWidget() override;

    /// Takes messages that arrive at the button; an answer of 1 consumes them. Null takes none.
    void setInnerMessageCallback(WidgetCallback::Callback callback) {
        innerMessageCallback_ = std::move(callback);
    }

protected:
    /// What the callback answers; 0 without one. The button may be gone afterwards.
    int callInnerMessageCallback(NotifyMsg const& message);

private:
    WidgetCallback::Callback innerMessageCallback_;
};

extern template class ButtonWidget<LightweightString<char>>;
extern template class ButtonWidget<LightweightString<wchar_t>>;

} // namespace wainscot
