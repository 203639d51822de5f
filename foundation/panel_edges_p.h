#pragma once

#include "foundation/border.h"
#include "host/drawing/canvas_renderer.h"
#include "host/drawing/palette.h"
#include "host/objects/surround.h"

namespace wainscot {

/// How the borders of panels look, in one place: each kind is one to three rings of lines, one inside the
/// other.
class PanelEdges {
public:
    /// `ground` is the colour of the body, `palette` fits it.
    PanelEdges(Border const& border, float scale, Colour const& ground, Palette const& palette);

    /// Whether the title strip of a kind has a ground of its own.
    static bool hasTitleGround(Border::eType type);
    static int lineWidth(float scale);

    /// How far the lines reach in.
    int width() const;
    void draw(CanvasRenderer& renderer, IntBox const& box, unsigned int radius) const;
    void drawSquare(CanvasRenderer& renderer, IntBox const& box, unsigned int edges) const;

private:
    struct Ring {
        int inset = 0;
        int width = 0;
        Colour upper;
        Colour lower;
    };
    void add(int inset, int width, Colour const& upper, Colour const& lower);
    static void drawRound(CanvasRenderer& renderer, IntBox const& box, Ring const& ring, unsigned int radius);
    static void drawStraight(CanvasRenderer& renderer, IntBox const& box, Ring const& ring,
                             unsigned int edges);

    Ring rings_[3];
    std::size_t numRings_ = 0;
};

} // namespace wainscot
