#include "foundation/standard_panel_p.h"

#include "host/drawing/drawable.h"
#include "host/drawing/uif_std.h"
#include "host/events/dispatch_scope.h"
#include "host/events/messages.h"
#include "host/objects/description.h"

#include <algorithm>

namespace wainscot {

namespace {

/// Which bit asks for which widget. Where two want one place, the first wins.
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

constexpr int editableFlags = StandardPanel::editableTitle | StandardPanel::editableTitleToo;
constexpr unsigned short allFlags = StandardPanel::stripFlags | StandardPanel::doItWidget;

} // namespace

StandardPanel::Extras::Slot StandardPanel::Extras::slotOf(StandardWidget which) {
    switch (which) {
    case StandardWidget::close:
        return closeSlot;
    case StandardWidget::size:
        return sizeSlot;
    case StandardWidget::pin:
        return pinSlot;
    case StandardWidget::settings:
    case StandardWidget::latch:
        return optionSlot;
    case StandardWidget::doIt:
        break;
    }
    return doItSlot;
}

// Standard widgets

void StandardPanel::addStandardWidgets(int flags) {
    DispatchScope const scope;
    Glib::UpdateDeferrer const deferrer(canvas());
    standardFlags_ = (standardFlags_ | flags) & allFlags;
    if (standardFlags_ == 0) return;
    LifeGuard const life = guard();
    makeMissingWidgets();
    if (life.alive()) layOut();
}

void StandardPanel::makeMissingWidgets() {
    Registry::MakeStandardWidget const make = Registry::instance().makeStandardWidget;
    LifeGuard const life = guard();
    for (Wish const& wish : wishes) {
        Extras::Slot const slot = Extras::slotOf(wish.widget);
        if (!make || (standardFlags_ & wish.flag) == 0 || extras().inSlot(slot)) continue;
        Glob* const widget = make(getColoursForWidgets(), wish.widget);
        Glob* const added = widget ? addChild(widget) : nullptr;
        if (!life.alive()) return;
        if (!added) destroy(widget);
        extras().slots[slot] = Extras::WidgetRef(added);
        if (slot == Extras::optionSlot) extras().optionIsLatch = wish.widget == StandardWidget::latch;
    }
    if ((standardFlags_ & editableFlags) != 0) makeTitleBox();
}

void StandardPanel::removeStandardWidgets(int flags, bool redraw) {
    DispatchScope const scope;
    Glib::UpdateDeferrer const deferrer(canvas());
    standardFlags_ = standardFlags_ & ~flags & allFlags;
    if (!extras_) return;
    LifeGuard const life = guard();
    for (Wish const& wish : wishes) {
        if ((flags & wish.flag) != 0 && life.alive()) removeStandardWidget(wish.widget, redraw);
    }
    if (!life.alive()) return;
    if ((standardFlags_ & editableFlags) == 0) removeTitleBox(redraw);
    if (life.alive()) layOut();
}

void StandardPanel::removeStandardWidget(StandardWidget which, bool redraw) {
    bool const isOption = which == StandardWidget::settings || which == StandardWidget::latch;
    if (isOption && extras_->optionIsLatch != (which == StandardWidget::latch)) return;
    Extras::WidgetRef& slot = extras_->slots[Extras::slotOf(which)];
    Glob* widget = slot.get();
    slot = {};
    if (getWidget(widget)) removeWidget(widget, redraw);
}

bool StandardPanel::isStandardWidget(Glob const* widget) const {
    if (!widget || !extras_) return false;
    auto const isIt = [widget](Extras::WidgetRef const& ref) { return ref.get() == widget; };
    return std::any_of(extras_->slots.begin(), extras_->slots.end(), isIt) || isIt(extras_->titleWidget);
}

Glob* StandardPanel::getStandardWidget(StandardWidget which) const {
    if (!extras_) return nullptr;
    bool const isOther = (which == StandardWidget::settings && extras_->optionIsLatch) ||
                         (which == StandardWidget::latch && !extras_->optionIsLatch);
    return isOther ? nullptr : extras_->inSlot(Extras::slotOf(which));
}

void StandardPanel::positionStandardWidgets() {
    if (!extras_) return;
    DispatchScope const scope;
    int const edge = border_.getSize();
    LifeGuard const life = guard();
    Glob* before = nullptr;
    for (std::size_t slot = 0; slot < Extras::chainLength; ++slot) {
        Glob* const widget = extras_->inSlot(slot);
        if (!getWidget(widget)) continue;
        Glob* const placed = before ? addWidgetRelative(widget, before, 0, WidgetRelativity::leftOf, {},
                                                        WidgetAlignment::centre)
                                    : addWidget(widget, edge, edge, CoordinateOrigin::topRight);
        if (!life.alive()) return;
        if (placed) before = placed;
    }
    Glob* const doIt = extras_->inSlot(Extras::doItSlot);
    if (getWidget(doIt)) addWidget(doIt, edge, edge, CoordinateOrigin::bottomRight);
}

int StandardPanel::chainWidth() const {
    int sum = 0;
    for (std::size_t slot = 0; extras_ && slot < Extras::chainLength; ++slot)
        if (Glob const* const widget = extras_->inSlot(slot)) sum += widget->width();
    return sum;
}

void StandardPanel::recolourWidgets() {
    if (!extras_) return;
    auto const slots = extras_->slots;
    Extras::WidgetRef const titleBox = extras_->titleWidget;
    Palette const palette = getColoursForWidgets();
    for (Extras::WidgetRef const& ref : slots)
        if (Glob* const widget = ref.get()) widget->setPalette(palette);
    if (Glob* const box = titleBox.get()) box->setPalette(palette);
}

/// They were made for the metrics of their time; their proportions stay.
void StandardPanel::resizeWidgetsToMetrics() {
    DispatchScope const scope;
    if (!extras_) return;
    auto const slots = extras_->slots;
    int const height = UifStd::getButtonHeight();
    for (Extras::WidgetRef const& ref : slots) {
        Glob* const widget = ref.get();
        if (widget && widget->height() > 0)
            widget->resize(double(widget->width()) * height / widget->height(), height);
    }
}

void StandardPanel::setPalette(Palette const& palette) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    rect::setPalette(palette);
    if (life.alive()) recolourWidgets();
}

