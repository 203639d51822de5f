#include "buttons/button_widget.h"

namespace wainscot {

template <class T>
ButtonWidget<T>::~ButtonWidget() = default;

template <class T>
int ButtonWidget<T>::callInnerMessageCallback(NotifyMsg const& message) {
    // It may be replaced, or the button destroyed, in its own call.
    WidgetCallback::Callback const held = innerMessageCallback_;
    return held ? held->call(message) : 0;
}

template class ButtonWidget<LightweightString<char>>;
template class ButtonWidget<LightweightString<wchar_t>>;

} // namespace wainscot
