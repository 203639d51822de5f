#include "host/base/host_value.h"

#include "host/base/ui_thread.h"

namespace wainscot {

namespace {
constinit HostValueBase* firstChanged = nullptr;
} // namespace

void HostValueBase::joinChanged() {
    UiThread::check("a setting of the host changed");
    isChanged_ = true;
    nextChanged_ = std::exchange(firstChanged, this);
}

void HostValueBase::resetAll() {
    while (HostValueBase* const value = firstChanged) {
        firstChanged = std::exchange(value->nextChanged_, nullptr);
        value->isChanged_ = false;
        value->reset_(*value);
    }
}

} // namespace wainscot
