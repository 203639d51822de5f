#pragma once

#include "foundation/standard_panel.h"

namespace wainscot {

/// The ordinary page of a tabbed dialogue: a panel without a border. Tab goes on from its last stop.
class WAINSCOT_API StandardTabPage : public StandardPanel {
public:
    StandardTabPage(XY<int> const& size, Palette const& palette);
    ~StandardTabPage() override;
};

} // namespace wainscot
