#include "host/objects/inset.h"

#include "host/drawing/shapes.h"

namespace wainscot {

void drawInset(Glob* glob, Colour const& surroundings, bool fill) {
    if (!is_good_glob_ptr(glob)) return;
    IntBox const box = glob->canvasArea();
    CanvasRenderer renderer(glob->canvas(), box);
    if (fill)
        Glib::drawIndentBox(renderer, surroundings, box, insetEdgeWidth);
    else
        Glib::drawDepthEdge(renderer, getIndentBoxColour(surroundings), box, insetEdgeWidth,
                            Glib::indentDepth);
}

} // namespace wainscot
