#include "tests/widget_fixture.h"

#include "buttons/checkbox.h"
#include "containers/scroll_bar.h"
#include "host/objects/glob_notices.h"
#include "host/objects/kbd_focus.h"
#include "host/services/preferences.h"
#include "host/windows/popup_chain.h"
#include "menus/menu.h"
#include "menus/model/menu_change.h"
#include "menus/model/sub_menu_creator.h"
#include "text/text_box.h"

namespace wainscot {
namespace {

using Text = LightweightString<wchar_t>;

MenuItem item(wchar_t const* label, char const* message = "chosen", MenuItemType type = eSimpleMenuItem) {
    return MenuItem(label, WidgetCallback(message), type);
}

class MenuWidgets : public WidgetTest {
protected:
    /// Opens a pop-up that tells the window.
    Menu* open(std::vector<MenuItem> items) {
        auto* const menu = new Menu(std::move(items), root_);
        EXPECT_TRUE(menu->openAt(root_->screenBox().bottomLeft() + XY<int>(40, 200)));
        driver_.settle();
        return menu;
    }
    static std::vector<MenuItem> three() {
        return {item(L"One", "one"), item(L"Two", "two"), item(L"Three", "three")};
    }
    MenuItem cascade(wchar_t const* label, std::vector<MenuItem> items) {
        return MenuItem(label, makeSubMenuCreator([this, items](Glob&) {
                            ++made_;
                            return Qv::makePtr<MenuData>(items);
                        }));
    }
    XY<int> placeOf(Menu const& menu, unsigned short index) {
        int const row = menu.findVisibleItem(index);
        EXPECT_GE(row, 0) << index;
        if (row < 0) return {};
        // Widgets may stand at the right.
        IntBox const box = menu.visibleItems()[static_cast<std::size_t>(row)].box;
        return XY<int>(box.x1 + 10, box.centre().y) + menu.screenBox().bottomLeft();
    }
    void clickOn(Menu const& menu, unsigned short index) { driver_.clickAt(placeOf(menu, index)); }
    Menu* subOf(Menu const& menu) { return dynamic_cast<Menu*>(menu.getSubMenu()); }

