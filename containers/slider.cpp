#include "containers/slider.h"

#include "foundation/effects.h"
#include "host/base/convert.h"
#include "host/base/diagnostics.h"
#include "host/base/first_exception.h"
#include "host/drawing/drawable.h"
#include "host/drawing/uif_std.h"
#include "host/events/dispatch_scope.h"
#include "host/objects/description.h"
#include "host/objects/kbd_focus.h"
#include "look/ink.h"
#include "look/track.h"

#include <algorithm>
#include <cmath>

namespace wainscot {

namespace {

/// Nudges from one end to the other.
constexpr double nudgesInRange = 500;
constexpr double roundingSteps = 1000;
/// As many as the "%lf" of formatted output.
constexpr int reportedDecimals = 6;

/// Beyond this, thousandths cannot be told apart in a double.
constexpr double mostRoundable = 9e15 / roundingSteps;
/// How far a value may be below its thousandth, as a share of a thousandth, and still be rounded to it.
constexpr double missing = 1e-6;

bool counted(bool isRight, char const* asked) {
    if (!isRight) Diagnostics::count("no number", asked);
    return isRight;
}

bool isNumber(double value, char const* asked) {
    return counted(!std::isnan(value), asked);
}

bool isFinite(double value, char const* asked) {
    return counted(std::isfinite(value), asked);
}

GlobCreationInfo withSize(Slider::InitArgs const& args) {
    return {args, args.width, args.height};
}

} // namespace

Slider::InitArgs::InitArgs(Colour const& thumb, unsigned short length, Orientation lie)
    : InitArgs(length, lie) {
    thumbColour = thumb;
}

Slider::InitArgs::InitArgs(unsigned short length, Orientation lie)
    : GlobCreationInfo(lie == eVertical ? UifStd::getButtonHeight() : length,
                       lie == eVertical ? length : UifStd::getButtonHeight()),
      orientation(lie) {
    opaque = false;
}

Slider::Slider(InitArgs const& args)
    : Bindable(withSize(args)), thumbColour_(args.thumbColour), orientation_(args.orientation) {
    setPressButtons(EventKind::left | EventKind::right);
    recalculateStartAndEnd();
    setValueRange(args.minimum, args.maximum);
    value_ = clamped(args.value);
    standardHeight_ = (isVertical() ? width() : height()) == UifStd::getButtonHeight();
}

Slider::~Slider() = default;

// Value

double Slider::clamped(double value) const {
    double const low = std::min(minimum_, maximum_);
    double const high = std::max(minimum_, maximum_);
    return value > high ? high : value >= low ? value : low;
}

bool Slider::setValueRange(double minimum, double maximum) {
    if (!isFinite(minimum, "Slider::setValueRange") || !isFinite(maximum, "Slider::setValueRange"))
        return false;
    bool const isSame = minimum == minimum_ && maximum == maximum_;
    minimum_ = minimum;
    maximum_ = maximum;
    value_ = clamped(value_);
    if (!isSame) applyEffects(*this, Effect::paint | Effect::value);
    return true;
}

void Slider::setPosition(double value) {
    if (isNumber(value, "Slider::setPosition")) storeValue(clamped(value), eRedrawYes);
}

void Slider::setNewWidgetValue(double& value, eRedrawFlag redraw) {
    DispatchScope const scope;
    if (isNumber(value, "Slider::setNewWidgetValue")) storeValue(clamped(value), redraw);
    value = value_;
}

void Slider::storeValue(double value, eRedrawFlag redraw) {
    if (value == value_) return;
    IntBox const before = getThumbArea();
    value_ = value;
    // The channel is filled up to the thumb.
    if (redraw == eRedrawYes) damage(before.unitedWith(getThumbArea()));
    describeChanged(DescriptionChange::value);
}

/// Nothing is reported once the data has ended the drag. A single step is reported with its end.
void Slider::reportUserChange(DataChangeType why) {
    bool const isOneStep = why == DataChangeType::single && (press().isHeld() || !gesture_.isHeld());
    if (!isOneStep) return gesture_.isHeld() ? informParent(sliderMoved) : void();
    FirstException thrown;
    LifeGuard const life = guard();
    thrown.run([&] { informParent(sliderMoved); });
    if (life.alive()) thrown.run([&] { informParent(sliderReleased); });
    thrown.rethrow();
}

bool Slider::changePosition(double value) {
    return isNumber(value, "Slider::changePosition") && changeByUser(clamped(value)) != UserChange::none;
}

bool Slider::nudge(bool up) {
    double const step = maximum_ / nudgesInRange - minimum_ / nudgesInRange;
    return changePosition(value_ + (up ? step : -step));
}

// Pixels

/// Computes with halves, so that the length of a range cannot overflow.
double Slider::v2x(double value) const {
    double const share = (value / 2 - minimum_ / 2) / (maximum_ / 2 - minimum_ / 2);
    return std::isfinite(share) ? share * (endX_ - startX_) + startX_ : startX_;
}

double Slider::valueAt(double x) const {
    double const share = (x - startX_) / (endX_ - startX_);
    double const value = std::isfinite(share) ? std::lerp(minimum_, maximum_, share) : minimum_;
    return std::isfinite(value) ? value : share < 0.5 ? minimum_ : maximum_;
}

double Slider::x2v(double x) const {
    if (!rounds_) return valueAt(x);
    if (!(x > startX_)) return minimum_;
    if (x >= endX_) return maximum_;
    double const here = valueAt(x);
    double const next = valueAt(std::min(x + 1, endX_));
    double const most = std::max(here, next);
    if (std::abs(most) > mostRoundable) return here;
    double const round = std::floor(most * roundingSteps + missing) / roundingSteps;
    return std::max(round, std::min(here, next));
}

void Slider::recalculateStartAndEnd() {
    endX_ = isVertical() ? height() : width();
    startX_ = std::min<double>(UifStd::getIndentWidth(), endX_);
}

void Slider::reshape() {
    DispatchScope const scope;
    Glob::reshape();
    recalculateStartAndEnd();
}

/// Along the channel any length will do that the thumb can move in.
SizeNeeds Slider::sizeNeeds() const {
    int const button = UifStd::getButtonHeight();
    int const across = standardHeight_ ? button : -1;
    SizeNeeds needs;
    needs.natural = isVertical() ? XY<int>{across, -1} : XY<int>{-1, across};
    needs.minimum = isVertical() ? XY<int>{across, 2 * button} : XY<int>{2 * button, across};
    return needs;
}

void Slider::handleLookChange(LookChange changes) {
    Glob::handleLookChange(changes);
    recalculateStartAndEnd();
}

/// The thumb's middle is where its value is; at the ends it stays within the slider.
IntBox Slider::getThumbArea() const {
    if (!thumbVisible_) return {};
    int const extent = isVertical() ? height() : width();
    int const length = std::min<int>(UifStd::getButtonHeight() / 2, extent);
    int const from = std::clamp(static_cast<int>(std::lround(v2x(value_))) - length / 2, 0, extent - length);
    int const across = isVertical() ? width() : height();
    return alongBox(from, from + length, std::min(UifStd::getButtonHeight() / 8, across / 4));
}

IntBox Slider::alongBox(int from, int to, int margin) const {
    return isVertical() ? IntBox(margin, from, width() - margin, to)
                        : IntBox(from, margin, to, height() - margin);
}

// Points of interest, state and look

void Slider::setPointOfInterest(double value) {
    if (!isFinite(value, "Slider::setPointOfInterest")) return;
    changeSetting(*this, pointOfInterest_, value, Effect::paint);
}

void Slider::removePointOfInterest() {
    changeSetting(*this, pointOfInterest_, std::nullopt, Effect::paint);
}

void Slider::setPointsOfInterest(std::vector<PointOfInterest> points) {
    std::erase_if(points, [](PointOfInterest const& point) {
        return !isFinite(point.value, "Slider::setPointsOfInterest");
    });
    changeSetting(*this, points_, std::move(points), Effect::paint);
}

void Slider::setOrientation(Orientation orientation) {
    DispatchScope const scope;
    if (orientation == orientation_) return;
    FirstException thrown;
    LifeGuard const life = guard();
    thrown.run([&] { dropPress(); });
    if (life.alive()) {
        orientation_ = orientation;
        recalculateStartAndEnd();
        makeDirty();
    }
    thrown.rethrow();
}

void Slider::setThumbVisibility(bool visible) {
    DispatchScope const scope;
    FirstException thrown;
    LifeGuard const life = guard();
    if (!visible) thrown.run([&] { dropPress(); });
    if (life.alive()) changeSetting(*this, thumbVisible_, visible, Effect::paint);
    thrown.rethrow();
}

void Slider::setThumbColour(Colour const& colour) {
    changeSetting(*this, thumbColour_, colour, Effect::paint);
}

void Slider::handleDataMixed(bool, eRedrawFlag redraw) {
    applyEffects(*this, redraw == eRedrawYes ? Effect::paint | Effect::value : Effect::value);
}

// Reporting

void Slider::informParent(eEventType type) {
    DispatchScope const scope;
    Glib::UpdateDeferrer const deferrer(canvas());
    MessageInfo const& info = messageTable[type == sliderReleased ? sliderReleased : sliderMoved];
    NotifyMsg message(info.nameFor(StringFromFloat(value_, reportedDecimals, false)));
    message.setCode(info.code);
    reporter_.report(*this, parent(), message, synchronous_ ? MessageInfo::called : info.delivery);
}

void Slider::describe(GlobDescription& description) const {
    Bindable::describe(description);
    description.role = Role::slider;
    description.name = fromUTF8(name());
    if (!isDataMixed()) {
        description.value = Qv::WStringFromFloat(value_);
        description.number = {value_, std::min(minimum_, maximum_), std::max(minimum_, maximum_),
                              std::abs(maximum_ / nudgesInRange - minimum_ / nudgesInRange), 0};
    }
    if (isThumbHeld()) description.states |= GlobDescription::pressed;
    description.actions |= GlobDescription::drag;
}

// Drawing

void Slider::drawBackground() {
    Palette const& palette = getPalette();
    CanvasRenderer renderer(canvas(), canvasArea());
    if (isOpaque()) renderer.renderPrimitive(Glib::RectDescription(canvasArea(), getCol()));
    drawChannel(renderer);
    for (PointOfInterest const& point : points_) drawPoint(renderer, point.value, point.colour);
    if (pointOfInterest_) drawPoint(renderer, *pointOfInterest_, palette.mark(eMarkNormal));
    if (thumbVisible_) {
        ControlState const state{.isActive = isActive() && !isDataMixed(),
                                 .isHovered = isActive() && containsPointer(),
                                 .isPressed = isThumbHeld()};
        ControlLook::drawKnob(renderer, getThumbArea().translated(canvasArea().bottomLeft()),
                              thumbColour_ ? &*thumbColour_ : nullptr, state, palette);
    }
    drawFocusMark();
}

void Slider::drawChannel(CanvasRenderer& renderer) {
    int const across = isVertical() ? width() : height();
    int const margin = std::max(0, (across - ControlLook::channelThickness()) / 2);
    int const start = static_cast<int>(startX_);
    int const filled = isDataMixed() || !thumbVisible_ ? start : static_cast<int>(std::lround(v2x(value_)));
    XY<int> const corner = canvasArea().bottomLeft();
    ControlLook::drawChannel(renderer, alongBox(start, static_cast<int>(endX_), margin).translated(corner),
                             alongBox(start, filled, margin).translated(corner), {.isActive = isActive()},
                             getPalette());
}

void Slider::drawPoint(CanvasRenderer& renderer, double value, Colour const& colour) {
    if (clamped(value) != value) return;
    int const x = std::min(static_cast<int>(std::lround(v2x(value))), static_cast<int>(endX_) - 1);
    IntBox const box = alongBox(x, x + 1, 0).translated(canvasArea().bottomLeft());
    renderer.renderPrimitive(Glib::RectDescription(box, shownColour(colour)));
}

Colour Slider::shownColour(Colour const& colour) const {
    return isActive() ? colour : ControlLook::weakened(colour, getPalette().window(eWindowNormal));
}

} // namespace wainscot
