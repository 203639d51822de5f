#include "host/backends/desktop/desktop_wakeup_p.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace wainscot {

namespace {

constexpr double longestSleep = 24.0 * 3600.0 * 1000.0;

timespec toTimespec(double milliseconds) {
    double const bounded = std::clamp(milliseconds, 0.0, longestSleep);
    double const seconds = std::floor(bounded / 1000.0);
    return {static_cast<time_t>(seconds), static_cast<long>((bounded - seconds * 1000.0) * 1e6)};
}

} // namespace

DesktopWakeup::DesktopWakeup() : event_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

DesktopWakeup::~DesktopWakeup() {
    if (event_ >= 0) close(event_);
}

void DesktopWakeup::sleep(int file, std::optional<double> milliseconds) {
    // A negative descriptor is skipped by ppoll.
    pollfd files[] = {{event_, POLLIN, 0}, {file, POLLIN, 0}};
    timespec const limit = toTimespec(milliseconds.value_or(0.0));
    ppoll(files, 2, milliseconds ? &limit : nullptr, nullptr);
    std::uint64_t wakes = 0;
    if (files[0].revents & POLLIN) [[maybe_unused]]
        auto const taken = read(event_, &wakes, sizeof wakes);
}

void DesktopWakeup::wake() {
    std::uint64_t const one = 1;
    // It fails only when so many wakes are unread that the next sleep ends at once anyway.
    [[maybe_unused]] auto const written = write(event_, &one, sizeof one);
}

} // namespace wainscot
