#pragma once

#include "host/base/export.h"

namespace wainscot {

/// The value of a scroll bar: fractions of its track.
struct WAINSCOT_API ThumbSettings {
    /// The part of the track before the thumb, 0 to 1 - `size`.
    double position = 0;
    /// The part that the thumb covers, above 0 and up to 1.
    double size = 1;

    friend bool operator==(ThumbSettings const&, ThumbSettings const&) = default;
};

} // namespace wainscot
