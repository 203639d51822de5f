#include "buttons/checkbox.h"

#include "buttons/button_look.h"
#include "buttons/choice_steps_p.h"
#include "foundation/focus_stop.h"
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
    return isKeyPressEvent(event) && (event.keyCode() == Key::enter || event.keyCode() == Key::space);
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

Checkbox::Checkbox(InitArgs const& args)
    : StandardPanel(panelArgs(args)), label_(args.label), font_(args.font), appearance_(args.appearance),
      ticked_(args.ticked), standardFont_(args.font == UifStd::getFont()),
      automatic_(args.width == 0, args.height == 0) {
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
    if (ticked == ticked_) return;
    ticked_ = ticked;
    if (redraw) makeDirty();
    describeChanged(DescriptionChange::state);
}

void Checkbox::setNewWidgetValue(bool& ticked, eRedrawFlag redraw) {
    setState(ticked, redraw == eRedrawYes);
}

void Checkbox::handleDataMixed(bool, eRedrawFlag redraw) {
    if (redraw == eRedrawYes) makeDirty();
    describeChanged(DescriptionChange::state);
}

void Checkbox::setActive(bool active, eRedrawFlag redraw) {
    if (!active) setPressed(false);
    StandardPanel::setActive(active, redraw);
}

void Checkbox::handleDetached() {
    leaveAllManagers();
    leaveDataAdaptor();
    StandardPanel::handleDetached();
}

/// The call out is the last thing in each case: it may destroy this.
void Checkbox::requestToggleState() {
    if (userFunction_) return userFunction_(this, userContext_);
    DispatchScope const scope;
    LifeGuard const life = guard();
    setState(!ticked_);
    if (!life.alive()) return;
    if (getDataAdaptor() || callback_)
        tellWithChange();
    else
        tellParent();
}

void Checkbox::tellWithChange() {
    bool const wanted = ticked_;
    Qv::Ptr<iObject> const change(new Change(wanted, *this));
    WidgetCallback::Callback const callback = callback_;
    LifeGuard const life = guard();
    if (getDataAdaptor()) {
        bool const taken = requestSetNewDataValue(wanted, DataChangeType::single);
        if (!life.alive()) return;
        if (!taken && ticked_ == wanted) setState(!wanted);
        if (!taken) return;
    }
    if (!callback) return;
    NotifyMsg message(messageFor(wanted), change);
    message.setCode(wanted ? codeTicked : codeClear);
    callback->call(message);
}

LightweightString<char> Checkbox::messageFor(bool ticked) const {
    return appendState_ ? prefix_ + (ticked ? tickedWord : clearWord) : prefix_;
}

void Checkbox::tellParent() {
    Event event(EventKind::message);
    event.setMessage(messageFor(ticked_));
    event.setReportCode(ticked_ ? codeTicked : codeClear);
    event.setSender(static_cast<Glob*>(this));
    event.setTarget(parent());
    event_send(&event, false);
}

void Checkbox::setCallback(WidgetCallback const& callback) {
    // The old one goes last: what its destructor does may destroy this.
    WidgetCallback::Callback const old = std::exchange(callback_, callback.getCallback());
    if (!callback.getMessage().empty()) prefix_ = callback.getMessage();
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
    if (mixed == shownMixed_) return;
    shownMixed_ = mixed;
    makeDirty();
    describeChanged(DescriptionChange::state);
}

void Checkbox::setUserFunction(UserFunction function, void* context) {
    userFunction_ = function;
    userContext_ = context;
}

// Events

bool Checkbox::react(Event const& event) {
    // Another button may still be held, then the panel gets the release.
    if (mouse_up_event(event) && mouse_left_event(event)) setPressed(false);
    if (isActive() && clickable_ && mouse_left_event(event) && !mouse_wheel_event(event) &&
        !mouse_chord_event(event))
        return reactToMouse(event);
    if (isActive() && isToggleKey(event)) {
        requestToggleState();
        return true;
    }
    if (set_ && isActive() && isKeyPressEvent(event) && reactToArrow(event)) return true;
    return StandardPanel::react(event);
}

