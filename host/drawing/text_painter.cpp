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

/// Where the rows of a glyph meet those of the surface.
struct Rows {
    std::uint32_t* pixels;
    std::ptrdiff_t pixelStride;
    std::uint8_t const* coverage;
    int coverageStride;
    int count;
};

template <bool opaque>
void blendWhole(Rows rows, std::uint32_t ink) {
    for (; rows.count > 0;
         --rows.count, rows.pixels += rows.pixelStride, rows.coverage += rows.coverageStride)
        for (int x = 0; x < rows.coverageStride; x += 4)
            CoverageBlend::blendFour<opaque>(rows.pixels + x, rows.coverage + x, ink);
}

void blendPartly(Rows rows, int width, std::uint32_t ink) {
    for (; rows.count > 0;
         --rows.count, rows.pixels += rows.pixelStride, rows.coverage += rows.coverageStride)
        for (int x = 0; x < width; ++x) CoverageBlend::blend(rows.pixels[x], ink, rows.coverage[x]);
}

} // namespace

TextRunPainter::TextRunPainter(RenderTarget const& target, iFont const& font, Colour const& colour,
                               double opacity)
    : target_(target), font_(Font::of(font)), use_(GlyphRasters::instance()),
      ink_(CoverageBlend::premultiplied(colour, target.opacity(opacity))),
      clips_(pixman_region32_rectangles(target.clip(), &clipCount_)) {}

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
    for (PlacedGlyph const& glyph : glyphs) {
        GlyphPicture const& picture = GlyphRasters::instance().picture(deviceFace(glyph.face), glyph.index);
        if (picture.width == 0) continue;
        drawGlyph(picture, {nearestPixel(left + static_cast<double>(glyph.x) * scale) + picture.left,
                            nearestPixel(baseline - static_cast<double>(glyph.y) * scale) - picture.top});
    }
}

void TextRunPainter::add(TextLine const& line, XY<int> const& position, double x) {
    IntBox const seen = target_.visibleBox().inset(-font_.size());
    double const start = position.x + x;
    line.forEachVisible(
        seen.x1 - start, seen.x2 - start,
        [&](std::span<PlacedGlyph const> glyphs, double left) { add(glyphs, position, x + left); });
}

void TextRunPainter::drawGlyph(GlyphPicture const& picture, XY<int> const& place) {
    IntBox const box = IntBox::sized(place, {picture.width, picture.height});
    Surface& surface = target_.surface();
    for (int c = 0; c < clipCount_; ++c) {
        IntBox const part = box.intersection({clips_[c].x1, clips_[c].y1, clips_[c].x2, clips_[c].y2});
        if (part.isEmpty()) continue;
        Rows const rows{surface.pixels() + static_cast<std::ptrdiff_t>(part.y1) * surface.stride() + part.x1,
                        surface.stride(),
                        picture.coverage.data() +
                            static_cast<std::ptrdiff_t>(part.y1 - box.y1) * picture.stride +
                            (part.x1 - box.x1),
                        picture.stride, part.height()};
        // Whole rows go four pixels at a time; what that touches behind the glyph stays as it is.
        bool const whole = part.width() == box.width() && box.x1 + picture.stride <= surface.stride();
        if (!whole)
            blendPartly(rows, part.width(), ink_);
        else if (CoverageBlend::isOpaque(ink_))
            blendWhole<true>(rows, ink_);
        else
            blendWhole<false>(rows, ink_);
    }
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
