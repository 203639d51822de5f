#include "host/events/focus_holders.h"

namespace wainscot {

EventHandler* FocusHolders::holder(IdStamp window) const {
    auto const found = holders_.find(window.value());
    if (found == holders_.end()) return nullptr;
    Holder const& holder = found->second;
    return EventHandler::valid(holder.handler, holder.stamp) ? holder.handler : nullptr;
}

void FocusHolders::setHolder(IdStamp window, EventHandler* handler) {
    if (!window.valid()) return;
    if (handler)
        holders_[window.value()] = {handler, handler->idStamp()};
    else
        holders_.erase(window.value());
}

} // namespace wainscot