    int made_ = 0;
};

TEST_F(MenuWidgets, AChoiceTellsTheOwnerAndClosesTheMenu) {
    Menu* const menu = open(three());
    clickOn(*menu, 1);
    EXPECT_FALSE(is_good_glob_ptr(menu));
    EXPECT_EQ(told(), "two menu_poot");
    // A press that ends on another row chooses that one, one that ends outside none.
    Menu* const second = open(three());
    driver_.moveTo(placeOf(*second, 0));
    driver_.press();
    driver_.moveTo(placeOf(*second, 2));
    driver_.release();
    EXPECT_EQ(told(), "three menu_poot");
    Menu* const third = open(three());
    driver_.moveTo(placeOf(*third, 0));
    driver_.press();
    driver_.moveTo(third->screenBox().topRight() + XY<int>(40, 0));
    driver_.release();
    EXPECT_EQ(told(), "");
    EXPECT_TRUE(is_good_glob_ptr(third));
    driver_.key(Key::escape);
    EXPECT_EQ(told(), "menu_poot");
}

TEST_F(MenuWidgets, KeysMoveChooseAndFind) {
    std::vector<MenuItem> items = three();
    items[1].setActive(false);
    items.insert(items.begin() + 1, MenuItem());
    struct Case {
        std::vector<std::uint32_t> keys;
        char const* told;
    };
    for (Case const& c :
         {Case{{Key::down, Key::enter}, "one menu_poot"},
          Case{{Key::down, Key::down, Key::enter}, "three menu_poot"},
          Case{{Key::down, Key::down, Key::down, Key::space}, "one menu_poot"},
          Case{{Key::up, Key::space}, "three menu_poot"},
          Case{{Key::end, Key::home, Key::enter}, "one menu_poot"},
          Case{{Key::home, Key::pageDown, Key::enter}, "three menu_poot"},
          Case{{'t', 'h', Key::enter}, "three menu_poot"},
          Case{{'x', Key::backspace, 'O', Key::enter}, "one menu_poot"}, Case{{Key::escape}, "menu_poot"}}) {
        Menu* const menu = open(items);
        for (std::uint32_t const key : c.keys) driver_.key(key);
        EXPECT_EQ(told(), c.told);
        EXPECT_FALSE(is_good_glob_ptr(menu));
    }
}

TEST_F(MenuWidgets, SubMenusOpenWhenThePointerHasRested) {
    Menu* const menu = open({cascade(L"More", {item(L"Deep", "deep")}), item(L"Plain")});
    driver_.moveTo(placeOf(*menu, 0));
    driver_.advance(249);
    EXPECT_FALSE(menu->getSubMenu());
    driver_.moveTo(placeOf(*menu, 1));
    driver_.advance(300);
    EXPECT_EQ(made_, 0) << "a plain item opens nothing";
    driver_.moveTo(placeOf(*menu, 0));
    driver_.advance(260);
    Menu* const sub = subOf(*menu);
    ASSERT_TRUE(sub);
    EXPECT_GE(sub->screenBox().x1, menu->screenBox().x2 - 8);
    // A click soon after that leaves it open, a later one closes it.
    clickOn(*menu, 0);
    EXPECT_EQ(subOf(*menu), sub);
    driver_.advance(300);
    clickOn(*menu, 0);
    EXPECT_FALSE(menu->getSubMenu());
    clickOn(*menu, 0);
    ASSERT_TRUE(subOf(*menu));
    EXPECT_EQ(made_, 2);
    // A choice in it reaches the owner and closes both.
    clickOn(*subOf(*menu), 0);
    EXPECT_EQ(told(), "deep menu_poot");
    EXPECT_FALSE(is_good_glob_ptr(menu));
}

TEST_F(MenuWidgets, KeysGoThroughTheCascade) {
    Menu* const menu =
        open({item(L"Plain"), cascade(L"More", {cascade(L"Deeper", {item(L"Deepest", "deepest")})})});
    driver_.key(Key::up);
    driver_.key(Key::right);
    ASSERT_TRUE(subOf(*menu));
    driver_.key(Key::right);
    Menu* const deepest = subOf(*subOf(*menu));
    ASSERT_TRUE(deepest);
    EXPECT_EQ(deepest->getHighlightedItem(), 0);
    driver_.key(Key::left);
    EXPECT_FALSE(is_good_glob_ptr(deepest));
    driver_.key(Key::escape);
    EXPECT_FALSE(menu->getSubMenu());
    EXPECT_TRUE(is_good_glob_ptr(menu));
    for (std::uint32_t const key : {Key::right, Key::right, Key::enter}) driver_.key(key);
    EXPECT_EQ(told(), "deepest menu_poot");
}

TEST_F(MenuWidgets, OptionsAreSteppedInPlaceAndTicked) {
    Menu* const menu = open({item(L"Speed||[Half] [Full]", "speed"), item(L"Loop||[Off] [On]", "loop"),
                             item(L"Snap||[On] [Off]", "snap")});
    clickOn(*menu, 0);
    EXPECT_EQ(menu->getCurrentChoice(L"Speed"), L"Full");
    clickOn(*menu, 0);
    EXPECT_EQ(menu->getCurrentChoiceIndex(L"Speed"), 0);
    EXPECT_EQ(told(), "speed speed");
    EXPECT_FALSE(Menu::convertToBool(menu->getItems()->getItem(1)));
    EXPECT_TRUE(Menu::convertToBool(menu->getItems()->getItem(2)));
    clickOn(*menu, 1);
    EXPECT_TRUE(Menu::convertToBool(menu->getItems()->getItem(1)));
    // The same by the check boxes in the rows.
    for (Glob* child = menu->firstChild(); child; child = child->nextSibling())
        if (auto* const box = dynamic_cast<Checkbox*>(child)) {
            EXPECT_TRUE(box->isTicked());
            driver_.click(box);
            EXPECT_FALSE(box->isTicked());
        }
    EXPECT_EQ(told(), "loop loop snap");
    EXPECT_FALSE(Menu::convertToBool(menu->getItems()->getItem(1)));
    EXPECT_EQ(menu->getCurrentChoice(L"Snap"), L"Off");
    menu->setCurrentChoice(L"Speed", 7);
    EXPECT_TRUE(menu->shouldCloseMenuAfterSelection(0)) << "no such option";
    EXPECT_EQ(Consistency(driver_).fault(), "");
}

TEST_F(MenuWidgets, GroupsFoldAndAreRemembered) {
    std::vector<MenuItem> const items{item(L"A", "", eExpandedGroupItem), item(L"a", "a", eGroupedMenuItem),
                                      item(L"B", "", eExpandedGroupItem), item(L"b", "b", eGroupedMenuItem),
                                      item(L"C", "", eExpandedGroupItem), item(L"c", "c", eGroupedMenuItem)};
    Menu::InitArgs args(Qv::makePtr<MenuData>(items), root_);
    args.prefsKey = "effects";
    auto* const menu = new Menu(args);
    ASSERT_TRUE(menu->openAt(root_->screenBox().bottomLeft()));
    int const full = menu->height();
    clickOn(*menu, 0);
    EXPECT_EQ(menu->numNonHiddenItems(), 5);
    EXPECT_LT(menu->height(), full);
    driver_.holdModifiers(Key::shift);
    clickOn(*menu, 2);
    driver_.holdModifiers(0);
    EXPECT_EQ(menu->numNonHiddenItems(), 3);
    EXPECT_EQ(menu->getItemsHeight(), 3 * menu->getRowHeight());
    clickOn(*menu, 4);
    destroy(menu);
    args.items = Qv::makePtr<MenuData>(items);
    Menu* const again = show(new Menu(args));
    EXPECT_EQ(again->numNonHiddenItems(), 4);
    EXPECT_TRUE(again->itemIsHidden(3));
    // Keys stop at headers: Left goes there and folds the group, Right unfolds it.
    again->claimKbdFocus();
    driver_.key(Key::end);
    EXPECT_EQ(again->getHighlightedItem(), 5);
    struct Case {
        std::uint32_t key;
        int highlighted;
        unsigned short rows;
    };
    for (Case const& c : {Case{Key::left, 4, 4},
                          {Key::left, 4, 3},
                          {Key::left, 4, 3},
                          {Key::up, 2, 3},
                          {Key::enter, 2, 4},
                          {Key::enter, 2, 3},
                          {Key::right, 2, 4},
                          {Key::down, 3, 4}}) {
        driver_.key(c.key);
        EXPECT_EQ(again->getHighlightedItem(), c.highlighted) << c.key;
        EXPECT_EQ(again->numNonHiddenItems(), c.rows) << c.key;
    }
    // A lone leading group stays open.
    Menu* const lone = open({item(L"A", "", eExpandedGroupItem), item(L"a", "a", eGroupedMenuItem)});
    clickOn(*lone, 0);
    EXPECT_EQ(lone->numNonHiddenItems(), 2);
}

TEST_F(MenuWidgets, AsManyItemsAsThereCanBeAreScrolled) {
    std::vector<MenuItem> items;
    for (int i = 0; i < 65'535; ++i) items.push_back(item(i % 1000 ? L"plain" : L"thousand"));
    items.back().label(L"zebra");
    Menu* const menu = open(items);
    EXPECT_LT(menu->height(), host_->globManager().monitors().front().height());
    ASSERT_LT(menu->visibleItems().size(), 60U);
    driver_.key(Key::end);
    EXPECT_EQ(menu->getHighlightedItem(), 65'534);
    EXPECT_GE(menu->findVisibleItem(65'534), 0);
    driver_.wheel(menu, 3);
    EXPECT_LT(menu->findVisibleItem(65'534), 0);
    // The thumb lies near the lower end.
    Glob* const bar = driver_.find(Role::scrollBar, {});
    driver_.moveTo(bar->screenBox().bottomLeft() + XY<int>(bar->width() / 2, bar->width() + 8));
    driver_.press();
    driver_.moveTo(bar->screenBox().topRight());
    EXPECT_EQ(menu->getScrollOffset(), 0);
    driver_.release();
    driver_.key(Key::home);
    driver_.key('z');
    EXPECT_EQ(menu->getHighlightedItem(), 65'534);
    menu->setScrollOffset(-5);
    EXPECT_EQ(menu->getScrollOffset(), 0);
    EXPECT_EQ(Consistency(driver_).fault(), "");
}

TEST_F(MenuWidgets, EverythingMayDieInEverythingThatIsTold) {
    expectDiagnostic("sub-menu failed");
    for (int const victim : {0, 1}) {
        Menu* menu = nullptr;
        auto const kill = [&] {
            destroy(victim == 0 ? static_cast<Glob*>(menu) : static_cast<Glob*>(menu->getOwner()));
        };
        auto* const owner = show(new StandardPanel(50, 50));
        MenuItem calls(L"Call", WidgetCallback(calling([&](NotifyMsg const&) { kill(); })));
        MenuItem opens(L"Open",
                       makeSubMenuCreator([&](Glob&) { return kill(), Qv::makePtr<MenuData>(three()); }));
        for (unsigned short index = 0; index < 2; ++index) {
            menu = new Menu({calls, opens}, victim == 0 ? static_cast<Glob*>(root_) : owner);
            Menu* const opened = menu;
            ASSERT_TRUE(menu->openAt(root_->screenBox().bottomLeft()));
            clickOn(*menu, index);
            driver_.settle();
            if (victim == 0) {
                EXPECT_FALSE(is_good_glob_ptr(opened));
            }
            if (victim == 1) break;
        }
        driver_.key(Key::escape);
        driver_.key(Key::escape);
    }
}

TEST_F(MenuWidgets, AListThatHasBecomeShorterDoesNoHarm) {
    Menu* const menu = open(three());
    driver_.key(Key::end);
    XY<int> const last = placeOf(*menu, 2);
    menu->getItems()->removeItems(1, 2);
    menu->makeDirty();
    driver_.clickAt(last);
    for (std::uint32_t const key : {Key::pageUp, Key::pageDown, Key::right, Key::down}) driver_.key(key);
    EXPECT_EQ(told(), "");
    menu->redisplay();
    EXPECT_EQ(menu->visibleItems().size(), 1U);
    EXPECT_EQ(Consistency(driver_).fault(), "");
}

TEST_F(MenuWidgets, AListMayBecomeShorterWhileASubMenuGoes) {
    for (int const way : {0, 1, 2}) {
        std::vector<MenuItem> const items{cascade(L"First", three()), cascade(L"Second", three()),
                                          item(L"Last")};
        Menu* const menu = open(items);
        menu->makeSubMenu(0);
        auto const watch = GlobNotices::watchDeletion(*menu->getSubMenu(),
                                                      makeCallback<int, NotifyMsg>([&](NotifyMsg const&) {
                                                          menu->getItems()->removeItems(1, 2);
                                                          return 1;
                                                      }));
        if (way == 0) driver_.clickAt(placeOf(*menu, 2));
        if (way == 1) driver_.clickAt(placeOf(*menu, 1));
        if (way == 2) {
            EXPECT_FALSE(menu->makeSubMenu(1));
        }
        EXPECT_EQ(menu->getItems()->numItems(), 1U);
        destroy(menu);
    }
}

TEST_F(MenuWidgets, ItemsFollowWhatTheyStandFor) {
    auto const loop = Qv::makePtr<GenericParam::BoolParam>(L"Loop");
    auto const size =
        Qv::makePtr<GenericParam::ChoiceParam>(L"Size", std::vector<UIString>{L"Small", L"Large"}, 1U);
    Menu* const menu = show(new Menu({{L"", {loop, size}}}, root_));
    auto const shownLoop = [&] { return Menu::convertToBool(menu->getItems()->getItem(0)); };
    clickOn(*menu, 0);
    EXPECT_TRUE(loop->value() && shownLoop());
    loop->setValue(false);
    EXPECT_FALSE(shownLoop());
    auto const* const box = dynamic_cast<Checkbox const*>(menu->firstChild());
    EXPECT_TRUE(box && !box->isTicked());
    clickOn(*menu, 0);
    EXPECT_TRUE(loop->value() && shownLoop());
    loop->setActive(false);
    EXPECT_FALSE(menu->getItems()->getItem(0).isActive());
    ASSERT_TRUE(menu->makeSubMenu(1));
    auto const isMarked = [&](unsigned short index) {
        return subOf(*menu)->getItems()->getItem(index).getLayout().isMarked;
    };
    EXPECT_TRUE(!isMarked(0) && isMarked(1));
    size->setValue(0);
    EXPECT_TRUE(isMarked(0) && !isMarked(1));
}

TEST_F(MenuWidgets, AListInAPanelIsWorkedByKeys) {
    // Copies share their id.
    MenuItem const loop = item(L"Loop||[Off] [On]", "loop");
    auto* const menu = show(new Menu({loop, loop, loop}, root_));
    EXPECT_TRUE(menu->isTabStopActive());
    menu->claimKbdFocus();
    EXPECT_EQ(get_kbd_focus(), menu);
    driver_.key(Key::end);
    driver_.key(Key::enter);
    EXPECT_EQ(told(), "loop menu_itemSelected");
    EXPECT_TRUE(Menu::convertToBool(menu->getItems()->getItem(2)));
    EXPECT_FALSE(Menu::convertToBool(menu->getItems()->getItem(0)));
    std::size_t const numChildren = menu->numChildren();
    menu->redisplay();
    EXPECT_EQ(menu->numChildren(), numChildren);
    set_kbd_focus(nullptr);
    clickOn(*menu, 0);
    EXPECT_EQ(get_kbd_focus(), menu);
}

TEST_F(MenuWidgets, AContextMenuWorksOnATextBoxWithoutItsFocus) {
    auto* const box = show(new TextBox(TextBox::InitArgs(200, 24, L"one two")));
    box->claimKbdFocus();
    box->setSelection({0, 3});
    driver_.click(box, Driver::Button::right);
    auto* const menu = dynamic_cast<Menu*>(box->contextMenu());
    ASSERT_TRUE(menu);
    EXPECT_EQ(get_kbd_focus(), box);
    EXPECT_EQ(box->getSelectedText(), L"one");
    EXPECT_FALSE(menu->getItems()->getItem(0).isActive()) << "there is nothing to be taken back";
    driver_.key('C');
    driver_.key(Key::enter);
    EXPECT_EQ(box->getText(), L" two");
    driver_.key(Key::menu);
    driver_.key(Key::down);
    driver_.key(Key::enter);
    EXPECT_EQ(box->getText(), L"one two");
}

} // namespace
} // namespace wainscot
