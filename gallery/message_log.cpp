#include "gallery/message_log.h"

#include "host/base/convert.h"
#include "host/drawing/shapes.h"
#include "host/drawing/uif_std.h"
#include "host/objects/description.h"

namespace wainscot::gallery {

namespace {
constexpr std::size_t maxLines = 1000;
}

MessageLog::MessageLog(XY<int> size) : Glob(toSize16(size.x), toSize16(size.y)) {}

void MessageLog::add(LightweightString<wchar_t> const& line) {
    lines_.push_back(Qv::WStringFromInteger(++numAdded_) + L"  " + line);
    if (lines_.size() > maxLines) lines_.pop_front();
    makeDirty();
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
    for (auto line = lines_.rbegin(); line != lines_.rend() && y + font->ascent() < box.y2;
         ++line, y += step) {
        eTextAppearance const appearance = line == lines_.rbegin() ? eTextEnabled : eTextSecondary;
        renderer.renderPrimitive(Glib::TextDescription(*line, {box.x1 + UifStd::getIndentWidth(), y}, font,
                                                       palette.text(appearance)));
    }
}

} // namespace wainscot::gallery
