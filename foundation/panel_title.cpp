#include "foundation/panel_title_p.h"

#include "foundation/panel_widgets_p.h"
#include "host/base/convert.h"
#include "host/drawing/canvas_renderer.h"
#include "host/drawing/descriptions.h"
#include "host/drawing/uif_std.h"
#include "host/events/dispatch_scope.h"
#include "host/objects/description.h"
#include "host/objects/tooltip_details.h"

#include <algorithm>

namespace wainscot {

// Text

void PanelTitle::store(StandardPanel& panel, UIString const& title, Glib::FontDesc const* font,
                       eRedrawFlag redraw) {
    std::optional<Glib::FontDesc> const wanted = font ? std::optional(*font) : std::nullopt;
    auto const& extras = panel.extras_;
    bool const isSame =
        extras ? extras->title == title && extras->titleFont == wanted : title.isEmpty() && !wanted;
    if (isSame) return;
    DispatchScope const scope;
    bool const hadStrip = panel.hasStrip();
    panel.extras().title = title;
    panel.extras().titleFont = wanted;
    LifeGuard const life = panel.guard();
    if (hadStrip != panel.hasStrip()) panel.layOut();
    if (life.alive()) changed(panel, redraw);
}

bool PanelTitle::isEmpty(StandardPanel const& panel) {
    return !panel.extras_ || panel.extras_->title.isEmpty();
}

UIString PanelTitle::text(StandardPanel const& panel) {
    return panel.extras_ ? panel.extras_->title : UIString();
}

Glib::FontDesc PanelTitle::font(StandardPanel const& panel) {
    bool const hasOwn = panel.extras_ && panel.extras_->titleFont;
    return hasOwn ? *panel.extras_->titleFont : UifStd::getTitleFont();
}

int PanelTitle::widthOf(StandardPanel const& panel, UIString const& title) {
    return Glib::loadFont(font(panel))->textWidth(title.text());
}

void PanelTitle::changed(StandardPanel& panel, eRedrawFlag redraw) {
    DispatchScope const scope;
    LifeGuard const life = panel.guard();
    if (box(panel)) panel.extras_->titleBox->setTitleText(text(panel).text());
    if (!life.alive()) return;
    if (redraw) panel.damage(bar(panel));
    panel.describeChanged(DescriptionChange::name);
    if (life.alive()) panel.handleTitleChange();
}

void PanelTitle::typed(StandardPanel& panel) {
    tellParent(panel, StandardPanel::titleTyped);
}

void PanelTitle::edited(StandardPanel& panel) {
    DispatchScope const scope;
    if (!box(panel)) return;
    UIString const written(panel.extras_->titleBox->titleText());
    if (written.text() == text(panel).text()) return;
    LifeGuard const life = panel.guard();
    panel.extras_->title = written;
    panel.describeChanged(DescriptionChange::name);
    if (life.alive()) panel.handleTitleChange();
    if (life.alive()) tellParent(panel, StandardPanel::titleChanged);
}

void PanelTitle::tellParent(StandardPanel& panel, StandardPanel::Messages which) {
    if (panel.parent()) Reporter().report(panel, panel.parent(), StandardPanel::messageTable[which]);
}

// Box

Glob* PanelTitle::box(StandardPanel const& panel) {
    return panel.extras_ ? panel.extras_->titleWidget.get() : nullptr;
}

void PanelTitle::makeBox(StandardPanel& panel) {
    Registry::MakeTitleBox const make = Registry::instance().makeTitleBox;
    if (!make || box(panel)) return;
    LifeGuard const life = panel.guard();
    iTitleBox* const made = make(panel, text(panel).text(), font(panel));
    if (!made) return;
    Glob* const added = panel.addChild(&made->glob());
    if (!life.alive()) return;
    if (!added) return destroy(&made->glob());
    panel.extras().titleBox = made;
    panel.extras().titleWidget = HandlerRef<Glob>(added);
}

void PanelTitle::removeBox(StandardPanel& panel, bool redraw) {
    Glob* widget = box(panel);
    if (!widget) return;
    panel.extras_->titleBox = nullptr;
    panel.extras_->titleWidget = {};
    if (panel.getWidget(widget)) panel.removeWidget(widget, redraw);
}

void PanelTitle::resizeBox(StandardPanel& panel) {
    Glob* const widget = box(panel);
    if (!panel.getWidget(widget)) return;
    DispatchScope const scope;
    LifeGuard const life = panel.guard();
    LifeGuard const boxLife = widget->guard();
    int const edge = panel.border_.getSize();
    widget->resize(rowWidth(panel), StandardPanel::calcSize(spacingButton));
    if (!life.alive() || !boxLife.alive() || !panel.getWidget(widget)) return;
    int const left = edge + StandardPanel::calcSize(spacingIndent);
    panel.addWidget(widget, left, edge, CoordinateOrigin::topLeft);
    if (life.alive()) panel.handleTitleWidgetResize();
}

// Places

IntBox PanelTitle::bar(StandardPanel const& panel) {
    if (!panel.hasStrip()) return {};
    return {0, std::max(0, panel.height() - barHeight(panel)), panel.width(), panel.height()};
}

int PanelTitle::barHeight(StandardPanel const& panel) {
    return StandardPanel::calcSize(spacingButton) + 2 * panel.border_.getSize();
}

IntBox PanelTitle::row(StandardPanel const& panel) {
    int const edge = panel.border_.getSize();
    int const left = edge + StandardPanel::calcSize(spacingIndent);
    int const top = panel.height() - edge;
    return {left, top - StandardPanel::calcSize(spacingButton), left + rowWidth(panel), top};
}

int PanelTitle::rowWidth(StandardPanel const& panel) {
    int const taken = 2 * panel.border_.getSize() + StandardPanel::calcSize(spacingDoubleIndent);
    return std::max(0, panel.width() - taken - PanelWidgets::chainWidth(panel));
}

// Drawing

void PanelTitle::draw(StandardPanel& panel, CanvasRenderer& renderer) {
    if (box(panel) || text(panel).text().isEmpty()) return;
    IntBox const place = row(panel).translated(panel.canvasArea().bottomLeft());
    Qv::Ptr<iFont> const letters = Glib::loadFont(font(panel));
    XY<int> const start{place.x1, place.y1 + getFontYOffset(place.height(), letters)};
    Palette const palette = panel.getColoursForWidgets();
    Colour const ink = panel.isActive() ? palette.headingText() : palette.text(eTextDisabled);
    renderer.renderPrimitive(Glib::TextDescription(fitted(panel), start, letters, ink));
}

LightweightString<wchar_t> PanelTitle::fitted(StandardPanel const& panel, bool* wasCut) {
    return Glib::fitTextToWidth(Glib::loadFont(font(panel)), text(panel).text(), toSize16(row(panel).width()),
                                wasCut);
}

bool PanelTitle::tipAt(StandardPanel const& panel, XY<int> const& place, TooltipDetails& details) {
    IntBox const area = row(panel);
    if (isEmpty(panel) || box(panel) || !area.contains(place)) return false;
    bool wasCut = false;
    fitted(panel, &wasCut);
    if (!wasCut) return false;
    details.text = text(panel);
    details.area = area;
    return true;
}

} // namespace wainscot