bool Checkbox::reactToArrow(Event const& event) {
    auto const direction = ChoiceSteps::directionOf(event.keyCode());
    return direction && set_->stepFrom(*this, *direction);
}

bool Checkbox::reactToMouse(Event const& event) {
    bool const isPress = mouse_down_event(event);
    bool const isRelease = mouse_up_event(event);
    bool const toggles = (generation_ == onPress && isPress) || (generation_ == onRelease && isRelease);
    if (isPress) setPressed(true);
    if (toggles) requestToggleState();
    return true;
}

void Checkbox::setPressed(bool pressed) {
    if (pressed == pressed_) return;
    pressed_ = pressed;
    makeDirty();
}

void Checkbox::setClickable(bool clickable) {
    clickable_ = clickable;
    if (!clickable) setPressed(false);
}

void Checkbox::handlePressCancelled(Event const&) {
    setPressed(false);
}

void Checkbox::handleCaptureLost() {
    setPressed(false);
    StandardPanel::handleCaptureLost();
}

void Checkbox::handleMouseContainment(bool inside) {
    if (isActive()) makeDirty();
    StandardPanel::handleMouseContainment(inside);
}

bool Checkbox::isTabStopActive() {
    return FocusStop::canTake(*this) && (!set_ || set_->isTabStop(*this));
}

void Checkbox::handleTabStopFocusReceipt(eDirection) {
    claimKbdFocus();
}

void Checkbox::handleTabStopFocusLoss() {
    FocusStop::handleLoss(*this, *this);
}

void Checkbox::handleKbdFocus() {
    FocusStop::handleKbdFocus(*this, *this);
}

// Look

void Checkbox::setString(UIString const& label) {
    label_ = label;
    makeDirty();
    describeChanged(DescriptionChange::name);
}

void Checkbox::setAppearance(eAppearance appearance) {
    appearance_ = appearance;
    makeDirty();
}

void Checkbox::setTickCharacter(char character) {
    tickCharacter_ = character;
    makeDirty();
}

void Checkbox::setFont(Glib::FontDesc const& font) {
    font_ = font;
    standardFont_ = false;
    makeDirty();
}

void Checkbox::setTextColour(Colour const& colour) {
    textColour_ = std::make_unique<Colour>(colour);
    makeDirty();
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
    if (textColour_ && isActive()) return *textColour_;
    return getPalette().text(isActive() ? eTextEnabled : eTextDisabled);
}

Colour Checkbox::getTickColour() const {
    return isActive() ? getPalette().mark(eMarkNormal) : getPalette().text(eTextDisabled);
}

Qv::Ptr<Glib::Image> Checkbox::getLEDIcon() const {
    if (!ticked_) return Glib::loadIcon(L"led_grey.png");
    bool const on = isActive();
    if (appearance_ == redLight) return Glib::loadIcon(on ? L"led_red_on.png" : L"led_red.png");
    if (appearance_ == greenLight) return Glib::loadIcon(on ? L"led_green_on.png" : L"led_green.png");
    return Glib::loadIcon(on ? L"led_blue_on.png" : L"led_blue.png");
}

XY<int> Checkbox::neededSize() const {
    return {calcWidth(label_, getBorder().getType(), font_), UifStd::getButtonHeight()};
}

void Checkbox::handleLookChange(LookChange changes) {
    StandardPanel::handleLookChange(changes);
    if (standardFont_) font_ = UifStd::getFont();
    automatic_.apply(*this, neededSize());
}

