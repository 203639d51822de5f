#pragma once

#include "host/base/export.h"

namespace wainscot {

class Glob;
class TabOrderable;

/// For controls with one tab stop: stop and keyboard focus go together.
namespace FocusStop {

/// Whether a control can take the focus now: it is active and shown.
WAINSCOT_API bool canTake(Glob const& control);
/// The control is no longer the current stop: hands the keyboard focus to its parent.
WAINSCOT_API void handleLoss(Glob& control, TabOrderable const& stop);
/// The control has got or lost the keyboard focus: shows and describes that, and makes a control with the
/// focus the current stop.
WAINSCOT_API void handleKbdFocus(Glob& control, TabOrderable& stop);
/// The holder of the keyboard focus in the control's window, which need not be the active one; null when
/// there is none.
WAINSCOT_API Glob* holderBeside(Glob& control);
/// Gives a control the focus, as a stop if it is one, and brings it into view.
WAINSCOT_API void giveFocus(Glob& control, TabOrderable& stop);
/// Draws the mark of the focus over the control, while the mark is to be shown.
WAINSCOT_API void drawMark(Glob const& control);
/// Brings the holder of the keyboard focus into view.
WAINSCOT_API void reveal();

} // namespace FocusStop

} // namespace wainscot
