#include "containers/scroll_bar.h"

#include "buttons/button.h"
#include "host/base/convert.h"
#include "host/base/diagnostics.h"
#include "host/base/first_exception.h"
#include "host/drawing/drawable.h"
#include "host/drawing/uif_std.h"
#include "host/events/dispatch_scope.h"
#include "host/events/messages.h"
#include "host/objects/description.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace wainscot {

namespace {

/// Changes of position or size below this are none.
constexpr double tolerance = 1e-6;
constexpr LightweightString<char> messagePrefix{"ScrollBar::"};
constexpr std::array<LightweightString<char>, 6> messages{
    ScrollBar::thumbMovedMsg,        ScrollBar::thumbReleasedMsg,     ScrollBar::upButtonPressedMsg,
    ScrollBar::downButtonPressedMsg, ScrollBar::leftButtonPressedMsg, ScrollBar::rightButtonPressedMsg};

unsigned short usualThickness() {
    return toSize16(ScrollBar::thickness());
}

double validSize(double size) {
    return size > 0 && size < 1 ? size : 1.0;
}

double validPosition(double position, double size) {
    return position > 0 ? std::min(position, 1 - size) : 0.0;
}

} // namespace

ScrollBar::InitArgs::InitArgs(Orientation lie, unsigned short length)
    : InitArgs(lie, lie == eVertical ? usualThickness() : length,
               lie == eVertical ? length : usualThickness()) {}

ScrollBar::InitArgs::InitArgs(Orientation lie, unsigned short w, unsigned short h)
    : GlobCreationInfo(w, h), orientation(lie) {
    opaque = false;
}

ScrollBar::ScrollBar(InitArgs const& args)
    : StandardPanel(StandardPanel::InitArgs(args, Border(Border::none))), size_(validSize(args.thumb.size)),
      orientation_(args.orientation), resizable_(args.resizable), listener_(args.listener) {
    position_ = validPosition(args.thumb.position, size_);
    if (args.arrowButtons) addArrowButtons();
}

ScrollBar::~ScrollBar() = default;

bool ScrollBar::isScrollBarMsg(LightweightString<char> const& name) {
    return name.startsWith(messagePrefix.view());
}

// Value

bool ScrollBar::setThumbPos(double position) {
    if (std::isnan(position)) Diagnostics::count("no number", "ScrollBar::setThumbPos");
    if (std::isnan(position) || std::abs(position - position_) < tolerance) return false;
    storeThumb({validPosition(position, size_), size_}, eRedrawYes);
    return true;
}

bool ScrollBar::setThumbSize(double size) {
    if (std::abs(size - size_) < tolerance) return false;
    double const valid = validSize(size);
    storeThumb({validPosition(position_, valid), valid}, eRedrawYes);
    return true;
}

void ScrollBar::setNewWidgetValue(ThumbSettings& value, eRedrawFlag redraw) {
    DispatchScope const scope;
    double const size = validSize(value.size);
    double const position = std::isnan(value.position) ? position_ : value.position;
    storeThumb({validPosition(position, size), size}, redraw);
    value = getWidgetValue();
}

void ScrollBar::storeThumb(ThumbSettings const& thumb, eRedrawFlag redraw) {
    if (thumb == getWidgetValue()) return;
    DispatchScope const scope;
    if (redraw == eRedrawYes) redrawThumb();
    position_ = thumb.position;
    size_ = thumb.size;
    if (redraw == eRedrawYes) redrawThumb();
    updateHover();
    LifeGuard const life = guard();
    updateButtonStates(redraw);
    if (life.alive()) describeChanged(DescriptionChange::value);
}

DataAnswer ScrollBar::tellData(ThumbSettings const& fallback, DataChangeType why) {
    ThumbSettings const wanted = getWidgetValue();
    LifeGuard const life = guard();
    bool const taken = requestSetNewDataValue(wanted, why);
    if (!life.alive()) return DataAnswer::widgetHasGone;
    // The data may have shown another value.
    if (!taken && getWidgetValue() == wanted) storeThumb(fallback, eRedrawYes);
    if (!life.alive()) return DataAnswer::widgetHasGone;
    return taken ? DataAnswer::taken : DataAnswer::refused;
}

bool ScrollBar::tellMoved(ThumbSettings const& before, ThumbSettings const& fallback, DataChangeType why,
                          StillOn isStillOn) {
    FirstException thrown;
    DataAnswer answer = DataAnswer::refused;
    LifeGuard const life = guard();
    thrown.run([&] { answer = tellData(fallback, why); });
    if (life.alive()) {
        held_.accept(getWidgetValue());
        bool const hasMoved = answer == DataAnswer::taken || getWidgetValue() != before;
        if (hasMoved && (this->*isStillOn)()) thrown.run([&] { report(thumbMoved); });
    }
    thrown.rethrow();
    return life.alive();
}

// State

void ScrollBar::setActive(bool active, eRedrawFlag redraw) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    if (!active && !endPress()) return;
    StandardPanel::setActive(active, redraw);
    if (life.alive() && redraw == eRedrawYes) makeDirty();
}

void ScrollBar::setVisible(bool visible) {
    DispatchScope const scope;
    if (visible || endPress()) StandardPanel::setVisible(visible);
}

void ScrollBar::handleDetached() {
    leaveDataAdaptor();
    StandardPanel::handleDetached();
}

// Reporting

void ScrollBar::informParent(eEventType type) {
    DispatchScope const scope;
    Glib::UpdateDeferrer const deferrer(canvas());
    auto const index = static_cast<std::size_t>(type);
    if (index >= messages.size()) return;
    if (WidgetCallback::Callback const listener = listener_) {
        NotifyMsg message(messages[index], Qv::Ptr<iObject>(new Event(type)));
        message.setCode(type);
        listener->call(message);
        return;
    }
    sendMessage(messages[index], parent(), static_cast<Glob*>(this));
}

bool ScrollBar::report(eEventType type) {
    LifeGuard const life = guard();
    informParent(type);
    if (life.alive()) showThumbPosition();
    return life.alive();
}

void ScrollBar::showThumbPosition() {
    DispatchScope const scope;
    redrawThumb();
    updateHover();
    updateButtonStates(eRedrawYes);
}

int ScrollBar::handleMessageEvent(LightweightString<char> name, Glob* sender) {
    if (!sender || (sender != firstButton_.get() && sender != lastButton_.get())) return 0;
    auto const found = std::find(messages.begin(), messages.end(), name);
    if (found == messages.end()) return 0;
    report(static_cast<eEventType>(found - messages.begin()));
    return 1;
}

void ScrollBar::describe(GlobDescription& description) const {
    StandardPanel::describe(description);
    description.role = Role::scrollBar;
    description.name = fromUTF8(name());
    description.value = Qv::WStringFromFloat(position_);
    description.number = {position_, 0, 1 - size_, 0, size_};
    if (isDragging()) description.states |= GlobDescription::pressed;
    description.actions |= GlobDescription::drag;
}

} // namespace wainscot
