#pragma once

#include "foundation/val_server.h"
#include "host/base/dl_list.h"

namespace wainscot {

class ValObserverBase;

/// Hears from observers: it has an observer for each server that it watches.
class WAINSCOT_API ValObserverClient {
public:
    ValObserverClient() = default;
    ValObserverClient(ValObserverClient const&) {}
    ValObserverClient& operator=(ValObserverClient const&) { return *this; }
    /// Observers that outlive it tell nobody.
    virtual ~ValObserverClient();

    /// A value is about to change, and has changed. The argument is the observer that tells; it and its
    /// server are alive. Both do nothing here.
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

    /// The client; null when there is none, or when it has died.
    ValObserverClient* getClient() const { return client_; }
    void setClient(ValObserverClient* client);
    /// The server that it watches, whatever the type of its value; null when there is none, or it has died.
    virtual ValServerBase* getServerBase() const = 0;
    /// Leaves its server; may be called in a notification. False when it had none.
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

    /// The server that it watches; null when there is none, or when it has died.
    ValServer<T>* getServer() const;
    ValServerBase* getServerBase() const override { return getServer(); }
    bool stopObserving() override { return this->detach(); }

    void handleNotification(NotifierEvent<T> const& event) override;
};

// Detaches before its members are destroyed: another thread may be notifying.
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
