#pragma once

#include "host/drawing/font_p.h"
#include "host/drawing/glyph_raster_p.h"
#include "host/drawing/render_target_p.h"

#include <array>

namespace wainscot {

/// Draws blocks of text in one font and colour; gathers their glyphs and draws them in few steps.
class TextRunPainter {
public:
    TextRunPainter(RenderTarget const& target, iFont const& font, Colour const& colour, double opacity);
    ~TextRunPainter() { flush(); }
    TextRunPainter(TextRunPainter const&) = delete;
    TextRunPainter& operator=(TextRunPainter const&) = delete;

    /// Adds a block that begins `x` pixels (exact) to the right of a place on the canvas's baseline.
    void add(std::wstring_view block, XY<int> const& position, double x);
    void flush();

private:
    GlyphRasters::DeviceFace& deviceFace(std::uint32_t index);

    RenderTarget const& target_;
    Font const& font_;
    GlyphRasters::Use use_;
    RenderTarget::Clipped clipped_;
    pixman_image_t* source_;
    GlyphRasters::DeviceFace* current_ = nullptr;
    std::uint32_t currentIndex_ = 0;
    std::array<pixman_glyph_t, TextLayout::maxLength> glyphs_;
    std::size_t count_ = 0;
};

} // namespace wainscot
