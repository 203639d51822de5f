#include "tests/widget_fixture.h"

#include "buttons/bool_radio_set.h"
#include "buttons/checkbox_group.h"
#include "buttons/checkbox_radio_set.h"
#include "buttons/radio_set.h"
#include "foundation/tab_order_manager.h"
#include "foundation/val_server_adaptor.h"
#include "host/drawing/uif_std.h"
#include "host/objects/description.h"
#include "host/objects/tooltip_details.h"
#include "host/windows/look.h"

namespace wainscot {
namespace {

/// Sets in unusual use: members of several sets, owners that interfere, held buttons.
class ChoicesMisused : public WidgetTest {
protected:
    template <class Widget>
    Widget* add(std::unique_ptr<Widget> widget, int x = 20, int y = 20) {
        Widget* const added = root_->addChild(std::move(widget), BottomLeft(x, y));
        driver_.settle();
        return added;
    }
    Checkbox* addBox(int x, int y = 20) { return add(Checkbox::make(0, 0, L"box", false), x, y); }
    CheckboxRadioSet* addSet(std::vector<UIString> labels, unsigned char columns = 1, int x = 20) {
        CheckboxRadioSet::InitArgs args(std::move(labels));
        args.columns = columns;
        return add(std::make_unique<CheckboxRadioSet>(args), x);
    }
    static std::string ticks(CheckboxPanel const& panel) {
        std::string row;
        for (int i = 0; i < panel.getNumCheckboxes(); ++i)
            row += panel.getCheckbox(i) && panel.getCheckbox(i)->isTicked() ? '1' : '0';
        return row;
    }
    /// Without the pointer on it.
    std::vector<std::uint32_t> picture(Glob const* glob) {
        driver_.moveTo({590, 490});
        driver_.settle();
        std::vector<std::uint32_t> pixels;
        for (int x = 0; x < glob->width(); ++x)
            for (int y = 0; y < glob->height(); ++y) pixels.push_back(driver_.pixel(glob, {x, y}));
        return pixels;
    }
};

TEST_F(ChoicesMisused, AMemberThatWentToAnotherSetIsNoConcernOfTheFormerOne) {
    CheckboxRadioSetBase former, present;
    Checkbox* const stayed = addBox(20);
    Checkbox* const moved = addBox(120);
    Checkbox* const third = addBox(220);
    for (Checkbox* box : {stayed, moved}) former.addCheckbox(box);
    for (Checkbox* box : {moved, third}) present.addCheckbox(box);
    driver_.click(moved);
    driver_.click(stayed);
    EXPECT_TRUE(stayed->isTicked() && moved->isTicked()) << "one in each set";
    former.setSelectedItem(1);
    EXPECT_TRUE(stayed->isTicked());
    driver_.click(third);
    former.setSelectedItem(1);
    EXPECT_TRUE(third->isTicked() && !moved->isTicked());
    former.addCheckbox(moved);
    driver_.click(moved);
    EXPECT_TRUE(moved->isTicked() && !stayed->isTicked()) << "back again";
}

TEST_F(ChoicesMisused, TheSameMemberTwiceCanStillBeChosen) {
    CheckboxRadioSetBase set;
    Checkbox* const twice = addBox(20);
    Checkbox* const other = addBox(120);
    for (Checkbox* box : {twice, twice, other}) set.addCheckbox(box);
    driver_.click(twice);
    EXPECT_TRUE(twice->isTicked());
    EXPECT_FALSE(twice->isNotChosen());
}

TEST_F(ChoicesMisused, TheFocusStaysWithTheChoiceWhenAnArrowIsRefused) {
    CheckboxRadioSet* const set = addSet({L"a", L"b", L"c"});
    set->setSelectedItem(0);
    auto const adaptor = Qv::makePtr<TestData<int>>();
    adaptor->accepts = false;
    set->setDataAdaptor(adaptor);
    set->getCheckbox(0)->claimKbdFocus();
    driver_.key(Key::down);
    EXPECT_EQ(ticks(*set), "100");
    EXPECT_EQ(get_kbd_focus(), set->getCheckbox(0));
}

TEST_F(ChoicesMisused, AnArrowDoesNotTakeBackTheFocusThatTheOwnerMoved) {
    CheckboxRadioSet* const set = addSet({L"a", L"b", L"c"});
    Checkbox* const elsewhere = addBox(300);
    set->setSelectedItem(0);
    auto const adaptor = Qv::makePtr<TestData<int>>();
    adaptor->onAsk = [&] { elsewhere->claimKbdFocus(); };
    set->setDataAdaptor(adaptor);
    set->getCheckbox(0)->claimKbdFocus();
    driver_.key(Key::down);
    EXPECT_EQ(ticks(*set), "010");
    EXPECT_EQ(get_kbd_focus(), elsewhere);
}

TEST_F(ChoicesMisused, AClickTakesTheFocusOfItsSetAlong) {
    CheckboxRadioSet* const set = addSet({L"a", L"b", L"c", L"d"});
    auto* const after = add(std::make_unique<Button>(L"after", "after", 60, 24), 300);
    TabOrderManager order(false);
    order.addTabStopsFrom(set);
    order.addTabStop(*after);
    set->setSelectedItem(0);
    order.incrementTabStop();
    ASSERT_EQ(get_kbd_focus(), set->getCheckbox(0));
    driver_.click(set->getCheckbox(2));
    order.incrementTabStop();
    EXPECT_EQ(get_kbd_focus(), after) << "a set is one stop";
}

TEST_F(ChoicesMisused, PanelsDoNotTakeBackMembersThatWentElsewhere) {
    CheckboxRadioSet* const set = addSet({L"a", L"b"});
    auto* const buttons = add(std::make_unique<RadioSet>(RadioSet::InitArgs({L"a", L"b"})), 200);
    Glob* const other = add(std::make_unique<Glob>(200, 100), 20, 200);
    other->addChild(set->getCheckbox(1), BottomLeft(0, 0));
    other->addChild(buttons->getButton(1), BottomLeft(0, 50));
    set->resize(90, 90);
    buttons->resize(90, 30);
    EXPECT_EQ(set->getCheckbox(1)->parent(), other);
    EXPECT_EQ(buttons->getButton(1)->parent(), other);
}

TEST_F(ChoicesMisused, MixedIsDrawnAndAnnouncedInEveryAppearance) {
    for (auto appearance : {Checkbox::tickBox, Checkbox::roundTickBox, Checkbox::redLight}) {
        Checkbox* const box = addBox(20);
        box->setAppearance(appearance);
        auto const adaptor = Qv::makePtr<TestData<bool>>();
        box->setDataAdaptor(adaptor);
        auto const plain = picture(box);
        GlobDescription const before = Driver::describe(*box);
        adaptor->mixed = true;
        adaptor->forceWidgetUpdate(eRedrawYes);
        EXPECT_NE(picture(box), plain) << static_cast<int>(appearance);
        GlobDescription const after = Driver::describe(*box);
        EXPECT_TRUE(before.states != after.states || before.value != after.value);
        destroy(box);
    }
    CheckboxRadioSet* const set = addSet({L"a", L"b"});
    auto const adaptor = Qv::makePtr<TestData<int>>();
    set->bindTo(adaptor);
    auto const plain = picture(set);
    adaptor->mixed = true;
    adaptor->forceWidgetUpdate(eRedrawYes);
    EXPECT_NE(picture(set), plain);
}

TEST_F(ChoicesMisused, ARefusedChoiceGoesBackToWhatWasShown) {
    CheckboxRadioSet* const set = addSet({L"a", L"b", L"c"});
    set->setSelectedItem(0);
    set->getCheckbox(0)->setState(false);
    set->getCheckbox(1)->setState(true);
    auto const adaptor = Qv::makePtr<TestData<int>>();
    adaptor->accepts = false;
    set->setDataAdaptor(adaptor);
    driver_.click(set->getCheckbox(2));
    EXPECT_EQ(ticks(*set), "010");
    // One that throws leaves everything as the data is.
    expectDiagnostic("exception in handler");
    adaptor->onAsk = [] { throw 1; };
    driver_.click(set->getCheckbox(2));
    EXPECT_EQ(ticks(*set), "100");
    Checkbox* const box = addBox(200);
    auto const truth = Qv::makePtr<TestData<bool>>();
    truth->onAsk = adaptor->onAsk;
    box->setDataAdaptor(truth);
    driver_.click(box);
    EXPECT_FALSE(box->isTicked());
    BoolRadioSet pair;
    EXPECT_TRUE(pair.setWidgets(addBox(300), addBox(300, 100), true));
    pair.setDataAdaptor(truth);
    driver_.click(pair.member(0));
    EXPECT_TRUE(!pair.getWidgetValue() && pair.member(1)->isTicked() && !pair.member(0)->isTicked());
}

TEST_F(ChoicesMisused, AWidthOfZeroFitsTheFontThatIsGiven) {
    Checkbox::InitArgs args(L"A label");
    args.font.size = 30;
    Checkbox* const box = add(std::make_unique<Checkbox>(args));
    EXPECT_GT(box->width(), Glib::loadFont(args.font)->textWidth(args.label.text()));
}

TEST_F(ChoicesMisused, ColouredRadioButtonsFollowTheTheme) {
    Colour const face(0.5, 0.5, 0.5);
    auto* const button =
        add(std::make_unique<StdRadioButton>(nullptr, L"HHHH", "m", face, nullptr, XY<int>{80, 24}));
    Look::setTheme(eThemeLight);
    auto const switched = picture(button);
    auto* const fresh =
        add(std::make_unique<StdRadioButton>(nullptr, L"HHHH", "m", face, nullptr, XY<int>{80, 24}), 200);
    EXPECT_EQ(switched, picture(fresh));
    Look::setTheme(eThemeDark);
}

TEST_F(ChoicesMisused, ButtonsThatASetRefusedCannotBeClickedInItsPanel) {
    expectDiagnostic("RadioSetBase:: attempt to exceed max no of radio buttons");
    Vector<LightweightString<wchar_t>> const labels(radio_set::maxMembers + 1, L"x");
    auto* const set = add(std::make_unique<RadioSet>(RadioSet::InitArgs(labels, 4096, 24)));
    set->setSelectedItem(5);
    driver_.clickAt(set->screenBox().bottomLeft() + XY<int>{0, 3});
    EXPECT_EQ(set->getSelectedItem(), 0) << "what is seen there is the first one";
    set->setSelectedItem(5);
    set->setActive(false);
    driver_.clickAt(set->screenBox().bottomLeft() + XY<int>{0, 3});
    EXPECT_EQ(set->getSelectedItem(), 5);
}

TEST_F(ChoicesMisused, BoldLabelsAndTitlesHaveRoom) {
    CheckboxRadioSet* const set = addSet({L"Chosen", L"Other"});
    set->setBoldWhenTicked(true);
    set->setSelectedItem(0);
    TooltipDetails details;
    EXPECT_FALSE(set->getCheckbox(0)->getTooltipDetails({2, 2}, details)) << "it is cut";
    CheckboxGroup::InitArgs const args(L"A long title of a group", {L"V"});
    auto* const group = add(std::make_unique<CheckboxGroup>(args), 200);
    EXPECT_GT(group->width(), Glib::loadFont(UifStd::getFont())->textWidth(args.title.text()));
}

TEST_F(ChoicesMisused, LabelsAndSizesFollowTheUsersSize) {
    CheckboxRadioSet* const set = addSet({L"Chosen", L"Other"});
    auto* const button = add(std::make_unique<Button>(L"Apply", "apply", 0, 0), 200);
    auto* const buttons = add(std::make_unique<RadioSet>(RadioSet::InitArgs({L"Fit", L"Fill"})), 20, 200);
    std::vector<Glob*> const globs{set, set->getCheckbox(0), button, buttons};
    std::vector<int> before;
    for (Glob const* glob : globs) before.push_back(glob->width());
    Look::setSize(2);
    for (std::size_t i = 0; i < globs.size(); ++i)
        EXPECT_NEAR(globs[i]->width(), 2 * before[i], before[i] / 4);
    TooltipDetails details;
    EXPECT_FALSE(set->getCheckbox(0)->getTooltipDetails({2, 2}, details)) << "it is cut";
    Look::setSize(1);
    for (std::size_t i = 0; i < globs.size(); ++i) EXPECT_EQ(globs[i]->width(), before[i]);
    EXPECT_EQ(button->height(), UifStd::getButtonHeight());
    for (Glob* const glob : globs) glob->resize(200, 40);
    Look::setTheme(eThemeLight);
    for (Glob const* glob : {globs[0], globs[2], globs[3]})
        EXPECT_EQ(glob->size(), XY<int>(200, 40)) << "the owner's sizes stay";
    Look::setTheme(eThemeDark);
}

TEST_F(ChoicesMisused, TwoSetsShowOneValueAndOnlyTheClickedOneReports) {
    ValServer<int> value(0);
    CheckboxRadioSet* const three = addSet({L"a", L"b", L"c"});
    CheckboxRadioSet* const two = addSet({L"a", L"b"}, 1, 200);
    for (CheckboxRadioSet* set : {three, two}) {
        set->setDataAdaptor(Qv::makePtr<ValServerAdaptor<int>>(value));
        set->getDataAdaptor()->forceWidgetUpdate(eRedrawYes);
    }
    auto const both = [&] { return ticks(*three) + " " + ticks(*two); };
    EXPECT_EQ(both(), "100 10");
    driver_.click(three->getCheckbox(2));
    EXPECT_EQ(both(), "001 00") << "the other has no such member";
    EXPECT_EQ(value.value(), 2);
    driver_.click(two->getCheckbox(1));
    EXPECT_EQ(both(), "010 01");
    EXPECT_EQ(told(), "CRSChanged CRSChanged");
    value = -7;
    EXPECT_EQ(both(), "000 00");
    EXPECT_EQ(value.value(), -7) << "what is shown is not written back";
}

TEST_F(ChoicesMisused, ArrowsStayInTheirColumnAndPassByWhatIsMissing) {
    CheckboxRadioSet* const set = addSet({L"a", L"b", L"c", L"d", L"e", L"f", L"g"}, 3);
    set->getCheckbox(0)->claimKbdFocus();
    auto const after = [&](std::uint32_t key) {
        driver_.key(key);
        return set->getSelectedItem();
    };
    EXPECT_EQ(after(Key::down), 3);
    EXPECT_EQ(after(Key::down), 6);
    EXPECT_EQ(after(Key::down), 0);
    EXPECT_EQ(after(Key::left), 6);
    EXPECT_EQ(after(Key::right), 0);
    EXPECT_EQ(after(Key::right), 1);
    EXPECT_EQ(after(Key::up), 4);
    set->getCheckbox(1)->setActive(false);
    EXPECT_EQ(after(Key::down), 4) << "alone in its column";
}

/// Everything that can happen to members and sets, in random order.
TEST_F(ChoicesMisused, MembersAndSetsComeAndGoAtRandom) {
    expectDiagnostic("keyboard focus refused");
    expectDiagnostic("message not handled");
    unsigned int seed = 1;
    auto const random = [&](unsigned int n) {
        return (seed = seed * 1664525U + 1013904223U, seed >> 16) % n;
    };
    for (int round = 0; round < 40; ++round) {
        auto* const panel = add(std::make_unique<StandardPanel>(400, 300), 0, 0);
        std::unique_ptr<CheckboxRadioSetBase> sets[2];
        for (auto& set : sets) set = std::make_unique<CheckboxRadioSetBase>();
        auto pair = std::make_unique<BoolRadioSet>();
        auto buttonSet = std::make_unique<radio_set>();
        std::vector<Glob*> all;
        for (int i = 0; i < 6; ++i) {
            all.push_back(panel->addChild(Checkbox::make(0, 0, L"b", false), BottomLeft(10 + 50 * i, 10)));
            all.push_back(panel->addChild(std::make_unique<radio_button>(L"r", "r", buttonSet.get(), 40, 24),
                                          BottomLeft(10 + 50 * i, 60)));
        }
        for (int step = 0; step < 40; ++step) {
            Glob* const glob = all[random(12)];
            if (!is_good_glob_ptr(glob)) continue;
            auto* const box = dynamic_cast<Checkbox*>(glob);
            switch (random(9)) {
            case 0:
                if (auto& set = sets[random(2)]; set && box) set->addCheckbox(box);
                break;
            case 1:
                if (pair && box) pair->setWidgets(box, sets[0] ? sets[0]->checkbox(0) : box, random(2) != 0);
                break;
            case 2:
            case 3:
                driver_.click(glob);
                break;
            case 4:
                if (glob->claimKbdFocus()) driver_.key(random(2) != 0 ? Key::right : Key::left);
                break;
            case 5:
                if (random(4) == 0) destroy(glob);
                break;
            case 6:
                if (random(6) == 0) sets[random(2)].reset();
                break;
            case 7:
                if (random(8) == 0)
                    pair.reset();
                else if (random(8) == 0)
                    buttonSet.reset();
                break;
            default:
                glob->setActive(random(2) != 0);
                break;
            }
            driver_.settle();
        }
        destroy(panel);
        driver_.settle();
    }
}

} // namespace
} // namespace wainscot
