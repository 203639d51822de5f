#include "buttons/checkbox.h"

#include "buttons/choice_core.h"
#include "foundation/effects.h"
#include "host/base/convert.h"
#include "host/drawing/shapes.h"
#include "host/drawing/symbols.h"
#include "host/drawing/uif_std.h"
#include "host/events/dispatch_scope.h"
#include "host/events/event.h"
#include "host/events/messages.h"
#include "host/objects/description.h"
#include "host/objects/kbd_focus.h"
#include "host/objects/tooltip_details.h"
#include "look/ink.h"
#include "look/mark.h"

#include <algorithm>
#include <utility>

namespace wainscot {

namespace {

/// The side of the box or light, as a share of a button's height.
constexpr float tickShare = 0.6F;

int tickSide() {
    return UifStd::getButtonHeight(tickShare);
}

StandardPanel::InitArgs panelArgs(Checkbox::InitArgs const& args) {
    return {args, Border(args.border)};
}

bool isToggleKey(Event const& event) {
    return isKeyPressEvent(event) && actionFor(Checkbox::keyTable, event.keyCode());
}

} // namespace

iCheckboxSet::~iCheckboxSet() = default;

Checkbox::Change::Change(bool state, Checkbox& checkbox) : state_(state), checkbox_(&checkbox) {}

Checkbox* Checkbox::Change::checkbox() const {
    return checkbox_.get();
}

Checkbox::InitArgs::InitArgs(unsigned short w, unsigned short h)
    : GlobCreationInfo(w, h), font(UifStd::getFont()) {
    opaque = false;
}

Checkbox::InitArgs::InitArgs(UIString text, bool isTicked, unsigned short w, unsigned short h)
    : InitArgs(w, h) {
    label = std::move(text);
    ticked = isTicked;
}

Checkbox::InitArgs::InitArgs(UIString text, bool isTicked, XY<int> const& size)
    : InitArgs(std::move(text), isTicked) {
    setSize(size);
}

Checkbox::Checkbox(InitArgs const& args)
    : Bindable(panelArgs(args)), label_(args.label, args.font), appearance_(args.appearance),
      ticked_(args.ticked), automatic_(args.width == 0, args.height == 0) {
    automatic_.apply(*this, neededSize());
}

Checkbox::~Checkbox() = default;

std::unique_ptr<Checkbox> Checkbox::make(unsigned short width, unsigned short height, UIString const& label,
                                         bool ticked, Palette const& palette, Canvas* canvas) {
    InitArgs args(label, ticked, width, height);
    args.palette = palette;
    args.canvas = canvas;
    return std::make_unique<Checkbox>(args);
}

// State

void Checkbox::setState(bool ticked, bool redraw) {
    changeSetting(*this, ticked_, ticked, redraw ? Effect::paint | Effect::state : Effect::state);
}

void Checkbox::setNewWidgetValue(bool& ticked, eRedrawFlag redraw) {
    setState(ticked, redraw == eRedrawYes);
}

void Checkbox::handleDataMixed(bool, eRedrawFlag redraw) {
    applyEffects(*this, redraw == eRedrawYes ? Effect::paint | Effect::state : Effect::state);
}

void Checkbox::requestToggleState() {
    if (userFunction_)
        userFunction_(this, userContext_);
    else
        changeByUser(!ticked_);
}

void Checkbox::reportUserChange(DataChangeType) {
    bool const hasCallback = reporter_.getCallback().get() != nullptr;
    if (getDataAdaptor() && !hasCallback) return;
    NotifyMsg message(messageFor(ticked_),
                      hasCallback ? Qv::Ptr<iObject>(new Change(ticked_, *this)) : Qv::Ptr<iObject>());
    message.setCode(ticked_ ? codeTicked : codeClear);
    reporter_.report(*this, parent(), message, MessageInfo::queued);
}

LightweightString<char> Checkbox::messageFor(bool ticked) const {
    return appendState_ ? messageTable[ticked ? tickedMsg : clearMsg].nameFor(prefix_) : prefix_;
}

void Checkbox::setCallback(WidgetCallback const& callback) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    LightweightString<char> const name = callback.getMessage();
    reporter_.setCallback(callback.getCallback());
    if (life.alive() && !name.empty()) prefix_ = name;
}

void Checkbox::setMsgPrefix(LightweightString<char> prefix, bool appendState) {
    prefix_ = std::move(prefix);
    appendState_ = appendState;
}

