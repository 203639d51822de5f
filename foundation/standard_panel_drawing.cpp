#include "foundation/standard_panel_p.h"

#include "foundation/panel_edges_p.h"
#include "host/base/convert.h"
#include "host/drawing/canvas_renderer.h"
#include "host/drawing/shapes.h"
#include "host/drawing/uif_std.h"
#include "host/objects/tooltip_details.h"

#include <algorithm>
#include <cmath>

namespace wainscot {

void StandardPanel::drawBackground() {
    if (!isOpaque()) return;
    // A window shows through nothing: there the corners are filled.
    if (!parent() && get_radius() > 0.0) {
        CanvasRenderer renderer(canvas(), canvasArea());
        renderer.renderPrimitive(Glib::RectDescription(canvasArea(), getPalette().window(eWindowNormal)));
    }
    rect::drawBackground();
    drawTitleBar();
}

void StandardPanel::drawBorder() {
    drawBorder(1.0F);
}

void StandardPanel::drawBorder(float scale) {
    bool const isGroove = border_.getType() == Border::group;
    if (border_.getType() == Border::none && !hasStrip()) return;
    CanvasRenderer renderer(canvas(), canvasArea());
    if (isGroove)
        drawGroove(renderer, scale);
    else
        drawRoundBorder(renderer, scale);
    if (!hasStrip()) return;
    if (!isGroove) drawTitleSeparator(scale);
    drawTitle(renderer);
}

void StandardPanel::drawRoundBorder(CanvasRenderer& renderer, float scale) {
    PanelEdges const edges(border_, scale, getCol(), getColoursForWidgets());
    edges.draw(renderer, canvasArea(), static_cast<unsigned>(std::lround(get_radius())));
}

void StandardPanel::drawSquarePanelBorder(float scale, unsigned int edges) {
    CanvasRenderer renderer(canvas(), canvasArea());
    PanelEdges const look(border_, scale, getCol(), getColoursForWidgets());
    look.drawSquare(renderer, canvasArea(), edges);
}

/// The groove runs through the middle of the title row, and leaves out title and widgets.
void StandardPanel::drawGroove(CanvasRenderer& renderer, float scale) {
    PanelEdges const edges(border_, scale, getCol(), getColoursForWidgets());
    auto const radius = static_cast<unsigned>(std::lround(get_radius()));
    IntBox const area = canvasArea();
    if (!hasStrip()) return edges.draw(renderer, area, radius);
    IntBox const row = titleRow().translated(area.bottomLeft());
    IntBox const ring(area.x1, area.y1, area.x2, row.centre().y);
    int const gap = UifStd::getWidgetGap();
    int const titleWidth = getTitleWidget() ? row.width() : std::min(row.width(), calcTitleWidth(getTitle()));
    int const corner = area.x1 + edges.width() + static_cast<int>(radius);
    int const titleStart = std::max(row.x1 - gap, std::min(row.x1, corner));
    int const titleEnd = titleWidth > 0 ? row.x1 + titleWidth + gap : titleStart;
    int const chainStart = chainWidth() > 0 ? area.x2 - border_.getSize() - chainWidth() - gap : area.x2;
    // A pixel more, since lines are rounded to be thicker at some scales.
    int const below = ring.y2 - edges.width() - static_cast<int>(radius) - 1;
    IntBox const parts[] = {
        {area.x1, area.y1, titleStart, area.y2},
        {titleStart, area.y1, titleEnd, below},
        {titleEnd, area.y1, chainStart, area.y2},
        {chainStart, area.y1, area.x2 - edges.width() - static_cast<int>(radius), below},
        {std::max(chainStart, area.x2 - edges.width() - static_cast<int>(radius)), area.y1, area.x2, area.y2},
    };
    for (IntBox const& part : parts) {
        if (part.isEmpty()) continue;
        renderer.setClipRect(part);
        edges.draw(renderer, ring, radius);
    }
    renderer.clearClipRect();
}

/// Where the title stands, between the left edge and the standard widgets.
IntBox StandardPanel::titleRow() const {
    int const edge = border_.getSize();
    int const left = edge + calcSize(spacingIndent);
    int const top = height() - edge;
    return {left, top - calcSize(spacingButton), left + calcMaxTitleWidgetWidth(), top};
}

void StandardPanel::drawTitleBar() {
    if (!hasStrip() || !PanelEdges::hasTitleGround(border_.getType())) return;
    CanvasRenderer renderer(canvas(), canvasArea());
    Palette const palette = getColoursForWidgets();
    renderer.setClipRect(getTitleBar().translated(canvasArea().bottomLeft()));
    Glib::drawRoundedRectFilled(renderer, palette.window(eWindowRaised), canvasArea(),
                                static_cast<unsigned>(std::lround(get_radius())));
}

void StandardPanel::drawTitleSeparator(float scale) {
    IntBox const bar = getTitleBar().translated(canvasArea().bottomLeft());
    if (bar.isEmpty() || minimised_) return;
    CanvasRenderer renderer(canvas(), canvasArea());
    int const inset = PanelEdges(border_, 1.0F, getCol(), getPalette()).width();
    int const thick = PanelEdges::lineWidth(scale);
    renderer.renderPrimitive(Glib::RectDescription({bar.x1 + inset, bar.y1, bar.x2 - inset, bar.y1 + thick},
                                                   getColoursForWidgets().separator()));
}

void StandardPanel::drawTitle(CanvasRenderer& renderer) {
    if (getTitleWidget()) return;
    if (getTitleW().isEmpty()) return;
    IntBox const row = titleRow().translated(canvasArea().bottomLeft());
    Qv::Ptr<iFont> const font = Glib::loadFont(getTitleFont());
    XY<int> const place{row.x1, row.y1 + getFontYOffset(row.height(), font)};
    Palette const palette = getColoursForWidgets();
    Colour const ink = isActive() ? palette.headingText() : palette.text(eTextDisabled);
    renderer.renderPrimitive(Glib::TextDescription(fittedTitle(), place, font, ink));
}

LightweightString<wchar_t> StandardPanel::fittedTitle(bool* wasCut) const {
    return Glib::fitTextToWidth(Glib::loadFont(getTitleFont()), getTitleW(), toSize16(titleRow().width()),
                                wasCut);
}

bool StandardPanel::getTooltipDetails(XY<int> const& place, TooltipDetails& details) const {
    if (rect::getTooltipDetails(place, details)) return true;
    IntBox const row = titleRow();
    if (!extras_ || extras_->title.isEmpty() || getTitleWidget() || !row.contains(place)) return false;
    bool wasCut = false;
    fittedTitle(&wasCut);
    if (!wasCut) return false;
    details.text = extras_->title;
    details.area = row;
    return true;
}

void StandardPanel::eraseRectangle(IntBox const& box, Colour const& colour) {
    IntBox const onCanvas = box.intersection(bounds()).translated(canvasArea().bottomLeft());
    if (box.intersection(bounds()).isEmpty()) return;
    CanvasRenderer renderer(canvas(), onCanvas);
    renderer.renderPrimitive(Glib::RectDescription(onCanvas, colour));
    renderer.addModifiedArea(onCanvas);
}

} // namespace wainscot
