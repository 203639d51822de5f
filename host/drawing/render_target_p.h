#pragma once

#include "host/drawing/canvas_renderer.h"
#include "host/drawing/surface_image_p.h"

#include <pixman.h>

namespace wainscot {

/// How far the pixels of a box are covered, row by row from the top.
struct CoverageMask {
    std::uint8_t const* coverage;
    /// Bytes from one row to the next: a multiple of four, the rest of a row is clear.
    int stride;
};

/// What a renderer draws into, for the drawing helpers of this folder. Used only while
/// `CanvasRenderer::isDrawing()`.
class RenderTarget {
public:
    explicit RenderTarget(CanvasRenderer& renderer) : renderer_(renderer) {}

    static pixman_region32_t* clipOf(CanvasRenderer const& renderer) {
        return reinterpret_cast<pixman_region32_t*>(const_cast<std::byte*>(renderer.clip_));
    }

    Surface& surface() const { return *renderer_.surface_; }
    pixman_image_t* image() const { return surface().image().get(); }
    pixman_region32_t* clip() const { return clipOf(renderer_); }
    double scale() const { return surface().scale(); }
    /// The canvas's opacity times the primitive's.
    double opacity(double own) const;
    /// A place on the canvas as a place on the surface; absurdly distant places are moved nearer.
    XY<int> onSurface(XY<int> const& place) const;
    /// The same without moving anything nearer; for sums with exact distances.
    XY<long long> exactOnSurface(XY<int> const& place) const;
    /// A box on the canvas outside of which nothing is drawn; it may be larger than necessary.
    IntBox visibleBox() const;
    /// The device box of a box on the canvas, not clipped.
    IntBox deviceBox(IntBox const& box) const;
    /// True when something of a device box lies within the clip.
    bool isVisible(IntBox const& deviceBox) const;
    void painted(IntBox const& box) const { renderer_.painted(box); }

    /// Fills device boxes, clipped.
    void fill(IntBox const* deviceBoxes, std::size_t count, Colour const& colour, double alpha) const;
    void fill(IntBox const& deviceBox, Colour const& colour, double alpha) const {
        fill(&deviceBox, 1, colour, alpha);
    }
    /// Colours device pixels by a mask, clipped; `ink` is premultiplied.
    void fillMasked(CoverageMask const& mask, IntBox const& deviceBox, std::uint32_t ink) const;
    /// Makes the image honour the clip for as long as this lives.
    class Clipped {
    public:
        explicit Clipped(RenderTarget const& target) : image_(target.image()) {
            pixman_image_set_clip_region32(image_, target.clip());
        }
        ~Clipped() { pixman_image_set_clip_region32(image_, nullptr); }
        Clipped(Clipped const&) = delete;
        Clipped& operator=(Clipped const&) = delete;

    private:
        pixman_image_t* image_;
    };

private:
    CanvasRenderer& renderer_;
};

/// Colours device pixels by many masks, with one ink: what they share is looked up once.
class MaskFiller {
public:
    /// `ink` is premultiplied.
    MaskFiller(RenderTarget const& target, std::uint32_t ink);

    /// Whether nothing between two device columns can be seen.
    bool isBeside(int left, int right) const { return left >= extents_.x2 || right <= extents_.x1; }
    void fill(CoverageMask const& mask, IntBox const& deviceBox) const;

private:
    void fillPart(CoverageMask const& mask, IntBox const& deviceBox, pixman_box32_t const& clip) const;

    std::uint32_t* pixels_;
    int stride_;
    std::uint32_t ink_;
    pixman_box32_t extents_;
    int clipCount_ = 0;
    pixman_box32_t const* clips_;
};

/// A colour with an alpha of 0 to 1 as the pixel library wants it.
pixman_color_t pixmanColour(Colour const& colour, double alpha);
/// Draws a text of any length; gives the box on the canvas that its ink may have touched.
IntBox drawText(RenderTarget const& target, Glib::TextDescription const& text);

} // namespace wainscot
