#pragma once

#include "host/base/lightweight_string.h"
#include "host/base/xy.h"

#include <string>

struct _XDisplay;

namespace wainscot {

/// Asks the X server for what the window library does not tell.

/// The resource text of the display ("Xft.dpi: 144 ..."). False with the reason in `problem` when no display
/// can be reached, or when it cannot show colours.
bool probeDisplay(std::string& resources, LightweightString<char>& problem);
int connectionFile(_XDisplay* display);
/// Sends pending requests; true when unhandled events have been read.
bool hasUnreadEvents(_XDisplay* display);
/// Returns when the server has carried out all that was asked of it.
void finishRequests(_XDisplay* display);
/// Whether a compositor shows what lies below transparent pixels.
bool hasCompositor(_XDisplay* display);
/// The visual with an alpha channel; 0 when there is none.
unsigned long translucentVisual(_XDisplay* display);
/// The child of a window (0: of the whole screen) that is shown at a place on the screen, in device pixels, y
/// downwards; 0 for none.
unsigned long childAt(_XDisplay* display, unsigned long window, XY<int> place);
/// Whether the present layout uses the right Alt key to reach further characters.
bool isRightAltAltGr(_XDisplay* display);
/// X errors are counted from now on, instead of ending the program.
void countDisplayErrors();
void restoreDisplayErrors();

} // namespace wainscot
