#pragma once

#include "buttons/button.h"
#include "foundation/repeat_clock.h"

#include <optional>

namespace wainscot {

/// What only few buttons have; made when first needed.
struct Button::Extras {
    struct Colours {
        /// Nothing = the palette's.
        std::optional<Colour> text;
        Colour face;
        /// Set for this state, so that the face is drawn as it is.
        bool isOfState = false;

        friend bool operator==(Colours const&, Colours const&) = default;
    };
    struct Repeat {
        /// In units of the processor clock; 0 = not repeating.
        std::int64_t interval = 0;
        std::int64_t delay = 0;
        RepeatClock clock;
    };

    Qv::Ptr<iObject> payload;
    UIString secondLabel;
    LightweightString<wchar_t> downIcon;
    LightweightString<wchar_t> upIcon;
    void (*draw)(Button const&) = nullptr;
    std::optional<Colours> up;
    std::optional<Colours> down;
    Repeat repeat;
};

} // namespace wainscot
