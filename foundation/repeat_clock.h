#pragma once

#include "host/base/export.h"

#include <cstdint>

namespace wainscot {

/// Tells when a held control repeats, by the processor clock. Intervals are in units of that clock
/// (`iClock::processorPerSecond`).
///
/// A repeating control asks for timer events (`Glob::setInterest(EventKind::timer)`,
/// `Glob::setNextTimer(msToNext())`) and asks `isDue()` at each of them. While it is held it answers true
/// from `Glob::isAutoRepeating`, so that the clock runs with wall time.
class WAINSCOT_API RepeatClock {
public:
    /// Starts: due once after `first`, then after each `next`.
    void start(std::int64_t first, std::int64_t next);
    /// Sets other intervals, counted from the start or from the last time it was due.
    void setIntervals(std::int64_t first, std::int64_t next);
    /// Whether more than the interval has passed; then the next one begins now.
    bool isDue();
    /// Milliseconds until it may be due at the earliest, at least 1.
    double msToNext() const;

private:
    std::int64_t interval() const { return isFirst_ ? first_ : next_; }

    std::int64_t last_ = 0;
    std::int64_t first_ = 0;
    std::int64_t next_ = 0;
    bool isFirst_ = true;
};

} // namespace wainscot
