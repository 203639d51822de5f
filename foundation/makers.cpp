#include "foundation/makers.h"

namespace wainscot {

iContextMenu::~iContextMenu() = default;
iTitleBox::~iTitleBox() = default;
iStateButton::~iStateButton() = default;

Registry& Registry::instance() {
    static constinit Registry registry;
    return registry;
}

} // namespace wainscot
