#pragma once

#include "foundation/val_adaptor.h"
#include "foundation/val_gesture.h"
#include "host/base/first_exception.h"
#include "host/base/life.h"
#include "host/events/dispatch_scope.h"

namespace wainscot {

/// The common root of all widgets with a value.
class WAINSCOT_API WidgetBase : public virtual iObject {
public:
    ~WidgetBase() override;
};

/// Base of widgets that show a value of type `T`. The widget keeps the value itself; an adaptor, if set,
/// links it to the data.
///
/// A widget that the user has changed calls `changeByUser`, or `stepGesture` during a drag: these show the
/// value, ask the data, go back when it refuses, and have the widget report a change. The adaptor is the
/// application's: it may destroy anything.
template <class T>
class WAINSCOT_API ValWidget : public WidgetBase {
public:
    ValWidget() = default;
    ValWidget(ValWidget const&) = delete;
    ValWidget& operator=(ValWidget const&) = delete;
    ~ValWidget() override;

    /// The value that the widget shows.
    virtual T getWidgetValue() const = 0;
    /// Shows another value, because the data has changed: nobody is told. The widget writes the value that it
    /// shows back into `value`. An equal value changes nothing.
    virtual void setNewWidgetValue(T& value, eRedrawFlag redraw) = 0;

    /// Shared with whoever else holds it; null when there is none.
    Qv::Ptr<ValAdaptorBase<T>> const& getDataAdaptor() const { return adaptor_; }
    /// Replaces the adaptor. An adaptor serves the widget that it was given to last. The widget keeps its
    /// value; see `bindTo`.
    void setDataAdaptor(Qv::Ptr<ValAdaptorBase<T>> adaptor);
    /// The same, and shows the value that the data has now.
    void bindTo(Qv::Ptr<ValAdaptorBase<T>> adaptor);
    /// Hands a value that the user chose to the adaptor, and gives its answer; true without an adaptor. An
    /// exception passes to the caller after the widget has shown the data's value.
    bool requestSetNewDataValue(T const& value, DataChangeType why);
    /// Whether the data had several values, like a selection of unlike things, when the adaptor last showed
    /// or wrote them. The widget draws and describes that; its value and its messages do not change.
    bool isDataMixed() const { return mixed_; }
    /// `isDataMixed()` has changed. Does nothing here; widgets that draw it override it, and paint as the
    /// flag says.
    virtual void handleDataMixed(bool mixed, eRedrawFlag redraw);

    /// Another adaptor is about to replace the present one: a gesture that the present one was told of ends
    /// now. Does nothing here. It may destroy everything.
    virtual void handleDataAdaptorChange();

    /// Allows or forbids changes by the user. Does nothing here; widgets that can be disabled override it.
    virtual void setEnabledState(bool enabled);

protected:
    /// The result of a change by the user: whether the widget shows another value than before.
    enum class UserChange { none, changed, widgetHasGone };

    /// The user has chosen a value: shows it, asks the data, goes back when it refuses, and reports if the
    /// widget then shows another value than before; also when the data throws. Does nothing for the value
    /// that is shown already, unless the data has several values.
    UserChange changeByUser(T const& wanted, DataChangeType why = DataChangeType::single);
    /// The same when the widget shows the new value already. With `Reports::ifTaken` a value that the data
    /// takes is always reported, also when it is the same as before.
    enum class Reports { ifChanged, ifTaken };
    UserChange tellUserChange(T const& before, DataChangeType why, Reports reports = Reports::ifChanged);
    /// The same for one step of a gesture.
    UserChange stepGesture(ValGesture<T>& gesture, T const& before, Reports reports = Reports::ifChanged);
    /// Goes back to a value, usually that at the beginning of the gesture.
    UserChange takeBackGesture(ValGesture<T>& gesture, T const& back, Reports reports = Reports::ifChanged);
    /// If the data was told of a change in the gesture: tells it once that it was the last one.
    void finishGesture(ValGesture<T>& gesture);
    /// The user has changed the value: the widget tells its parent or callback here. Does nothing here. It
    /// may destroy everything.
    virtual void reportUserChange(DataChangeType why);

