#include "foundation/fitted_label.h"

#include "host/base/convert.h"
#include "host/drawing/descriptions.h"
#include "host/objects/glob.h"
#include "host/objects/tooltip_details.h"

namespace wainscot {

bool FittedLabel::setText(UIString const& text) {
    if (text == text_) return false;
    text_ = text;
    return true;
}

bool FittedLabel::setFont(Glib::FontDesc const& font) {
    isStandardFont_ = false;
    if (font == font_) return false;
    font_ = font;
    return true;
}

FittedLabel FittedLabel::withText(UIString const& text) const {
    FittedLabel label = *this;
    label.text_ = text;
    return label;
}

FittedLabel FittedLabel::withFont(Glib::FontDesc const& font) const {
    FittedLabel label = *this;
    label.font_ = font;
    return label;
}

void FittedLabel::followLook() {
    if (isStandardFont_) font_ = UifStd::getFont();
}

int FittedLabel::neededWidth() const {
    return Glib::loadFont(font_)->textWidth(text_.text());
}

LightweightString<wchar_t> FittedLabel::fitted(int room, bool* wasCut) const {
    return Glib::fitTextToWidth(Glib::loadFont(font_), text_.text(), toSize16(room), wasCut);
}

void FittedLabel::draw(CanvasRenderer& renderer, IntBox const& row, int x, int room, Colour const& colour,
                       TextAlignment alignment) const {
    Qv::Ptr<iFont> const font = Glib::loadFont(font_);
    XY<int> const place{x, row.y1 + getFontYOffset(row.height(), font)};
    Glib::TextDescription const text(fitted(room), place, font, colour, alignment);
    IntBox const bounds = text.calcBounds();
    if (bounds.isEmpty()) return;
    renderer.renderPrimitive(text);
    renderer.addModifiedArea(bounds);
}

bool FittedLabel::getTip(Glob const& control, int room, TooltipDetails& details) const {
    bool wasCut = false;
    fitted(room, &wasCut);
    if (!wasCut) return false;
    details.text = text_;
    details.area = control.bounds();
    return true;
}

} // namespace wainscot
