#pragma once

#include "host/base/export.h"

namespace wainscot {

class Event;
class Glob;

/// What unused keys do in any window. A pane is a panel with tab stops of its own.
///
/// F6 and Shift+F6 go to the next and the previous pane of the window, in the order of the tree and round its
/// ends, to the stop that was the current one there. Tab and Shift+Tab go in the same way to the first or
/// last stop of a pane: from a window without a focus, and from panels that let Tab go on. Return presses the
/// default button: the do-it button of the nearest panel round the focus, else any default button in the
/// window. Escape closes a modal window.
namespace WindowKeys {

/// Handles an unused key press; `target` has the focus. True when it is used here.
WAINSCOT_API bool handle(Glob& target, Event const& key);

} // namespace WindowKeys

} // namespace wainscot
