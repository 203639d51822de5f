#pragma once

#include "host/messages/callback.h"
#include "host/messages/notify_msg.h"
#include "host/messages/observer_list.h"

#include <memory>

namespace wainscot {

/// Maps the names of notifications to type numbers, 1 upwards; a name keeps its number while the program
/// runs.
class WAINSCOT_API NotifyMsgTypeDictionary {
public:
    static NotifyMsgTypeDictionary& instance();
    /// The number of a name; a name gets its number when it is asked for first.
    int typeOf(LightweightString<char> const& name);

private:
    NotifyMsgTypeDictionary();
    ~NotifyMsgTypeDictionary();
    struct Names;
    std::unique_ptr<Names> names_;
};

/// One registered listener of a notifier.
class WAINSCOT_API CallbackInvokerBase : public Qv::InternalRefCount {
public:
    /// The type that means every notification.
    static constexpr int anyType = 0;
    /// Whether notifications of that type are wanted.
    virtual bool typeMatch(int type) const = 0;
    virtual void invoke(NotifyMsg const& message) = 0;
};

class NotifierBase;

/// Keeps a listener registered for as long as it lives; may outlive the notifier.
class WAINSCOT_API NotifierSubscription {
public:
    NotifierSubscription() = default;
    NotifierSubscription(NotifierBase& notifier, ObserverList<Qv::Ptr<CallbackInvokerBase>>::Id id);
    ~NotifierSubscription() { end(); }
    NotifierSubscription(NotifierSubscription&& other) noexcept;
    NotifierSubscription& operator=(NotifierSubscription&& other) noexcept;
    /// Ends the registration now.
    void end();

private:
    NotifierBase* notifier_ = nullptr;
    LifeGuard life_{nullptr, IdStamp()};
    ObserverList<Qv::Ptr<CallbackInvokerBase>>::Id id_ = 0;
};

/// A list of listeners.
class WAINSCOT_API NotifierBase {
public:
    using Id = ObserverList<Qv::Ptr<CallbackInvokerBase>>::Id;

    NotifierBase() = default;
    virtual ~NotifierBase();

    /// Registers a listener, which the notifier then shares; the answer is its number for `unregister`.
    Id registerInternal(CallbackInvokerBase* invoker);
    bool unregister(Id id) { return invokers_.remove(id); }
    /// Registers a callback for one notification, or with an empty name for all.
    [[nodiscard]] NotifierSubscription subscribe(LightweightString<char> const& name,
                                                 Qv::Ptr<iCallbackBase<int, NotifyMsg>> callback);
    std::size_t numListeners() const { return invokers_.size(); }
    LifeToken const& life() const { return life_; }

protected:
    /// Calls the listeners that want `type`, in the order of registration. Every notification goes through
    /// it.
    virtual void notify(NotifyMsg const& message, int type);

private:
    ObserverList<Qv::Ptr<CallbackInvokerBase>> invokers_;
    LifeToken life_;
};

/// A notifier that anyone may fire.
class WAINSCOT_API Notifier : public NotifierBase {
public:
    /// Tells all listeners whose type matches; the type is normally the dictionary's number of the name.
    void issueNotification(NotifyMsg const& message, int type) { notify(message, type); }
    void issueNotification(NotifyMsg const& message) {
        notify(message, NotifyMsgTypeDictionary::instance().typeOf(message.name()));
    }
};

} // namespace wainscot
