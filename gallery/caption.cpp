#include "gallery/caption.h"

#include "host/base/convert.h"
#include "host/drawing/canvas_renderer.h"
#include "host/drawing/uif_std.h"
#include "host/objects/description.h"

namespace wainscot::gallery {

namespace {

Qv::Ptr<iFont> fontOf(Caption::Kind kind) {
    return Glib::loadFont(kind == Caption::Kind::heading ? UifStd::getTitleFont() : UifStd::getFont());
}

} // namespace

Caption::Caption(LightweightString<wchar_t> text, Kind kind)
    : Glob(toSize16(fontOf(kind)->textWidth(text)), toSize16(fontOf(kind)->lineHeight()), Palette(), false),
      text_(std::move(text)), kind_(kind) {}

void Caption::draw() {
    Qv::Ptr<iFont> const font = fontOf(kind_);
    Palette const& palette = getPalette();
    Colour const ink = kind_ == Kind::heading ? palette.headingText() : palette.text(eTextSecondary);
    IntBox const box = canvasArea();
    CanvasRenderer renderer(canvas(), box);
    renderer.renderPrimitive(Glib::TextDescription(text_, {box.x1, box.y1 + font->descent()}, font, ink));
}

void Caption::describe(GlobDescription& description) const {
    Glob::describe(description);
    description.role = Role::caption;
    description.name = text_;
}

} // namespace wainscot::gallery