void StandardPanel::setCol(Colour const& colour, bool redraw) {
    DispatchScope const scope;
    Glob::setCol(colour, redraw);
    recolourWidgets();
}

Palette StandardPanel::getColoursForWidgets() const {
    bool const hasOwnColour = getCol() != getPalette().window(eWindowNormal);
    return hasOwnColour ? Palette(getCol()) : getPalette();
}

// Status area

Glob* StandardPanel::addStatusWidget(Glob* widget, unsigned short width) {
    if (!mayTake(widget)) return addChild(nullptr);
    DispatchScope const scope;
    Glib::UpdateDeferrer const deferrer(canvas());
    LifeGuard const life = guard();
    LifeGuard const widgetLife = widget->guard();
    if (width != 0) widget->resize(width, widget->height());
    if (!life.alive() || !widgetLife.alive()) return nullptr;
    bool const isFirst = !isStatusWidgetShown();
    auto& status = extras().status;
    int const lift = std::max(0, (calcSize(spacingButton) - widget->height()) / 2);
    Glob* const before = status.empty() ? nullptr : status.back().get();
    Glob* const added =
        before ? addWidgetRelative(widget, before, UifStd::getWidgetGap(), WidgetRelativity::rightOf, {},
                                   WidgetAlignment::centre)
               : addWidget(widget, border_.getSize() + calcSize(spacingIndent), border_.getSize() + lift);
    if (!life.alive() || !added) return nullptr;
    extras().status.emplace_back(added);
    // The user area changes with the first one only.
    if (isFirst) layOut();
    return life.alive() && widgetLife.alive() ? added : nullptr;
}

bool StandardPanel::isStatusWidgetShown() const {
    if (!extras_) return false;
    // What has gone from the end is not asked about again.
    auto& status = extras_->status;
    while (!status.empty() && !getWidget(status.back().get())) status.pop_back();
    return !status.empty();
}

// Title

void StandardPanel::setTitle(UIString const& title, Glib::FontDesc const& font, eRedrawFlag redraw) {
    storeTitle(title, &font, redraw);
}

void StandardPanel::setTitle(UIString const& title, eRedrawFlag redraw) {
    storeTitle(title, nullptr, redraw);
}

