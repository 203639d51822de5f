#pragma once

#include "host/drawing/colour.h"

namespace wainscot {

/// The value of a colour swatch.
struct WAINSCOT_API ColourData {
    Colour colour;

    friend bool operator==(ColourData const&, ColourData const&) = default;
};

} // namespace wainscot
