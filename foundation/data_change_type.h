#pragma once

namespace wainscot {

/// Why a bound value changes. Adaptors get it as the widget gave it.
enum class DataChangeType : unsigned int {
    /// The first of a series of changes, such as a drag.
    started = 0,
    /// One more of the series.
    continued = 1,
    /// The last of the series.
    finished = 2,
    /// A single change: a click, a key, a notch of the wheel.
    single = 3,
};

} // namespace wainscot
