#include "foundation/standard_panel_p.h"

#include "foundation/panel_frame_p.h"
#include "foundation/panel_look_p.h"
#include "foundation/panel_minimising_p.h"
#include "foundation/panel_tab_keys_p.h"
#include "foundation/panel_title_p.h"
#include "foundation/panel_widgets_p.h"
#include "host/base/configb.h"
#include "host/base/convert.h"
#include "host/base/diagnostics.h"
#include "host/drawing/drawable.h"
#include "host/drawing/uif_std.h"
#include "host/events/dispatch_scope.h"
#include "host/events/event.h"
#include "host/events/event_system.h"
#include "host/events/messages.h"
#include "host/objects/description.h"
#include "host/objects/tooltip_details.h"
#include "host/windows/glob_manager.h"
#include "host/windows/popup_chain.h"
#include "host/windows/top_level_window.h"

#include <algorithm>

namespace wainscot {

namespace {

constexpr int handled = 1;
constexpr int unhandled = 0;

Border savedBorder(configb const& settings) {
    int kind = Border::none;
    if (!settings.in("border", kind) || kind < Border::none || kind > Border::group) return Border();
    auto const type = static_cast<Border::eType>(kind);
    int size = 0;
    return settings.in("border_size", size) ? Border(type, toSize16(size)) : Border(type);
}

} // namespace

StandardPanel::StandardPanel(InitArgs const& args) : rect(args), TabOrderManager(false) {
    init(args.border);
}

StandardPanel::StandardPanel(unsigned short width, unsigned short height)
    : StandardPanel(width, height, Palette()) {}

StandardPanel::StandardPanel(unsigned short width, unsigned short height, Palette const& palette, bool opaque,
                             Canvas* canvas)
    : rect(width, height, palette, opaque, canvas), TabOrderManager(false) {
    init(Border());
}

StandardPanel::StandardPanel(XY<int> const& size) : StandardPanel(size, Palette()) {}

StandardPanel::StandardPanel(XY<int> const& size, Palette const& palette)
    : StandardPanel(toSize16(size.x), toSize16(size.y), palette) {}

StandardPanel::StandardPanel(configb const& settings, unsigned short width, unsigned short height)
    : rect(settings, width, height), TabOrderManager(false) {
    init(savedBorder(settings));
    LightweightString<wchar_t> title;
    if (settings.in("title", title)) PanelTitle::store(*this, title, nullptr, eRedrawNo);
    int flags = 0;
    if (settings.in("standard_widgets", flags)) addStandardWidgets(flags);
}

StandardPanel::~StandardPanel() = default;

void StandardPanel::handleDetached() {
    removeAllTabStops();
    rect::handleDetached();
}

void StandardPanel::init(Border const& border) {
    extras_.reset();
    standardFlags_ = 0;
    sizeState_ = sizeFull;
    setBorder(border);
}

StandardPanel::Extras& StandardPanel::extras() {
    if (!extras_) extras_ = std::make_unique<Extras>();
    return *extras_;
}

// Geometry

int StandardPanel::calcSize(eSpacing spacing, float scale, Border const& border) {
    int const indent = UifStd::getIndentWidth();
    int const button = UifStd::getButtonHeight(scale);
    switch (spacing) {
    case spacingButton:
        return button;
    case spacingIndent:
    case spacingEdge:
        return indent;
    case spacingDoubleIndent:
        return 2 * indent;
    case spacingTitleStrip:
        return button + (Border::isRoomy(border.getType()) ? 4 : 2) * indent;
    }
    return 0;
}

StandardPanel::UserAreaBorders StandardPanel::getUserAreaBorders(int flags, Border const& border) {
    int const edge = border.getSize();
    int const strip = (flags & stripFlags) != 0 ? calcSize(spacingTitleStrip, 1.0F, border) : 0;
    return {edge, edge, edge, edge + strip};
}

XY<int> StandardPanel::calcPanelSize(XY<int> const& userSize, int flags, Border const& border) {
    UserAreaBorders const taken = getUserAreaBorders(flags, border);
    return userSize + XY<int>{taken.left + taken.right, taken.bottom + taken.top};
}

StandardPanel::UserAreaBorders StandardPanel::takenOfUserArea() const {
    UserAreaBorders taken = getUserAreaBorders(layoutFlags(), border_);
    if (PanelWidgets::hasStatus(*this)) taken.bottom += calcSize(spacingButton) + calcSize(spacingIndent);
    return taken;
}

IntBox StandardPanel::getUserArea() const {
    UserAreaBorders const taken = takenOfUserArea();
    int const left = std::min(taken.left, width());
    int const bottom = std::min(taken.bottom, height());
    return {left, bottom, std::max(left, width() - taken.right), std::max(bottom, height() - taken.top)};
}

int StandardPanel::layoutFlags() const {
    return standardFlags_ | (PanelTitle::isEmpty(*this) ? 0 : plainTitle);
}

void StandardPanel::setBorder(Border const& border) {
    standardBorder_ = border.getSize() == Border::calcSize(border.getType());
    if (border == border_) return;
    border_ = border;
    layOut();
}

void StandardPanel::layOut() {
    DispatchScope const scope;
    Glib::UpdateDeferrer const deferrer(canvas());
    LifeGuard const life = guard();
    PanelMinimising::keep(*this);
    if (life.alive()) positionStandardWidgets();
    if (life.alive()) resizeTitleWidget();
    if (life.alive()) positionChildWidgets();
    if (!life.alive()) return;
    if (Layout* const layout = getLayout()) layout->changed();
    makeDirty();
}

void StandardPanel::reshape() {
    DispatchScope const scope;
    LifeGuard const life = guard();
    rect::reshape();
    if (life.alive()) resizeTitleWidget();
    if (life.alive() && getLayout()) askForLayout();
}

void StandardPanel::handleLookChange(LookChange changes) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    rect::handleLookChange(changes);
    if (!life.alive()) return;
    if (standardBorder_) border_ = Border(border_.getType());
    PanelWidgets::resizeToMetrics(*this);
    if (!life.alive()) return;
    if (Layout* const layout = getLayout()) layout->forgetNeeds();
    layOut();
}

