#include "foundation/panel_minimising_p.h"

#include "foundation/panel_title_p.h"
#include "foundation/panel_widgets_p.h"
#include "host/drawing/drawable.h"
#include "host/events/dispatch_scope.h"
#include "host/objects/description.h"

#include <utility>

namespace wainscot {

void PanelMinimising::set(StandardPanel& panel, bool minimised) {
    if (minimised == panel.minimised_ || (minimised && !panel.hasStrip())) return;
    DispatchScope const scope;
    Glib::UpdateDeferrer const deferrer(panel.canvas());
    LifeGuard const life = panel.guard();
    panel.minimised_ = minimised;
    if (minimised) {
        panel.extras().fullHeight = panel.height();
        hideWidgets(panel);
    }
    if (life.alive())
        resizeKeepingTop(
            panel, {panel.width(), minimised ? PanelTitle::bar(panel).height() : panel.extras().fullHeight});
    if (life.alive() && !minimised) showWidgets(panel);
    if (life.alive()) panel.setSizeFlag(minimised ? sizeMinimised : sizeFull);
    if (!life.alive()) return;
    panel.makeDirty();
    panel.describeChanged(DescriptionChange::state);
}

void PanelMinimising::keep(StandardPanel& panel) {
    if (!panel.minimised_) return;
    if (!panel.hasStrip()) return set(panel, false);
    int const height = PanelTitle::barHeight(panel);
    if (panel.height() != height) resizeKeepingTop(panel, {panel.width(), height});
}

void PanelMinimising::hideWidgets(StandardPanel& panel) {
    std::vector<HandlerRef<Glob>> hidden;
    Glob const* const doIt = PanelWidgets::get(panel, StandardWidget::doIt);
    for (Glob* child = panel.firstChild(); child; child = child->nextSibling()) {
        bool const staysShown = PanelWidgets::isOne(panel, child) && child != doIt;
        if (child->isVisible() && !staysShown) hidden.emplace_back(child);
    }
    panel.extras().hidden = hidden;
    for (HandlerRef<Glob> const& ref : hidden)
        if (Glob* const widget = ref.get()) widget->setVisible(false);
}

void PanelMinimising::showWidgets(StandardPanel& panel) {
    auto const hidden = std::exchange(panel.extras().hidden, {});
    for (HandlerRef<Glob> const& ref : hidden)
        if (Glob* const widget = ref.get()) widget->setVisible(true);
}

/// A place that is measured from the parent's upper edge is still measured from there.
void PanelMinimising::resizeKeepingTop(StandardPanel& panel, XY<int> const& size) {
    LifeGuard const life = panel.guard();
    XY<int> const corner{panel.box().x1, panel.box().y2 - size.y};
    if (!panel.parent()) {
        panel.resize(size.x, size.y);
        if (life.alive()) panel.setScreenPos(corner);
        return;
    }
    WidgetDetails const details = panel.parent()->getWidgetDetails(&panel);
    CoordinateOrigin const origin = details.position.origin();
    bool const hangsFromTop = !details.position.isRelative() &&
                              (origin == CoordinateOrigin::topLeft || origin == CoordinateOrigin::topRight);
    if (!hangsFromTop) return panel.parent()->reshapeWidgetAt(&panel, corner, size);
    panel.resize(size.x, size.y);
    if (life.alive() && panel.parent()) panel.parent()->positionChildWidget(details);
}

} // namespace wainscot
