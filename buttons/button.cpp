#include "buttons/button.h"

#include "buttons/button_extras_p.h"
#include "foundation/effects.h"
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

Button::InitArgs::InitArgs(UIString text, LightweightString<char> messageName, XY<int> const& size)
    : InitArgs(std::move(text), std::move(messageName)) {
    setSize(size);
}

Button::Button(InitArgs const& args) : Bindable(args), label_(args.label, args.font), message_(args.message) {
    setStyle(args.style);
    setLatching(args.latching, false);
    init(args.width);
}

Button::Button(UIString label, char const* message, unsigned short width, unsigned short height, bool opaque,
               Canvas* canvas)
    : Bindable(width, height, Palette(), opaque, canvas), label_(std::move(label)),
      message_(sharedText(message)) {
    init(width);
}

Button::Button(UIString label, LightweightString<char> message, GlobCreationInfo const& info)
    : Bindable(info), label_(std::move(label)), message_(std::move(message)) {
    init(info.width);
}

Button::~Button() = default;

void Button::init(unsigned short width) {
    if (width != 0) return;
    automatic_ = AutomaticSize(true, height() == 0);
    fitLabel();
}

/// Without a label it stays as it is; a layout gives it what its icon needs.
void Button::fitLabel() {
    if (!label_.isEmpty()) automatic_.apply(*this, calcSizeFor(label_.text(), label_.font()));
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
    DispatchScope const scope;
    LifeGuard const life = guard();
    LightweightString<char> const name = callback.getMessage();
    reporter_.setCallback(callback.getCallback());
    if (life.alive() && !name.empty()) setMessage(name.c_str());
}

void Button::setMessageOnDrag(bool report) {
    unsigned int const others = callbackEvents_ & ~static_cast<unsigned int>(onDrag);
    callbackEvents_ = static_cast<unsigned char>(report ? others | onDrag : others);
}

void Button::setIgnoreMouseClicks(bool ignore) {
    DispatchScope const scope;
    if (ignore) dropPress();
    ignoresClicks_ = ignore;
}

void Button::report(Messages which) {
    informParent(messageTable[which].nameFor(message_), static_cast<unsigned int>(messageTable[which].code));
}

void Button::informParent(LightweightString<char> name, unsigned int code) {
    NotifyMsg message(std::move(name), extras_ ? extras_->payload : Qv::Ptr<iObject>());
    message.setCode(static_cast<int>(code));
    if (reporter_.getCallback())
        reporter_.report(*this, nullptr, message, MessageInfo::queued);
    else
        sendMessageToParent(message);
}

int Button::sendMessageToParent(NotifyMsg const& message) {
    Glob* target = parent();
    if (!target) {
        target = findNearestGlob([](Glob*) { return true; });
        if (!target || !(glob_pseudo_distance(this, target) < 0.0)) return 0;
    }
    NotifyMsg named(message.name().empty() ? message_ : message.name(), message.payload());
    named.setCode(message.code());
    return sendNotification(named, target, static_cast<Glob*>(this), press().modifiers()) ? 1 : 0;
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
        if (notify && life.alive()) report(goesDown ? onMsg : offMsg);
        return;
    }
    LifeGuard const life = guard();
    auto const follow = [&, number = press().number()] {
        if (life.alive() && number == press().number()) Button::setState(state, eRedrawYes);
    };
    try {
        if (notify) report(goesDown ? pressedMsg : releasedMsg);
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
    if (!press().isHeld()) return;
    if (repeat.interval == 0) return wasRepeating ? clearInterest(EventKind::timer) : void();
    if (!wasRepeating) startRepeating();
    askForTimer();
}

// Label and look

void Button::setString(UIString const& label) {
    if (label_.setText(label)) applyEffects(*this, Effect::size | Effect::paint | Effect::name);
}

void Button::setSecondString(UIString const& label) {
    if (!label.isEmpty() || extras_)
        changeSetting(*this, extras().secondLabel, label, isDown() ? Effect::paint | Effect::name : 0);
}

