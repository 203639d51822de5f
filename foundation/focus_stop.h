#pragma once

#include "host/base/export.h"

namespace wainscot {

class Glob;
class TabOrderable;

/// What controls with one tab stop do about it: the stop and the keyboard focus go together.
namespace FocusStop {

/// Whether a control can take the focus now: it is active and to be seen.
WAINSCOT_API bool canTake(Glob const& control);
/// The control is the current stop no more: hands the keyboard focus to its parent.
WAINSCOT_API void handleLoss(Glob& control, TabOrderable const& stop);
/// The keyboard focus came or went: shows and tells it, and makes the control the current stop.
WAINSCOT_API void handleKbdFocus(Glob& control, TabOrderable& stop);
/// What has the keyboard focus of the control's window, which need not be the active one; null when nothing
/// has.
WAINSCOT_API Glob* holderBeside(Glob& control);
/// Gives it the focus, as a stop where it is one, and brings it into view.
WAINSCOT_API void giveFocus(Glob& control, TabOrderable& stop);
/// Draws the mark of the focus on all of its canvas area, while it is to be shown.
WAINSCOT_API void drawMark(Glob const& control);
/// Brings what has the keyboard focus into view.
WAINSCOT_API void reveal();

} // namespace FocusStop

} // namespace wainscot
