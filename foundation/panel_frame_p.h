#pragma once

#include "foundation/standard_panel_p.h"

namespace wainscot {

/// The frame of a panel under the pointer: edges that are dragged, and the title strip, by which it is moved.
class PanelFrame {
public:
    /// The cursor over a place; `inheritCursor` where the frame has none of its own.
    static MouseCursorID cursorAt(StandardPanel const& panel, XY<int> const& place);
    /// Takes hold of what was pressed. False when it is neither an edge nor a title strip that moves.
    static bool begin(StandardPanel& panel, Event const& event);
    /// What is held follows the pointer. False when the event is not about that.
    static bool follow(StandardPanel& panel, Event const& event);
    /// An edge that is held goes back to where it was taken.
    static void takeBack(StandardPanel& panel, XY<int> const& pressPlace);
    /// Nothing is held any more.
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
