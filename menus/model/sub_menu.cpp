#include "host/base/diagnostics.h"
#include "host/events/dispatch_scope.h"
#include "host/objects/glob.h"
#include "menus/model/menu_item_p.h"
#include "menus/model/sub_menu_creator.h"

namespace wainscot {

namespace {

MenuItem::SubMenu refused(char const* why) {
    Diagnostics::count("sub-menu not made", why);
    return {};
}

/// The creator may destroy everything, itself too.
MenuItem::SubMenu made(Qv::Ptr<MenuItem::iSubMenuCreator> const& creator, Glob& menu) {
    try {
        return creator->create(menu);
    } catch (...) {
        reportHandlerException("sub-menu creator");
        return {};
    }
}

} // namespace

Qv::Ptr<MenuItem::iSubMenuCreator> MenuItem::subMenuCreator() const {
    return rare().creator;
}

void MenuItem::setSubMenuCreator(Qv::Ptr<iSubMenuCreator> creator) {
    flags_ &= ~std::uint32_t(MenuItemFlag::cascading);
    if (creator) flags_ |= MenuItemFlag::cascading;
    if (rare_ || creator) editRare().creator = std::move(creator);
}

MenuItem::SubMenu MenuItem::createSubMenu(Glob& menu) const {
    Qv::Ptr<iSubMenuCreator> const creator = subMenuCreator();
    if (!creator) return refused("the item has no creator");
    DispatchScope const scope;
    LifeGuard const life = menu.guard();
    SubMenu result = made(creator, menu);
    bool const isWidgetAlive = result.widget && is_good_glob_ptr(result.widget);
    if (!isWidgetAlive) result.widget = nullptr;
    if (!result) return refused("the creator gave nothing");
    if (life.alive()) return result;
    if (isWidgetAlive) destroy(result.widget);
    return {};
}

} // namespace wainscot
