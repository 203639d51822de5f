#pragma once

#include "foundation/standard_panel.h"
#include "foundation/tab_orderable.h"
#include "menus/menu_button_widget.h"

namespace wainscot {

/// A row of buttons that open menus, such as the bar of menus of a window. While one menu is open, the
/// pointer opens the next by entering its button, also in a press that is dragged along the buttons, and Left
/// and Right go from menu to menu. Left and Right also move the keyboard focus along the buttons, and Down
/// opens.
///
/// What the menus send goes to the parent. Each button sends `clickMsg` there when its menu opens; the sender
/// is the button.
class WAINSCOT_API MenuButtonGroup : public StandardPanel, public TabOrderableHost {
public:
    static constexpr LightweightString<char> clickMsg{"MenuButtonGroupClick"};

    enum Step { openStep, nextStep, previousStep };
    /// Of a button that has the keyboard focus.
    static constexpr KeyRow<Step> keyTable[] = {
        {Key::down, openStep, "opens the menu"},
        {Key::right, nextStep, "to the next button"},
        {Key::left, previousStep, "to the button before"},
    };

    /// As high as a button, and as wide as its buttons need.
    MenuButtonGroup();
    ~MenuButtonGroup() override;

    /// A further button at the right end.
    MenuButtonWidget* addMenu(UIString const& label, Qv::Ptr<MenuData> items);
    std::size_t numMenus() const { return buttons_.size(); }
    /// Null when there is none, or it has died.
    MenuButtonWidget* getButton(std::size_t index) const;
    /// The button whose menu is open; null when none is.
    MenuButtonWidget* getOpenButton() const;

    void getTabOrderables(std::vector<TabOrderable*>& controls, unsigned int order) override;
    bool react(Event const& event) override;

private:
    class MenuButton;

    /// The next button in that direction, round the ends.
    MenuButton* neighbourOf(MenuButton const& button, int direction) const;
    /// Opens the menu of a button in the place of the one that is open.
    void switchTo(MenuButton& button);
    /// The pointer is over a button: does the same, where another menu is open. False = nothing to be done.
    bool switchUnderPointer(MenuButton& button);
    MenuButton* buttonAt(XY<int> const& place) const;

    std::vector<HandlerRef<MenuButton>> buttons_;
};

} // namespace wainscot
