#pragma once

#include "foundation/standard_panel_p.h"

namespace wainscot {

/// The frame of a panel under the pointer: edges that are dragged, and the title strip, by which it is moved.
class PanelFrame {
public:
    /// The pointer's shape over a place; `inheritCursor` when the frame has none of its own.
    static MouseCursorID cursorAt(StandardPanel const& panel, XY<int> const& place);
    /// Takes hold of a pressed edge or title strip. False when nothing there can be dragged.
    static bool begin(StandardPanel& panel, Event const& event);
    /// A held edge or title strip follows the pointer. False when the event is not about that.
    static bool follow(StandardPanel& panel, Event const& event);
    /// An edge that is held goes back to where it was taken.
    static void takeBack(StandardPanel& panel, XY<int> const& pressPlace);
    /// Lets go.
    static void end(StandardPanel& panel);

private:
    static unsigned edgesAt(StandardPanel const& panel, XY<int> const& place);
    static bool isTitleHeld(StandardPanel const& panel);
    static void move(StandardPanel& panel, Event const& event);
    static void dragEdges(StandardPanel& panel, XY<int> const& place);
    static void keepTitleInReach(StandardPanel& panel);
    static XY<int> leastSize(StandardPanel const& panel);
};

} // namespace wainscot
