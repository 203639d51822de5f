#pragma once

#include "foundation/val_adaptor.h"

namespace wainscot {

/// The common root of all widgets that show a value.
class WAINSCOT_API WidgetBase : public virtual iObject {
public:
    ~WidgetBase() override;
};

/// The face of a widget that shows a value of type `T`. The widget keeps the value itself; an adaptor, where
/// one is set, links it to data behind it.
///
/// A widget that the user has changed asks `requestSetNewDataValue` and stores the value, redraws and reports
/// when the answer is true. The adaptor is the application's: anything may be destroyed in it, so the widget
/// takes a guard of itself first.
template <class T>
class WAINSCOT_API ValWidget : public WidgetBase {
public:
    ValWidget() = default;
    ValWidget(ValWidget const&) = delete;
    ValWidget& operator=(ValWidget const&) = delete;
    ~ValWidget() override;

    /// What the widget shows.
    virtual T getWidgetValue() const = 0;
    /// Shows another value, because the data changed: nobody is told. The widget writes back into `value`
    /// what it made of it. An equal value changes nothing.
    virtual void setNewWidgetValue(T& value, eRedrawFlag redraw) = 0;

    /// Shared with whoever else holds it; null when there is none.
    Qv::Ptr<ValAdaptorBase<T>> const& getDataAdaptor() const { return adaptor_; }
    /// Lets the old one go. An adaptor serves one widget: the one that it was given to last.
    void setDataAdaptor(Qv::Ptr<ValAdaptorBase<T>> adaptor);
    /// Hands a value that the user chose to the adaptor, and answers what it answers; true without one.
    bool requestSetNewDataValue(T const& value, DataChangeType why);
    /// The data behind it has several values, as a selection of unlike things has: to be drawn and announced
    /// so. What the widget's value is, and what it sends, does not change.
    bool isDataMixed() const;

    /// Allows or forbids changes by the user. Does nothing here; widgets that can be disabled override it.
    virtual void setEnabledState(bool enabled);

private:
    Qv::Ptr<ValAdaptorBase<T>> adaptor_;
};

template <class T>
ValWidget<T>::~ValWidget() {
    if (adaptor_) adaptor_->leaveWidget(*this);
}

template <class T>
void ValWidget<T>::setDataAdaptor(Qv::Ptr<ValAdaptorBase<T>> adaptor) {
    // The old one goes last: what its destructor does may destroy this.
    Qv::Ptr<ValAdaptorBase<T>> const old = std::exchange(adaptor_, std::move(adaptor));
    if (old) old->leaveWidget(*this);
    if (adaptor_) adaptor_->joinWidget(*this);
}

template <class T>
bool ValWidget<T>::requestSetNewDataValue(T const& value, DataChangeType why) {
    Qv::Ptr<ValAdaptorBase<T>> const held = adaptor_;
    if (!held) return true;
    T const kept = value;
    return held->requestSetNewDataValue(kept, why);
}

template <class T>
bool ValWidget<T>::isDataMixed() const {
    Qv::Ptr<ValAdaptorBase<T>> const held = adaptor_;
    return held && held->isMixed();
}

template <class T>
void ValWidget<T>::setEnabledState(bool) {}

template <class T>
void ValAdaptorBase<T>::forceWidgetUpdate(eRedrawFlag redraw) {
    if (!widget_) return;
    // The data's code, and the widget's, may let go of this.
    Qv::Ptr<ValAdaptorBase> const held(this);
    T value = getDataValue();
    if (widget_) widget_->setNewWidgetValue(value, redraw);
}

extern template class ValWidget<bool>;
extern template class ValWidget<int>;
extern template class ValWidget<unsigned int>;
extern template class ValWidget<float>;
extern template class ValWidget<double>;
extern template class ValWidget<LightweightString<char>>;
extern template class ValWidget<LightweightString<wchar_t>>;
extern template class ValWidget<ColourData>;
extern template class ValWidget<ThumbSettings>;

} // namespace wainscot
