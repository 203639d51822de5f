#include "tests/sent_notifications.h"

#include "host/events/messages.h"
#include "menus/combo_box.h"
#include "menus/drop_down_menu_button.h"

namespace wainscot {
namespace {

class MenuNotifications : public SentNotifications {
protected:
    Menu& menu() { return *static_cast<Menu*>(widget_); }
    DropDownMenuButton& button() { return *static_cast<DropDownMenuButton*>(widget_); }
    void dropListeners() override {
        if (auto* const box = dynamic_cast<ComboBox*>(widget_)) return box->setItems({});
        if (auto* const dropDown = dynamic_cast<DropDownMenuButton*>(widget_)) {
            dropDown->setAppearing({});
            dropDown->getItems()->setItems({MenuItem(L"One")});
        } else {
            menu().getItems()->setItems({});
        }
    }
    void clickOnItem() {
        driver_.clickAt(menu().visibleItems().front().box.centre() + menu().screenBox().bottomLeft());
    }
};

} // namespace

TEST_F(MenuNotifications, OfMenus) {
    runAll<Menu>({{"closed", "menu_poot", [&] { sendMessage(Glob::pootMsg, widget_, widget_); }},
                  {"selected", "menu_itemSelected", [&] { clickOnItem(); }},
                  {"items",
                   {},
                   [&] {
                       menu().redisplay(
                           std::vector<MenuItem>{MenuItem(L"Call", WidgetCallback(reaction(), ""))});
                       clickOnItem();
                   }}},
                 [&] { return new Menu({MenuItem(L"Send")}, parent_); });
}

TEST_F(MenuNotifications, OfDropDowns) {
    auto const listening = [this](MenuItem& item) { item.setCallback(WidgetCallback(reaction(), "")); };
    auto const choose = [&] {
        click();
        driver_.key(Key::down);
        driver_.key(Key::enter);
    };
    runAll<DropDownMenuButton>({{"chosen", "ddMenuBtnMsg", [&] { driver_.wheel(widget_, -1); }},
                                {"chosen", "ddMenuBtnMsg", choose},
                                {"appearing",
                                 {},
                                 [&] {
                                     button().setAppearing([&] { react(); });
                                     click();
                                 }},
                                {"items",
                                 {},
                                 [&] {
                                     listening(button().getItems()->getItem(1));
                                     driver_.wheel(widget_, -1);
                                 }},
                                {"items",
                                 {},
                                 [&] {
                                     listening(button().getItems()->getItem(1));
                                     choose();
                                 }}},
                               [] {
                                   std::vector<MenuItem> const items{MenuItem(L"One"), MenuItem(L"Two")};
                                   return new DropDownMenuButton(Qv::makePtr<DropDownMenuData>(items));
                               });
}

TEST_F(MenuNotifications, OfComboBoxes) {
    auto const box = [this]() -> ComboBox& { return *static_cast<ComboBox*>(widget_); };
    auto const step = [&] {
        widget_->claimKbdFocus();
        driver_.key(Key::down);
    };
    auto const choose = [&] {
        box().showList();
        driver_.key(Key::down);
        driver_.key(Key::enter);
    };
    auto const listening = [&](std::function<void()> act) {
        return [&, act] {
            box().getItems()->getItem(0).setCallback(WidgetCallback(reaction(), ""));
            act();
        };
    };
    runAll<ComboBox>({{"chosen", "comboBoxChosen", step},
                      {"chosen", "comboBoxChosen", choose},
                      {"items", {}, listening(step)},
                      {"items", {}, listening(choose)},
                      {"appearing",
                       {},
                       [&] {
                           box().setAppearing([&] { react(); });
                           box().showList();
                       }}},
                     [] {
                         std::vector<MenuItem> const items{MenuItem(L"One")};
                         return new ComboBox(ComboBox::InitArgs(Qv::makePtr<MenuData>(items), 100));
                     });
}

} // namespace wainscot
