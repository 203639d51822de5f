#include "tests/widget_fixture.h"

#include "host/base/convert.h"
#include "host/objects/kbd_focus.h"
#include "host/objects/surround.h"
#include "host/windows/popup_chain.h"
#include "menus/drop_down_image_button.h"
#include "menus/menu_button_group.h"
#include "menus/menu_with_add_button.h"
#include "menus/model/sub_menu_creator.h"
#include "menus/titled_drop_downs.h"

namespace wainscot {
namespace {

class DropDowns : public WidgetTest {
protected:
    using Data = Qv::Ptr<DropDownMenuData>;
    /// A header, an item, an inactive one, a command, and two items.
    static Data items() {
        MenuItem inactive(L"Inactive");
        inactive.setActive(false);
        MenuItem command(L"Command");
        command.setFlags(command.getFlags() | MenuItemFlag::command);
        return Qv::makePtr<DropDownMenuData>(
            std::vector<MenuItem>{MenuItem(L"Head", WidgetCallback(""), eExpandedGroupItem), MenuItem(L"One"),
                                  inactive, command, MenuItem(L"Two"), MenuItem(L"Three")});
    }
    DropDownMenuButton* make(DropDownButtonBase::eMode mode, Data const& list = items()) {
        DropDownMenuButton::InitArgs args(list);
        args.mode = mode;
        return show(new DropDownMenuButton(args));
    }
    LightweightString<wchar_t> selected(DropDownMenuButton const& button) {
        return button.getString().text();
    }
    void clickOn(Menu& menu, unsigned short item) {
        IntBox const box = menu.visibleItems()[static_cast<std::size_t>(menu.findVisibleItem(item))].box;
        driver_.clickAt(box.centre() + menu.screenBox().bottomLeft());
    }
    static void moveBy(Glob& glob, XY<int> way) {
        XY<int> const place = glob.box().bottomLeft() + way;
        glob.parent()->reshapeWidgetAt(&glob, place, {glob.width(), glob.height()});
    }
    PopUpChain& chain() { return host_->globManager().popUps(); }
};

constexpr DropDownButtonBase::eMode bothModes[] = {DropDownButtonBase::eGoesUp,
                                                   DropDownButtonBase::eStaysDown};

TEST_F(DropDowns, APressOpensASecondOneClosesAndSoDoAllOtherWays) {
    for (auto const mode : bothModes) {
        auto* const button = make(mode);
        auto const open = [&] {
            driver_.click(button);
            EXPECT_TRUE(button->isDropDownOpen());
            EXPECT_EQ(button->isDown(), mode == DropDownButtonBase::eStaysDown);
            EXPECT_FALSE(button->displayDropDown()) << "it is open already";
            return button->getDropDown();
        };
        std::function<void()> const ways[] = {
            [&] { driver_.click(button); },
            [&] { driver_.key(Key::escape); },
            [&] { driver_.key(Key::function(4)); },
            [&] { driver_.key(Key::alt | Key::up); },
            [&] { set_kbd_focus(nullptr); },
            [&] { driver_.clickAt(root_->screenBox().bottomLeft() + XY<int>(3, 3)); },
            [&] { destroy(button->getDropDown()); },
            [&] { clickOn(*button->getDropDown(), 4); },
            [&] { button->setActive(false); },
            [&] { button->setVisible(false); },
            [&] { button->setItems(items()); },
            [&] { deactivate(); },
            [&] {
                moveBy(*button, {3, 0});
            },
            [&] { button->parent()->setVisible(false); },
        };
        for (auto const& close : ways) {
            Menu* const menu = open();
            close();
            driver_.settle();
            EXPECT_FALSE(is_good_glob_ptr(menu));
            EXPECT_FALSE(button->isDropDownOpen());
            EXPECT_FALSE(button->isDown());
            EXPECT_FALSE(chain().isOpen());
            button->setActive(true);
            button->setVisible(true);
            button->parent()->setVisible(true);
            activate(root_);
        }
        Menu* const menu = open();
        destroy(button);
        EXPECT_FALSE(is_good_glob_ptr(menu)) << "it goes with its button";
        EXPECT_EQ(told(), "ddMenuBtnMsg");
        EXPECT_EQ(Consistency(driver_).fault(), "");
    }
}

TEST_F(DropDowns, WheelKeysAndLettersSelectWhatCanBeSelected) {
    auto* const button = make(DropDownButtonBase::eStaysDown);
    auto* const same = show(new DropDownMenuButton(button->getItems()), 20, 60);
    button->claimKbdFocus();
    struct Case {
        std::uint32_t key;
        wchar_t const* selected;
    };
    for (Case const& c : {Case{Key::up, L"One"},
                          {Key::down, L"Two"},
                          {Key::down, L"Three"},
                          {Key::down, L"Three"},
                          {Key::home, L"One"},
                          {Key::end, L"Three"},
                          {'t', L"Two"},
                          {'h', L"Three"},
                          {'o', L"Three"}}) {
        driver_.key(c.key);
        EXPECT_EQ(selected(*button), c.selected) << c.key;
        EXPECT_EQ(selected(*same), c.selected) << "both show the same data";
    }
    for (int i = 0; i < 3; ++i) driver_.wheel(button, 1);
    EXPECT_EQ(selected(*button), L"One");
    driver_.wheel(button, -1);
    EXPECT_EQ(selected(*button), L"Two");
    button->setActive(false);
    driver_.wheel(button, -1);
    EXPECT_EQ(selected(*button), L"Two");
    EXPECT_EQ(told(),
              "ddMenuBtnMsg ddMenuBtnMsg ddMenuBtnMsg ddMenuBtnMsg ddMenuBtnMsg ddMenuBtnMsg ddMenuBtnMsg "
              "ddMenuBtnMsg ddMenuBtnMsg");
    EXPECT_TRUE(button->setSelectedItemInternal(1, true));
    EXPECT_EQ(selected(*same), L"One");
    EXPECT_EQ(told(), "") << "the program knows what it selects";
}

TEST_F(DropDowns, TheListOpensByKeysWithTheSelectedItemAndFollowsTheKeys) {
    auto* const button = make(DropDownButtonBase::eStaysDown);
    button->setSelectedItemInternal(4, true);
    button->claimKbdFocus();
    // The pointer rests where the list opens.
    driver_.moveTo(button->screenBox().bottomLeft() + XY<int>(10, -40));
    for (std::uint32_t const opener : {Key::alt | Key::down, Key::function(4), Key::enter, +Key::space}) {
        driver_.key(opener);
        ASSERT_TRUE(button->isDropDownOpen()) << opener;
        EXPECT_EQ(button->getDropDown()->getHighlightedItem(), 4);
        EXPECT_GE(button->getDropDown()->width(), button->width());
        driver_.key(Key::escape);
        EXPECT_FALSE(button->isDropDownOpen());
    }
    driver_.key(Key::function(4));
    driver_.key(Key::down);
    driver_.key(Key::enter);
    EXPECT_EQ(selected(*button), L"Three");
    EXPECT_EQ(told(), "ddMenuBtnMsg");
    // The choice is told even where what it does closes the list.
    button->getItems()->getItem(4).setCallback(
        WidgetCallback(calling([&](NotifyMsg const&) { button->setActive(false); })));
    driver_.click(button);
    clickOn(*button->getDropDown(), 4);
    EXPECT_EQ(told(), "ddMenuBtnMsg");
    button->setActive(true);
    button->claimKbdFocus();
    button->setSelectedItemInternal(5, true);
    // While a list is open, the wheel turns nothing else.
    auto* const other = make(DropDownButtonBase::eStaysDown);
    moveBy(*other, {180, 0});
    driver_.click(button);
    driver_.wheel(other, -1);
    EXPECT_EQ(selected(*other), L"One");
    driver_.key(Key::escape);
    destroy(other);
    // What was typed in full comes before what begins with it.
    std::vector<MenuItem> const takes{MenuItem(L"Take 7"), MenuItem(L"Take 1"), MenuItem(L"Take 77")};
    auto* const typed = make(DropDownButtonBase::eStaysDown, Qv::makePtr<DropDownMenuData>(takes));
    typed->setSelectedItemInternal(1, true);
    typed->claimKbdFocus();
    driver_.type(L"take 7");
    EXPECT_EQ(selected(*typed), L"Take 7");
    destroy(typed);
    button->claimKbdFocus();
    // A command is carried out, and is never what is selected.
    int calls = 0;
    button->getItems()->getItem(3).setCallback(WidgetCallback(calling([&](NotifyMsg const&) { ++calls; })));
    driver_.key(Key::enter);
    clickOn(*button->getDropDown(), 3);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(selected(*button), L"Three");
    button->setItems(Qv::makePtr<DropDownMenuData>());
    driver_.click(button);
    EXPECT_FALSE(button->isDropDownOpen() || button->isDown()) << "there is nothing to choose from";
}

TEST_F(DropDowns, OpenWhereThereIsRoom) {
    IntBox const screen = host_->globManager().monitors().front();
    auto many = items();
    for (int i = 0; i < 10; ++i) many->addItem(MenuItem(L"more"));
    struct Case {
        int y;
        int shadowEdges;
    };
    auto* const button = make(DropDownButtonBase::eStaysDown, many);
    for (Case const& c :
         {Case{500, -1}, {20, static_cast<int>(Surround::left | Surround::right | Surround::top)}}) {
        root_->setScreenPos({100, c.y});
        driver_.settle();
        driver_.click(button);
        Menu* const menu = button->getDropDown();
        ASSERT_TRUE(menu);
        IntBox const box = menu->screenBox();
        EXPECT_TRUE(screen.contains(box));
        if (c.shadowEdges < 0) {
            EXPECT_EQ(box.y2, button->screenBox().y1);
            EXPECT_EQ(menu->getSurround().shadowSize(), 0);
        } else {
            EXPECT_EQ(box.y1, button->screenBox().y2);
            EXPECT_EQ(static_cast<int>(menu->getSurround().shadowEdges()), c.shadowEdges);
        }
        driver_.key(Key::escape);
    }
}

TEST_F(DropDowns, ACombosTextIsCompletedAndItsListFiltered) {
    auto list = Qv::makePtr<MenuData>();
    for (wchar_t const* const label : {L"London", L"Lisbon", L"New London"}) list->addItem(MenuItem(label));
    auto* const box = show(new ComboBox(ComboBox::InitArgs(list, 200)));
    box->claimKbdFocus();
    struct Case {
        std::uint32_t key;
        wchar_t const* text;
        wchar_t const* selected;
    };
    auto const check = [&](Case const& c) {
        driver_.key(c.key);
        EXPECT_EQ(box->getText(), c.text) << c.key;
        EXPECT_EQ(box->getSelectedText(), c.selected) << c.key;
    };
    for (Case const& c : {Case{'l', L"london", L"ondon"},
                          {'i', L"lisbon", L"sbon"},
                          {Key::backspace, L"li", L""},
                          {'x', L"lix", L""},
                          {Key::down, L"London", L"London"},
                          {Key::down, L"Lisbon", L"Lisbon"},
                          {Key::up, L"London", L"London"},
                          {Key::escape, L"London", L""}})
        check(c);
    EXPECT_EQ(told(), "comboBoxChosen comboBoxChosen comboBoxChosen");
    // Return takes the spelling of the item, and keeps the focus.
    box->highlightAllText(true);
    driver_.type(L"lis");
    driver_.key(Key::enter);
    EXPECT_EQ(box->getText(), L"Lisbon");
    EXPECT_EQ(get_kbd_focus(), box);
    root_->claimKbdFocus();
    driver_.wheel(box, 1);
    EXPECT_EQ(box->getSelectedText(), L"") << "the focus is elsewhere";
    EXPECT_EQ(told(), "comboBoxChosen");
    box->claimKbdFocus();
    // The list leaves the keys that it does not need to the text.
    EXPECT_FALSE(box->isListOpen());
    driver_.key(Key::function(4));
    ASSERT_TRUE(box->isListOpen());
    EXPECT_EQ(get_kbd_focus(), box);
    driver_.key(Key::end);
    driver_.key(Key::home);
    check({'n', L"nLondon", L""});
    driver_.key(Key::down);
    driver_.key(Key::enter);
    EXPECT_FALSE(box->isListOpen());
    EXPECT_EQ(told(), "comboBoxChosen");
    // A long list opens by itself, with what fits.
    for (int i = 0; i < 100; ++i) list->addItem(MenuItem(L"Take " + Qv::WStringFromInteger(i)));
    box->setText(L"");
    driver_.key('9');
    ASSERT_TRUE(box->isListOpen());
    auto* const menu = dynamic_cast<Menu*>(chain().last());
    ASSERT_TRUE(menu);
    EXPECT_EQ(menu->getItems()->numItems(), 19U);
    driver_.key('8');
    EXPECT_EQ(menu->getItems()->numItems(), 1U);
    clickOn(*menu, 0);
    EXPECT_EQ(box->getText(), L"Take 98");
    EXPECT_EQ(box->getChosenItem(), 101);
    driver_.key('?');
    EXPECT_FALSE(box->isListOpen());
    // What was shown is chosen, although the list has changed since.
    driver_.key(Key::function(4));
    list->insertItem(0, MenuItem(L"New"));
    clickOn(*dynamic_cast<Menu*>(chain().last()), 1);
    EXPECT_EQ(box->getText(), L"Lisbon");
    EXPECT_EQ(Consistency(driver_).fault(), "");
}

TEST_F(DropDowns, ABarOfMenusGoesFromMenuToMenu) {
    auto* const bar = new MenuButtonGroup();
    auto const menu = [](char const* message) {
        return Qv::makePtr<MenuData>(std::vector<MenuItem>{MenuItem(L"Item", WidgetCallback(message))});
    };
    for (char const* const name : {"file", "edit", "view"}) bar->addMenu(fromUTF8(name), menu(name));
    show(bar, 10, 150);
    bar->getButton(2)->setActive(false);
    driver_.click(bar->getButton(0));
    EXPECT_EQ(bar->getOpenButton(), bar->getButton(0));
    driver_.moveTo(bar->getButton(1));
    EXPECT_EQ(bar->getOpenButton(), bar->getButton(1));
    driver_.moveTo(bar->getButton(2));
    EXPECT_EQ(bar->getOpenButton(), bar->getButton(1));
    driver_.key(Key::right);
    EXPECT_EQ(bar->getOpenButton(), bar->getButton(0));
    driver_.key(Key::left);
    EXPECT_EQ(bar->getOpenButton(), bar->getButton(1));
    EXPECT_EQ(chain().size(), 1U);
    driver_.key(Key::down);
    driver_.key(Key::enter);
    EXPECT_FALSE(bar->getOpenButton());
    EXPECT_EQ(told(),
              "MenuButtonGroupClick MenuButtonGroupClick MenuButtonGroupClick MenuButtonGroupClick edit");
    std::vector<TabOrderable*> stops;
    bar->getTabOrderables(stops, 0);
    EXPECT_EQ(stops.size(), 3U);
    bar->getButton(0)->claimKbdFocus();
    driver_.key(Key::right);
    EXPECT_EQ(get_kbd_focus(), bar->getButton(1));
    driver_.key(Key::down);
    EXPECT_TRUE(bar->getOpenButton());
    driver_.key(Key::escape);
    // A press is dragged along the bar, and into a menu.
    told();
    driver_.moveTo(bar->getButton(0));
    driver_.press(Driver::Button::left);
    driver_.moveTo(bar->getButton(1));
    EXPECT_EQ(bar->getOpenButton(), bar->getButton(1));
    EXPECT_FALSE(bar->getButton(0)->isDown());
    driver_.moveTo(bar->getButton(1)->getDropDown()->screenBox().centre());
    driver_.release();
    EXPECT_EQ(told(), "MenuButtonGroupClick MenuButtonGroupClick edit");
    EXPECT_FALSE(bar->getOpenButton());
    // Beyond the end of a sub-menu comes the next menu.
    MenuItem const more(L"More", makeSubMenuCreator([&](Glob&) { return menu("in"); }));
    bar->getButton(0)->setItems(Qv::makePtr<MenuData>(std::vector<MenuItem>{more}));
    driver_.click(bar->getButton(0));
    driver_.key(Key::down);
    driver_.key(Key::right);
    EXPECT_EQ(chain().size(), 2U);
    driver_.key(Key::right);
    EXPECT_EQ(bar->getOpenButton(), bar->getButton(1));
    EXPECT_EQ(chain().size(), 1U);
    driver_.key(Key::escape);
    // Items with options are heard, empty menus are skipped.
    MenuItem const speed(L"Speed||[Half] [Full]", WidgetCallback("speed"));
    bar->getButton(0)->setItems(Qv::makePtr<MenuData>(std::vector<MenuItem>{speed}));
    bar->getButton(1)->setItems({});
    told();
    driver_.click(bar->getButton(0));
    driver_.key(Key::right);
    EXPECT_EQ(bar->getOpenButton(), bar->getButton(0));
    driver_.key(Key::down);
    driver_.key(Key::enter);
    EXPECT_EQ(told(), "MenuButtonGroupClick speed");
    MenuButtonWidget* const taken = show(bar->getButton(0));
    destroy(bar);
    driver_.moveTo(taken);
    driver_.settle();
    destroy(taken);
    EXPECT_FALSE(chain().isOpen());

    /// Gives what the window is.
    class Wrong final : public DropDownButton<Glob> {
    public:
        explicit Wrong(Glob* wrong) : DropDownButton(Button::InitArgs(L"Wrong", "")), wrong_(wrong) {}

    protected:
        Glob* makeDropDown() override { return wrong_; }
        Glob* wrong_;
    };
    expectDiagnostic("pop-up is in use");
    driver_.click(show(new Wrong(root_)));
    EXPECT_TRUE(is_good_glob_ptr(root_));
}

TEST_F(DropDowns, TitlesIconsAndAnAddButton) {
    auto* const titled = show(new TitledMenuButtonPlain(L"Title", DropDownMenuButton::InitArgs(items())));
    driver_.wheel(titled->getControl(), -1);
    EXPECT_EQ(told(), "ddMenuBtnMsg") << "as if the control stood there itself";
    titled->setActive(false);
    EXPECT_FALSE(titled->getControl()->isActive());

    /// Notes that it was drawn.
    class Icon final : public MenuItem::iIconRenderer, public Qv::InternalRefCount {
    public:
        XY<int> size() const override { return {40, 10}; }
        void draw(CanvasRenderer&, IntBox const&, Colour const&) const override { isDrawn = true; }
        mutable bool isDrawn = false;
    };
    auto const icon = Qv::makePtr<Icon>();
    auto const withIcons = items();
    withIcons->getItem(1).setIconRenderer(icon);
    auto* const image = show(new DropDownImageButton(DropDownMenuButton::InitArgs(withIcons)), 20, 50);
    EXPECT_TRUE(icon->isDrawn);
    EXPECT_GT(image->width(), 40 + UifStd::getButtonHeight());
    icon->isDrawn = false;
    image->setSelectedItemInternal(4, true);
    driver_.settle();
    EXPECT_FALSE(icon->isDrawn) << "an item without an icon is shown by its label";

    class Add final : public DropDownButton<MenuWithAddButton> {
    public:
        explicit Add(Glob* owner) : DropDownButton(Button::InitArgs(L"Add", "")), owner_(owner) {}

    protected:
        MenuWithAddButton* makeDropDown() override {
            return new MenuWithAddButton(Menu::InitArgs(items(), owner_));
        }
        Glob* owner_;
    };
    auto* const add = show(new Add(root_), 20, 80);
    driver_.click(add);
    MenuWithAddButton* const menu = add->getDropDown();
    ASSERT_TRUE(menu);
    EXPECT_LE(menu->getAddButton()->screenBox().y2,
              menu->visibleItems().back().box.y1 + menu->screenBox().y1);
    driver_.click(menu->getAddButton());
    EXPECT_EQ(told(), "MenuAdd menu_poot");
    EXPECT_FALSE(is_good_glob_ptr(menu));
    // The button is the last stop of the keys.
    driver_.click(add);
    for (std::uint32_t const key : {Key::down, Key::up, Key::enter}) driver_.key(key);
    EXPECT_EQ(told(), "MenuAdd menu_poot");
}

} // namespace
} // namespace wainscot
