#include "menus/register_makers.h"

#include "menus/context_menu_p.h"

namespace wainscot::Menus {

void registerMakers(Registry& registry) {
    registry.makeContextMenu = ContextMenu::make;
}

} // namespace wainscot::Menus
