#include "host/messages/val_server_base.h"

#include <atomic>

namespace wainscot {

namespace {

constinit std::atomic<std::uint64_t> numChanges{0};

} // namespace

ValServerBase::~ValServerBase() = default;

void LastValServer::noteChange() {
    lastChange_ = numChanges.fetch_add(1, std::memory_order_relaxed) + 1;
}

} // namespace wainscot
