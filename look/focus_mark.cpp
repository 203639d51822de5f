#include "look/focus_mark.h"

#include "host/drawing/shapes.h"

#include <algorithm>

namespace wainscot::ControlLook {

void drawFocusMark(CanvasRenderer& renderer, IntBox const& box, Palette const& palette, unsigned int radius) {
    unsigned int const inner = radius - std::min<unsigned>(radius, Glib::focusWidth);
    Glib::drawRoundedRectOutline(renderer, palette.window(eWindowNormal), box, 1, inner, 1.0,
                                 Glib::focusWidth);
    Glib::drawFocusRect(renderer, box, palette.mark(eMarkFocus), radius);
}

} // namespace wainscot::ControlLook
