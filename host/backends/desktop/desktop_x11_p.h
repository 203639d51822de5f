#pragma once

#include "host/base/lightweight_string.h"

#include <string>

struct _XDisplay;

namespace wainscot {

/// What the window library does not tell is asked of the X server directly.

/// The resource text of the display ("Xft.dpi: 144 ..."). False with the reason in `problem` when no display
/// can be reached.
bool probeDisplay(std::string& resources, LightweightString<char>& problem);
int connectionFile(_XDisplay* display);
/// Sends what is waiting to be sent; true when events have been read that nobody has looked at yet.
bool hasUnreadEvents(_XDisplay* display);
/// Returns when the server has carried out all that was asked of it.
void finishRequests(_XDisplay* display);
/// Whether the present layout uses the right Alt key to reach further characters.
bool isRightAltAltGr(_XDisplay* display);
/// X errors are counted from now on, instead of ending the program.
void countDisplayErrors();
void restoreDisplayErrors();

} // namespace wainscot
