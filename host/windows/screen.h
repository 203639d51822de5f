#pragma once

#include "host/base/box.h"
#include "host/base/export.h"

namespace wainscot {

class Canvas;
class Event;
class Glob;

// The screen, in logical pixels. Root coordinates are one space for all monitors and windows, y upwards, with
// its lower-left corner at (0, 0). Without a live host all sizes are 0 and all objects null.

/// Size of the monitor on which the active window lies.
WAINSCOT_API int glib_getMonitorWidth();
WAINSCOT_API int glib_getMonitorHeight();
/// Size of the box round all monitors.
WAINSCOT_API int glib_getRootWindowWidth();
WAINSCOT_API int glib_getRootWindowHeight();
/// The monitor on which most of a box (root coordinates) lies, else the nearest.
WAINSCOT_API IntBox glib_getMonitorBox(IntBox const& box);

/// Where a new window of that size goes: in the middle of the active window, wholly on its monitor.
WAINSCOT_API XY<int> glib_getPosForWindow(XY<int> const& size);
/// `place`, moved by as little as possible so that a window of that size lies wholly on one monitor: the
/// monitor on which most of it would lie. When the box lies on no monitor, the monitor of the canvas's window
/// counts; a null canvas stands for a window that is not open yet.
WAINSCOT_API XY<int> glib_getConstrainedPosForWindow(Canvas* canvas, XY<int> const& place,
                                                     XY<int> const& size);
/// Puts the root that a canvas belongs to at a place, moved so that it lies wholly on one monitor. A root
/// that is not open yet opens there as a pop-up.
WAINSCOT_API void setupRootPos(Canvas* canvas, XY<int> const& place);

/// The object under an event's place; null when there is none of the program's.
WAINSCOT_API Glob* event_to_glob(Event const& event);
/// The canvas of the object under the pointer; null when there is none of the program's.
WAINSCOT_API Canvas* glib_getCurrentMouseCanvas();
/// Whether no other window of the program lies above the window of the canvas; pop-ups of an open chain do
/// not count.
WAINSCOT_API bool canvas_is_topmost(Canvas const* canvas);

} // namespace wainscot
