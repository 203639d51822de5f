#include "host/drawing/font_p.h"
#include "host/drawing/glyph_raster_p.h"
#include "host/drawing/render_target_p.h"

#include <algorithm>

namespace wainscot {
namespace {

/// Gathers the glyphs of a text and draws them in few steps.
class GlyphRun {
public:
    GlyphRun(RenderTarget const& target, Glib::TextDescription const& text)
        : target_(target), font_(Font::of(*text.font)), use_(GlyphRasters::instance()),
          source_(solidSource(pixmanColour(text.colour, target.opacity(text.opacity)))) {}

    /// Adds a block that begins at an exact distance from the device place `origin`.
    void add(TextLayout const& layout, XY<double> const& origin) {
        for (PlacedGlyph const& glyph : layout.glyphs()) {
            if (count_ == glyphs_.size()) draw();
            void const* picture = use_.picture(deviceFace(glyph.face), glyph.index);
            if (!picture) continue;
            glyphs_[count_++] = {deviceEdge(origin.x + static_cast<double>(glyph.x) * target_.scale(), 1.0),
                                 deviceEdge(origin.y - static_cast<double>(glyph.y) * target_.scale(), 1.0),
                                 picture};
        }
    }

    void draw() {
        if (count_ == 0) return;
        pixman_composite_glyphs_no_mask(PIXMAN_OP_OVER, source_, target_.image(), 0, 0, 0, 0,
                                        GlyphRasters::instance().cache(), static_cast<int>(count_),
                                        glyphs_.data());
        count_ = 0;
    }

private:
    GlyphRasters::DeviceFace& deviceFace(std::uint32_t index) {
        if (current_ && index == currentIndex_) return *current_;
        Font::SizedFace const& sized = font_.sizedFace(index);
        currentIndex_ = index;
        current_ = &GlyphRasters::instance().deviceFace(sized.face, font_.size() * target_.scale());
        return *current_;
    }

    RenderTarget const& target_;
    Font const& font_;
    GlyphRasters::Use use_;
    pixman_image_t* source_;
    GlyphRasters::DeviceFace* current_ = nullptr;
    std::uint32_t currentIndex_ = 0;
    std::array<pixman_glyph_t, 256> glyphs_;
    std::size_t count_ = 0;
};

} // namespace

void drawTextRun(RenderTarget const& target, Glib::TextDescription const& text, XY<int> const& start) {
    Font const& font = Font::of(*text.font);
    if (!font.sizedFace(0).face) return;
    XY<int> const place = target.onSurface(start);
    double const scale = target.scale();
    double const y = target.surface().deviceSize().y - deviceEdge(place.y, scale);
    pixman_box32_t const* limits = pixman_region32_extents(target.clip());
    double const margin = font.size() * scale;
    RenderTarget::Clipped const clipped(target);
    GlyphRun run(target, text);
    double x = 0;
    forEachBlock(text.text.view(), [&](std::wstring_view block, std::size_t) {
        TextLayoutPtr const layout = TextLayouts::get(font, block);
        double const left = (place.x + x) * scale;
        x += static_cast<double>(layout->width());
        double const right = (place.x + x) * scale;
        if (right + margin >= limits->x1 && left - margin <= limits->x2) run.add(*layout, {left, y});
        return left <= limits->x2 + margin;
    });
    run.draw();
}

} // namespace wainscot