// Layout

/// The former one lives until it has been left.
bool StandardPanel::takeLayout(std::unique_ptr<Layout> layout) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    if (layout && layout->panel()) {
        Diagnostics::count("layout refused", "it belongs to a panel");
        return false;
    }
    if (!layout && !getLayout()) return true;
    Layout* const taken = layout.get();
    std::unique_ptr<Layout> former = std::exchange(extras().layout, std::move(layout));
    if (former) former->attach(nullptr);
    Layout::retire(std::move(former));
    needsChanged();
    if (life.alive() && taken && getLayout() == taken) taken->attach(this);
    return life.alive() && getLayout() == taken;
}

void StandardPanel::setLayout(std::nullptr_t) {
    takeLayout(nullptr);
}

Layout* StandardPanel::getLayout() const {
    return extras_ ? extras_->layout.get() : nullptr;
}

SizeNeeds StandardPanel::sizeNeeds() const {
    if (!getLayout() || minimised_) return rect::sizeNeeds();
    SizeNeeds needs = getLayout()->needs();
    UserAreaBorders const taken = takenOfUserArea();
    XY<int> const around{taken.left + taken.right, taken.bottom + taken.top};
    if (needs.natural.x >= 0) needs.natural += around;
    if (needs.minimum.x >= 0) needs.minimum += around;
    return needs;
}

int StandardPanel::heightForWidth(int width) const {
    if (!getLayout() || minimised_) return rect::heightForWidth(width);
    UserAreaBorders const taken = takenOfUserArea();
    return getLayout()->heightForWidth(width - taken.left - taken.right) + taken.bottom + taken.top;
}

bool StandardPanel::handleChildChange(Glob& child, ChildChange change) {
    return getLayout() && getLayout()->childChanged(child, change);
}

/// Its own widgets are hidden while it is minimised.
void StandardPanel::handleLayout() {
    if (getLayout() && !minimised_) getLayout()->layOutNow();
}

// Events

bool StandardPanel::react(Event const& event) {
    if (isMessageEvent(event)) return reactToMessage(event);
    if (isKeyPressEvent(event)) return reactToKey(event);
    if (mouse_event(event)) return reactToMouse(event);
    LifeGuard const life = guard();
    int answer = unhandled;
    if (isKeyReleaseEvent(event))
        answer = handleKeyReleaseEvent(static_cast<int>(event.keyCode()));
    else if (mouse_zoom_event(event))
        answer = handleZoom(event.amount());
    else if (isTimerEvent(event))
        answer = handleTimerEvent();
    return answer == handled || !life.alive() || rect::react(event);
}

