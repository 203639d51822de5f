#pragma once

#include "host/drawing/canvas.h"
#include "host/drawing/descriptions.h"

#include <cstddef>
#include <span>

namespace wainscot {

class Surface;

/// Draws into one area of a canvas; a scope object. All coordinates are those of the canvas.
///
/// In a painting visit it draws only what that visit repaints. Outside a visit it draws at once into the
/// window's pixels, and damages what lies above when it is flushed or ends. A null, unattached or hidden
/// canvas is allowed: nothing is drawn. Nothing is drawn either once the canvas has died or the window's size
/// has changed, which may happen while the renderer lives.
class WAINSCOT_API CanvasRenderer {
public:
    CanvasRenderer(Canvas* canvas, IntBox const& area);
    ~CanvasRenderer();
    CanvasRenderer(CanvasRenderer const&) = delete;
    CanvasRenderer& operator=(CanvasRenderer const&) = delete;

    /// Draws one description.
    void renderPrimitive(Glib::RectDescription const& rect);
    void renderPrimitive(Glib::LineDescription const& line);
    void renderPrimitive(Glib::TextDescription const& text);
    void renderPrimitive(Glib::EllipseDescription const& ellipse);
    void renderPrimitive(Glib::ImageDescription const& image);
    /// Many boxes of one colour in one step; much cheaper than one by one.
    void renderBoxes(std::span<IntBox const> boxes, Colour const& colour, double opacity = 1.0);

    /// Draws only inside `clip` from now on; nothing is ever drawn outside the renderer's area.
    void setClipRect(IntBox const& clip);
    void clearClipRect();
    /// Tells that a box has changed, for painting outside a painting visit.
    void addModifiedArea(IntBox const& area);
    /// Smooth edges of slanted lines and ellipses; on from the start.
    void setAntialiasingEnabled(bool enabled) { antialias_ = enabled; }
    bool isAntialiasingEnabled() const { return antialias_; }
    /// Outside a painting visit: reports what was painted so far.
    void flush();

    /// False when nothing that is drawn can be seen.
    bool isDrawing() const { return surface_ != nullptr; }
    /// True when something of the box would be seen.
    bool isVisible(IntBox const& box) const;
    IntBox const& area() const { return area_; }
    Canvas* canvas() const { return canvas_; }

private:
    friend class RenderTarget;
    friend class Canvas;
    friend class Surface;

    /// Ends the drawing of every renderer that uses these.
    static void forget(Canvas const& canvas);
    static void forget(Surface const& surface);
    void endDrawing();
    void setUpClip();
    void clipToShape();
    /// Notes that a box (canvas coordinates) has been painted.
    void painted(IntBox const& box);

    Canvas* canvas_;
    IntBox area_;
    IntBox clipRect_;
    Surface* surface_ = nullptr;
    XY<int> origin_;
    IntBox visible_;
    IntBox painted_;
    float opacity_ = 1.0F;
    bool antialias_ = true;
    bool inVisit_ = false;
    /// The renderers that live now form a list, seldom longer than three.
    CanvasRenderer* next_ = nullptr;
    CanvasRenderer* previous_ = nullptr;
    /// The device boxes that may be painted; a region of the pixel library.
    alignas(8) std::byte clip_[24];
};

} // namespace wainscot
