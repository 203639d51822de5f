#pragma once

#include "menus/menu.h"
#include "menus/model/drop_down_menu_data.h"

namespace wainscot {

/// The list of a drop-down: a menu in which the selected item is marked and highlighted. A choice selects the
/// item, calls `chosenMsg` on the owner, and closes.
class WAINSCOT_API DropDownMenu : public Menu {
public:
    /// Called on the owner after a choice; the payload is a `MenuData::Change`.
    static constexpr LightweightString<char> chosenMsg{"dropDownMenu_chosen"};

    class WAINSCOT_API InitArgs : public Menu::InitArgs {
    public:
        explicit InitArgs(Qv::Ptr<DropDownMenuData> list, Glob* hearer = nullptr);

        Qv::Ptr<DropDownMenuData> data;
    };

    explicit DropDownMenu(InitArgs const& args);
    ~DropDownMenu() override;

    void informOwner(unsigned short item) override;

protected:
    bool isMarked(unsigned short item) const override;

private:
    Qv::Ptr<DropDownMenuData> data_;
};

} // namespace wainscot
