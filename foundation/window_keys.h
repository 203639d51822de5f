#pragma once

#include "host/base/export.h"

namespace wainscot {

class Event;
class Glob;

/// What keys do in any window when nobody has consumed them. A pane is a panel with tab stops of its own.
///
/// F6 and Shift+F6 go to the next and the previous pane of the window, in the order of the tree and round its
/// ends, to the stop that was the pane's current one before. Tab and Shift+Tab go on in the same way to the
/// first or last stop of a pane: from a window in which nothing has the focus, and from panels that let Tab
/// go on. Return presses the default button: the do-it button of the nearest panel round the focus, else any
/// in the window. Escape closes a modal window.
namespace WindowKeys {

/// A key press that reached `target`, which has the focus, and was not used. Whether it is used here.
WAINSCOT_API bool handle(Glob& target, Event const& key);

} // namespace WindowKeys

} // namespace wainscot
