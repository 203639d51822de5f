#pragma once

#include "menus/drop_down_button.h"
#include "menus/menu.h"

namespace wainscot {

/// A button with a label of its own that opens a menu. What the items of the menu send goes to the button's
/// parent. The button's own message, where it has one, is sent when the menu opens.
class WAINSCOT_API MenuButtonWidget : public DropDownButton<Menu> {
public:
    class WAINSCOT_API InitArgs : public Button::InitArgs {
    public:
        /// A width of 0 is what the label needs.
        InitArgs(UIString text, Qv::Ptr<MenuData> list, unsigned short w = 0, unsigned short h = 0);

        Qv::Ptr<MenuData> items;
        bool hasArrow = true;
    };

    explicit MenuButtonWidget(InitArgs const& args);
    ~MenuButtonWidget() override;

    Qv::Ptr<MenuData> const& getItems() const { return items_; }
    /// Of the next menu that opens.
    void setItems(Qv::Ptr<MenuData> items);
    SizeNeeds sizeNeeds() const override;

protected:
    Menu* makeDropDown() override;
    bool handleDropDownMessage(Event const& message) override;
    /// Right (1) or Left (-1) was pressed in the open menu, where it has no use for it. True = used.
    virtual bool stepToNeighbour(int direction);
    void drawDropDownButtonArrow() override;
    void drawDropDownButtonSeparator() override;
    int rightMargin() const override;

private:
    class OpenedMenu;

    Qv::Ptr<MenuData> items_;
    bool hasArrow_;
};

/// The same as a heading, for the head of a panel.
class WAINSCOT_API TitleMenuButton : public MenuButtonWidget {
public:
    TitleMenuButton(UIString const& title, Qv::Ptr<MenuData> items);
    ~TitleMenuButton() override;
    void handleLookChange(LookChange changes) override;
};

} // namespace wainscot
