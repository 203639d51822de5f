#include "tests/widget_fixture.h"

#include "buttons/bool_radio_set.h"
#include "buttons/checkbox_group.h"
#include "buttons/checkbox_radio_set.h"
#include "buttons/radio_set.h"
#include "host/drawing/uif_std.h"
#include "host/objects/description.h"

namespace wainscot {
namespace {

/// Panels of members of which one is chosen.
class ChoiceSets : public WidgetTest {
protected:
    template <class Panel>
    Panel* add(std::unique_ptr<Panel> panel) {
        Panel* const added = root_->addChild(std::move(panel), BottomLeft(20, 20));
        if (added) order_.addTabStopsFrom(added);
        driver_.settle();
        return added;
    }
    CheckboxRadioSet* addSet(unsigned char columns = 1, int selected = -1) {
        CheckboxRadioSet::InitArgs args({L"a", L"b", L"c", L"d", L"e"});
        args.columns = columns;
        args.selected = selected;
        return add(std::make_unique<CheckboxRadioSet>(args));
    }
    Checkbox* addBox(int x) {
        return root_->addChild(Checkbox::make(0, 0, L"box", false), BottomLeft(x, 250));
    }
    /// Which members are ticked, as a row of digits.
    static std::string ticks(CheckboxPanel const& panel) {
        std::string row;
        for (int i = 0; i < panel.getNumCheckboxes(); ++i) {
            Checkbox const* const box = panel.getCheckbox(i);
            row += !box ? '-' : box->isTicked() ? '1' : '0';
        }
        return row;
    }
    /// Which members Tab stops at.
    static std::string stops(CheckboxPanel const& panel) {
        std::string row;
        for (int i = 0; i < panel.getNumCheckboxes(); ++i) {
            Checkbox* const box = panel.getCheckbox(i);
            row += !box ? '-' : box->isTabStopActive() ? '1' : '0';
        }
        return row;
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
    auto const picture = [&] {
        driver_.settle();
        Checkbox const* const box = set->getCheckbox(0);
        std::vector<std::uint32_t> pixels;
        for (int x = box->getTickExtents().x2; x < box->width(); ++x)
            pixels.push_back(driver_.pixel(box, {x, box->height() / 2}));
        return pixels;
    };
    set->setSelectedItem(0);
    auto const plain = picture();
    set->setBoldWhenTicked(true);
    auto const bold = picture();
    EXPECT_NE(bold, plain);
    set->setTextColourWhenTicked(Colour(255, 0, 0));
    EXPECT_NE(picture(), bold);
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
    auto* const group =
        add(std::make_unique<CheckboxGroup>(CheckboxGroup::InitArgs(L"Tracks", {L"V", L"A"})));
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
    auto* const set = add(std::make_unique<RadioSet>(RadioSet::InitArgs({L"one", L"longer", L"x"})));
    EXPECT_EQ(set->getSelectedItem(), -1);
    driver_.click(set->getButton(0));
    EXPECT_EQ(told(), "radio_set_message");
    driver_.click(set->getButton(2));
    EXPECT_EQ(told(), "radio_set_message") << "not for the one that went up";
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
    auto* const upright = add(std::make_unique<RadioSet>(Vector<LightweightString<wchar_t>>{L"a", L"b"},
                                                         Palette(), 60, 60, true, nullptr, &red));
    EXPECT_EQ(upright->getButton(0)->box().y1, upright->getButton(1)->box().y2);
    upright->setActive(false);
    driver_.click(upright->getButton(0));
    EXPECT_EQ(upright->getSelectedItem(), -1);
}

} // namespace
} // namespace wainscot
