#include "gallery/label_glob.h"

#include "host/base/convert.h"
#include "host/drawing/uif_std.h"
#include "host/events/event.h"
#include "host/objects/description.h"
#include "host/objects/kbd_focus.h"
#include "look/focus_mark.h"
#include "look/ink.h"

#include <algorithm>

namespace wainscot::gallery {

LabelGlob::LabelGlob(LightweightString<wchar_t> label) : Glob(1, 1), label_(std::move(label)) {
    automatic_.apply(*this, neededSize());
}

XY<int> LabelGlob::neededSize() const {
    int const unit = UifStd::getButtonHeight();
    int const text = Glib::loadFont(UifStd::getFont())->textWidth(label_);
    return {std::max(4 * unit, text + 2 * UifStd::getWidgetGap()), unit * 3 / 2};
}

SizeNeeds LabelGlob::sizeNeeds() const {
    // A label may be cut.
    XY<int> const needed = neededSize();
    return automatic_.needs(needed, {4 * UifStd::getButtonHeight(), needed.y});
}

void LabelGlob::handleLookChange(LookChange changes) {
    Glob::handleLookChange(changes);
    automatic_.apply(*this, neededSize());
}

bool LabelGlob::react(Event const& event) {
    if (!isMoving() && mouse_event(event) && reactToMouse(event)) return true;
    if (isKeyPressEvent(event) && reactToKey(event)) return true;
    return Glob::react(event);
}

bool LabelGlob::reactToMouse(Event const& event) {
    if (!isActive()) return false;
    LifeGuard const life = guard();
    if (mouse_wheel_event(event)) return sendMsg(parent(), wheelMsg);
    if (mouse_down_event(event) && mouse_left_event(event)) {
        if (focusable_) claimKbdFocus();
        if (!life.alive()) return true;
        if (isMovable())
            startMoving();
        else
            setPressed(true);
        return sendMsg(parent(), pressedMsg);
    }
    if (mouse_move_event(event) && mouse_left_event(event)) {
        setPressed(bounds().contains(eventXYToGlobXY(event, *this)));
        return true;
    }
    if (!mouse_up_event(event) || !mouse_left_event(event)) return false;
    bool const inside = pressed_;
    setPressed(false);
    sendMsg(parent(), releasedMsg);
    if (inside) click();
    return true;
}

bool LabelGlob::reactToKey(Event const& event) {
    if (event.keyCode() == Key::enter || event.keyCode() == Key::space) {
        click();
        return true;
    }
    bool const reports = event.keyCode() != Key::tab && event.keyCode() != Key::shiftTab;
    if (reports) sendMsg(parent(), keyMsg);
    return false;
}

void LabelGlob::click() {
    LifeGuard const life = guard();
    sendMsg(parent(), clickedMsg);
    std::function<void(LabelGlob&)> const action = action_;
    if (life.alive() && action) action(*this);
}

void LabelGlob::setPressed(bool pressed) {
    if (pressed_ == pressed) return;
    pressed_ = pressed;
    makeDirty();
    describeChanged(DescriptionChange::state);
}

void LabelGlob::handleCaptureLost() {
    setPressed(false);
    Glob::handleCaptureLost();
}

void LabelGlob::handleKbdFocus() {
    bool const has = get_kbd_focus() == this;
    makeDirty();
    if (has == hadFocus_) return;
    hadFocus_ = has;
    sendMsg(parent(), has ? focusedMsg : unfocusedMsg);
}

void LabelGlob::handleMouseContainment(bool inside) {
    makeDirty();
    sendMsg(parent(), inside ? enteredMsg : leftMsg);
}

void LabelGlob::describe(GlobDescription& description) const {
    Glob::describe(description);
    description.role = Role::label;
    description.name = label_;
    if (pressed_) description.states |= GlobDescription::pressed;
    if (focusable_) description.states |= GlobDescription::focusable;
    description.actions |= GlobDescription::press;
}

void LabelGlob::draw() {
    Palette const& palette = getPalette();
    IntBox const box = canvasArea();
    CanvasRenderer renderer(canvas(), box);
    ControlState const state{.isActive = isActive(), .isHovered = containsPointer(), .isPressed = pressed_};
    ControlLook::Face const face{box, palette.button(), state};
    ControlLook::drawFace(renderer, face, palette);
    ControlLook::drawEdge(renderer, face, palette);
    Qv::Ptr<iFont> const font = Glib::loadFont(UifStd::getFont());
    auto const fitted =
        Glib::fitTextToWidth(font, label_, toSize16(box.width() - 2 * UifStd::getIndentWidth()));
    XY<int> const place{box.centre().x, box.y1 + getFontYOffset(box.height(), font)};
    Glib::TextDescription const text(fitted, place, font, ControlLook::textColour(state, palette),
                                     eAlignCentre);
    renderer.renderPrimitive(text);
    if (glib_showsKbdFocus(this)) ControlLook::drawFocusMark(renderer, box, palette);
}

} // namespace wainscot::gallery
