#pragma once

#include "host/events/one_shot_timer.h"
#include "host/messages/handler_ref.h"
#include "host/messages/notifier.h"
#include "host/objects/glob.h"

namespace wainscot::gallery {

/// Writes to the standard output what takes the keyboard focus in a window, and whether it is in sight, for
/// those who watch from outside.
class FocusEcho {
public:
    explicit FocusEcho(Glob& root);

private:
    void changed();
    void print();

    /// Waits until the holder of the focus has been brought into view.
    OneShotTimer later_;
    HandlerRef<Glob> unprinted_;
    NotifierSubscription watch_;
};

} // namespace wainscot::gallery