void Checkbox::draw() {
    StandardPanel::draw();
    if (!glib_showsKbdFocus(this)) return;
    CanvasRenderer renderer(canvas(), canvasArea());
    ButtonLook::drawFocus(renderer, canvasArea(), getPalette());
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
    Palette const& palette = getPalette();
    bool const answers = isActive() && (containsPointer() || pressed_);
    unsigned const radius =
        appearance_ == roundTickBox ? static_cast<unsigned>(box.width() / 2) : UifStd::getCornerRadius() / 2U;
    Colour const hover = palette.mark(eMarkFocus);
    if (isLight()) {
        if (Qv::Ptr<Glib::Image> const light = getLEDIcon())
            renderer.renderPrimitive(Glib::ImageDescription(light, box));
        if (answers) Glib::drawRoundedRectOutline(renderer, hover, box, 1, radius);
        return;
    }
    Colour const ground = palette.window(!isActive() ? eWindowNormal
                                         : pressed_  ? eWindowRaised
                                                     : eWindowRecessed);
    Colour const edge = !isActive() ? palette.text(eTextDisabled) : answers ? hover : palette.mark(eMarkEdge);
    Glib::drawRoundedMark(renderer, ground, edge, box, 1, radius);
}

void Checkbox::drawTick(bool mixed) {
    IntBox const box = getTickExtents().translated(canvasArea().bottomLeft());
    CanvasRenderer renderer(canvas(), canvasArea());
    // On a light it stands out from every colour.
    if (mixed) return drawBar(renderer, box, isLight() ? getPalette().text(eTextEnabled) : getTickColour());
    if (isLight()) return;
    if (appearance_ == roundTickBox && tickCharacter_ == 0) return drawDot(renderer, box);
    LightweightString<wchar_t> const tick =
        tickCharacter_ != 0
            ? LightweightString<wchar_t>(1, static_cast<wchar_t>(static_cast<unsigned char>(tickCharacter_)))
            : wainscot::getString(QvTTF::eTick);
    Qv::Ptr<iFont> const font = Glib::loadFont({getQvUtilityFontName(), toSize16(box.height())});
    XY<int> const place{box.centre().x, box.y1 + getFontYOffset(box.height(), font)};
    renderer.renderPrimitive(Glib::TextDescription(tick, place, font, getTickColour(), eAlignCentre));
}

/// Neither ticked nor clear.
void Checkbox::drawBar(CanvasRenderer& renderer, IntBox const& box, Colour const& colour) {
    int const inset = box.width() / 4;
    int const middle = box.y1 + box.height() / 2;
    IntBox const bar(box.x1 + inset, middle - 1, box.x2 - inset, middle + 1);
    renderer.renderPrimitive(Glib::RectDescription(bar, colour));
}

void Checkbox::drawDot(CanvasRenderer& renderer, IntBox const& box) {
    int const inset = box.width() / 4;
    unsigned const radius = static_cast<unsigned>(box.inset(inset).width() / 2);
    Glib::drawRoundedMark(renderer, getTickColour(), getTickColour(), box, 0, radius, inset);
}

LightweightString<wchar_t> Checkbox::fittedLabel(bool* wasCut) const {
    int const room = width() - getTickExtents().x2 - UifStd::getIndentWidth() - UifStd::getWidgetGap() -
                     getBorder().getSize();
    return Glib::fitTextToWidth(Glib::loadFont(getTextFont()), label_.text(), toSize16(room), wasCut);
}

void Checkbox::drawText() {
    Qv::Ptr<iFont> const font = Glib::loadFont(getTextFont());
    XY<int> const place = canvasArea().bottomLeft() + XY<int>{getTickExtents().x2 + UifStd::getWidgetGap(),
                                                              getFontYOffset(height(), font)};
    CanvasRenderer renderer(canvas(), canvasArea());
    renderer.renderPrimitive(Glib::TextDescription(fittedLabel(), place, font, getTextColour()));
}

bool Checkbox::getTooltipDetails(XY<int> const& place, TooltipDetails& details) const {
    if (StandardPanel::getTooltipDetails(place, details)) return true;
    bool wasCut = false;
    fittedLabel(&wasCut);
    if (!wasCut) return false;
    details.text = label_;
    details.area = bounds();
    return true;
}

void Checkbox::describe(GlobDescription& description) const {
    StandardPanel::describe(description);
    description.role = set_ ? "radiobutton" : "checkbox";
    description.name = label_.text();
    if (ticked_) description.states |= GlobDescription::checked;
    if (showsMixed()) description.states |= GlobDescription::mixed;
    if (isActive()) description.states |= GlobDescription::focusable;
    description.actions.push_back("toggle");
}

} // namespace wainscot