    /// From now on the adaptor does not know it: for a widget that is being destroyed.
    void leaveDataAdaptor() {
        isLeaving_ = true;
        life_.end();
        if (adaptor_) adaptor_->leaveWidget(*this);
    }

private:
    friend class ValAdaptorBase<T>;
    void setDataMixed(bool mixed, eRedrawFlag redraw);
    void showData();
    bool askData(T const& fallback, DataChangeType why);
    UserChange handOver(T const& before, DataChangeType why, Reports reports);

    Qv::Ptr<ValAdaptorBase<T>> adaptor_;
    LifeToken life_;
    bool mixed_ = false;
    bool isLeaving_ = false;
};

template <class T>
ValWidget<T>::~ValWidget() {
    leaveDataAdaptor();
}

template <class T>
void ValWidget<T>::setDataAdaptor(Qv::Ptr<ValAdaptorBase<T>> adaptor) {
    DispatchScope const scope;
    LifeGuard const life(life_);
    FirstException thrown;
    if (adaptor_) thrown.run([&] { handleDataAdaptorChange(); });
    if (!life.alive()) return thrown.rethrow();
    // The old adaptor is released last: its destructor may destroy this widget.
    Qv::Ptr<ValAdaptorBase<T>> const old = std::exchange(adaptor_, std::move(adaptor));
    if (old) old->leaveWidget(*this);
    if (adaptor_) adaptor_->joinWidget(*this);
    if (!adaptor_) setDataMixed(false, eRedrawYes);
    thrown.rethrow();
}

template <class T>
void ValWidget<T>::bindTo(Qv::Ptr<ValAdaptorBase<T>> adaptor) {
    Qv::Ptr<ValAdaptorBase<T>> const held = adaptor;
    FirstException thrown;
    thrown.run([&] { setDataAdaptor(std::move(adaptor)); });
    if (held) thrown.run([&] { held->forceWidgetUpdate(eRedrawYes); });
    thrown.rethrow();
}

template <class T>
bool ValWidget<T>::requestSetNewDataValue(T const& value, DataChangeType why) {
    Qv::Ptr<ValAdaptorBase<T>> const held = adaptor_;
    if (!held) return true;
    DispatchScope const scope;
    T const kept = value;
    bool accepted = false;
    LifeGuard const life(life_);
    try {
        accepted = held->requestSetNewDataValue(kept, why);
    } catch (...) {
        if (life.alive() && !isLeaving_) runHandler("getDataValue", [&] { showData(); });
        throw;
    }
    if (!life.alive()) return accepted;
    // If it was bound to other data meanwhile, it shows that data, and nothing has to be taken back unless
    // the value is the same.
    if (adaptor_ != held) return getWidgetValue() == kept;
    // A dying widget's adaptor is not asked: its data may have gone too.
    if (!isLeaving_) held->showWhetherMixed(eRedrawYes);
    return accepted;
}

template <class T>
typename ValWidget<T>::UserChange ValWidget<T>::changeByUser(T const& wanted, DataChangeType why) {
    DispatchScope const scope;
    LifeGuard const life(life_);
    T const before = getWidgetValue();
    T shown = wanted;
    setNewWidgetValue(shown, eRedrawYes);
    if (!life.alive()) return UserChange::widgetHasGone;
    if (!(getWidgetValue() == before)) return tellUserChange(before, why);
    // Where the data has several values, the shown one counts for all from now on.
    return isDataMixed() ? tellUserChange(before, why, Reports::ifTaken) : UserChange::none;
}

template <class T>
typename ValWidget<T>::UserChange ValWidget<T>::tellUserChange(T const& before, DataChangeType why,
                                                               Reports reports) {
    T const kept = before;
    return handOver(kept, why, reports);
}

template <class T>
typename ValWidget<T>::UserChange ValWidget<T>::stepGesture(ValGesture<T>& gesture, T const& before,
                                                            Reports reports) {
    T const kept = before;
    return handOver(kept, gesture.nextChange(), reports);
}

template <class T>
typename ValWidget<T>::UserChange ValWidget<T>::takeBackGesture(ValGesture<T>& gesture, T const& back,
                                                                Reports reports) {
    DispatchScope const scope;
    LifeGuard const life(life_);
    T const before = getWidgetValue();
    T shown = back;
    setNewWidgetValue(shown, eRedrawYes);
    if (!life.alive()) return UserChange::widgetHasGone;
    if (getWidgetValue() == before) return UserChange::none;
    return handOver(before, gesture.isChanging_ ? DataChangeType::continued : DataChangeType::single,
                    reports);
}

template <class T>
void ValWidget<T>::finishGesture(ValGesture<T>& gesture) {
    if (std::exchange(gesture.isChanging_, false)) askData(getWidgetValue(), DataChangeType::finished);
}

/// Whether the data took the shown value. If it refused, and has shown no other value, the widget shows
/// `fallback`.
template <class T>
bool ValWidget<T>::askData(T const& fallback, DataChangeType why) {
    DispatchScope const scope;
    T const wanted = getWidgetValue();
    LifeGuard const life(life_);
    bool const taken = requestSetNewDataValue(wanted, why);
    if (!life.alive() || taken || !(getWidgetValue() == wanted)) return taken;
    T shown = fallback;
    setNewWidgetValue(shown, eRedrawYes);
    return false;
}

template <class T>
typename ValWidget<T>::UserChange ValWidget<T>::handOver(T const& before, DataChangeType why,
                                                         Reports reports) {
    DispatchScope const scope;
    FirstException thrown;
    bool taken = false;
    bool hasChanged = false;
    LifeGuard const life(life_);
    thrown.run([&] { taken = askData(before, why); });
    if (life.alive()) {
        hasChanged = (taken && reports == Reports::ifTaken) || !(getWidgetValue() == before);
        if (hasChanged) thrown.run([&] { reportUserChange(why); });
    }
    thrown.rethrow();
    return !life.alive() ? UserChange::widgetHasGone : hasChanged ? UserChange::changed : UserChange::none;
}

template <class T>
void ValWidget<T>::reportUserChange(DataChangeType) {}

template <class T>
void ValWidget<T>::showData() {
    Qv::Ptr<ValAdaptorBase<T>> const present = adaptor_;
    if (!present) return;
    LifeGuard const life(life_);
    T value = present->getDataValue();
    if (life.alive()) setNewWidgetValue(value, eRedrawYes);
}

template <class T>
void ValWidget<T>::setDataMixed(bool mixed, eRedrawFlag redraw) {
    if (mixed_ == mixed) return;
    mixed_ = mixed;
    handleDataMixed(mixed, redraw);
}

template <class T>
void ValWidget<T>::handleDataMixed(bool, eRedrawFlag) {}

template <class T>
void ValWidget<T>::handleDataAdaptorChange() {}

template <class T>
void ValWidget<T>::setEnabledState(bool) {}

template <class T>
void ValAdaptorBase<T>::forceWidgetUpdate(eRedrawFlag redraw) {
    if (!widget_) return;
    // The code of the data and of the widget may release this adaptor.
    Qv::Ptr<ValAdaptorBase> const held(this);
    T value = getDataValue();
    if (widget_) widget_->setNewWidgetValue(value, redraw);
    showWhetherMixed(redraw);
}

template <class T>
void ValAdaptorBase<T>::showWhetherMixed(eRedrawFlag redraw) {
    bool const mixed = isMixed();
    if (widget_) widget_->setDataMixed(mixed, redraw);
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
