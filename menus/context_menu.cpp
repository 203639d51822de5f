#include "menus/context_menu_p.h"

#include "menus/menu.h"

namespace wainscot {

namespace {

/// Its object finds out by itself that it has closed.
class OpenMenu final : public Menu {
public:
    using Menu::Menu;

protected:
    void tellClosing() override {}
};

} // namespace

void ContextMenu::clear() {
    items_ = Qv::makePtr<MenuData>();
}

void ContextMenu::add(MenuItem const& item) {
    items_->addItem(item);
}

void ContextMenu::remove(LightweightString<char> const& id) {
    items_->removeItemsIf([&](MenuItem const& item) { return item.hasId(id); });
}

bool ContextMenu::isEmpty() const {
    return items_->isEmpty();
}

Glob* ContextMenu::open(MenuGlob& owner, XY<int> const& place) {
    auto menu = std::make_unique<OpenMenu>(items_, &owner);
    return menu->openAt(place, &owner) ? menu.release() : nullptr;
}

std::unique_ptr<iContextMenu> ContextMenu::make() {
    return std::make_unique<ContextMenu>();
}

} // namespace wainscot
