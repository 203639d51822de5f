#pragma once

#include "host/base/box.h"
#include "host/base/export.h"
#include "host/objects/widget_position.h"

namespace wainscot {

class CanvasRenderer;
class Palette;

/// What is drawn round an object, outside its box: a frame, and a soft shadow under that. The parent paints
/// it, right before the object itself.
class WAINSCOT_API Surround {
public:
    /// Edges at which a frame, or a shadow, stands; a bit each.
    enum Edge : unsigned { left = 1, bottom = 2, right = 4, top = 8, allEdges = 15 };
    /// No frame or shadow reaches further out than this.
    static constexpr int maxExtent = 32;

    constexpr Surround() = default;
    constexpr explicit Surround(WidgetSurround frame, unsigned edges = allEdges)
        : frame_(frame), edges_(edges) {}

    WidgetSurround frame() const { return frame_; }
    unsigned edges() const { return edges_; }
    /// A shadow that reaches out by `size` pixels at these edges. Its darkest part has that opacity, 0 to 1.
    /// A size of 0 takes the shadow away.
    void setShadow(int size, double opacity, unsigned edges = allEdges);
    int shadowSize() const { return shadowSize_; }
    unsigned shadowEdges() const { return shadowEdges_; }
    double shadowOpacity() const { return shadowOpacity_; }

    bool isEmpty() const { return frame_.style == WidgetSurround::Style::none && shadowSize_ == 0; }
    int frameWidth() const;
    /// How far it reaches out of the box.
    int extent() const;
    int extentAt(Edge edge) const;
    int frameWidthAt(Edge edge) const { return (edges_ & edge) != 0 ? frameWidth() : 0; }
    /// Draws it round `box`, in coordinates of the renderer's canvas.
    void draw(CanvasRenderer& renderer, IntBox const& box, Palette const& palette) const;

    friend constexpr bool operator==(Surround const&, Surround const&) = default;

private:
    void drawShadow(CanvasRenderer& renderer, IntBox const& box) const;
    void drawFrame(CanvasRenderer& renderer, IntBox const& box, Palette const& palette) const;

    WidgetSurround frame_;
    unsigned edges_ = allEdges;
    unsigned shadowEdges_ = allEdges;
    int shadowSize_ = 0;
    float shadowOpacity_ = 0.0F;
};

} // namespace wainscot
