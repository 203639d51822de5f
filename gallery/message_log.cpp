#include "gallery/message_log.h"

#include "host/base/convert.h"
#include "host/drawing/shapes.h"
#include "host/drawing/uif_std.h"
#include "host/events/event.h"
#include "host/objects/description.h"

#include <algorithm>

namespace wainscot::gallery {

namespace {
constexpr std::size_t maxLines = 1000;
constexpr int linesPerNotch = 3;
} // namespace

MessageLog::MessageLog(XY<int> size) : Glob(toSize16(size.x), toSize16(size.y)) {}

void MessageLog::add(LightweightString<wchar_t> const& line) {
    lines_.push_back(Qv::WStringFromInteger(++numAdded_) + L"  " + line);
    if (lines_.size() > maxLines) lines_.pop_front();
    if (isPaused_)
        heldBack_ = std::min(heldBack_ + 1, lines_.size());
    else
        showNewest();
}

void MessageLog::showNewest() {
    back_ = 0;
    makeDirty();
}

bool MessageLog::react(Event const& event) {
    if (!mouse_wheel_event(event) || lines_.size() <= heldBack_) return Glob::react(event);
    auto const most = static_cast<int>(lines_.size() - heldBack_) - 1;
    back_ = static_cast<std::size_t>(
        std::clamp(static_cast<int>(back_) + event.amount() * linesPerNotch, 0, most));
    makeDirty();
    return true;
}

void MessageLog::clear() {
    lines_.clear();
    heldBack_ = 0;
    showNewest();
}

void MessageLog::setPaused(bool paused) {
    isPaused_ = paused;
    heldBack_ = 0;
    showNewest();
}

LightweightString<char> MessageLog::text() const {
    LightweightString<char> text;
    for (auto const& line : lines_) text += toUTF8(line) + "\n";
    return text;
}

void MessageLog::describe(GlobDescription& description) const {
    Glob::describe(description);
    description.role = Role::log;
    description.name = L"Messages";
    if (!lines_.empty()) description.value = lines_.back();
}

void MessageLog::draw() {
    Palette const& palette = getPalette();
    IntBox const box = canvasArea();
    CanvasRenderer renderer(canvas(), box);
    Glib::drawOutlinedRect(renderer, palette.window(eWindowRecessed), palette.separator(), box);
    Qv::Ptr<iFont> const font = Glib::loadFont(UifStd::getFont());
    int const step = font->lineHeight() + UifStd::getWidgetGap() / 2;
    int y = box.y1 + UifStd::getWidgetGap() + font->descent();
    renderer.setClipRect(box.inset(1));
    auto const newest = lines_.rbegin() + static_cast<std::ptrdiff_t>(heldBack_ + back_);
    for (auto line = newest; line != lines_.rend() && y + font->ascent() < box.y2; ++line, y += step) {
        eTextAppearance const appearance = line == newest ? eTextEnabled : eTextSecondary;
        renderer.renderPrimitive(Glib::TextDescription(*line, {box.x1 + UifStd::getWidgetGap(), y}, font,
                                                       palette.text(appearance)));
    }
}

} // namespace wainscot::gallery
