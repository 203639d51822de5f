#include "containers/scroll_bar.h"

#include "buttons/button.h"
#include "host/base/convert.h"
#include "host/base/diagnostics.h"
#include "host/drawing/drawable.h"
#include "host/drawing/uif_std.h"
#include "host/events/dispatch_scope.h"
#include "host/events/messages.h"
#include "host/objects/description.h"

#include <algorithm>
#include <cmath>

namespace wainscot {

namespace {

/// Smaller changes of position or size are ignored.
constexpr double tolerance = 1e-6;
constexpr LightweightString<char> messagePrefix{"ScrollBar::"};
constexpr std::size_t numTypes = ScrollBar::rightButtonPressed + 1;

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

ScrollBar::InitArgs::InitArgs(Orientation lie, XY<int> const& size)
    : InitArgs(lie, toSize16(size.x), toSize16(size.y)) {}

ScrollBar::ScrollBar(InitArgs const& args)
    : Bindable(StandardPanel::InitArgs(args, Border(Border::none))), size_(validSize(args.thumb.size)),
      orientation_(args.orientation), resizable_(args.resizable) {
    setListener(args.listener);
    position_ = validPosition(args.thumb.position, size_);
    setPressButtons(wainscot::EventKind::left | wainscot::EventKind::right);
    usualThickness_ = (isVertical() ? width() : height()) == thickness();
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

/// Nothing is reported once the data has ended the drag.
void ScrollBar::reportUserChange(DataChangeType) {
    if (gesture_.isHeld() ? isDragging() : isActive()) report(thumbMoved);
}

// Reporting

void ScrollBar::informParent(eEventType type) {
    DispatchScope const scope;
    Glib::UpdateDeferrer const deferrer(canvas());
    auto const index = static_cast<std::size_t>(type);
    if (index >= numTypes) return;
    Qv::Ptr<iObject> const told(reporter_.getCallback() ? new Event(type) : nullptr);
    reporter_.report(*this, parent(), messageTable[index], {}, told);
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
    for (std::size_t type = 0; type < numTypes; ++type) {
        if (messageTable[type].text != name.view()) continue;
        report(static_cast<eEventType>(type));
        return 1;
    }
    return 0;
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
