#include "host/base/ui_thread.h"

#include "host/base/diagnostics.h"

#include <atomic>
#include <cstdlib>

namespace wainscot {

namespace {

constinit std::atomic<void const*> uiThread{nullptr};

/// An address of each thread's own names it.
void const* thisThread() {
    thread_local char const own = 0;
    return &own;
}

} // namespace

void UiThread::adopt() {
    uiThread = thisThread();
}

void UiThread::release() {
    uiThread = nullptr;
}

bool UiThread::isCurrent() {
    void const* const owner = uiThread.load(std::memory_order_relaxed);
    return !owner || owner == thisThread();
}

void UiThread::check([[maybe_unused]] char const* what) {
#ifndef NDEBUG
    if (isCurrent()) return;
    vex_printf("wainscot: %s outside the user-interface thread", what);
    std::abort();
#endif
}

} // namespace wainscot
