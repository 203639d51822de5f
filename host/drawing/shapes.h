#pragma once

#include "host/drawing/canvas_renderer.h"

/// Composite shapes, shared by all widgets. Edges lie inside the boxes; in a box that is too small, they fill
/// the box.
namespace wainscot::Glib {

/// The four sides of a box, `width` thick, inside it.
WAINSCOT_API void drawFrame(CanvasRenderer& renderer, Colour const& colour, IntBox const& box,
                            unsigned short width);
/// A box filled with `fill` inside an edge of `edge`, `edgeWidth` thick.
WAINSCOT_API void drawOutlinedRect(CanvasRenderer& renderer, Colour const& fill, Colour const& edge,
                                   IntBox const& box, int edgeWidth = 1);
/// The mark of the keyboard focus: a frame, `focusWidth` thick, with corners of that radius.
WAINSCOT_API void drawFocusRect(CanvasRenderer& renderer, IntBox const& box, Colour const& colour,
                                unsigned int radius = 0);
inline constexpr int focusWidth = 2;

/// A filled box with smooth round corners inside an edge. A radius beyond half of the box is cut to it. The
/// shape lies `inset` pixels inside the box, the same on all sides at every device scale.
WAINSCOT_API void drawRoundedRect(CanvasRenderer& renderer, Colour const& fill, Colour const& edge,
                                  IntBox const& box, int edgeWidth, unsigned int radius);
WAINSCOT_API void drawRoundedRectFilled(CanvasRenderer& renderer, Colour const& fill, IntBox const& box,
                                        unsigned int radius, double opacity = 1.0, int inset = 0);
/// The edge alone.
WAINSCOT_API void drawRoundedRectOutline(CanvasRenderer& renderer, Colour const& edge, IntBox const& box,
                                         int edgeWidth, unsigned int radius, double opacity = 1.0,
                                         int inset = 0);
/// A mark, such as the box of a tick, a ring or a dot: `drawRoundedRect`, `inset` pixels inside the box. Not
/// its edges but its size is rounded to whole device pixels: equal marks look equal wherever they stand,
/// square marks are square, and inset marks are centred in the marks round them.
WAINSCOT_API void drawRoundedMark(CanvasRenderer& renderer, Colour const& fill, Colour const& edge,
                                  IntBox const& box, int edgeWidth, unsigned int radius, int inset = 0);
/// For `drawLitFrame`.
enum FrameSides : unsigned { leftSide = 1, bottomSide = 2, rightSide = 4, topSide = 8, allSides = 15 };
/// The sides of a frame that lies `inset` pixels inside a box, `width` thick: the upper and left sides in one
/// colour, the others in another. When a side is left out, its neighbours are longer. Distance and thickness
/// are the same on all sides at every device scale.
WAINSCOT_API void drawLitFrame(CanvasRenderer& renderer, Colour const& upper, Colour const& lower,
                               IntBox const& box, int inset, int width, unsigned sides = allSides);
/// Lines that mark the ends of a box as grips: `count` lines across each end, one pixel apart. The outermost
/// line lies `from` pixels inside the end; `margin` is free at both ends of a line. `upright` = the ends are
/// above and below.
WAINSCOT_API void drawGripLines(CanvasRenderer& renderer, Colour const& colour, IntBox const& box,
                                bool upright, int from, int margin, int count);

/// A recessed ground in surroundings of `colour` (`getIndentBoxColour`), edged as if lit from above.
WAINSCOT_API void drawIndentBox(CanvasRenderer& renderer, Colour const& colour, IntBox const& box,
                                int edgeWidth = 1);
/// A face of `colour` with an edge of `edgeWidth` lit from above: raised for a positive `depth`, sunken for a
/// negative depth, flat for 0. The edge grows stronger up to a depth of 4.
WAINSCOT_API void drawDepthBox(CanvasRenderer& renderer, Colour const& colour, IntBox const& box,
                               int edgeWidth, int depth);
/// The edge of such a face alone; the pixels inside it stay.
WAINSCOT_API void drawDepthEdge(CanvasRenderer& renderer, Colour const& colour, IntBox const& box,
                                int edgeWidth, int depth);
/// The depth of a recessed ground.
inline constexpr int indentDepth = -2;

} // namespace wainscot::Glib

namespace wainscot {

/// The ground of a recessed box in surroundings of that colour: nearer to the end, black or white, from which
/// text stands out most.
WAINSCOT_API Colour getIndentBoxColour(Colour const& surroundings);
/// Draws a recessed box on a canvas at once.
WAINSCOT_API void indent_box(Canvas* canvas, IntBox const& box, Colour const& surroundings);

} // namespace wainscot