void StandardPanel::storeTitle(UIString const& title, Glib::FontDesc const* font, eRedrawFlag redraw) {
    std::optional<Glib::FontDesc> const wanted = font ? std::optional(*font) : std::nullopt;
    bool const isSame =
        extras_ ? extras_->title == title && extras_->titleFont == wanted : title.isEmpty() && !wanted;
    if (isSame) return;
    DispatchScope const scope;
    bool const hadStrip = hasStrip();
    extras().title = title;
    extras().titleFont = wanted;
    LifeGuard const life = guard();
    if (hadStrip != hasStrip()) layOut();
    if (life.alive()) handleTitleChangeInternal(redraw);
}

UIString StandardPanel::getTitle() const {
    return extras_ ? extras_->title : UIString();
}

LightweightString<wchar_t> StandardPanel::getTitleW() const {
    return getTitle().text();
}

ResId StandardPanel::getTitleResId() const {
    return getTitle().resId();
}

Glib::FontDesc StandardPanel::getTitleFont() const {
    return extras_ && extras_->titleFont ? *extras_->titleFont : UifStd::getTitleFont();
}

void StandardPanel::handleTitleChangeInternal(eRedrawFlag redraw) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    if (getTitleWidget()) extras_->titleBox->setTitleText(getTitleW());
    if (!life.alive()) return;
    if (redraw) damage(getTitleBar());
    describeChanged(DescriptionChange::name);
    if (life.alive()) handleTitleChange();
}

void StandardPanel::setEditableTitle(bool editable) {
    if (editable)
        addStandardWidgets(editableTitle);
    else
        removeStandardWidgets(editableFlags);
}

void StandardPanel::makeTitleBox() {
    Registry::MakeTitleBox const make = Registry::instance().makeTitleBox;
    if (!make || getTitleWidget()) return;
    LifeGuard const life = guard();
    iTitleBox* const box = make(*this, getTitleW(), getTitleFont());
    if (!box) return;
    Glob* const added = addChild(&box->glob());
    if (!life.alive()) return;
    if (!added) return destroy(&box->glob());
    extras().titleBox = box;
    extras().titleWidget = Extras::WidgetRef(added);
}

void StandardPanel::removeTitleBox(bool redraw) {
    Glob* widget = getTitleWidget();
    if (!widget) return;
    extras_->titleBox = nullptr;
    extras_->titleWidget = {};
    if (getWidget(widget)) removeWidget(widget, redraw);
}

Glob* StandardPanel::getTitleWidget() const {
    return extras_ ? extras_->titleWidget.get() : nullptr;
}

int StandardPanel::calcTitleWidth(UIString const& title) const {
    return Glib::loadFont(getTitleFont())->textWidth(title.text());
}

int StandardPanel::calcMaxTitleWidgetWidth() const {
    return std::max(0, width() - 2 * border_.getSize() - calcSize(spacingDoubleIndent) - chainWidth());
}

void StandardPanel::resizeTitleWidget() {
    Glob* const box = getTitleWidget();
    if (!getWidget(box)) return;
    DispatchScope const scope;
    LifeGuard const life = guard();
    LifeGuard const boxLife = box->guard();
    int const edge = border_.getSize();
    box->resize(calcMaxTitleWidgetWidth(), calcSize(spacingButton));
    if (!life.alive() || !boxLife.alive() || !getWidget(box)) return;
    addWidget(box, edge + calcSize(spacingIndent), edge, CoordinateOrigin::topLeft);
    if (life.alive()) handleTitleWidgetResize();
}

void StandardPanel::handleTitleTyped() {
    tellParent(titleTyped);
}

void StandardPanel::handleTitleEdited() {
    DispatchScope const scope;
    if (!getTitleWidget()) return;
    UIString const edited(extras_->titleBox->titleText());
    if (edited.text() == getTitleW()) return;
    LifeGuard const life = guard();
    extras_->title = edited;
    describeChanged(DescriptionChange::name);
    if (life.alive()) handleTitleChange();
    if (life.alive()) tellParent(titleChanged);
}

void StandardPanel::tellParent(Messages which) {
    if (parent()) Reporter().report(*this, parent(), messageTable[which]);
}

} // namespace wainscot
