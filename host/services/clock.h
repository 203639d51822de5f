#pragma once

#include "host/base/export.h"

#include <cstdint>

namespace wainscot {

/// The one seam through which all time is read.
class WAINSCOT_API iClock {
public:
    /// Units of `processor()` in a second.
    static constexpr std::int64_t processorPerSecond = 1'000'000;

    virtual ~iClock();
    /// Monotonic milliseconds, with fractions.
    virtual double msecs() const = 0;
    /// Processor time of the program.
    virtual std::int64_t processor() const = 0;
    /// Seconds since 1970-01-01 00:00 UTC.
    virtual std::int64_t calendar() const = 0;

    /// The clock in force: the clock that the live backend installed, else the system's.
    static iClock const& current();
    /// Installs a clock; null restores the system's. The caller keeps ownership.
    static void install(iClock const* clock);
};

/// The machine's own clocks.
class WAINSCOT_API SystemClock final : public iClock {
public:
    double msecs() const override;
    std::int64_t processor() const override;
    std::int64_t calendar() const override;

    /// While on, the processor clock runs with wall time, so that a measuring program may sleep. The clock
    /// never jumps.
    void runProcessorWithWallTime(bool on);

private:
    static std::int64_t wall();
    static std::int64_t used();
    /// Added to wall time, or else to the time that the program has used.
    std::int64_t offset_ = 0;
    bool withWallTime_ = false;
};

/// Clocks that move only when they are moved; they start at fixed values.
class WAINSCOT_API VirtualClock final : public iClock {
public:
    double msecs() const override { return msecs_; }
    std::int64_t processor() const override { return processor_; }
    std::int64_t calendar() const override {
        return calendarStart_ + static_cast<std::int64_t>(calendarMs_ / 1000.0);
    }

    /// Moves all three clocks. NaN and times beyond thirty thousand years are refused; a negative time does
    /// nothing.
    void advance(double ms);
    /// Moves all three clocks until `msecs()` is exactly `ms`; a time that has passed changes nothing.
    void advanceTo(double ms);
    void advanceProcessor(std::int64_t units) { processor_ += units; }
    void setCalendar(std::int64_t seconds) {
        calendarStart_ = seconds;
        calendarMs_ = 0.0;
    }

private:
    double msecs_ = 1000.0;
    std::int64_t processor_ = 0;
    std::int64_t calendarStart_ = 1'000'000'000;
    double calendarMs_ = 0.0;
};

/// Milliseconds of the clock in force.
WAINSCOT_API double service_get_msecs();

} // namespace wainscot
