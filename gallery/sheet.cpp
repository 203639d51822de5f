#include "gallery/sheet.h"

#include "host/base/convert.h"
#include "host/drawing/uif_std.h"

#include <utility>

namespace wainscot::gallery {

namespace {
/// In heights of a button.
constexpr int leastColumns = 26;
} // namespace

Sheet::Sheet(XY<int> size, Draw contents) : Glob(toSize16(size.x), toSize16(size.y)), draw_(contents) {}

SizeNeeds Sheet::sizeNeeds() const {
    XY<int> const size{UifStd::getButtonHeight() * leastColumns, neededHeight_};
    return {.natural = size, .minimum = size};
}

void Sheet::draw() {
    Glob::draw();
    CanvasRenderer renderer(canvas(), canvasArea());
    int const margin = UifStd::getIndentWidth() * 2;
    SheetCursor cursor(renderer, canvasArea().inset(margin), getPalette());
    draw_(cursor);
    int const before = std::exchange(neededHeight_, cursor.usedHeight() + 2 * margin);
    if (neededHeight_ != before) needsChanged();
}

SheetCursor::SheetCursor(CanvasRenderer& renderer, IntBox const& area, Palette const& palette)
    : renderer_(renderer), area_(area), palette_(palette), top_(area.y2) {}

void SheetCursor::note(LightweightString<wchar_t> const& text) {
    if (usedHeight() > 0) top_ -= UifStd::getWidgetGap();
    Qv::Ptr<iFont> const font = Glib::loadFont(UifStd::getFont());
    IntBox const box = row(font->lineHeight());
    renderer_.renderPrimitive(
        Glib::TextDescription(text, {box.x1, box.y1 + font->descent()}, font, palette_.text(eTextSecondary)));
}

IntBox SheetCursor::row(int height) {
    IntBox const box(area_.x1, top_ - height, area_.x2, top_);
    top_ -= height + UifStd::getRowGap();
    return box;
}

} // namespace wainscot::gallery
