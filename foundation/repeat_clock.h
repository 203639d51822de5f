#pragma once

#include "host/base/export.h"

#include <cstdint>

namespace wainscot {

/// Says when something that is held down is to be repeated, on the processor clock. Intervals are in units of
/// that clock (`iClock::processorPerSecond`).
///
/// A control that repeats while it is held asks for timer events (`Glob::setInterest(EventKind::timer)`,
/// `Glob::setNextTimer(msToNext())`), asks `isDue()` at each, and answers true from `Glob::isAutoRepeating`
/// meanwhile, so that the clock runs with wall time.
class WAINSCOT_API RepeatClock {
public:
    /// From now on: once after `first`, then after each `next`.
    void start(std::int64_t first, std::int64_t next);
    /// Other intervals, which count at once: those since the start, or the last time it was due.
    void setIntervals(std::int64_t first, std::int64_t next);
    /// Whether more than the interval has passed; then the next one begins now.
    bool isDue();
    /// When it may be due at the earliest, in milliseconds, at least 1: processor time is not more than wall
    /// time, but for that of other threads.
    double msToNext() const;

private:
    std::int64_t interval() const { return isFirst_ ? first_ : next_; }

    std::int64_t last_ = 0;
    std::int64_t first_ = 0;
    std::int64_t next_ = 0;
    bool isFirst_ = true;
};

} // namespace wainscot
