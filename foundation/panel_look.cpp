#include "foundation/panel_look_p.h"

#include "foundation/panel_edges_p.h"
#include "foundation/panel_title_p.h"
#include "foundation/panel_widgets_p.h"
#include "host/drawing/canvas_renderer.h"
#include "host/drawing/shapes.h"
#include "host/drawing/uif_std.h"

#include <algorithm>
#include <cmath>

namespace wainscot {

unsigned PanelLook::radius(StandardPanel const& panel) {
    return static_cast<unsigned>(std::lround(panel.get_radius()));
}

void PanelLook::drawCorners(StandardPanel& panel) {
    if (panel.parent() || !(panel.get_radius() > 0.0)) return;
    CanvasRenderer renderer(panel.canvas(), panel.canvasArea());
    Colour const ground = panel.getPalette().window(eWindowNormal);
    renderer.renderPrimitive(Glib::RectDescription(panel.canvasArea(), ground));
}

void PanelLook::drawTitleBar(StandardPanel& panel) {
    if (!panel.hasStrip() || !PanelEdges::hasTitleGround(panel.border_.getType())) return;
    CanvasRenderer renderer(panel.canvas(), panel.canvasArea());
    Palette const palette = panel.getColoursForWidgets();
    renderer.setClipRect(PanelTitle::bar(panel).translated(panel.canvasArea().bottomLeft()));
    Glib::drawRoundedRectFilled(renderer, palette.window(eWindowRaised), panel.canvasArea(), radius(panel));
}

void PanelLook::drawBorder(StandardPanel& panel, float scale) {
    bool const isGroove = panel.border_.getType() == Border::group;
    if (panel.border_.getType() == Border::none && !panel.hasStrip()) return;
    CanvasRenderer renderer(panel.canvas(), panel.canvasArea());
    PanelEdges const edges(panel.border_, scale, panel.getCol(), panel.getColoursForWidgets());
    if (isGroove && panel.hasStrip())
        drawGroove(panel, renderer, edges);
    else
        edges.draw(renderer, panel.canvasArea(), radius(panel));
    if (!panel.hasStrip()) return;
    if (!isGroove) panel.drawTitleSeparator(scale);
    PanelTitle::draw(panel, renderer);
}

void PanelLook::drawSquareBorder(StandardPanel& panel, float scale, unsigned int edges) {
    CanvasRenderer renderer(panel.canvas(), panel.canvasArea());
    PanelEdges const look(panel.border_, scale, panel.getCol(), panel.getColoursForWidgets());
    look.drawSquare(renderer, panel.canvasArea(), edges);
}

/// The groove runs through the middle of the title row, except behind title and widgets.
void PanelLook::drawGroove(StandardPanel& panel, CanvasRenderer& renderer, PanelEdges const& edges) {
    int const corner = static_cast<int>(radius(panel));
    IntBox const area = panel.canvasArea();
    IntBox const row = PanelTitle::row(panel).translated(area.bottomLeft());
    IntBox const ring(area.x1, area.y1, area.x2, row.centre().y);
    int const gap = UifStd::getWidgetGap();
    int const needed = PanelTitle::widthOf(panel, PanelTitle::text(panel));
    int const titleWidth = PanelTitle::box(panel) ? row.width() : std::min(row.width(), needed);
    int const titleStart = std::max(row.x1 - gap, std::min(row.x1, area.x1 + edges.width() + corner));
    int const titleEnd = titleWidth > 0 ? row.x1 + titleWidth + gap : titleStart;
    int const chain = PanelWidgets::chainWidth(panel);
    int const chainStart = chain > 0 ? area.x2 - panel.border_.getSize() - chain - gap : area.x2;
    int const rightCorner = area.x2 - edges.width() - corner;
    // One pixel more, since rounding makes lines thicker at some scales.
    int const below = ring.y2 - edges.width() - corner - 1;
    IntBox const parts[] = {
        {area.x1, area.y1, titleStart, area.y2},
        {titleStart, area.y1, titleEnd, below},
        {titleEnd, area.y1, chainStart, area.y2},
        {chainStart, area.y1, rightCorner, below},
        {std::max(chainStart, rightCorner), area.y1, area.x2, area.y2},
    };
    for (IntBox const& part : parts) {
        if (part.isEmpty()) continue;
        renderer.setClipRect(part);
        edges.draw(renderer, ring, radius(panel));
    }
    renderer.clearClipRect();
}

void PanelLook::drawTitleSeparator(StandardPanel& panel, float scale) {
    IntBox const bar = PanelTitle::bar(panel).translated(panel.canvasArea().bottomLeft());
    if (bar.isEmpty() || panel.minimised_) return;
    CanvasRenderer renderer(panel.canvas(), panel.canvasArea());
    int const inset = PanelEdges(panel.border_, 1.0F, panel.getCol(), panel.getPalette()).width();
    int const thick = PanelEdges::lineWidth(scale);
    renderer.renderPrimitive(Glib::RectDescription({bar.x1 + inset, bar.y1, bar.x2 - inset, bar.y1 + thick},
                                                   panel.getColoursForWidgets().separator()));
}

void PanelLook::erase(StandardPanel& panel, IntBox const& box, Colour const& colour) {
    IntBox const seen = box.intersection(panel.bounds());
    if (seen.isEmpty()) return;
    IntBox const onCanvas = seen.translated(panel.canvasArea().bottomLeft());
    CanvasRenderer renderer(panel.canvas(), onCanvas);
    renderer.renderPrimitive(Glib::RectDescription(onCanvas, colour));
    renderer.addModifiedArea(onCanvas);
}

} // namespace wainscot
