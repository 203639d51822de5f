#pragma once

#include "foundation/standard_panel_p.h"

#include <cstdint>

namespace wainscot {

/// Tab and Shift+Tab in a panel.
class PanelTabKeys {
public:
    /// True when a stop has the focus now, or the panel has died.
    static bool step(StandardPanel& panel, std::uint32_t keyCode);
    /// Whether a stop lies in the same window.
    static bool isStopHere(StandardPanel const& panel, TabOrderable& stop);

private:
    static bool wasPassedOn(StandardPanel const& panel);
};

} // namespace wainscot
