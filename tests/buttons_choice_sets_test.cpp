#include "tests/controls.h"
#include "tests/widget_fixture.h"

#include "buttons/bool_radio_set.h"
#include "buttons/checkbox_group.h"
#include "buttons/radio_set.h"
#include "foundation/tab_order_manager.h"
#include "foundation/val_server_adaptor.h"
#include "host/objects/description.h"
#include "host/objects/tooltip_details.h"
#include "host/windows/look.h"

namespace wainscot {
namespace {

/// Members of which one is chosen.
class ChoiceSets : public WidgetTest {
protected:
    CheckboxRadioSet* addSet(unsigned char columns = 1) {
        return addSet({L"a", L"b", L"c", L"d", L"e"}, columns);
    }
    CheckboxRadioSet* addSet(std::vector<UIString> labels, unsigned char columns = 1, int x = 20) {
        CheckboxRadioSet* const set = show(newSet(std::move(labels), -1, columns), x);
        order_.addTabStopsFrom(set);
        return set;
    }
    RadioSet* addButtons(Vector<LightweightString<wchar_t>> const& labels, int x = 20, int y = 20) {
        RadioSet* const set = show(new RadioSet(RadioSet::InitArgs(labels)), x, y);
        order_.addTabStopsFrom(set);
        return set;
    }
    Checkbox* addBox(int x, int y = 250) { return show(newBox(), x, y); }
    /// Which members are so, as a row of digits.
    static std::string row(CheckboxPanel const& panel, bool (*isSo)(Checkbox&)) {
        std::string digits;
        for (int i = 0; i < panel.getNumCheckboxes(); ++i) {
            Checkbox* const box = panel.getCheckbox(i);
            digits += !box ? '-' : isSo(*box) ? '1' : '0';
        }
        return digits;
    }
    static std::string ticks(CheckboxPanel const& panel) {
        return row(panel, [](Checkbox& box) { return box.isTicked(); });
    }
    /// Which members Tab stops at.
    static std::string stops(CheckboxPanel const& panel) {
        return row(panel, [](Checkbox& box) { return box.isTabStopActive(); });
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

    TabOrderManager order_{false};
};

TEST_F(ChoiceSets, AClickTicksOneAndClearsTheOthersAndIsToldOnce) {
    CheckboxRadioSet* const set = addSet();
    EXPECT_EQ(set->getSelectedCheckbox(), 0xFFFFFFFFu);
    EXPECT_EQ(set->getSelectedItem(), -1);
    driver_.click(set->getCheckbox(1));
    EXPECT_EQ(ticks(*set), "01000");
    EXPECT_EQ(told(), "CRSChanged");
    EXPECT_TRUE(set->getCheckbox(0)->isNotChosen() && !set->getCheckbox(1)->isNotChosen());
    driver_.click(set->getCheckbox(1));
    EXPECT_EQ(ticks(*set), "01000") << "a ticked one cannot be cleared by clicking it";
    EXPECT_EQ(told(), "");
    set->setSelectedItem(4);
    EXPECT_EQ(told(), "CRSChanged") << "as a click";
    set->setSelectedItem(4);
    set->setSelectedItem(5);
    set->setSelectedItem(-1);
    EXPECT_EQ(told(), "");
    EXPECT_EQ(set->getSelectedItem(), 4);
    int other = 2;
    set->setNewWidgetValue(other, eRedrawYes);
    EXPECT_EQ(ticks(*set), "00100");
    other = 17;
    set->setNewWidgetValue(other, eRedrawYes);
    EXPECT_EQ(ticks(*set), "00000");
    EXPECT_EQ(other, -1);
    EXPECT_EQ(told(), "") << "the data changed, not the user";
}

TEST_F(ChoiceSets, ASetIsOneStopAndArrowsGoAsTheMembersLie) {
    CheckboxRadioSet* const set = addSet(2);
    EXPECT_EQ(stops(*set), "10000") << "none is ticked: the first";
    set->setSelectedItem(2);
    EXPECT_EQ(stops(*set), "00100");
    set->getCheckbox(2)->setActive(false);
    EXPECT_EQ(stops(*set), "10000") << "the set is still reached";
    set->getCheckbox(2)->setActive(true);
    // a b
    // c d
    // e
    order_.incrementTabStop();
    ASSERT_EQ(get_kbd_focus(), set->getCheckbox(2));
    told();
    auto const after = [&](std::uint32_t key) {
        driver_.key(key);
        EXPECT_EQ(get_kbd_focus(), set->getCheckbox(set->getSelectedItem()));
        return set->getSelectedItem();
    };
    EXPECT_EQ(after(Key::right), 3);
    EXPECT_EQ(after(Key::down), 1) << "round the end, past where nothing is";
    EXPECT_EQ(after(Key::left), 0);
    EXPECT_EQ(after(Key::up), 4);
    EXPECT_EQ(after(Key::right), 0);
    set->getCheckbox(2)->setActive(false);
    EXPECT_EQ(after(Key::down), 4);
    EXPECT_EQ(told(), "CRSChanged CRSChanged CRSChanged CRSChanged CRSChanged CRSChanged");
    driver_.key(Key::space);
    EXPECT_EQ(set->getSelectedItem(), 4);
    EXPECT_EQ(told(), "");
    set->setActive(false);
    EXPECT_EQ(stops(*set), "00000");
    driver_.click(set->getCheckbox(1));
    EXPECT_EQ(set->getSelectedItem(), 4);
}

TEST_F(ChoiceSets, MembersThatAreNoChildrenMayDieAndSoMayTheSet) {
    auto set = std::make_unique<CheckboxRadioSetBase>();
    Checkbox* const first = addBox(20);
    Checkbox* const second = addBox(120);
    Checkbox* const third = addBox(220);
    for (Checkbox* box : {first, static_cast<Checkbox*>(nullptr), second, third}) set->addCheckbox(box);
    EXPECT_EQ(set->numCheckboxes(), 3u);
    EXPECT_EQ(set->findCheckbox(third), 2u);
    EXPECT_EQ(set->findCheckbox(nullptr), 0xFFFFFFFFu);
    driver_.settle();
    driver_.click(first);
    destroy(second);
    driver_.settle();
    driver_.click(third);
    EXPECT_TRUE(third->isTicked() && !first->isTicked());
    EXPECT_EQ(set->getSelectedItem(), 2u) << "indices stay";
    EXPECT_EQ(told(), "");
    set.reset();
    EXPECT_FALSE(first->hasUserFunction());
    driver_.click(first);
    EXPECT_TRUE(first->isTicked() && third->isTicked()) << "free of each other";
    EXPECT_EQ(told(), "Checkbox TICKED");
}

TEST_F(ChoiceSets, MembersOfColumnsShareTheWidthAndShrinkWhereThereIsNoRoom) {
    CheckboxRadioSet* const set = addSet(2);
    int const height = UifStd::getButtonHeight();
    EXPECT_EQ(set->height(), CheckboxRadioSet::calcHeightForRows(3));
    EXPECT_EQ(CheckboxRadioSet::calcHeightForRows(3), 3 * height + 2 * UifStd::getRowGap());
    EXPECT_EQ(CheckboxRadioSet::calcHeightForRows(2, 50), 100 + UifStd::getRowGap());
    EXPECT_EQ(CheckboxRadioSet::calcHeightForRows(0), 0);
    EXPECT_EQ(set->getCheckbox(3)->bounds().size(), XY<int>(set->width() / 2, height));
    EXPECT_EQ(set->getCheckbox(4)->box().y1, 0);
    for (XY<int> const size : {XY<int>{31, 60}, XY<int>{3, 2}, XY<int>{0, 0}}) {
        set->resize(size.x, size.y);
        for (int i = 0; i < 5; ++i) {
            IntBox const box = set->getCheckbox(i)->box();
            EXPECT_TRUE(set->bounds().contains(box)) << size.x << ", member " << i;
        }
    }
}

TEST_F(ChoiceSets, TheChosenLabelIsBoldOrColoured) {
    CheckboxRadioSet* const set = addSet();
    set->setSelectedItem(0);
    auto const plain = picture(set);
    set->setBoldWhenTicked(true);
    auto const bold = picture(set);
    EXPECT_NE(bold, plain);
    set->setTextColourWhenTicked(Colour(255, 0, 0));
    EXPECT_NE(picture(set), bold);
    set->setAppearance(Checkbox::greenLight);
    EXPECT_TRUE(set->getCheckbox(4)->isLight());
    EXPECT_NE(driver_.find(Role::radioGroup, L""), nullptr);
    EXPECT_NE(driver_.find(Role::radioButton, L"a"), nullptr);
}

TEST_F(ChoiceSets, ATruthValueHasTwoSides) {
    Checkbox* const first = addBox(20);
    Checkbox* const second = addBox(120);
    driver_.settle();
    auto pair = std::make_unique<BoolRadioSet>();
    auto const isFirst = [&] {
        EXPECT_NE(first->isTicked(), second->isTicked());
        EXPECT_EQ(pair->getCurrent(), first->isTicked() ? 0 : 1);
        return first->isTicked();
    };
    bool yes = true;
    pair->setNewWidgetValue(yes, eRedrawYes);
    EXPECT_TRUE(pair->setWidgets(first, second, false));
    EXPECT_FALSE(isFirst()) << "the second, unless value and flag are true";
    driver_.click(first);
    EXPECT_TRUE(isFirst());
    EXPECT_FALSE(pair->getWidgetValue()) << "a click turns it round";
    EXPECT_TRUE(pair->setWidgets(first, second, true));
    EXPECT_FALSE(isFirst());
    driver_.click(first);
    EXPECT_TRUE(isFirst() && pair->getWidgetValue());
    driver_.click(first);
    EXPECT_TRUE(isFirst());
    auto const judge = Qv::makePtr<TestData<bool>>();
    judge->value = true;
    judge->accepts = false;
    pair->setDataAdaptor(judge);
    driver_.click(second);
    EXPECT_TRUE(isFirst() && pair->getWidgetValue()) << "refused";
    pair->setState(true);
    EXPECT_EQ(judge->asked.size(), 1u) << "an equal value is not asked for";
    judge->accepts = true;
    pair->set_current(1, true);
    EXPECT_EQ(judge->asked.size(), 1u);
    EXPECT_FALSE(isFirst() || pair->getWidgetValue());
    pair->set_current(0, false);
    EXPECT_EQ(judge->asked.size(), 2u);
    pair->set_current(-1, false);
    EXPECT_FALSE(first->isTicked() || second->isTicked());
    driver_.click(second);
    EXPECT_FALSE(isFirst());
    EXPECT_EQ(told(), "") << "all goes through the adaptor";
    second->claimKbdFocus();
    EXPECT_FALSE(first->isTabStopActive());
    driver_.key(Key::left);
    EXPECT_TRUE(isFirst());
    EXPECT_EQ(get_kbd_focus(), first);
    judge->onAsk = [&] { pair.reset(); };
    driver_.click(second);
    EXPECT_TRUE(second->isTicked() && !first->hasUserFunction() && !second->hasUserFunction());
    EXPECT_FALSE(BoolRadioSet().setWidgets(first, nullptr, true));
}

TEST_F(ChoiceSets, AGroupReportsItsClicks) {
    auto* const group = show(new CheckboxGroup(CheckboxGroup::InitArgs(L"Tracks", {L"V", L"A"})));
    EXPECT_EQ(group->getLastClicked(), -1);
    driver_.click(group->getCheckbox(1));
    EXPECT_EQ(told(), "CheckboxGroupClicked");
    EXPECT_EQ(group->getLastClicked(), 1);
    EXPECT_EQ(ticks(*group), "01");
    EXPECT_EQ(stops(*group), "11") << "they are independent";
    group->setTicked(0, true);
    group->setTicked(2, true);
    EXPECT_TRUE(group->isTicked(0) && !group->isTicked(2));
    EXPECT_EQ(told(), "");
    EXPECT_FALSE(group->getCheckbox(0)->box().y2 > group->getUserArea().y2) << "below the title";
}

TEST_F(ChoiceSets, AButtonSetPassesOnTheOnHalfOfAChange) {
    auto* const set = addButtons({L"one", L"longer", L"x"});
    EXPECT_EQ(set->getSelectedItem(), -1);
    driver_.click(set->getButton(0));
    EXPECT_EQ(told(), "radio_set_message");
    driver_.click(set->getButton(2));
    EXPECT_EQ(told(), "radio_set_message") << "not for the one that went up";
    Event off(EventKind::message);
    off.setMessage("one off");
    off.setSender(set->getButton(0));
    EXPECT_TRUE(set->handleEvent(off));
    driver_.click(set->getButton(2));
    set->setSelectedItem(1);
    EXPECT_EQ(told(), "");
    EXPECT_EQ(set->getSelectedItem(), 1);
    order_.incrementTabStop();
    EXPECT_EQ(get_kbd_focus(), set->getButton(1));
    driver_.key(Key::left);
    EXPECT_EQ(set->getSelectedItem(), 0);
    EXPECT_EQ(told(), "radio_set_message");
    EXPECT_EQ(set->getButton(2)->box().x2, set->width());
    EXPECT_EQ(set->getButton(1)->box().x1, set->getButton(0)->box().x2);
    Colour red(200, 0, 0);
    auto* const upright = show(
        new RadioSet(Vector<LightweightString<wchar_t>>{L"a", L"b"}, Palette(), 60, 60, true, nullptr, &red));
    EXPECT_EQ(upright->getButton(0)->box().y1, upright->getButton(1)->box().y2);
    upright->setActive(false);
    driver_.click(upright->getButton(0));
    EXPECT_EQ(upright->getSelectedItem(), -1);
}

TEST_F(ChoiceSets, AMemberThatWentToAnotherSetIsNoConcernOfTheFormerOne) {
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

TEST_F(ChoiceSets, TheSameMemberTwiceCanStillBeChosen) {
    CheckboxRadioSetBase set;
    Checkbox* const twice = addBox(20);
    Checkbox* const other = addBox(120);
    for (Checkbox* box : {twice, twice, other}) set.addCheckbox(box);
    driver_.click(twice);
    EXPECT_TRUE(twice->isTicked());
    EXPECT_FALSE(twice->isNotChosen());
}

TEST_F(ChoiceSets, TheFocusStaysWithARefusedArrowAndWhereTheOwnerMovedIt) {
    CheckboxRadioSet* const set = addSet({L"a", L"b", L"c"});
    Checkbox* const elsewhere = addBox(300);
    set->setSelectedItem(0);
    auto const adaptor = Qv::makePtr<TestData<int>>();
    adaptor->accepts = false;
    set->setDataAdaptor(adaptor);
    set->getCheckbox(0)->claimKbdFocus();
    driver_.key(Key::down);
    EXPECT_EQ(ticks(*set), "100");
    EXPECT_EQ(get_kbd_focus(), set->getCheckbox(0));
    adaptor->accepts = true;
    adaptor->onAsk = [&] { elsewhere->claimKbdFocus(); };
    driver_.key(Key::down);
    EXPECT_EQ(ticks(*set), "010");
    EXPECT_EQ(get_kbd_focus(), elsewhere);
}

TEST_F(ChoiceSets, AClickTakesTheFocusOfItsSetAlong) {
    CheckboxRadioSet* const set = addSet({L"a", L"b", L"c", L"d"});
    auto* const after = show(new Button(L"after", "after", 60, 24), 300);
    order_.addTabStop(*after);
    set->setSelectedItem(0);
    order_.incrementTabStop();
    ASSERT_EQ(get_kbd_focus(), set->getCheckbox(0));
    driver_.click(set->getCheckbox(2));
    order_.incrementTabStop();
    EXPECT_EQ(get_kbd_focus(), after) << "a set is one stop";
}

TEST_F(ChoiceSets, PanelsDoNotTakeBackMembersThatWentElsewhere) {
    CheckboxRadioSet* const set = addSet({L"a", L"b"});
    auto* const buttons = addButtons({L"a", L"b"}, 200);
    Glob* const other = show(new Glob(200, 100), 20, 200);
    other->addChild(set->getCheckbox(1), BottomLeft(0, 0));
    other->addChild(buttons->getButton(1), BottomLeft(0, 50));
    set->resize(90, 90);
    buttons->resize(90, 30);
    EXPECT_EQ(set->getCheckbox(1)->parent(), other);
    EXPECT_EQ(buttons->getButton(1)->parent(), other);
}

TEST_F(ChoiceSets, MixedIsDrawnAndAnnouncedInEveryAppearance) {
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

TEST_F(ChoiceSets, ARefusedChoiceGoesBackToWhatWasShown) {
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
    auto const truth = Qv::makePtr<TestData<bool>>();
    truth->onAsk = [] { throw 1; };
    BoolRadioSet pair;
    EXPECT_TRUE(pair.setWidgets(addBox(300), addBox(300, 100), true));
    pair.setDataAdaptor(truth);
    driver_.click(pair.member(0));
    EXPECT_TRUE(!pair.getWidgetValue() && pair.member(1)->isTicked() && !pair.member(0)->isTicked());
}

TEST_F(ChoiceSets, AWidthOfZeroFitsTheFontThatIsGiven) {
    Checkbox::InitArgs args(L"A label");
    args.font.size = 30;
    Checkbox* const box = show(new Checkbox(args));
    EXPECT_GT(box->width(), Glib::loadFont(args.font)->textWidth(args.label.text()));
}

TEST_F(ChoiceSets, ColouredRadioButtonsFollowTheTheme) {
    Colour const face(0.5, 0.5, 0.5);
    auto* const button = show(new StdRadioButton(nullptr, L"HHHH", "m", face, nullptr, XY<int>{80, 24}));
    Look::setTheme(eThemeLight);
    auto const switched = picture(button);
    auto* const fresh = show(new StdRadioButton(nullptr, L"HHHH", "m", face, nullptr, XY<int>{80, 24}), 200);
    EXPECT_EQ(switched, picture(fresh));
    Look::setTheme(eThemeDark);
}

TEST_F(ChoiceSets, ButtonsThatASetRefusedCannotBeClickedInItsPanel) {
    expectDiagnostic("RadioSetBase:: attempt to exceed max no of radio buttons");
    Vector<LightweightString<wchar_t>> const labels(radio_set::maxMembers + 1, L"x");
    auto* const set = show(new RadioSet(RadioSet::InitArgs(labels, 4096, 24)));
    set->setSelectedItem(5);
    driver_.clickAt(set->screenBox().bottomLeft() + XY<int>{0, 3});
    EXPECT_EQ(set->getSelectedItem(), 0) << "what is seen there is the first one";
    set->setSelectedItem(5);
    set->setActive(false);
    driver_.clickAt(set->screenBox().bottomLeft() + XY<int>{0, 3});
    EXPECT_EQ(set->getSelectedItem(), 5);
}

TEST_F(ChoiceSets, BoldLabelsAndTitlesHaveRoom) {
    CheckboxRadioSet* const set = addSet({L"Chosen", L"Other"});
    set->setBoldWhenTicked(true);
    set->setSelectedItem(0);
    TooltipDetails details;
    EXPECT_FALSE(set->getCheckbox(0)->getTooltipDetails({2, 2}, details)) << "it is cut";
    CheckboxGroup::InitArgs const args(L"A long title of a group", {L"V"});
    auto* const group = show(new CheckboxGroup(args), 200);
    EXPECT_GT(group->width(), Glib::loadFont(UifStd::getFont())->textWidth(args.title.text()));
}

TEST_F(ChoiceSets, LabelsAndSizesFollowTheUsersSize) {
    CheckboxRadioSet* const set = addSet({L"Chosen", L"Other"});
    auto* const button = show(new Button(L"Apply", "apply", 0, 0), 200);
    auto* const buttons = addButtons({L"Fit", L"Fill"}, 20, 200);
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

TEST_F(ChoiceSets, TwoSetsShowOneValueAndOnlyTheClickedOneReports) {
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

TEST_F(ChoiceSets, ArrowsStayInTheirColumnAndPassByWhatIsMissing) {
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
TEST_F(ChoiceSets, MembersAndSetsComeAndGoAtRandom) {
    expectDiagnostic("keyboard focus refused");
    expectDiagnostic("message not handled");
    unsigned int seed = 1;
    auto const random = [&](unsigned int n) {
        return (seed = seed * 1664525U + 1013904223U, seed >> 16) % n;
    };
    for (int round = 0; round < 40; ++round) {
        auto* const panel = show(new StandardPanel(400, 300), 0, 0);
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
