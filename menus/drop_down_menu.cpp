#include "menus/drop_down_menu.h"

#include "host/events/dispatch_scope.h"
#include "host/events/messages.h"
#include "menus/model/menu_change.h"

namespace wainscot {

DropDownMenu::InitArgs::InitArgs(Qv::Ptr<DropDownMenuData> list, Glob* hearer)
    : Menu::InitArgs(list ? list : Qv::makePtr<DropDownMenuData>(), hearer),
      data(items.cast<DropDownMenuData>()) {
    surround = Surround(WidgetSurround{WidgetSurround::Style::inset});
}

DropDownMenu::DropDownMenu(InitArgs const& args)
    : Menu(args), data_(args.data ? args.data : Qv::makePtr<DropDownMenuData>()) {
    unsigned short const selected = data_->getSelectedItemPhysical();
    if (selected != MenuData::none) setHighlightedItem(selected);
}

DropDownMenu::~DropDownMenu() = default;

bool DropDownMenu::isMarked(unsigned short item) const {
    return item == data_->getSelectedItemPhysical();
}

/// The choice is made even when an observer of the data destroys this menu.
void DropDownMenu::informOwner(unsigned short item) {
    DispatchScope const scope;
    Qv::Ptr<DropDownMenuData> const data = data_;
    HandlerRef<Glob> const owner(getOwner());
    HandlerRef<Glob> const self(this);
    auto const change = Qv::makePtr<MenuData::Change>(item, toSize16(0), nullptr);
    if (!data->setSelectedItemPhysical(item, true)) return;
    if (owner) callMessageWithData(chosenMsg, owner.get(), change, self.get());
}

} // namespace wainscot
