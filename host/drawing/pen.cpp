#include "host/drawing/pen.h"

#include "host/drawing/canvas_renderer.h"

#include <algorithm>

namespace wainscot {
namespace {

unsigned short usableHeight(int height) {
    return height <= 0 ? Glib::getDefaultFontSize() : static_cast<unsigned short>(std::min(height, 1024));
}

} // namespace

Pen::Pen(Canvas* canvas, Colour const* colour, char const* fontName, int height, int style)
    : canvas_(canvas), colour_(colour ? *colour : Colour()),
      desc_(LightweightString<char>(fontName), usableHeight(height),
            static_cast<unsigned>(std::max(0, style))) {
    if (canvas) guard_ = LifeGuard(canvas->life());
    load();
}

void Pen::load() {
    font_ = Glib::loadFont(desc_);
}

void Pen::set_font(char const* fontName) {
    desc_.name = LightweightString<char>(fontName);
    load();
}

void Pen::set_font_height(int height) {
    desc_.size = usableHeight(height);
    load();
}

void Pen::writeTextAt(LightweightString<wchar_t> const& text, XY<int> const& position) {
    Glib::TextDescription const line(text, position, font_, colour_);
    CanvasRenderer renderer(guard_.alive() ? canvas_ : nullptr, line.calcBounds().inset(-font_->size()));
    renderer.renderPrimitive(line);
}

void Pen::draw_filled_box(IntBox const& box) {
    CanvasRenderer renderer(guard_.alive() ? canvas_ : nullptr, box);
    renderer.renderPrimitive(Glib::RectDescription(box, colour_));
}

XY<int> Pen::measure(LightweightString<wchar_t> const& text) const {
    return {font_->textWidth(text), font_->lineHeight()};
}

int Pen::getFontYOffset(int height) const {
    return wainscot::getFontYOffset(height, font_);
}

} // namespace wainscot