void Checkbox::setMembership(iCheckboxSet* set, unsigned int index) {
    DispatchScope const scope;
    if (set != set_) setShownMixed(false);
    set_ = set;
    memberIndex_ = index;
}

void Checkbox::setShownMixed(bool mixed) {
    changeSetting(*this, shownMixed_, mixed, Effect::paint | Effect::state);
}

void Checkbox::setUserFunction(UserFunction function, void* context) {
    userFunction_ = function;
    userContext_ = context;
}

// Events

bool Checkbox::react(Event const& event) {
    // While another button is held, the panel gets events of the left button.
    if (mouse_chord_event(event)) {
        if (mouse_up_event(event) && mouse_left_event(event)) dropPress();
    } else if (clickable_ && isActive()) {
        if (reactToPress(event) || Press::isOfLeftButton(event)) return true;
    }
    if (isActive() && isToggleKey(event)) {
        LifeGuard const life = guard();
        // As with a button, a click by keys ends the held press.
        dropPress();
        if (life.alive()) requestToggleState();
        return true;
    }
    if (set_ && isActive() && isKeyPressEvent(event) && reactToArrow(event)) return true;
    return StandardPanel::react(event);
}

bool Checkbox::reactToArrow(Event const& event) {
    auto const direction = actionFor(choiceKeys, event.keyCode());
    return direction && set_->stepFrom(*this, *direction);
}

bool Checkbox::pressBegan(Event const&) {
    makeDirty();
    if (generation_ == onPress) requestToggleState();
    return true;
}

/// The pointer's place at the release does not matter.
void Checkbox::pressEnded(PressEnd how) {
    makeDirty();
    bool const isReleased = how == PressEnd::releasedInside || how == PressEnd::releasedOutside;
    if (isReleased && generation_ == onRelease) requestToggleState();
}

void Checkbox::setClickable(bool clickable) {
    DispatchScope const scope;
    clickable_ = clickable;
    if (!clickable) dropPress();
}

bool Checkbox::isTabStopActive() {
    return Focusable::isTabStopActive() && (!set_ || set_->isTabStop(*this));
}

// Look

void Checkbox::setString(UIString const& label) {
    if (label_.setText(label)) applyEffects(*this, Effect::size | Effect::paint | Effect::name);
}

void Checkbox::setAppearance(eAppearance appearance) {
    changeSetting(*this, appearance_, appearance, Effect::paint);
}

void Checkbox::setTickCharacter(char character) {
    changeSetting(*this, tickCharacter_, character, Effect::paint);
}

void Checkbox::setFont(Glib::FontDesc const& font) {
    if (label_.setFont(font)) applyEffects(*this, Effect::size | Effect::paint);
}

void Checkbox::setTextColour(Colour const& colour) {
    changeSetting(*this, textColour_, colour, Effect::paint);
}

int Checkbox::calcWidth(UIString const& label, Border::eType border, eAppearance, bool bold) {
    Glib::FontDesc font = UifStd::getFont();
    if (bold) font.style |= Glib::eFontBold;
    return calcWidth(label, border, font);
}

int Checkbox::calcWidth(UIString const& label, Border::eType border, Glib::FontDesc const& font) {
    LightweightString<wchar_t> const text = label.text();
    int const textWidth = text.isEmpty() ? 0 : UifStd::getWidgetGap() + Glib::loadFont(font)->textWidth(text);
    return 2 * (UifStd::getIndentWidth() + Border::calcSize(border)) + tickSide() + textWidth;
}

IntBox Checkbox::getTickExtents() const {
    int const inset = UifStd::getIndentWidth() + getBorder().getSize();
    int const side = std::clamp(tickSide(), 1, std::max(height(), 1));
    return IntBox::sized({inset, (height() - side) / 2}, {side, side});
}

Colour Checkbox::getTextColour() const {
    if (textColour_ && isActive()) return ControlLook::inkOn(*textColour_, getCol());
    return ControlLook::textColour({.isActive = isActive()}, getPalette());
}

Colour Checkbox::getTickColour() const {
    return ControlLook::markColour({.isActive = isActive()}, getPalette());
}

Qv::Ptr<Glib::Image> Checkbox::getLEDIcon() const {
    if (!ticked_) return Glib::loadIcon(L"led_grey.png");
    bool const on = isActive();
    if (appearance_ == redLight) return Glib::loadIcon(on ? L"led_red_on.png" : L"led_red.png");
    if (appearance_ == greenLight) return Glib::loadIcon(on ? L"led_green_on.png" : L"led_green.png");
    return Glib::loadIcon(on ? L"led_blue_on.png" : L"led_blue.png");
}