bool StandardPanel::reactToKey(Event const& event) {
    LifeGuard const life = guard();
    int const answer = handleKeyboardEvent(static_cast<int>(event.keyCode()));
    if (answer == handled || !life.alive()) return true;
    if (answer != unhandled) return Glob::react(event);
    return PanelTabKeys::step(*this, event.keyCode()) || rect::react(event);
}

bool StandardPanel::isTabStopHere(TabOrderable& stop) const {
    return PanelTabKeys::isStopHere(*this, stop);
}

bool StandardPanel::reactToMessage(Event const& event) {
    LightweightString<char> const name = event.message();
    LifeGuard const life = guard();
    int const answer = event.hasData() ? handleDataMessageEvent(name, event.sender(), event.data())
                                       : handleMessageEvent(name, event.sender());
    noteMessageAnswer(answer);
    if (answer == handled || !life.alive()) return true;
    if (name == pootMsg) {
        handlePoot();
        return true;
    }
    if (PanelWidgets::reactTo(*this, event.sender())) return true;
    Diagnostics::count("message not handled", name.c_str());
    return false;
}

bool StandardPanel::reactToMouse(Event const& event) {
    if (PanelFrame::follow(*this, event)) return true;
    LifeGuard const life = guard();
    if (handleMouseEvent(event) == handled || !life.alive()) return true;
    return PanelFrame::begin(*this, event) || rect::react(event);
}

void StandardPanel::handlePressCancelled(Event const& press) {
    LifeGuard const life = guard();
    PanelFrame::takeBack(*this, press.pressPlace());
    if (life.alive()) rect::handlePressCancelled(press);
}

/// A drag that ended for another reason (the panel was hidden) is noticed here.
void StandardPanel::handleCaptureLost() {
    PanelFrame::end(*this);
    rect::handleCaptureLost();
}

MouseCursorID StandardPanel::contextCursor(XY<int> const& place) const {
    MouseCursorID const cursor = PanelFrame::cursorAt(*this, place);
    return cursor != inheritCursor ? cursor : rect::contextCursor(place);
}

bool StandardPanel::getTooltipDetails(XY<int> const& place, TooltipDetails& details) const {
    return rect::getTooltipDetails(place, details) || PanelTitle::tipAt(*this, place, details);
}

int StandardPanel::handleKeyboardEvent(int) {
    return unhandled;
}

int StandardPanel::handleKeyReleaseEvent(int) {
    return unhandled;
}

int StandardPanel::handleMouseEvent(Event const&) {
    return unhandled;
}

int StandardPanel::handleZoom(int) {
    return unhandled;
}

int StandardPanel::handleTimerEvent() {
    return unhandled;
}

int StandardPanel::handleFlipSize() {
    return unhandled;
}

void StandardPanel::handleTitleChange() {}

void StandardPanel::handleTitleWidgetResize() {}

void StandardPanel::handlePoot() {
    LifeGuard const life = guard();
    if (canBeDestroyed(0) && life.alive()) destroy(this);
}

// State

bool StandardPanel::isPinned() const {
    Glob const* const pin = getStandardWidget(StandardWidget::pin);
    auto const* const button = dynamic_cast<iStateButton const*>(pin);
    return button && button->isDown();
}

void StandardPanel::handlePinned(bool pinned) {
    handleAutoClose(!pinned);
}

void StandardPanel::handleAutoClose(bool closes) {
    GlobManager* const windows = GlobManager::current();
    Glob* const root = getRootParent(this);
    if (!windows || !windows->isPopUp(root)) return;
    if (!closes) return windows->pinPopUp(root);
    if (windows->popUps().contains(root)) return;
    TopLevelWindow const* const owner = windows->activeWindow();
    windows->popUps().add(*root, nullptr, nullptr, owner ? &owner->root() : nullptr);
}

void StandardPanel::setSizeFlag(size_state state) {
    DispatchScope const scope;
    sizeState_ = state;
    PanelWidgets::showSizeState(*this, state);
}

void StandardPanel::setMinimised(bool minimised) {
    PanelMinimising::set(*this, minimised);
}

