#include "host/drawing/text_painter_p.h"

#include "host/drawing/symbols_p.h"

namespace wainscot {

TextRunPainter::TextRunPainter(RenderTarget const& target, iFont const& font, Colour const& colour,
                               double opacity)
    : target_(target), font_(Font::of(font)), use_(GlyphRasters::instance()), clipped_(target),
      source_(solidSource(pixmanColour(colour, target.opacity(opacity)))) {}

GlyphRasters::DeviceFace& TextRunPainter::deviceFace(std::uint32_t index) {
    if (current_ && index == currentIndex_) return *current_;
    FontFace* face = index == Symbols::face ? nullptr : font_.sizedFace(index).face;
    currentIndex_ = index;
    current_ = &GlyphRasters::instance().deviceFace(face, font_.size() * target_.scale());
    return *current_;
}

void TextRunPainter::add(std::wstring_view block, XY<int> const& position, double x) {
    if (block.empty()) return;
    double const scale = target_.scale();
    // The exact distance stays apart from the place: a long text begins far away.
    XY<long long> const place = target_.exactOnSurface(position);
    double const left = (static_cast<double>(place.x) + x) * scale;
    double const baseline =
        target_.surface().deviceSize().y - std::floor(static_cast<double>(place.y) * scale + 0.5);
    TextLayoutPtr const layout = TextLayouts::get(font_, block);
    for (PlacedGlyph const& glyph : layout->glyphs()) {
        if (count_ == glyphs_.size()) flush();
        void const* picture = use_.picture(deviceFace(glyph.face), glyph.index);
        if (!picture) continue;
        glyphs_[count_++] = {deviceEdge(left + static_cast<double>(glyph.x) * scale, 1.0),
                             deviceEdge(baseline - static_cast<double>(glyph.y) * scale, 1.0), picture};
    }
}

void TextRunPainter::flush() {
    if (count_ == 0) return;
    pixman_composite_glyphs_no_mask(PIXMAN_OP_OVER, source_, target_.image(), 0, 0, 0, 0,
                                    GlyphRasters::instance().cache(), static_cast<int>(count_),
                                    glyphs_.data());
    count_ = 0;
}

void drawTextRun(RenderTarget const& target, Glib::TextDescription const& text, XY<int> const& start) {
    Font const& font = Font::of(*text.font);
    IntBox const seen = target.visibleBox().inset(-font.size());
    TextRunPainter painter(target, font, text.colour, text.opacity);
    if (text.text.size() <= TextLayout::maxLength) return painter.add(text.text.view(), start, 0);
    double x = 0;
    forEachBlock(text.text.view(), [&](std::wstring_view block, std::size_t) {
        double const left = start.x + x;
        x += font.blockWidth(block);
        if (start.x + x >= seen.x1 && left <= seen.x2) painter.add(block, start, left - start.x);
        return left <= seen.x2;
    });
}

} // namespace wainscot
