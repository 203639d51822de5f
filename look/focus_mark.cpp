#include "look/focus_mark.h"

#include "host/drawing/shapes.h"

#include <algorithm>

namespace wainscot::ControlLook {

namespace {

/// The line in the colour of the ground.
constexpr int innerLine = 1;

} // namespace

int focusMarkThickness() {
    return static_cast<int>(Glib::focusWidth) + innerLine;
}

void drawFocusMark(CanvasRenderer& renderer, IntBox const& box, Palette const& palette, unsigned int radius) {
    unsigned int const inner = radius - std::min<unsigned>(radius, Glib::focusWidth);
    Glib::drawRoundedRectOutline(renderer, palette.window(eWindowNormal), box, innerLine, inner, 1.0,
                                 Glib::focusWidth);
    Glib::drawFocusRect(renderer, box, palette.mark(eMarkFocus), radius);
}

} // namespace wainscot::ControlLook
