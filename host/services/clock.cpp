#include "host/services/clock.h"

#include "host/base/diagnostics.h"

#include <chrono>
#include <cmath>
#include <ctime>

namespace wainscot {

namespace {
constinit iClock const* installedClock = nullptr;
/// The limit of a virtual clock; beyond it the other clocks would overflow.
constexpr double latest = 1e15;
} // namespace

iClock::~iClock() = default;

iClock const& iClock::current() {
    static SystemClock const systemClock;
    return installedClock ? *installedClock : systemClock;
}

void iClock::install(iClock const* clock) {
    installedClock = clock;
}

double SystemClock::msecs() const {
    auto const sinceStart = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double, std::milli>(sinceStart).count();
}

std::int64_t SystemClock::wall() {
    auto const sinceStart = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::microseconds>(sinceStart).count();
}

std::int64_t SystemClock::used() {
    return static_cast<std::int64_t>(std::clock());
}

std::int64_t SystemClock::processor() const {
    return offset_ + (withWallTime_ ? wall() : used());
}

void SystemClock::runProcessorWithWallTime(bool on) {
    std::int64_t const now = processor();
    withWallTime_ = on;
    offset_ = now - (on ? wall() : used());
}

std::int64_t SystemClock::calendar() const {
    return static_cast<std::int64_t>(std::time(nullptr));
}

void VirtualClock::advance(double ms) {
    if (std::isnan(ms) || msecs_ + ms > latest) {
        Diagnostics::count("clock not moved", "no time, or too far away");
        return;
    }
    if (ms <= 0.0) return;
    msecs_ += ms;
    calendarMs_ += ms;
    processor_ += static_cast<std::int64_t>(ms * 1000.0);
}

void VirtualClock::advanceTo(double ms) {
    advance(ms - msecs_);
    if (ms > msecs_ && ms <= latest) msecs_ = ms;
}

double service_get_msecs() {
    return iClock::current().msecs();
}

} // namespace wainscot
