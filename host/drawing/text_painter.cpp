#include "host/drawing/text_painter_p.h"

#include "host/drawing/coverage_blend_p.h"
#include "host/drawing/symbols_p.h"

namespace wainscot {
namespace {

/// Rounds a place that lies on or near a surface; much quicker than the general way.
int nearestPixel(double place) {
    constexpr int beyond = 1 << 26;
    return static_cast<int>(place + 0.5 + beyond) - beyond;
}

} // namespace

TextRunPainter::TextRunPainter(RenderTarget const& target, iFont const& font, Colour const& colour,
                               double opacity)
    : target_(target), font_(Font::of(font)), use_(GlyphRasters::instance()),
      ink_(target, CoverageBlend::premultiplied(colour, target.opacity(opacity))) {}

GlyphRasters::DeviceFace& TextRunPainter::deviceFace(std::uint32_t index) {
    if (current_ && index == currentIndex_) return *current_;
    FontFace* face = index == Symbols::face ? nullptr : font_.sizedFace(index).face;
    currentIndex_ = index;
    current_ = &GlyphRasters::instance().deviceFace(face, font_.size() * target_.scale());
    return *current_;
}

void TextRunPainter::add(std::span<PlacedGlyph const> glyphs, XY<int> const& position, double x) {
    double const scale = target_.scale();
    // The exact distance stays apart from the place: a long text begins far away.
    XY<long long> const place = target_.exactOnSurface(position);
    double const left = (static_cast<double>(place.x) + x) * scale;
    double const baseline =
        target_.surface().deviceSize().y - std::floor(static_cast<double>(place.y) * scale + 0.5);
    GlyphRasters& rasters = GlyphRasters::instance();
    for (PlacedGlyph const& glyph : glyphs) {
        GlyphPicture const& picture = rasters.picture(deviceFace(glyph.face), glyph.index);
        int const x1 = nearestPixel(left + static_cast<double>(glyph.x) * scale) + picture.left;
        // The glyphs of a block may lie far beyond what can be seen.
        if (ink_.isBeside(x1, x1 + picture.width)) continue;
        int const y1 = nearestPixel(baseline - static_cast<double>(glyph.y) * scale) - picture.top;
        ink_.fill({picture.coverage.data(), picture.stride},
                  IntBox::sized({x1, y1}, {picture.width, picture.height}));
    }
}

void TextRunPainter::add(TextLine const& line, XY<int> const& position, double x) {
    IntBox const seen = target_.visibleBox().inset(-font_.size());
    double const start = position.x + x;
    line.forEachVisible(
        seen.x1 - start, seen.x2 - start,
        [&](std::span<PlacedGlyph const> glyphs, double left) { add(glyphs, position, x + left); });
}

namespace {

IntBox drawShortText(RenderTarget const& target, Glib::TextDescription const& text) {
    TextLayoutPtr const layout = TextLayouts::get(Font::of(*text.font), text.text.view());
    IntBox const bounds = text.boundsOfWidth(text.position, static_cast<int>(std::lround(layout->width())));
    IntBox const ink = bounds.inset(-text.font->size());
    if (!target.isVisible(target.deviceBox(ink))) return {};
    TextRunPainter(target, *text.font, text.colour, text.opacity)
        .add(layout->glyphs(), {bounds.x1, text.position.y}, 0);
    return ink;
}

/// Only the blocks that can be seen are laid out.
IntBox drawLongText(RenderTarget const& target, Glib::TextDescription const& text) {
    TextLine const line(Font::of(*text.font), text.text.view());
    constexpr double most = 1 << 30;
    int const width = static_cast<int>(std::lround(std::min(line.width(), most)));
    IntBox const bounds = text.boundsOfWidth(text.position, width);
    TextRunPainter(target, *text.font, text.colour, text.opacity).add(line, {bounds.x1, text.position.y}, 0);
    return bounds.inset(-text.font->size());
}

} // namespace

IntBox drawText(RenderTarget const& target, Glib::TextDescription const& text) {
    return text.text.size() <= TextLayout::maxLength ? drawShortText(target, text)
                                                     : drawLongText(target, text);
}

} // namespace wainscot
