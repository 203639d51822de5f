#pragma once

#include "host/base/export.h"
#include "host/base/lightweight_string.h"

#include <cstdint>
#include <optional>

namespace wainscot {

/// A moment as the user's calendar and clock show it.
struct LocalTime {
    /// As written: 2024, month 1 to 12, day 1 to 31.
    std::int64_t year = 1970;
    int month = 1;
    int day = 1;
    int hour = 0;
    int minute = 0;
    /// 60 in a leap second.
    int second = 0;
    /// 0 is Sunday.
    int weekday = 4;
    /// 1 to 366.
    int dayOfYear = 1;
    bool isSummerTime = false;
    /// Seconds east of UTC.
    int utcOffset = 0;
};

/// A moment, in seconds since 1970-01-01 00:00 UTC, in the user's time zone; nothing for years out of range.
/// The time zone may change while the program runs.
WAINSCOT_API std::optional<LocalTime> getLocalTime(std::int64_t seconds);
/// The present moment of the clock in force.
WAINSCOT_API std::optional<LocalTime> getLocalTime();

/// A moment as text, by a format like that of `strftime`: "%Y-%m-%d %H:%M". Names of days and months are
/// those of the program's locale. Format and result may have any length; text that is not a conversion is
/// kept. Empty when `getLocalTime` gives nothing.
WAINSCOT_API LightweightString<wchar_t> formatLocalTime(LightweightString<wchar_t> const& format,
                                                        std::int64_t seconds);

} // namespace wainscot
