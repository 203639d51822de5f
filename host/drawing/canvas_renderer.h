#pragma once

#include "host/drawing/canvas.h"
#include "host/drawing/descriptions.h"

#include <cstddef>
#include <span>

namespace wainscot {

class Surface;

/// Draws into one area of a canvas; a scope object. All coordinates are those of the canvas.
///
/// While a painting visit is under way it draws only what that visit repaints. Outside one it draws at once
/// into the window's pixels, and damages what lies above when it is flushed or ends. On a canvas that is
/// null, unattached or hidden it draws nothing, which is no fault; nor does it after the end of its canvas or
/// after the pixels were made anew in another size, which may happen while it lives.
class WAINSCOT_API CanvasRenderer {
public:
    CanvasRenderer(Canvas* canvas, IntBox const& area);
    ~CanvasRenderer();
    CanvasRenderer(CanvasRenderer const&) = delete;
    CanvasRenderer& operator=(CanvasRenderer const&) = delete;

    void renderPrimitive(Glib::RectDescription const& rect);
    void renderPrimitive(Glib::LineDescription const& line);
    void renderPrimitive(Glib::TextDescription const& text);
    void renderPrimitive(Glib::EllipseDescription const& ellipse);
    void renderPrimitive(Glib::ImageDescription const& image);
    /// Many boxes of one colour in one step; much cheaper than one by one.
    void renderBoxes(std::span<IntBox const> boxes, Colour const& colour, double opacity = 1.0);

    /// Draws nothing outside `clip` from now on (and nothing outside the renderer's area in any case).
    void setClipRect(IntBox const& clip);
    void clearClipRect();
    /// Tells what was changed, for boxes painted outside a full redraw.
    void addModifiedArea(IntBox const& area);
    /// Smooth edges of slanted lines and ellipses; on from the start.
    void setAntialiasingEnabled(bool enabled) { antialias_ = enabled; }
    bool isAntialiasingEnabled() const { return antialias_; }
    /// Reports what was painted so far, when outside a painting visit.
    void flush();

    /// False when nothing at all can be seen of what is drawn.
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
    /// The renderers that live at the moment: a list through themselves, hardly ever longer than two or
    /// three.
    CanvasRenderer* next_ = nullptr;
    CanvasRenderer* previous_ = nullptr;
    /// The device boxes that may be painted; a region of the pixel library.
    alignas(8) std::byte clip_[24];
};

} // namespace wainscot
