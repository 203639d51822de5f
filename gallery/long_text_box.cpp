#include "gallery/long_text_box.h"

#include "host/base/convert.h"
#include "host/drawing/shapes.h"
#include "host/drawing/uif_std.h"
#include "host/events/event.h"
#include "host/objects/description.h"
#include "host/objects/dispatch.h"
#include "host/objects/kbd_focus.h"
#include "look/focus_mark.h"
#include "look/track.h"

#include <algorithm>
#include <string>

namespace wainscot::gallery {

namespace {

constexpr int linesPerNotch = 3;

/// `part` of `whole`, stretched to `length`.
int stretched(int part, int whole, int length) {
    return static_cast<int>(static_cast<std::int64_t>(part) * length / std::max(whole, 1));
}

} // namespace

LongTextBox::LongTextBox(std::wstring_view text)
    : Glob(1, 1, Palette(), false), text_(Glib::loadFont(UifStd::getFont())) {
    text_.setText(text);
}

/// Room for the text, the bar and the line that tells the place.
SizeNeeds LongTextBox::sizeNeeds() const {
    int const unit = UifStd::getButtonHeight();
    int const high = unit + unit / 2 + 2 * UifStd::getRowGap() + lineStep();
    return {.natural = {20 * unit, high}, .minimum = {8 * unit, high}};
}

void LongTextBox::handleLookChange(LookChange changes) {
    Glob::handleLookChange(changes);
    text_.setFont(Glib::loadFont(UifStd::getFont()));
    scrollTo(offset_);
    needsChanged();
}

int LongTextBox::lineStep() const {
    return text_.font()->lineHeight();
}

int LongTextBox::lastOffset() const {
    int const room = textBox().width() - 2 * UifStd::getIndentWidth();
    return std::max(text_.width() - room, 0);
}

IntBox LongTextBox::textBox() const {
    int const high = UifStd::getButtonHeight();
    return {0, height() - high, width(), height()};
}

IntBox LongTextBox::track() const {
    int const top = textBox().y1 - UifStd::getRowGap();
    return {0, top - UifStd::getButtonHeight() / 2, width(), top};
}

IntBox LongTextBox::thumb() const {
    IntBox const all = track();
    int const least = all.height() * 2;
    int const shown = std::max(stretched(all.width(), text_.width(), all.width()), least);
    int const wide = std::min(shown, all.width());
    int const left = all.x1 + stretched(offset_, lastOffset(), all.width() - wide);
    return {left, all.y1, left + wide, all.y2};
}

void LongTextBox::scrollTo(int offset) {
    int const kept = std::clamp(offset, 0, lastOffset());
    if (kept == offset_) return;
    offset_ = kept;
    makeDirty();
    describeChanged(DescriptionChange::value);
}

void LongTextBox::scrollToThumbAt(int x) {
    IntBox const all = track();
    int const wide = thumb().width();
    int const left = std::clamp(x - wide / 2 - all.x1, 0, all.width() - wide);
    scrollTo(stretched(left, all.width() - wide, lastOffset()));
}

LightweightString<wchar_t> LongTextBox::place() const {
    int const right = offset_ + textBox().width() - 2 * UifStd::getIndentWidth();
    std::wstring const first = std::to_wstring(text_.indexAt(offset_) + 1);
    std::wstring const last = std::to_wstring(text_.indexAt(right));
    std::wstring const all = std::to_wstring(text_.length());
    return LightweightString<wchar_t>(
        std::wstring_view(L"Characters " + first + L" to " + last + L" of " + all));
}

bool LongTextBox::react(Event const& event) {
    if (mouse_event(event) && reactToMouse(event)) return true;
    if (isKeyPressEvent(event) && reactToKey(event)) return true;
    return Glob::react(event);
}

bool LongTextBox::reactToMouse(Event const& event) {
    if (mouse_wheel_event(event)) {
        scrollTo(offset_ - event.amount() * lineStep() * linesPerNotch);
        return true;
    }
    if (!mouse_left_event(event) || mouse_up_event(event)) return false;
    if (mouse_down_event(event)) {
        LifeGuard const life = guard();
        claimKbdFocus();
        if (!life.alive()) return true;
    }
    if (track().contains(screenXYToGlobXY(event.pressPlace())))
        scrollToThumbAt(screenXYToGlobXY(event.place()).x);
    return true;
}

bool LongTextBox::reactToKey(Event const& event) {
    int const page = std::max(textBox().width() - lineStep() * 2, lineStep());
    switch (event.keyCode()) {
    case Key::left:
    case Key::up:
        scrollTo(offset_ - lineStep());
        return true;
    case Key::right:
    case Key::down:
        scrollTo(offset_ + lineStep());
        return true;
    case Key::pageUp:
        scrollTo(offset_ - page);
        return true;
    case Key::pageDown:
        scrollTo(offset_ + page);
        return true;
    case Key::home:
        scrollTo(0);
        return true;
    case Key::end:
        scrollTo(lastOffset());
        return true;
    default:
        return false;
    }
}

void LongTextBox::reshape() {
    Glob::reshape();
    scrollTo(offset_);
}

void LongTextBox::draw() {
    Palette const& palette = getPalette();
    XY<int> const origin = canvasArea().bottomLeft();
    CanvasRenderer renderer(canvas(), canvasArea());
    IntBox const box = textBox().translated(origin);
    Glib::drawOutlinedRect(renderer, palette.window(eWindowRecessed), palette.mark(eMarkEdge), box);
    if (glib_showsKbdFocus(this)) ControlLook::drawFocusMark(renderer, box, palette, 0);
    ControlLook::drawLane(renderer, track().translated(origin), palette);
    ControlLook::drawThumb(renderer, {thumb().translated(origin), nullptr, {.isActive = isActive()}},
                           palette);
    int const under = origin.y + track().y1 - UifStd::getRowGap() - lineStep();
    renderer.renderPrimitive(Glib::TextDescription(place(), {origin.x, under + text_.font()->descent()},
                                                   text_.font(), palette.text(eTextSecondary)));
    int const margin = UifStd::getIndentWidth();
    renderer.setClipRect({box.x1 + margin, box.y1 + 1, box.x2 - margin, box.y2 - 1});
    text_.draw(renderer, {box.x1 + margin - offset_, box.y1 + getFontYOffset(box.height(), text_.font())},
               palette.text(eTextEnabled));
}

void LongTextBox::describe(GlobDescription& description) const {
    Glob::describe(description);
    description.role = Role::textBox;
    description.name = L"Long text";
    description.value = place();
    description.states |= GlobDescription::focusable;
}

} // namespace wainscot::gallery
