#include "menus/model/notify_with_disable.h"

#include "host/base/diagnostics.h"

namespace wainscot {

NotifyWithDisable::~NotifyWithDisable() = default;

void NotifyWithDisable::enableNotification() {
    if (disabled_ > 0)
        --disabled_;
    else
        Diagnostics::count("notification enabled twice", "enableNotification");
}

void NotifyWithDisable::notify(NotifyMsg const& message, int type) {
    if (isNotificationEnabled()) Notifier::notify(message, type);
}

NotifyWithDisable::Pause::Pause(NotifyWithDisable& notifier) : notifier_(notifier), life_(notifier.life()) {
    notifier.disableNotification();
}

NotifyWithDisable::Pause::~Pause() {
    if (life_.alive()) notifier_.enableNotification();
}

} // namespace wainscot
