#include "text/vari_box_parser.h"

#include "host/base/diagnostics.h"
#include "host/base/runtime_error.h"
#include "text/vari_box_number_p.h"

#include <algorithm>

namespace wainscot {

namespace {

bool isNumber(auto value) {
    if (!VariBoxNumber::isNaN(value)) return true;
    Diagnostics::count("no number", "VariBoxParser");
    return false;
}

} // namespace

template <class T>
VariBoxParser<T>::VariBoxParser(VariBox* box, T lower, T upper, T initial, T displayScale)
    : VariBoxParserBase(box), lower_(VariBoxNumber::finite(lower, limits_min())),
      upper_(VariBoxNumber::finite(upper, limits_max())), value_(lower_), displayScale_(displayScale) {
    if (isNumber(initial)) value_ = limited(initial);
}

// Value

template <class T>
T VariBoxParser<T>::limited(T value) const {
    return std::max(std::min(value, upper_), lower_);
}

template <class T>
void VariBoxParser<T>::setValueInternal(T value, How how, eRedrawFlag redraw) {
    if (!isNumber(value)) return;
    T const wanted = limited(value);
    if (wanted == value_ && how == How::store) return;
    value_ = wanted;
    noteChange(redraw);
}

template <class T>
void VariBoxParser<T>::setValue(T value) {
    DispatchScope const scope;
    setValueInternal(value, How::store);
}

template <class T>
void VariBoxParser<T>::setLimits(T lower, T upper) {
    DispatchScope const scope;
    lower_ = VariBoxNumber::finite(lower, limits_min());
    upper_ = VariBoxNumber::finite(upper, limits_max());
    setValueInternal(value_, How::storeAndRefresh);
}

template <class T>
void VariBoxParser<T>::setNewWidgetValue(T& value, eRedrawFlag redraw) {
    DispatchScope const scope;
    LifeGuard const alive(life());
    setValueInternal(value, How::store, redraw);
    if (alive.alive()) value = value_;
}

template <class T>
LightweightString<wchar_t> VariBoxParser<T>::makeText() const {
    bool const isScaled = displayScale_ > 0;
    return valueToString(isScaled ? VariBoxNumber::product(value_, displayScale_) : value_);
}

template <class T>
std::optional<NumberValue> VariBoxParser<T>::getNumber() const {
    auto const after = stepped({true, false});
    double const step = after ? static_cast<double>(*after) - static_cast<double>(value_) : 0;
    return NumberValue{static_cast<double>(value_), static_cast<double>(lower_), static_cast<double>(upper_),
                       std::max(step, 0.0), 0};
}

template <class T>
void VariBoxParser<T>::handleDataMixed(bool, eRedrawFlag redraw) {
    noteChange(redraw);
}

// Changes by the user

template <class T>
bool VariBoxParser<T>::changeTo(T value) {
    return this->changeByUser(value, getDataChangeType()) == ValWidget<T>::UserChange::changed;
}

template <class T>
void VariBoxParser<T>::handleStep(Step, bool) {}

template <class T>
std::optional<T> VariBoxParser<T>::nextAfter(Step step) {
    auto const wanted = stepped(step);
    if (!wanted) return std::nullopt;
    T const next = limited(*wanted);
    handleStep(step, next == value_);
    return next == value_ ? std::nullopt : std::optional(next);
}

template <class T>
bool VariBoxParser<T>::step(Step step) {
    DispatchScope const scope;
    auto next = nextAfter(step);
    if (!next) return false;
    if (!gesture_.isHeld()) return changeTo(*next);
    T const known = value_;
    if (!isDragTold_ && !openDrag()) return false;
    // The data may have set another value.
    if (value_ != known) next = nextAfter(step);
    if (!next) return false;
    T const before = value_;
    LifeGuard const alive(life());
    setValueInternal(*next, How::store);
    if (!alive.alive() || !gesture_.isHeld()) return false;
    return this->stepGesture(gesture_, before) == ValWidget<T>::UserChange::changed;
}

template <class T>
bool VariBoxParser<T>::openDrag() {
    LifeGuard const alive(life());
    isDragTold_ = true;
    this->stepGesture(gesture_, value_);
    return alive.alive() && gesture_.isHeld();
}

template <class T>
bool VariBoxParser<T>::handleDefault() {
    DispatchScope const scope;
    return default_ && changeTo(limited(*default_));
}

// Drags

template <class T>
void VariBoxParser<T>::handleDragStart() {
    gesture_.begin(value_);
    isDragTold_ = false;
}

template <class T>
bool VariBoxParser<T>::handleDragCancel() {
    if (!gesture_.isHeld()) return false;
    return this->takeBackGesture(gesture_, limited(gesture_.atBegin())) == ValWidget<T>::UserChange::changed;
}

template <class T>
bool VariBoxParser<T>::handleNoChange() {
    DispatchScope const scope;
    gesture_.letGo();
    isDragTold_ = false;
    T const before = value_;
    LifeGuard const alive(life());
    this->finishGesture(gesture_);
    return alive.alive() && value_ != before;
}

template <class T>
void VariBoxParser<T>::handleDataAdaptorChange() {
    isDragTold_ = false;
    // What is dragged on is not what the drag began with: Escape brings nothing back.
    gesture_.letGo();
    this->finishGesture(gesture_);
}

template <class T>
void VariBoxParser<T>::handleBoxGone() {
    VariBoxParserBase::handleBoxGone();
    this->leaveDataAdaptor();
}

// Text

/// A text that cannot be read is said so by a `RuntimeError`; a displayer that fails otherwise has not read
/// it either.
template <class T>
std::optional<T> VariBoxParser<T>::readEntered() const {
    // The displayer may destroy the parser.
    LifeGuard const alive(life());
    auto const scale = displayScale_;
    T const shown = value_;
    try {
        auto const text = getText();
        // The text that is shown stands for the whole value, not for the decimals that it shows.
        if (makeText() == text) return shown;
        if (!alive.alive()) return std::nullopt;
        auto const read = stringToValue(text);
        if (!read || VariBoxNumber::isNaN(*read)) return std::nullopt;
        return scale > 0 ? static_cast<T>(*read / scale) : *read;
    } catch (Qv::Exception::RuntimeError const&) {
        return std::nullopt;
    } catch (...) {
        Diagnostics::count("text not read", "VariBoxParser");
        return std::nullopt;
    }
}

template <class T>
bool VariBoxParser<T>::handleParseText() {
    DispatchScope const scope;
    LifeGuard const alive(life());
    auto const read = readEntered();
    if (!alive.alive()) return false;
    setTextRefused(!read);
    if (!read) return false;
    FirstException thrown;
    bool hasChanged = false;
    thrown.run([&] { hasChanged = changeTo(limited(*read)); });
    if (alive.alive()) {
        noteChange();
        if (alive.alive()) thrown.run([&] { notifyValidatedTextChange(hasChanged); });
    }
    thrown.rethrow();
    return hasChanged;
}

template class VariBoxParser<int>;
template class VariBoxParser<unsigned int>;
template class VariBoxParser<float>;
template class VariBoxParser<double>;

} // namespace wainscot
