#include "foundation/repeat_clock.h"

#include "host/services/clock.h"

#include <algorithm>

namespace wainscot {

void RepeatClock::start(std::int64_t first, std::int64_t next) {
    last_ = iClock::current().processor();
    isFirst_ = true;
    setIntervals(first, next);
}

void RepeatClock::setIntervals(std::int64_t first, std::int64_t next) {
    first_ = first;
    next_ = next;
}

bool RepeatClock::isDue() {
    std::int64_t const now = iClock::current().processor();
    if (now - last_ <= interval()) return false;
    last_ = now;
    isFirst_ = false;
    return true;
}

double RepeatClock::msToNext() const {
    std::int64_t const left = interval() - (iClock::current().processor() - last_);
    return std::max(1.0, static_cast<double>(left) * 1000.0 / iClock::processorPerSecond);
}

} // namespace wainscot
