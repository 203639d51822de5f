#include "host/events/focus_holders.h"

namespace wainscot {

EventHandler* FocusHolders::holder(IdStamp window) const {
    auto const found = holders_.find(window.value());
    return found == holders_.end() ? nullptr : found->second.get();
}

void FocusHolders::setHolder(IdStamp window, EventHandler* handler) {
    if (!window.valid()) return;
    if (handler)
        holders_[window.value()] = HandlerRef<>(handler);
    else
        holders_.erase(window.value());
}

} // namespace wainscot
