#pragma once

#include "foundation/val_server.h"
#include "menus/model/notify_with_disable.h"

namespace wainscot {

/// Owns a value that widgets can be bound to (`bindToServer(widget, manager.server())`), decides which
/// changes it takes, and notifies `valueChangedMsg` after each. It may be destroyed while a widget is bound.
template <class T>
class WAINSCOT_API ValManagerBase : public NotifyWithDisable, private ValClient<T> {
public:
    static constexpr LightweightString<char> valueChangedMsg{"ValManager::valueChanged"};

    explicit ValManagerBase(T value = T());
    ~ValManagerBase() override;

    T const& value() const { return server_.value(); }
    ValServer<T>& server() { return server_; }
    /// Sets the value without asking `requestValChange`; all observers are told. It may destroy everything.
    /// False when it is no value of the manager; here all are.
    virtual bool setValue(T const& value);

    /// Whether a change that a bound widget asks for is accepted; the value may be changed. Accepts all here.
    virtual bool requestValChange(ValServer<T>* server, T& value);

private:
    struct Server : ValServer<T> {
        using ValServer<T>::ValServer;
        using ValServer<T>::store;
    };
    /// What the server asks; it does not keep the manager alive.
    struct Guard final : iValGuard<T>, Qv::InternalRefCount {
        explicit Guard(ValManagerBase* manager) : owner(manager) {}
        bool requestValChange(ValServer<T>* server, T& value) override {
            return owner && owner->requestValChange(server, value);
        }
        ValManagerBase* owner;
    };

    void handleNotification(NotifierEvent<T> const& event) override;

    Server server_;
    Qv::Ptr<Guard> guard_;
};

template <class T>
ValManagerBase<T>::ValManagerBase(T value) : server_(std::move(value)), guard_(Qv::makePtr<Guard>(this)) {
    server_.setGuard(guard_);
    this->attach(server_);
}

template <class T>
ValManagerBase<T>::~ValManagerBase() {
    this->detach();
    guard_->owner = nullptr;
}

template <class T>
bool ValManagerBase<T>::setValue(T const& value) {
    server_.store(value);
    return true;
}

template <class T>
bool ValManagerBase<T>::requestValChange(ValServer<T>*, T&) {
    return true;
}

template <class T>
void ValManagerBase<T>::handleNotification(NotifierEvent<T> const& event) {
    if (event.type == ValServerBase::valChangedMsgType) this->issueNotification(NotifyMsg(valueChangedMsg));
}

extern template class ValManagerBase<bool>;
extern template class ValManagerBase<unsigned int>;

} // namespace wainscot
