#include "foundation/panel_widgets_p.h"

#include "foundation/panel_title_p.h"
#include "host/drawing/drawable.h"
#include "host/drawing/uif_std.h"
#include "host/events/dispatch_scope.h"

#include <algorithm>

namespace wainscot {

namespace {

/// Which bit asks for which widget. When two want one place, the first wins.
struct Wish {
    int flag;
    StandardWidget widget;
};
constexpr Wish wishes[] = {
    {StandardPanel::closeWidget, StandardWidget::close},
    {StandardPanel::settingsWidget, StandardWidget::settings},
    {StandardPanel::sizeWidget, StandardWidget::size},
    {StandardPanel::doItWidget, StandardWidget::doIt},
    {StandardPanel::pinWidget, StandardWidget::pin},
    {StandardPanel::latchWidget, StandardWidget::latch},
};

constexpr unsigned short allFlags = StandardPanel::stripFlags | StandardPanel::doItWidget;

} // namespace

PanelWidgets::Slot PanelWidgets::slotOf(StandardWidget which) {
    using Extras = StandardPanel::Extras;
    switch (which) {
    case StandardWidget::close:
        return Extras::closeSlot;
    case StandardWidget::size:
        return Extras::sizeSlot;
    case StandardWidget::pin:
        return Extras::pinSlot;
    case StandardWidget::settings:
    case StandardWidget::latch:
        return Extras::optionSlot;
    case StandardWidget::doIt:
        break;
    }
    return Extras::doItSlot;
}

void PanelWidgets::add(StandardPanel& panel, int flags) {
    DispatchScope const scope;
    Glib::UpdateDeferrer const deferrer(panel.canvas());
    panel.standardFlags_ = (panel.standardFlags_ | flags) & allFlags;
    if (panel.standardFlags_ == 0) return;
    LifeGuard const life = panel.guard();
    makeMissing(panel);
    if (life.alive()) panel.layOut();
}

void PanelWidgets::makeMissing(StandardPanel& panel) {
    Registry::MakeStandardWidget const make = Registry::instance().makeStandardWidget;
    LifeGuard const life = panel.guard();
    for (Wish const& wish : wishes) {
        Slot const slot = slotOf(wish.widget);
        if (!make || (panel.standardFlags_ & wish.flag) == 0 || panel.extras().inSlot(slot)) continue;
        Glob* const widget = make(panel.getColoursForWidgets(), wish.widget);
        Glob* const added = widget ? panel.addChild(widget) : nullptr;
        if (!life.alive()) return;
        if (!added) destroy(widget);
        panel.extras().slots[slot] = HandlerRef<Glob>(added);
        if (slot == StandardPanel::Extras::optionSlot)
            panel.extras().optionIsLatch = wish.widget == StandardWidget::latch;
    }
    if ((panel.standardFlags_ & editableFlags) != 0) PanelTitle::makeBox(panel);
}

void PanelWidgets::remove(StandardPanel& panel, int flags, bool redraw) {
    DispatchScope const scope;
    Glib::UpdateDeferrer const deferrer(panel.canvas());
    panel.standardFlags_ = panel.standardFlags_ & ~flags & allFlags;
    if (!panel.extras_) return;
    LifeGuard const life = panel.guard();
    for (Wish const& wish : wishes) {
        if ((flags & wish.flag) != 0 && life.alive()) removeOne(panel, wish.widget, redraw);
    }
    if (!life.alive()) return;
    if ((panel.standardFlags_ & editableFlags) == 0) PanelTitle::removeBox(panel, redraw);
    if (life.alive()) panel.layOut();
}

void PanelWidgets::removeOne(StandardPanel& panel, StandardWidget which, bool redraw) {
    bool const isOption = which == StandardWidget::settings || which == StandardWidget::latch;
    if (isOption && panel.extras_->optionIsLatch != (which == StandardWidget::latch)) return;
    HandlerRef<Glob>& slot = panel.extras_->slots[slotOf(which)];
    Glob* widget = slot.get();
    slot = {};
    if (panel.getWidget(widget)) panel.removeWidget(widget, redraw);
}

bool PanelWidgets::isOne(StandardPanel const& panel, Glob const* widget) {
    if (!widget || !panel.extras_) return false;
    auto const isIt = [widget](HandlerRef<Glob> const& ref) { return ref.get() == widget; };
    auto const& slots = panel.extras_->slots;
    return std::any_of(slots.begin(), slots.end(), isIt) || isIt(panel.extras_->titleWidget);
}

Glob* PanelWidgets::get(StandardPanel const& panel, StandardWidget which) {
    auto const& extras = panel.extras_;
    if (!extras) return nullptr;
    bool const isOther = (which == StandardWidget::settings && extras->optionIsLatch) ||
                         (which == StandardWidget::latch && !extras->optionIsLatch);
    return isOther ? nullptr : extras->inSlot(slotOf(which));
}

void PanelWidgets::position(StandardPanel& panel) {
    using Extras = StandardPanel::Extras;
    if (!panel.extras_) return;
    DispatchScope const scope;
    int const edge = panel.border_.getSize();
    LifeGuard const life = panel.guard();
    Glob* before = nullptr;
    for (std::size_t slot = 0; slot < Extras::chainLength; ++slot) {
        Glob* const widget = panel.extras_->inSlot(slot);
        if (!panel.getWidget(widget)) continue;
        Glob* const placed = before ? panel.addWidgetRelative(widget, before, 0, WidgetRelativity::leftOf, {},
                                                              WidgetAlignment::centre)
                                    : panel.addWidget(widget, edge, edge, CoordinateOrigin::topRight);
        if (!life.alive()) return;
        if (placed) before = placed;
    }
    Glob* const doIt = panel.extras_->inSlot(Extras::doItSlot);
    if (panel.getWidget(doIt)) panel.addWidget(doIt, edge, edge, CoordinateOrigin::bottomRight);
}

int PanelWidgets::chainWidth(StandardPanel const& panel) {
    int sum = 0;
    for (std::size_t slot = 0; panel.extras_ && slot < StandardPanel::Extras::chainLength; ++slot)
        if (Glob const* const widget = panel.extras_->inSlot(slot)) sum += widget->width();
    return sum;
}

void PanelWidgets::recolour(StandardPanel& panel) {
    if (!panel.extras_) return;
    auto const slots = panel.extras_->slots;
    HandlerRef<Glob> const titleBox = panel.extras_->titleWidget;
    Palette const palette = panel.getColoursForWidgets();
    for (HandlerRef<Glob> const& ref : slots)
        if (Glob* const widget = ref.get()) widget->setPalette(palette);
    if (Glob* const box = titleBox.get()) box->setPalette(palette);
}

void PanelWidgets::resizeToMetrics(StandardPanel& panel) {
    DispatchScope const scope;
    if (!panel.extras_) return;
    auto const slots = panel.extras_->slots;
    int const height = UifStd::getButtonHeight();
    for (HandlerRef<Glob> const& ref : slots) {
        Glob* const widget = ref.get();
        if (widget && widget->height() > 0)
            widget->resize(double(widget->width()) * height / widget->height(), height);
    }
}

bool PanelWidgets::reactTo(StandardPanel& panel, Glob const* sender) {
    using Extras = StandardPanel::Extras;
    if (!sender || !panel.extras_) return false;
    if (sender == panel.extras_->inSlot(Extras::pinSlot)) {
        panel.handlePinned(panel.isPinned());
        return true;
    }
    if (sender != panel.extras_->inSlot(Extras::sizeSlot)) return false;
    LifeGuard const life = panel.guard();
    bool const isConsumed = panel.handleFlipSize() == 1;
    if (!isConsumed && life.alive() && panel.isMinimisable()) panel.setMinimised(!panel.isMinimised());
    return true;
}

void PanelWidgets::showSizeState(StandardPanel& panel, size_state state) {
    bool const isAskedFor =
        (panel.standardFlags_ & (StandardPanel::settingsWidget | StandardPanel::latchWidget)) != 0;
    if (!isAskedFor || !panel.extras_) return;
    LifeGuard const life = panel.guard();
    if (auto* const button = dynamic_cast<iStateButton*>(panel.extras_->inSlot(Slot::optionSlot)))
        button->setDown(state == sizeMinimised, eRedrawYes);
    if (life.alive()) position(panel);
}

// Status area

Glob* PanelWidgets::addStatus(StandardPanel& panel, Glob* widget, unsigned short width) {
    if (!panel.mayTake(widget)) return panel.addChild(nullptr);
    DispatchScope const scope;
    Glib::UpdateDeferrer const deferrer(panel.canvas());
    LifeGuard const life = panel.guard();
    LifeGuard const widgetLife = widget->guard();
    if (width != 0) widget->resize(width, widget->height());
    if (!life.alive() || !widgetLife.alive()) return nullptr;
    bool const isFirst = !hasStatus(panel);
    auto& status = panel.extras().status;
    int const lift = std::max(0, (StandardPanel::calcSize(spacingButton) - widget->height()) / 2);
    int const edge = panel.border_.getSize();
    int const left = edge + StandardPanel::calcSize(spacingIndent);
    Glob* const before = status.empty() ? nullptr : status.back().get();
    Glob* const added = before
                            ? panel.addWidgetRelative(widget, before, UifStd::getWidgetGap(),
                                                      WidgetRelativity::rightOf, {}, WidgetAlignment::centre)
                            : panel.addWidget(widget, left, edge + lift);
    if (!life.alive() || !added) return nullptr;
    panel.extras().status.emplace_back(added);
    // Only the first widget changes the user area.
    if (isFirst) panel.layOut();
    return life.alive() && widgetLife.alive() ? added : nullptr;
}

bool PanelWidgets::hasStatus(StandardPanel const& panel) {
    if (!panel.extras_) return false;
    // Dead widgets at the end are forgotten.
    auto& status = panel.extras_->status;
    while (!status.empty() && !panel.getWidget(status.back().get())) status.pop_back();
    return !status.empty();
}

} // namespace wainscot
