#include "text/text_cursor.h"

#include "host/drawing/canvas_renderer.h"
#include "host/events/dispatch_scope.h"
#include "host/events/event.h"
#include "host/events/event_time_server.h"
#include "host/objects/kbd_focus.h"
#include "host/services/clock.h"
#include "host/services/preferences.h"

#include <algorithm>
#include <cwctype>

namespace wainscot {

namespace {

constexpr int lineWidth = 1;

LightweightString<wchar_t> asText(wchar_t character) {
    return LightweightString<wchar_t>(1, character);
}

bool isFlashWanted() {
    return config_int("caret_flash", 1) != 0;
}

} // namespace

TextCursor::TextCursor(Glib::FontDesc const& font, Canvas* canvas)
    : rect(lineWidth, font.size, Palette(), false, canvas), font_(font) {
    setLightweight(true);
}

TextCursor::~TextCursor() = default;

void TextCursor::setFont(Glib::FontDesc const& font) {
    if (font == font_) return;
    font_ = font;
    resize(width(), font_.size);
    fitWidth();
}

void TextCursor::setCursorStyle(eStyle style) {
    if (style == style_) return;
    style_ = style;
    fitWidth();
}

void TextCursor::setCurrentChar(wchar_t character) {
    if (character == character_) return;
    character_ = character;
    if (style_ == eLineStyle) return;
    fitWidth();
    makeDirty();
}

void TextCursor::fitWidth() {
    int const wide =
        style_ == eLineStyle
            ? lineWidth
            : std::max({lineWidth, Glib::loadFont(font_)->textWidth(asText(character_)), font_.size / 4});
    if (wide == width()) return;
    DispatchScope const scope;
    makeDirty();
    resize(wide, height());
    makeDirty();
}

// Flashing

void TextCursor::setShowing(bool showing) {
    if (showing == isShowing_) return;
    isShowing_ = showing;
    makeDirty();
}

void TextCursor::show() {
    setShowing(true);
}

void TextCursor::hide() {
    setShowing(false);
}

void TextCursor::wait(double ms) {
    setInterest(EventKind::timer);
    setNextTimer(ms);
}

void TextCursor::activateFlash() {
    isFlashing_ = true;
    flashedAt_ = activatedAt_ = service_get_msecs();
    if (isFlashWanted()) wait(flashTime + EventTimeServer::minMs);
}

void TextCursor::deactivateFlash() {
    isFlashing_ = false;
    clearInterest(EventKind::timer);
}

void TextCursor::restartFlash() {
    show();
    activateFlash();
}

bool TextCursor::react(Event const& event) {
    if (!isTimerEvent(event)) return rect::react(event);
    if (isFlashing_) flash();
    return true;
}

/// A timer event that comes too early changes nothing.
void TextCursor::flash() {
    double const now = service_get_msecs();
    if (now - flashedAt_ > flashTime) {
        flashedAt_ = now;
        setShowing(!isShowing_);
    }
    if (isShowing_ && now - activatedAt_ > restTime) return clearInterest(EventKind::timer);
    wait(std::max(flashedAt_ + flashTime - now, 0.0) + EventTimeServer::minMs);
}

// Drawing

void TextCursor::draw() {
    if (!isShowing_ || !glib_showsKbdFocus(parent())) return;
    CanvasRenderer renderer(canvas(), canvasArea());
    renderer.renderPrimitive(Glib::RectDescription(canvasArea(), getcol()));
    if (style_ == eLineStyle || !std::iswalnum(static_cast<wint_t>(character_))) return;
    Qv::Ptr<iFont> const font = Glib::loadFont(font_);
    XY<int> const place{canvasArea().x1, canvasArea().y1 + getFontYOffset(height(), font)};
    renderer.renderPrimitive(
        Glib::TextDescription(asText(character_), place, font, getPalette().text(eTextEnabled)));
}

} // namespace wainscot