void Button::setFont(Glib::FontDesc const& font) {
    if (label_.setFont(font)) applyEffects(*this, Effect::size | Effect::paint);
}

LightweightString<wchar_t> Button::getWidgetValue() const {
    return label_.text().text();
}

void Button::setNewWidgetValue(LightweightString<wchar_t>& label, eRedrawFlag redraw) {
    if (label == getWidgetValue() || !label_.setText(UIString(label))) return;
    applyEffects(*this, redraw == eRedrawYes ? Effect::paint | Effect::name : Effect::name);
}

void Button::setStyle(eButtonStyle style) {
    changeSetting(*this, style_, style, Effect::paint);
    setAlignment(hasIndicator() ? eAlignLeft : eAlignCentre);
}

void Button::setAlignment(TextAlignment alignment) {
    changeSetting(*this, alignment_, static_cast<unsigned char>(alignment), Effect::paint);
}

void Button::setDefaultAction(bool isDefault) {
    changeSetting(*this, defaultAction_, isDefault, Effect::paint | Effect::state);
}

void Button::setCols(Colour const& text, Colour const& face) {
    setUpCols(text, face);
    setDownCols(text, face);
}

void Button::setFaceColour(Colour const& face) {
    using Given = std::optional<Extras::Colours>;
    changeSetting(*this, extras().up, Given({std::nullopt, face, false}), Effect::paint);
    changeSetting(*this, extras().down, Given({std::nullopt, face, false}), Effect::paint);
}

void Button::setUpCols(Colour const& text, Colour const& face) {
    changeSetting(*this, extras().up, std::optional<Extras::Colours>({text, face, true}), Effect::paint);
}

void Button::setDownCols(Colour const& text, Colour const& face) {
    changeSetting(*this, extras().down, std::optional<Extras::Colours>({text, face, true}), Effect::paint);
}

void Button::setIcons(LightweightString<wchar_t> const& active, LightweightString<wchar_t> const& inactive) {
    changeSetting(*this, extras().downIcon, active, Effect::size | Effect::paint);
    changeSetting(*this, extras().upIcon, inactive.isEmpty() ? active : inactive,
                  Effect::size | Effect::paint);
}

void Button::setCustomDrawFn(void (*function)(Button const&)) {
    changeSetting(*this, extras().draw, function, Effect::paint);
}

XY<int> Button::calcSizeFor(UIString const& label, Glib::FontDesc const& font) {
    int const height = UifStd::getButtonHeight();
    return {FittedLabel(label, font).neededWidth() + height, height};
}

void Button::autoResize() {
    XY<int> const size = calcSizeFor(label_.text(), label_.font());
    resize(size.x, height() != 0 ? height() : size.y);
}

/// A label may be cut.
SizeNeeds Button::sizeNeeds() const {
    int const height = UifStd::getButtonHeight();
    Qv::Ptr<Glib::Image> const image = icon();
    int const iconWidth = image ? image->size().x + UifStd::getWidgetGap() : 0;
    return automatic_.needs({label_.neededWidth() + iconWidth + height, height}, {2 * height, height});
}

void Button::handleLookChange(LookChange changes) {
    rect::handleLookChange(changes);
    label_.followLook();
    fitLabel();
}

bool Button::getTooltipDetails(XY<int> const& place, TooltipDetails& details) const {
    return rect::getTooltipDetails(place, details) || shownLabel().getTip(*this, labelRoom(), details);
}

void Button::describe(GlobDescription& description) const {
    Bindable::describe(description);
    description.role = Role::button;
    description.name = shownLabel().text().text();
    TooltipDetails tip;
    if (description.name.isEmpty() && getTooltipDetails({0, 0}, tip)) description.name = tip.text.text();
    if (looksDown()) description.states |= GlobDescription::pressed;
    if (defaultAction_) description.states |= GlobDescription::isDefault;
    description.actions |= GlobDescription::press;
}

} // namespace wainscot
