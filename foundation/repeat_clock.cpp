#include "foundation/repeat_clock.h"

#include "host/services/clock.h"

#include <algorithm>

namespace wainscot {

void RepeatClock::start(std::int64_t first, std::int64_t next) {
    last_ = iClock::current().processor();
    interval_ = first;
    next_ = next;
}

bool RepeatClock::isDue() {
    std::int64_t const now = iClock::current().processor();
    if (now - last_ <= interval_) return false;
    last_ = now;
    interval_ = next_;
    return true;
}

double RepeatClock::msToNext() const {
    std::int64_t const left = interval_ - (iClock::current().processor() - last_);
    return std::max(1.0, static_cast<double>(left) * 1000.0 / iClock::processorPerSecond);
}

} // namespace wainscot
