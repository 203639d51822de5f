#include "foundation/makers.h"

#include "host/base/host_value.h"

namespace wainscot {

iContextMenu::~iContextMenu() = default;
iTitleBox::~iTitleBox() = default;
iStateButton::~iStateButton() = default;

Registry& Registry::instance() {
    static constinit HostValue<Registry> registry;
    return registry.edit();
}

} // namespace wainscot
