#pragma once

#include "menus/drop_down_menu_button.h"

namespace wainscot {

/// The list of a `DropDownImageButton`: items with icons.
class WAINSCOT_API DropDownImageMenu : public DropDownMenu {
public:
    using DropDownMenu::DropDownMenu;
};

/// A choice whose face shows the icon of the selected item (`MenuItem::setIconRenderer`); the list shows
/// icons and labels. An item without an icon is shown by its label. The label is the button's tip and name.
class WAINSCOT_API DropDownImageButton : public DropDownMenuButton {
public:
    /// A width of 0 is that of the widest icon.
    explicit DropDownImageButton(InitArgs const& args);
    ~DropDownImageButton() override;

    SizeNeeds sizeNeeds() const override;
    bool getTooltipDetails(XY<int> const& place, TooltipDetails& details) const override;

protected:
    DropDownMenu* makeDropDown() override;
    void drawDropDownButtonText() override;

private:
    Qv::Ptr<MenuItem::iIconRenderer> shownIcon() const;
    int neededWidth() const;

    bool isAutomatic_;
};

} // namespace wainscot
