#pragma once

#include "foundation/standard_panel_p.h"

namespace wainscot {

class CanvasRenderer;
class PanelEdges;

/// How a panel is drawn: its ground, border and title strip.
class PanelLook {
public:
    /// Fills behind the round corners of a window, since windows are not transparent.
    static void drawCorners(StandardPanel& panel);
    static void drawTitleBar(StandardPanel& panel);
    static void drawBorder(StandardPanel& panel, float scale);
    static void drawSquareBorder(StandardPanel& panel, float scale, unsigned int edges);
    static void drawTitleSeparator(StandardPanel& panel, float scale);
    static void erase(StandardPanel& panel, IntBox const& box, Colour const& colour);

private:
    static unsigned radius(StandardPanel const& panel);
    static void drawGroove(StandardPanel& panel, CanvasRenderer& renderer, PanelEdges const& edges);
};

} // namespace wainscot