void StandardPanel::setResizable(bool resizable) {
    resizableEdges_ = resizable;
    Glob::setResizable(resizable);
}

void StandardPanel::describe(GlobDescription& description) const {
    rect::describe(description);
    if (!PanelTitle::isEmpty(*this)) description.name = getTitleW();
    if (minimisable_ && !minimised_) description.states |= GlobDescription::expanded;
}

// Title

void StandardPanel::setTitle(UIString const& title, Glib::FontDesc const& font, eRedrawFlag redraw) {
    PanelTitle::store(*this, title, &font, redraw);
}

void StandardPanel::setTitle(UIString const& title, eRedrawFlag redraw) {
    PanelTitle::store(*this, title, nullptr, redraw);
}

UIString StandardPanel::getTitle() const {
    return PanelTitle::text(*this);
}

LightweightString<wchar_t> StandardPanel::getTitleW() const {
    return getTitle().text();
}

ResId StandardPanel::getTitleResId() const {
    return getTitle().resId();
}

Glib::FontDesc StandardPanel::getTitleFont() const {
    return PanelTitle::font(*this);
}

void StandardPanel::setEditableTitle(bool editable) {
    if (editable)
        addStandardWidgets(editableTitle);
    else
        removeStandardWidgets(PanelWidgets::editableFlags);
}

Glob* StandardPanel::getTitleWidget() const {
    return PanelTitle::box(*this);
}

int StandardPanel::calcTitleWidth(UIString const& title) const {
    return PanelTitle::widthOf(*this, title);
}

int StandardPanel::calcMaxTitleWidgetWidth() const {
    return PanelTitle::rowWidth(*this);
}

void StandardPanel::resizeTitleWidget() {
    PanelTitle::resizeBox(*this);
}

void StandardPanel::handleTitleChangeInternal(eRedrawFlag redraw) {
    PanelTitle::changed(*this, redraw);
}

void StandardPanel::handleTitleTyped() {
    PanelTitle::typed(*this);
}

void StandardPanel::handleTitleEdited() {
    PanelTitle::edited(*this);
}

// Standard widgets and status area

void StandardPanel::addStandardWidgets(int flags) {
    PanelWidgets::add(*this, flags);
}

void StandardPanel::removeStandardWidgets(int flags, bool redraw) {
    PanelWidgets::remove(*this, flags, redraw);
}

bool StandardPanel::isStandardWidget(Glob const* widget) const {
    return PanelWidgets::isOne(*this, widget);
}

Glob* StandardPanel::getStandardWidget(StandardWidget which) const {
    return PanelWidgets::get(*this, which);
}

void StandardPanel::positionStandardWidgets() {
    PanelWidgets::position(*this);
}

Glob* StandardPanel::addStatusWidget(Glob* widget, unsigned short width) {
    return PanelWidgets::addStatus(*this, widget, width);
}

// Look

void StandardPanel::setPalette(Palette const& palette) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    rect::setPalette(palette);
    if (life.alive()) PanelWidgets::recolour(*this);
}

void StandardPanel::setCol(Colour const& colour, bool redraw) {
    DispatchScope const scope;
    Glob::setCol(colour, redraw);
    PanelWidgets::recolour(*this);
}

Palette StandardPanel::getColoursForWidgets() const {
    bool const hasOwnColour = getCol() != getPalette().window(eWindowNormal);
    return hasOwnColour ? Palette(getCol()) : getPalette();
}

void StandardPanel::drawBackground() {
    if (!isOpaque()) return;
    PanelLook::drawCorners(*this);
    rect::drawBackground();
    PanelLook::drawTitleBar(*this);
}

void StandardPanel::drawBorder() {
    drawBorder(1.0F);
}

void StandardPanel::drawBorder(float scale) {
    PanelLook::drawBorder(*this, scale);
}

void StandardPanel::drawSquarePanelBorder(float scale, unsigned int edges) {
    PanelLook::drawSquareBorder(*this, scale, edges);
}

void StandardPanel::drawTitleSeparator(float scale) {
    PanelLook::drawTitleSeparator(*this, scale);
}

void StandardPanel::eraseRectangle(IntBox const& box, Colour const& colour) {
    PanelLook::erase(*this, box, colour);
}

IntBox StandardPanel::getTitleBar() const {
    return PanelTitle::bar(*this);
}

} // namespace wainscot
