#pragma once

#include "foundation/standard_panel_p.h"

namespace wainscot {

/// Shrinks a panel to its title strip, and brings it back.
class PanelMinimising {
public:
    static void set(StandardPanel& panel, bool minimised);
    /// To be called when the strip has become higher or lower, or has gone.
    static void keep(StandardPanel& panel);

private:
    /// Hides all widgets but those of the strip; the do-it button lies below it.
    static void hideWidgets(StandardPanel& panel);
    static void showWidgets(StandardPanel& panel);
    static void resizeKeepingTop(StandardPanel& panel, XY<int> const& size);
};

} // namespace wainscot
