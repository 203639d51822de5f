#include "host/services/system_watchdog.h"

#include "host/base/diagnostics.h"
#include "host/base/host_value.h"
#include "host/services/clock.h"

namespace wainscot {

namespace {

constinit int depth = 0;
struct Limit {
    double msecs = SystemWatchdog::standardLimit;
};
constinit HostValue<Limit> limit;
/// When the outermost bracket began, and the length of all that have ended.
constinit double supportStart = 0.0;
constinit double supportedTime = 0.0;

/// Counts the open bracket too: it may be closed in another handler.
double supportedUntil(double now) {
    return supportedTime + (depth > 0 ? now - supportStart : 0.0);
}

} // namespace

void SystemWatchdog::beginLifeSupport() {
    if (depth++ == 0) supportStart = service_get_msecs();
}

void SystemWatchdog::endLifeSupport() {
    if (depth == 0) {
        Diagnostics::count("life support ended twice", "endLifeSupport");
        return;
    }
    if (--depth == 0) supportedTime += service_get_msecs() - supportStart;
}

bool SystemWatchdog::isOnLifeSupport() {
    return depth > 0;
}

void SystemWatchdog::setLimit(double msecs) {
    limit.edit().msecs = msecs;
}

SystemWatchdog::Watch::Watch(char const* where)
    : where_(where), start_(service_get_msecs()), supportedBefore_(supportedUntil(start_)) {}

SystemWatchdog::Watch::~Watch() {
    double const now = service_get_msecs();
    double const taken = now - start_ - (supportedUntil(now) - supportedBefore_);
    double const most = limit.get().msecs;
    if (most <= 0.0 || taken <= most) return;
    Diagnostics::count("handler too slow", where_);
    LogBoth("wainscot: %s kept the user waiting for %.1f s", where_, taken / 1000.0);
}

} // namespace wainscot
