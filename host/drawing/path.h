#pragma once

#include "host/drawing/canvas.h"
#include "host/drawing/colour.h"

#include <memory>
#include <vector>

/// Path drawing on a current canvas. There is one drawing state: canvas, offset, colour, line width and path.
/// Coordinates are logical pixels of the canvas, y upwards; angles are degrees, counter-clockwise from the
/// right. Without a current canvas, or after its end, nothing is drawn.
namespace wainscot {

/// The canvas on which paths are drawn from now on; null = none.
WAINSCOT_API void glib_setcanvas(Canvas* canvas);
/// Null when there is none, or it has died.
WAINSCOT_API Canvas* glib_currentcanvas();
/// The canvas of the root of the active window; null when there is none.
WAINSCOT_API Canvas* glib_rootcanvas();
/// Set by the window manager.
WAINSCOT_API void glib_setrootcanvas(Canvas* canvas);

WAINSCOT_API void glib_setcolour(Colour const& colour);
/// At least one device pixel is drawn.
WAINSCOT_API void glib_setlinewidth(double width);

/// Empties the path.
WAINSCOT_API void glib_newpath();
/// Begins a new line of the path at a point.
WAINSCOT_API void glib_moveto(double x, double y);
/// Begins at the point itself when the path is empty.
WAINSCOT_API void glib_lineto(double x, double y);
WAINSCOT_API void glib_addrect(double x, double y, double width, double height);
/// A rectangle with round corners.
WAINSCOT_API void glib_addsoftrect(double x, double y, double width, double height, double radius);
/// An arc round a centre; a line joins it to the path so far.
WAINSCOT_API void glib_arc1(double x, double y, double radius, double fromDegrees, double toDegrees);
WAINSCOT_API void glib_closepath();
/// Draw the path in the current colour; the path stays.
WAINSCOT_API void glib_fill();
WAINSCOT_API void glib_stroke();

/// Fills a rectangle at once; the path stays as it was.
WAINSCOT_API void glib_rect(double x, double y, double width, double height);
/// Draws the outline of a rectangle with round corners at once; the path stays as it was.
WAINSCOT_API void glib_roundedRectOutline(IntBox const& box, unsigned int radius, int edgeWidth = 1);

/// Moves the origin for all further drawing.
WAINSCOT_API void glib_translate(double x, double y);
/// Save the whole state, and restore it; a restore without a save is refused and counted.
WAINSCOT_API void glib_gsave();
WAINSCOT_API void glib_grestore();
/// Copies pixels of the current canvas to another place on it, at once.
WAINSCOT_API void glib_copy(IntBox const& from, XY<int> const& to);

namespace Glib {

/// Saves the whole drawing state for a scope. Survives the death of the canvas.
class WAINSCOT_API StateSaver {
public:
    StateSaver();
    ~StateSaver();
    StateSaver(StateSaver const&) = delete;
    StateSaver& operator=(StateSaver const&) = delete;

private:
    struct Saved;
    std::unique_ptr<Saved> saved_;
};

} // namespace Glib
} // namespace wainscot
