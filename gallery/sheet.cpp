#include "gallery/sheet.h"

#include "host/base/convert.h"
#include "host/drawing/uif_std.h"

namespace wainscot::gallery {

Sheet::Sheet(XY<int> size, Draw contents) : Glob(toSize16(size.x), toSize16(size.y)), draw_(contents) {}

void Sheet::draw() {
    Glob::draw();
    CanvasRenderer renderer(canvas(), canvasArea());
    draw_(renderer, canvasArea().inset(UifStd::getIndentWidth() * 2), getPalette());
}

SheetCursor::SheetCursor(CanvasRenderer& renderer, IntBox const& area, Palette const& palette)
    : renderer_(renderer), area_(area), palette_(palette), top_(area.y2) {}

void SheetCursor::note(LightweightString<wchar_t> const& text) {
    Qv::Ptr<iFont> const font = Glib::loadFont(UifStd::getFont());
    IntBox const box = row(font->lineHeight());
    renderer_.renderPrimitive(
        Glib::TextDescription(text, {box.x1, box.y1 + font->descent()}, font, palette_.text(eTextSecondary)));
    top_ -= UifStd::getWidgetGap();
}

IntBox SheetCursor::row(int height) {
    IntBox const box(area_.x1, top_ - height, area_.x2, top_);
    top_ -= height + UifStd::getRowGap();
    return box;
}

} // namespace wainscot::gallery