XY<int> Checkbox::neededSize() const {
    return {calcWidth(getString(), getBorder().getType(), getFont()), UifStd::getButtonHeight()};
}

/// A label may be cut.
SizeNeeds Checkbox::sizeNeeds() const {
    return automatic_.needs(neededSize(), {2 * UifStd::getButtonHeight(), UifStd::getButtonHeight()});
}

void Checkbox::handleLookChange(LookChange changes) {
    StandardPanel::handleLookChange(changes);
    label_.followLook();
    automatic_.apply(*this, neededSize());
}

void Checkbox::draw() {
    StandardPanel::draw();
    drawFocusMark();
}

void Checkbox::drawBackground() {
    StandardPanel::drawBackground();
    drawTickBox();
    if (ticked_ || showsMixed()) drawTick(showsMixed());
    drawText();
}

void Checkbox::drawTickBox() {
    IntBox const box = getTickExtents().translated(canvasArea().bottomLeft());
    CanvasRenderer renderer(canvas(), canvasArea());
    ControlState const state{.isActive = isActive(),
                             .isHovered = isActive() && containsPointer(),
                             .isPressed = press().isHeld(),
                             .isChosen = ticked_ || showsMixed()};
    auto const shape =
        appearance_ == roundTickBox ? ControlLook::MarkShape::round : ControlLook::MarkShape::square;
    if (!isLight()) return ControlLook::drawMarkBox(renderer, box, shape, state, getPalette());
    if (Qv::Ptr<Glib::Image> const light = getLEDIcon())
        renderer.renderPrimitive(Glib::ImageDescription(light, box));
    if (state.isActive && (state.isHovered || state.isPressed))
        ControlLook::drawMarkEdge(renderer, box, shape, getPalette());
}

void Checkbox::drawTick(bool mixed) {
    IntBox const box = getTickExtents().translated(canvasArea().bottomLeft());
    CanvasRenderer renderer(canvas(), canvasArea());
    // On a light it stands out from every colour.
    if (mixed)
        return ControlLook::drawMixedBar(renderer, box,
                                         isLight() ? getPalette().text(eTextEnabled) : getTickColour());
    if (isLight()) return;
    if (appearance_ == roundTickBox && tickCharacter_ == 0)
        return ControlLook::drawDot(renderer, box, getTickColour());
    LightweightString<wchar_t> const tick =
        tickCharacter_ != 0
            ? LightweightString<wchar_t>(1, static_cast<wchar_t>(static_cast<unsigned char>(tickCharacter_)))
            : wainscot::getString(QvTTF::eTick);
    Qv::Ptr<iFont> const font = Glib::loadFont({getQvUtilityFontName(), toSize16(box.height())});
    XY<int> const place{box.centre().x, box.y1 + getFontYOffset(box.height(), font)};
    renderer.renderPrimitive(Glib::TextDescription(tick, place, font, getTickColour(), eAlignCentre));
}

int Checkbox::labelRoom() const {
    return width() - getTickExtents().x2 - UifStd::getIndentWidth() - UifStd::getWidgetGap() -
           getBorder().getSize();
}

void Checkbox::drawText() {
    IntBox const area = canvasArea();
    CanvasRenderer renderer(canvas(), area);
    shownLabel().draw(renderer, area, area.x1 + getTickExtents().x2 + UifStd::getWidgetGap(), labelRoom(),
                      getTextColour());
}

bool Checkbox::getTooltipDetails(XY<int> const& place, TooltipDetails& details) const {
    return StandardPanel::getTooltipDetails(place, details) ||
           shownLabel().getTip(*this, labelRoom(), details);
}

void Checkbox::describe(GlobDescription& description) const {
    Bindable::describe(description);
    description.role = set_ ? Role::radioButton : Role::checkbox;
    description.name = getString().text();
    if (ticked_) description.states |= GlobDescription::checked;
    if (showsMixed()) description.states |= GlobDescription::mixed;
    description.actions |= GlobDescription::toggle;
    if (!set_ || !description.wants(GlobDescription::relations)) return;
    description.position = memberIndex_ + 1U;
    description.setSize = set_->getNumMembers();
}

} // namespace wainscot
