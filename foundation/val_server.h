#pragma once

#include "foundation/colour_data.h"
#include "foundation/thumb_settings.h"
#include "host/base/lightweight_string.h"
#include "host/messages/notifier_ex.h"
#include "host/messages/val_server_base.h"

namespace wainscot {

template <class T>
class ValServer;

// The types that widgets show.
extern template class ValClient<bool>;
extern template class ValClient<int>;
extern template class ValClient<unsigned int>;
extern template class ValClient<float>;
extern template class ValClient<double>;
extern template class ValClient<LightweightString<char>>;
extern template class ValClient<LightweightString<wchar_t>>;
extern template class ValClient<ColourData>;
extern template class ValClient<ThumbSettings>;
extern template class NotifierEx<bool>;
extern template class NotifierEx<int>;
extern template class NotifierEx<unsigned int>;
extern template class NotifierEx<float>;
extern template class NotifierEx<double>;
extern template class NotifierEx<LightweightString<char>>;
extern template class NotifierEx<LightweightString<wchar_t>>;
extern template class NotifierEx<ColourData>;
extern template class NotifierEx<ThumbSettings>;

/// Asked by a value server before each change. A guard that owns its server keeps both alive for ever: take
/// it away first (`setGuard({})`).
template <class T>
class WAINSCOT_API iValGuard : public virtual iObject {
public:
    /// Whether `server` may take `value`, which may be changed here. Anything may be destroyed in it.
    virtual bool requestValChange(ValServer<T>* server, T& value) = 0;
};

/// A value that several parties watch: its observers (`ValObserver<T>`, or any `ValClient<T>`) are told
/// before and after each change.
///
/// The value is read and changed on the user-interface thread; observers may be attached and detached on any.
/// Nothing is compared: an equal value is stored and told like any other, so observers that write values back
/// compare first. An observer may set the server again. Observers behind it then hear the newer value first:
/// they read the server, not the event.
template <class T>
class WAINSCOT_API ValServer : public NotifierEx<T>, public ValServerBase, public LastValServer {
public:
    explicit ValServer(T value = T()) : value_(std::move(value)) {}
    /// A server of the same value, without the guard and the observers.
    ValServer(ValServer const& other)
        : NotifierEx<T>(), ValServerBase(other), LastValServer(other), value_(other.value_) {}

    T const& value() const { return value_; }
    operator T const&() const { return value_; }

    /// Asks the guard, if there is one, about a copy of `value`; tells the observers that the value is about
    /// to change; stores the copy, which the guard may have changed; and tells the observers again. False =
    /// refused by the guard: nothing is stored and nobody is told. When the server dies meanwhile, the rest
    /// is left out.
    bool updateAndNotify(T const& value);
    /// The same without the answer.
    ValServer& operator=(T const& value);
    ValServer& operator=(ValServer const& other);

    void preNotifyValChanged() override;
    void notifyValChanged() override;

    /// The guard is shared, and asked for every value from now on; null removes it.
    void setGuard(Qv::Ptr<iValGuard<T>> guard) { guard_ = std::move(guard); }
    Qv::Ptr<iValGuard<T>> const& getGuard() const { return guard_; }

    friend bool operator==(ValServer const& a, ValServer const& b) { return a.value_ == b.value_; }

protected:
    // For servers that decide themselves what they take: the guard is not asked.
    /// Tells the observers before and after it stores the value.
    void store(T value);
    /// Nobody is told.
    void storeSilently(T value);

private:
    void tell(int type);

    T value_;
    Qv::Ptr<iValGuard<T>> guard_;
};

template <class T>
bool ValServer<T>::updateAndNotify(T const& value) {
    T accepted = value;
    // Both outlive what the guard may destroy or replace.
    typename NotifierEx<T>::Alive const alive(*this);
    Qv::Ptr<iValGuard<T>> const guard = guard_;
    if (guard && !guard->requestValChange(this, accepted)) return false;
    if (alive) store(std::move(accepted));
    return true;
}

template <class T>
void ValServer<T>::store(T value) {
    typename NotifierEx<T>::Alive const alive(*this);
    preNotifyValChanged();
    if (!alive) return;
    storeSilently(std::move(value));
    notifyValChanged();
}

template <class T>
void ValServer<T>::storeSilently(T value) {
    value_ = std::move(value);
    noteChange();
}

// A value that is the server's own would change under the reader's hands: `updateAndNotify` copies it.
template <class T>
ValServer<T>& ValServer<T>::operator=(T const& value) {
    updateAndNotify(value);
    return *this;
}

template <class T>
ValServer<T>& ValServer<T>::operator=(ValServer const& other) {
    updateAndNotify(other.value_);
    return *this;
}

template <class T>
void ValServer<T>::preNotifyValChanged() {
    tell(preValChangedMsgType);
}

template <class T>
void ValServer<T>::notifyValChanged() {
    tell(valChangedMsgType);
}

template <class T>
void ValServer<T>::tell(int type) {
    if (this->numObservers() > 0) this->notify({type, value_, this});
}

extern template class ValServer<bool>;
extern template class ValServer<int>;
extern template class ValServer<unsigned int>;
extern template class ValServer<float>;
extern template class ValServer<double>;
extern template class ValServer<LightweightString<char>>;
extern template class ValServer<LightweightString<wchar_t>>;
extern template class ValServer<ColourData>;
extern template class ValServer<ThumbSettings>;

} // namespace wainscot
