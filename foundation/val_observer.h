#pragma once

#include "foundation/val_server.h"
#include "host/base/dl_list.h"

namespace wainscot {

class ValObserverBase;

/// Whoever hears from observers: it has one of them for each server that it watches.
class WAINSCOT_API ValObserverClient {
public:
    ValObserverClient() = default;
    ValObserverClient(ValObserverClient const&) {}
    ValObserverClient& operator=(ValObserverClient const&) { return *this; }
    /// Observers that are left hear on, but have nobody to tell.
    virtual ~ValObserverClient();

    /// A value is about to change, and has changed. The argument names the observer that fired; it is alive,
    /// its server is. Both do nothing here.
    virtual void notifyPreValChanged(ValObserverBase* observer);
    virtual void notifyValChanged(ValObserverBase* observer);

private:
    friend class ValObserverBase;
    DLList<ValObserverBase> observers_;
};

/// What all observers share, whatever they watch.
class WAINSCOT_API ValObserverBase : private DLLink<ValObserverBase> {
public:
    explicit ValObserverBase(ValObserverClient* client) { setClient(client); }
    ValObserverBase(ValObserverBase const&) = delete;
    ValObserverBase& operator=(ValObserverBase const&) = delete;
    virtual ~ValObserverBase();

    /// Who is told; null when that is nobody, or has died.
    ValObserverClient* getClient() const { return client_; }
    void setClient(ValObserverClient* client);
    /// The server that it watches, whatever the type of its value; null when there is none, or it has died.
    virtual ValServerBase* getServerBase() const = 0;
    /// Leaves its server; may be called from the client's notifications. False when it was with none.
    virtual bool stopObserving() = 0;

protected:
    /// Hands a notification of a server to the client.
    void tellClient(int type);

private:
    friend class DLList<ValObserverBase>;
    friend class ValObserverClient;
    ValObserverClient* client_ = nullptr;
};

/// Watches one server for a client. Neither is owned; each of the three may die first, in any notification.
template <class T>
class WAINSCOT_API ValObserver : public ValClient<T>, public ValObserverBase {
public:
    explicit ValObserver(ValObserverClient* client = nullptr) : ValObserverBase(client) {}
    ValObserver(ValServer<T>& server, ValObserverClient* client) : ValObserverBase(client) {
        this->attach(server);
    }
    ~ValObserver() override;

    /// The server it watches; null when there is none, or it has died.
    ValServer<T>* getServer() const;
    ValServerBase* getServerBase() const override { return getServer(); }
    bool stopObserving() override { return this->detach(); }

    void handleNotification(NotifierEvent<T> const& event) override;
};

// Before anything of it goes: another thread may be notifying.
template <class T>
ValObserver<T>::~ValObserver() {
    this->detach();
}

template <class T>
ValServer<T>* ValObserver<T>::getServer() const {
    return static_cast<ValServer<T>*>(this->source());
}

template <class T>
void ValObserver<T>::handleNotification(NotifierEvent<T> const& event) {
    tellClient(event.type);
}

extern template class ValObserver<bool>;
extern template class ValObserver<int>;
extern template class ValObserver<unsigned int>;
extern template class ValObserver<float>;
extern template class ValObserver<double>;
extern template class ValObserver<LightweightString<char>>;
extern template class ValObserver<LightweightString<wchar_t>>;
extern template class ValObserver<ColourData>;
extern template class ValObserver<ThumbSettings>;

} // namespace wainscot
