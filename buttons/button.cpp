#include "buttons/button.h"

#include "buttons/button_extras_p.h"
#include "foundation/focus_stop.h"
#include "host/drawing/uif_std.h"
#include "host/events/dispatch_scope.h"
#include "host/events/event.h"
#include "host/events/messages.h"
#include "host/objects/description.h"
#include "host/objects/kbd_focus.h"
#include "host/objects/tooltip_details.h"
#include "host/services/clock.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace wainscot {

namespace {

/// Half a second on the processor clock.
constexpr int halfSecond = iClock::processorPerSecond / 2;

/// Buttons that are made one after the other mostly send the same message: they share its text.
LightweightString<char> sharedText(char const* message) {
    static auto& latest = *new LightweightString<char>;
    if (!(latest == message)) latest = message;
    return latest;
}

} // namespace

Button::InitArgs::InitArgs(unsigned short w, unsigned short h)
    : GlobCreationInfo(w, h), font(UifStd::getFont()) {}

Button::InitArgs::InitArgs(UIString text, LightweightString<char> messageName, unsigned short w,
                           unsigned short h)
    : GlobCreationInfo(w, h), label(std::move(text)), message(std::move(messageName)),
      font(UifStd::getFont()) {}

Button::Button(InitArgs const& args)
    : rect(args), label_(args.label), font_(args.font), message_(args.message) {
    setStyle(args.style);
    setLatching(args.latching, false);
    standardFont_ = font_ == UifStd::getFont();
    init(args.width);
}

Button::Button(UIString label, char const* message, unsigned short width, unsigned short height, bool opaque,
               Canvas* canvas)
    : rect(width, height, Palette(), opaque, canvas), label_(std::move(label)), font_(UifStd::getFont()),
      message_(sharedText(message)) {
    init(width);
}

Button::Button(UIString label, LightweightString<char> message, GlobCreationInfo const& info)
    : rect(info), label_(std::move(label)), font_(UifStd::getFont()), message_(std::move(message)) {
    init(info.width);
}

Button::~Button() = default;

void Button::init(unsigned short width) {
    if (width != 0 || label_.text().isEmpty()) return;
    automatic_ = AutomaticSize(true, height() == 0);
    automatic_.apply(*this, calcSizeFor(label_, font_));
}

Button::Extras& Button::extras() {
    if (!extras_) extras_ = std::make_unique<Extras>();
    return *extras_;
}

// Reporting

void Button::setMessage(char const* message) {
    message_ = sharedText(message);
}

void Button::setPayload(Qv::Ptr<iObject> payload) {
    if (payload || extras_) extras().payload = std::move(payload);
}

void Button::setCallback(WidgetCallback const& callback) {
    // The old one goes last: what its destructor does may destroy this.
    WidgetCallback::Callback const old = std::exchange(callback_, callback.getCallback());
    if (!callback.getMessage().empty()) setMessage(callback.getMessage().c_str());
}

void Button::setMessageOnDrag(bool report) {
    unsigned int const others = callbackEvents_ & ~static_cast<unsigned int>(onDrag);
    callbackEvents_ = static_cast<unsigned char>(report ? others | onDrag : others);
}

void Button::setIgnoreMouseClicks(bool ignore) {
    DispatchScope const scope;
    if (ignore) abandonPress();
    ignoresClicks_ = ignore;
}

void Button::informParent(LightweightString<char> name, unsigned int code) {
    NotifyMsg message(std::move(name), extras_ ? extras_->payload : Qv::Ptr<iObject>());
    message.setCode(static_cast<int>(code));
    // It may be replaced, or this destroyed, in its own call.
    WidgetCallback::Callback const held = callback_;
    if (held)
        held->call(message);
    else
        sendMessageToParent(message);
}

int Button::sendMessageToParent(NotifyMsg const& message) {
    Glob* target = parent();
    if (!target) {
        target = findNearestGlob([](Glob*) { return true; });
        if (!target || !(glob_pseudo_distance(this, target) < 0.0)) return 0;
    }
    Event event(EventKind::message);
    event.setMessage(message.name().empty() ? message_ : message.name());
    event.setKeyCode(modifiers_);
    event.setModifiers(modifiers_);
    event.setReportCode(message.code());
    if (message.payload()) event.setData(message.payload());
    event.setSender(static_cast<Glob*>(this));
    event.setTarget(target);
    return event_send(&event, false) ? 1 : 0;
}

// State

void Button::setState(button_state state, eRedrawFlag redraw) {
    bool const changes = state != state_;
    state_ = state;
    if (!changes) return;
    if (state == buttonDown) startRepeating();
    if (redraw == eRedrawYes && isShown()) makeDirty();
    describeChanged(DescriptionChange::state);
}

void Button::switchState(button_state state, bool notify) {
    DispatchScope const scope;
    bool const goesDown = state == buttonDown;
    if (latching_ != 0) {
        LifeGuard const life = guard();
        Button::setState(state, eRedrawYes);
        if (notify && life.alive())
            informParent(message_ + (goesDown ? onSuffix : offSuffix), goesDown ? codeDown : codeUp);
        return;
    }
    LifeGuard const life = guard();
    auto const follow = [&, press = pressNumber_] {
        if (life.alive() && press == pressNumber_) Button::setState(state, eRedrawYes);
    };
    try {
        if (notify) informParent(message_, goesDown ? codeDown : codeUp);
    } catch (...) {
        follow();
        throw;
    }
    follow();
}

void Button::setLatching(bool latching, bool second) {
    latching_ = latching ? (second ? 2 : 1) : 0;
    if (latching) callbackEvents_ = onMouseDown;
}

