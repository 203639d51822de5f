#pragma once

#include "foundation/val_server.h"
#include "foundation/val_widget.h"

namespace wainscot {

/// Binds a widget to a value server, both ways: the user's values go to the server, and other changes of the
/// server go to the widget. The server is not owned; when it has died, every change by the user is refused.
///
/// When the server's guard or another observer changes the user's value, the widget shows the changed value,
/// and its own is refused.
template <class T>
class WAINSCOT_API ValServerAdaptor : public ValAdaptorBase<T>, private ValClient<T> {
public:
    explicit ValServerAdaptor(ValServer<T>& server) { this->attach(server); }

    /// Null once it has died.
    ValServer<T>* getServer() const { return static_cast<ValServer<T>*>(this->source()); }

    T getDataValue() const override;
    bool requestSetNewDataValue(T const& value, DataChangeType why) override;

private:
    void handleNotification(NotifierEvent<T> const& event) override;

    int writing_ = 0;
};

template <class T>
T ValServerAdaptor<T>::getDataValue() const {
    // Without a server the widget keeps what it shows.
    if (ValServer<T> const* const server = getServer()) return server->value();
    ValWidget<T> const* const widget = this->getWidget();
    return widget ? widget->getWidgetValue() : T();
}

template <class T>
bool ValServerAdaptor<T>::requestSetNewDataValue(T const& value, DataChangeType) {
    struct Writing {
        explicit Writing(int& depth) : depth_(++depth) {}
        ~Writing() { --depth_; }
        int& depth_;
    };
    Qv::Ptr<ValServerAdaptor> const held(this);
    ValServer<T>* const server = getServer();
    if (!server) return false;
    if (server->value() == value) return true;
    bool accepted = false;
    {
        Writing const writing(writing_);
        accepted = server->updateAndNotify(value);
    }
    if (!accepted || !getServer()) return accepted;
    if (getServer()->value() == value) return true;
    this->forceWidgetUpdate(eRedrawYes);
    return false;
}

// A widget that the user changes shows its value already.
template <class T>
void ValServerAdaptor<T>::handleNotification(NotifierEvent<T> const& event) {
    if (event.type == ValServerBase::valChangedMsgType && writing_ == 0) this->forceWidgetUpdate(eRedrawYes);
}

/// Binds a widget to a server with an adaptor of its own, and shows the server's value in it.
template <class T>
void bindToServer(ValWidget<T>& widget, ValServer<T>& server) {
    widget.bindTo(Qv::Ptr<ValAdaptorBase<T>>(new ValServerAdaptor<T>(server)));
}

extern template class ValServerAdaptor<bool>;
extern template class ValServerAdaptor<int>;
extern template class ValServerAdaptor<unsigned int>;
extern template class ValServerAdaptor<float>;
extern template class ValServerAdaptor<double>;
extern template class ValServerAdaptor<LightweightString<char>>;
extern template class ValServerAdaptor<LightweightString<wchar_t>>;
extern template class ValServerAdaptor<ColourData>;
extern template class ValServerAdaptor<ThumbSettings>;

} // namespace wainscot
