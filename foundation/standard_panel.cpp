#include "foundation/standard_panel_p.h"

#include "foundation/focus_stop.h"
#include "foundation/tab_order_geometry.h"
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
#include "host/objects/kbd_focus.h"
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

/// A Tab that moves the focus: exactly this key, or this with Shift.
bool isTabStep(std::uint32_t keyCode) {
    return keyCode == Key::tab || keyCode == Key::shiftTab;
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
    if (settings.in("title", title)) storeTitle(title, nullptr, eRedrawNo);
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

IntBox StandardPanel::getUserArea() const {
    UserAreaBorders const taken = getUserAreaBorders(layoutFlags(), border_);
    int const status = isStatusWidgetShown() ? calcSize(spacingButton) + calcSize(spacingIndent) : 0;
    int const left = std::min(taken.left, width());
    int const bottom = std::min(taken.bottom + status, height());
    return {left, bottom, std::max(left, width() - taken.right), std::max(bottom, height() - taken.top)};
}

int StandardPanel::layoutFlags() const {
    return standardFlags_ | (extras_ && !extras_->title.isEmpty() ? plainTitle : 0);
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
    keepMinimised();
    if (life.alive()) positionStandardWidgets();
    if (life.alive()) resizeTitleWidget();
    if (life.alive()) positionChildWidgets();
    if (life.alive()) makeDirty();
}

void StandardPanel::reshape() {
    DispatchScope const scope;
    LifeGuard const life = guard();
    rect::reshape();
    if (life.alive()) resizeTitleWidget();
}

void StandardPanel::handleLookChange(LookChange changes) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    rect::handleLookChange(changes);
    if (!life.alive()) return;
    if (standardBorder_) border_ = Border(border_.getType());
    resizeWidgetsToMetrics();
    if (life.alive()) layOut();
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
    return (isTabStep(event.keyCode()) && stepTabFocus(event.keyCode())) || rect::react(event);
}

/// Whether a stop has the focus now, or the panel has died of it.
bool StandardPanel::stepTabFocus(std::uint32_t keyCode) {
    LifeGuard const life = guard();
    bool const forward = keyCode == Key::tab;
    if (wasPassedOn()) return false;
    bool const goesOn =
        tabGoesOn_ && !hasTabStopAhead(forward ? TabOrderable::forward : TabOrderable::backward);
    if (goesOn || !life.alive()) return !life.alive();
    unsigned int const index = forward ? incrementTabStop() : decrementTabStop();
    if (!life.alive() || index == noTabStop) return !life.alive();
    FocusStop::reveal();
    return true;
}

bool StandardPanel::wasPassedOn() const {
    for (Glob const* glob = get_kbd_focus(); glob && glob != this; glob = glob->parent()) {
        auto const* const panel = dynamic_cast<StandardPanel const*>(glob);
        if (panel && panel->tabGoesOn_ && panel->numTabStops() > 0) return true;
    }
    return false;
}

bool StandardPanel::isTabStopHere(TabOrderable& stop) const {
    Glob* const widget = TabOrderGeometry::widgetOf(&stop);
    return !widget || getRootParent(widget) == getRootParent(const_cast<StandardPanel*>(this));
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
    if (reactToStandardWidget(event.sender())) return true;
    Diagnostics::count("message not handled", name.c_str());
    return false;
}

bool StandardPanel::reactToStandardWidget(Glob const* sender) {
    if (!sender || !extras_) return false;
    if (sender == extras_->inSlot(Extras::pinSlot)) {
        handlePinned(isPinned());
        return true;
    }
    if (sender != extras_->inSlot(Extras::sizeSlot)) return false;
    LifeGuard const life = guard();
    if (handleFlipSize() == handled || !life.alive()) return true;
    if (minimisable_) setMinimised(!minimised_);
    return true;
}

bool StandardPanel::reactToMouse(Event const& event) {
    if (grip_ != 0 && followDrag(event)) return true;
    LifeGuard const life = guard();
    if (handleMouseEvent(event) == handled || !life.alive()) return true;
    return beginDrag(event) || rect::react(event);
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
    if ((standardFlags_ & (settingsWidget | latchWidget)) == 0 || !extras_) return;
    LifeGuard const life = guard();
    if (auto* const button = dynamic_cast<iStateButton*>(extras_->inSlot(Extras::optionSlot)))
        button->setDown(state == sizeMinimised, eRedrawYes);
    if (life.alive()) positionStandardWidgets();
}

void StandardPanel::describe(GlobDescription& description) const {
    rect::describe(description);
    if (extras_ && !extras_->title.isEmpty()) description.name = getTitleW();
    if (minimisable_ && !minimised_) description.states |= GlobDescription::expanded;
}

} // namespace wainscot