void Button::setRepeating(int perHalfSecond, double delay) {
    if (perHalfSecond < 1 && !extras_) return;
    Extras::Repeat& repeat = extras().repeat;
    bool const wasRepeating = isRepeating();
    repeat.interval = perHalfSecond < 1 ? 0 : halfSecond / perHalfSecond;
    double const units = std::isfinite(delay) ? std::clamp(delay, 0.0, 1e9) * halfSecond : 0.0;
    repeat.delay = static_cast<std::int64_t>(units);
    repeat.clock.setIntervals(repeat.delay, repeat.interval);
    if (!pressed_) return;
    if (repeat.interval == 0) return wasRepeating ? clearInterest(EventKind::timer) : void();
    if (!wasRepeating) startRepeating();
    askForTimer();
}

void Button::setActive(bool active, eRedrawFlag redraw) {
    DispatchScope const scope;
    if (!active) abandonPress();
    rect::setActive(active, redraw);
}

void Button::setEnabledState(bool enabled) {
    setActive(enabled, eRedrawYes);
}

void Button::setVisible(bool visible) {
    DispatchScope const scope;
    if (!visible) abandonPress();
    rect::setVisible(visible);
}

void Button::handleDetached() {
    leaveAllManagers();
    leaveDataAdaptor();
    rect::handleDetached();
}

// Label and look

void Button::setString(UIString const& label) {
    if (label == label_) return;
    label_ = label;
    makeDirty();
    describeChanged(DescriptionChange::name);
}

void Button::setSecondString(UIString const& label) {
    if (label.isEmpty() && !extras_) return;
    extras().secondLabel = label;
    if (isDown()) makeDirty();
}

void Button::setFont(Glib::FontDesc const& font) {
    font_ = font;
    standardFont_ = false;
    makeDirty();
}

LightweightString<wchar_t> Button::getWidgetValue() const {
    return label_.text();
}

void Button::setNewWidgetValue(LightweightString<wchar_t>& label, eRedrawFlag redraw) {
    if (label == label_.text()) return;
    label_ = UIString(label);
    if (redraw == eRedrawYes) makeDirty();
    describeChanged(DescriptionChange::name);
}

void Button::setStyle(eButtonStyle style) {
    style_ = style;
    alignment_ = hasIndicator() ? eAlignLeft : eAlignCentre;
    makeDirty();
}

void Button::setAlignment(TextAlignment alignment) {
    alignment_ = static_cast<unsigned char>(alignment);
    makeDirty();
}

void Button::setDefaultAction(bool isDefault) {
    if (isDefault == defaultAction_) return;
    defaultAction_ = isDefault;
    makeDirty();
}

void Button::setCols(Colour const& text, Colour const& face) {
    setUpCols(text, face);
    setDownCols(text, face);
}

void Button::setFaceColour(Colour const& face) {
    extras().up = {std::nullopt, face, false};
    extras().down = {std::nullopt, face, false};
    makeDirty();
}

void Button::setUpCols(Colour const& text, Colour const& face) {
    extras().up = {text, face, true};
    makeDirty();
}

void Button::setDownCols(Colour const& text, Colour const& face) {
    extras().down = {text, face, true};
    makeDirty();
}

void Button::setIcons(LightweightString<wchar_t> const& active, LightweightString<wchar_t> const& inactive) {
    extras().downIcon = active;
    extras().upIcon = inactive.isEmpty() ? active : inactive;
    makeDirty();
}

void Button::setCustomDrawFn(void (*function)(Button const&)) {
    extras().draw = function;
    makeDirty();
}

XY<int> Button::calcSizeFor(UIString const& label, Glib::FontDesc const& font) {
    int const height = UifStd::getButtonHeight();
    return {Glib::loadFont(font)->textWidth(label.text()) + height, height};
}

void Button::autoResize() {
    XY<int> const size = calcSizeFor(label_, font_);
    resize(size.x, height() != 0 ? height() : size.y);
}

// Focus

bool Button::isTabStopActive() {
    return FocusStop::canTake(*this);
}

void Button::handleTabStopFocusReceipt(eDirection) {
    claimKbdFocus();
}

void Button::handleTabStopFocusLoss() {
    FocusStop::handleLoss(*this, *this);
}

void Button::handleKbdFocus() {
    FocusStop::handleKbdFocus(*this, *this);
}

void Button::handleLookChange() {
    rect::handleLookChange();
    if (standardFont_) font_ = UifStd::getFont();
    automatic_.apply(*this, calcSizeFor(label_, font_));
}

void Button::handleMouseContainment(bool inside) {
    if (isActive()) makeDirty();
    rect::handleMouseContainment(inside);
}

bool Button::getTooltipDetails(XY<int> const& place, TooltipDetails& details) const {
    if (rect::getTooltipDetails(place, details)) return true;
    bool wasCut = false;
    fittedLabel(&wasCut);
    if (!wasCut) return false;
    details.text = UIString(shownLabel());
    details.area = bounds();
    return true;
}

void Button::describe(GlobDescription& description) const {
    rect::describe(description);
    description.role = "button";
    description.name = shownLabel();
    TooltipDetails tip;
    if (description.name.isEmpty() && getTooltipDetails({0, 0}, tip)) description.name = tip.text.text();
    if (looksDown()) description.states |= GlobDescription::pressed;
    if (isActive()) description.states |= GlobDescription::focusable;
    if (defaultAction_) description.states |= GlobDescription::isDefault;
    description.actions.push_back("press");
}

} // namespace wainscot
