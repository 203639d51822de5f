#include "gallery/pages/input_page_parts.h"

#include "host/base/convert.h"
#include "host/drawing/shapes.h"
#include "host/drawing/word_wrapping_text_renderer.h"
#include "host/objects/description.h"
#include "host/objects/kbd_focus.h"
#include "look/focus_mark.h"

namespace wainscot::gallery {

ReadOut::ReadOut(LightweightString<wchar_t> heading) : Glob(1, 1), heading_(std::move(heading)) {}

SizeNeeds ReadOut::sizeNeeds() const {
    int const unit = UifStd::getButtonHeight();
    return {.natural = {12 * unit, 5 * unit}, .minimum = {4 * unit, 3 * unit}};
}

void ReadOut::setText(LightweightString<wchar_t> text) {
    if (text == text_) return;
    text_ = std::move(text);
    makeDirty();
    describeChanged(DescriptionChange::value);
}

void ReadOut::draw() {
    CanvasRenderer renderer(canvas(), canvasArea());
    Palette const& palette = getPalette();
    Glib::drawIndentBox(renderer, palette.window(eWindowNormal), canvasArea());
    IntBox const area = canvasArea().inset(UifStd::getWidgetGap());
    Qv::Ptr<iFont> const font = Glib::loadFont(UifStd::getFont());
    Glib::WordWrappingTextRenderer lines(font, area.width());
    lines.renderString(renderer, heading_, area, palette.text(eTextSecondary));
    IntBox const below(area.x1, area.y1, area.x2, area.y2 - lines.size().y - UifStd::getRowGap());
    lines.renderString(renderer, text_, below, palette.text(eTextEnabled));
    if (glib_showsKbdFocus(this)) ControlLook::drawFocusMark(renderer, canvasArea(), palette, 0);
}

void ReadOut::describe(GlobDescription& description) const {
    Glob::describe(description);
    description.role = Role::text;
    description.name = heading_;
    description.value = text_;
}

} // namespace wainscot::gallery
