#pragma once

#include "host/drawing/font_p.h"
#include "host/drawing/glyph_raster_p.h"
#include "host/drawing/render_target_p.h"
#include "host/drawing/text_line_p.h"

#include <span>

namespace wainscot {

/// Draws text in one font and colour.
class TextRunPainter {
public:
    TextRunPainter(RenderTarget const& target, iFont const& font, Colour const& colour, double opacity);
    TextRunPainter(TextRunPainter const&) = delete;
    TextRunPainter& operator=(TextRunPainter const&) = delete;

    /// Draws glyphs that stand relative to a point `x` pixels (exact) to the right of a place on the canvas's
    /// baseline.
    void add(std::span<PlacedGlyph const> glyphs, XY<int> const& position, double x);
    /// Draws what can be seen of a line that begins `x` pixels to the right of that place.
    void add(TextLine const& line, XY<int> const& position, double x);

private:
    GlyphRasters::DeviceFace& deviceFace(std::uint32_t index);

    RenderTarget const& target_;
    Font const& font_;
    GlyphRasters::Use use_;
    MaskFiller ink_;
    GlyphRasters::DeviceFace* current_ = nullptr;
    std::uint32_t currentIndex_ = 0;
};

} // namespace wainscot
