#pragma once

#include "host/base/critical_section.h"
#include "host/base/dl_list.h"
#include "host/base/first_exception.h"
#include "host/base/ptr.h"

#include <atomic>
#include <cstddef>
#include <utility>

namespace wainscot {

template <class T>
class NotifierEx;

/// One notification to all listeners of a `NotifierEx<T>`.
template <class T>
struct NotifierEvent {
    int type;
    T value;
    /// The notifier; valid until something is called that may destroy it.
    NotifierEx<T>* source;
};

/// A listener of a `NotifierEx<T>`. It listens to one at a time, leaves it when it dies, and may outlive it.
///
/// A listener that another thread may destroy calls `detach()` first in the destructor of its most derived
/// class. When `detach()` has returned, no notification to it is running.
template <class T>
class WAINSCOT_API ValClient : private DLLink<ValClient<T>> {
public:
    ValClient() = default;
    ValClient(ValClient const&) = delete;
    ValClient& operator=(ValClient const&) = delete;
    virtual ~ValClient();

    /// Listens to `source` from now on, as its last listener. It leaves the notifier that it listened to
    /// before.
    void attach(NotifierEx<T>& source);
    /// Leaves its notifier: after the return it hears nothing any more. False when it had none.
    bool detach();
    /// The notifier that it listens to; null when there is none, or when it has died.
    NotifierEx<T>* source() const;

    /// A notification. Anything may be destroyed in it: this, other listeners, the notifier.
    virtual void handleNotification(NotifierEvent<T> const& event) = 0;

private:
    friend class DLList<ValClient>;
    friend class NotifierEx<T>;
    Qv::Ptr<typename NotifierEx<T>::Listeners> listeners_;
};

/// Hands events with a value of type `T` to its listeners, in the order in which they were attached. The list
/// is walked under a lock that the notifying thread may enter again, so that other threads may attach and
/// detach at any time. While listeners are told, others may be attached, detached or destroyed, and the
/// notifier too. A new listener is not told in the same round, a detached listener is never told, and the
/// death of the notifier ends the round.
template <class T>
class WAINSCOT_API NotifierEx {
    struct Listeners;

public:
    NotifierEx();
    virtual ~NotifierEx();
    NotifierEx(NotifierEx const&) = delete;
    NotifierEx& operator=(NotifierEx const&) = delete;

    std::size_t numObservers() const { return listeners_->count.load(std::memory_order_acquire); }
    /// The lock that is held while listeners are told, attached or detached.
    CriticalSection& criticalSection() const { return listeners_->section; }

    /// Tells after a call out whether the notifier still lives; may outlive it.
    class Alive {
    public:
        explicit Alive(NotifierEx const& notifier) : listeners_(notifier.listeners_) {}
        explicit operator bool() const { return listeners_->source.load(std::memory_order_acquire); }

    private:
        Qv::Ptr<typename NotifierEx::Listeners> listeners_;
    };

protected:
    /// Tells all listeners, also when one of them throws; the first exception then passes to the caller.
    /// Takes no lock when there are no listeners.
    void notify(NotifierEvent<T> const& event);

private:
    friend class ValClient<T>;

    /// Outlives the notifier while anybody listens, or a walk is running.
    struct Listeners final : Qv::InternalRefCount {
        explicit Listeners(NotifierEx* notifier) : source(notifier) {}
        CriticalSection section;
        DLList<ValClient<T>> list;
        std::atomic<std::size_t> count{0};
        std::atomic<NotifierEx*> source;
    };

    Qv::Ptr<Listeners> listeners_;
};

template <class T>
ValClient<T>::~ValClient() {
    detach();
}

template <class T>
void ValClient<T>::attach(NotifierEx<T>& source) {
    detach();
    listeners_ = source.listeners_;
    CriticalSectionLock const lock(listeners_->section);
    listeners_->list.append(*this);
    listeners_->count.fetch_add(1, std::memory_order_release);
}

template <class T>
bool ValClient<T>::detach() {
    // Held here, because the lock is a part of it.
    auto const left = std::exchange(listeners_, nullptr);
    if (!left) return false;
    CriticalSectionLock const lock(left->section);
    left->list.remove(*this);
    left->count.fetch_sub(1, std::memory_order_release);
    return true;
}

template <class T>
NotifierEx<T>* ValClient<T>::source() const {
    return listeners_ ? listeners_->source.load(std::memory_order_acquire) : nullptr;
}

template <class T>
NotifierEx<T>::NotifierEx() : listeners_(new Listeners(this)) {}

template <class T>
NotifierEx<T>::~NotifierEx() {
    listeners_->source.store(nullptr, std::memory_order_release);
}

template <class T>
void NotifierEx<T>::notify(NotifierEvent<T> const& event) {
    Listeners& listeners = *listeners_;
    if (listeners.count.load(std::memory_order_acquire) == 0) return;
    // A listener may destroy this.
    Qv::Ptr<Listeners> const held(&listeners);
    CriticalSectionLock const lock(listeners.section);
    FirstException thrown;
    typename DLList<ValClient<T>>::Walk walk(listeners.list);
    while (ValClient<T>* const listener = walk.next()) {
        thrown.run([&] { listener->handleNotification(event); });
        if (!listeners.source.load(std::memory_order_acquire)) break;
    }
    thrown.rethrow();
}

} // namespace wainscot
