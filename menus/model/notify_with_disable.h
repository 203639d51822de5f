#pragma once

#include "host/messages/notifier.h"

namespace wainscot {

/// A notifier that can be switched off for a while. What would have been notified meanwhile is lost.
class WAINSCOT_API NotifyWithDisable : public Notifier {
public:
    ~NotifyWithDisable() override;

    /// These may be nested.
    void disableNotification() { ++disabled_; }
    void enableNotification();
    bool isNotificationEnabled() const { return disabled_ == 0; }

    /// Switches it off as long as this object lives; the notifier may die first.
    class WAINSCOT_API Pause {
    public:
        explicit Pause(NotifyWithDisable& notifier);
        ~Pause();
        Pause(Pause const&) = delete;
        Pause& operator=(Pause const&) = delete;

    private:
        NotifyWithDisable& notifier_;
        LifeGuard life_;
    };

protected:
    void notify(NotifyMsg const& message, int type) override;

private:
    int disabled_ = 0;
};

} // namespace wainscot
