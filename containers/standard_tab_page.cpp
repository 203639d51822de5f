#include "containers/standard_tab_page.h"

namespace wainscot {

StandardTabPage::StandardTabPage(XY<int> const& size, Palette const& palette) : StandardPanel(size, palette) {
    setBorder(Border(Border::none));
    setTabGoesOn(true);
}

StandardTabPage::~StandardTabPage() = default;

} // namespace wainscot
