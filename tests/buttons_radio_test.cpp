#include "tests/widget_fixture.h"

#include "buttons/radio_button.h"
#include "foundation/tab_order_manager.h"
#include "host/objects/description.h"

namespace wainscot {
namespace {

class RadioButtons : public WidgetTest {
protected:
    ~RadioButtons() override { set_.reset(); }

    radio_button* add(char const* message) {
        auto* const button = addTo(root_, new radio_button(L"x", message, set_.get(), 60, 24),
                                   BottomLeft(10 + 70 * static_cast<int>(buttons_.size() % 5), 10));
        driver_.settle();
        buttons_.push_back(button);
        return button;
    }
    void addThree() {
        add("a");
        add("b");
        add("c");
    }

    std::unique_ptr<radio_set> set_ = std::make_unique<radio_set>();
    std::vector<radio_button*> buttons_;
};

TEST_F(RadioButtons, ExactlyOneIsDownAndTheOldOneReportsFirst) {
    addThree();
    driver_.click(buttons_[0]);
    EXPECT_EQ(told(), "a on");
    driver_.click(buttons_[2]);
    EXPECT_EQ(told(), "a off c on");
    driver_.click(buttons_[2]);
    EXPECT_EQ(told(), "") << "it is chosen already";
    set_->set_current(3, false);
    EXPECT_EQ(set_->getCurrent(), 2) << "no such member";
    set_->set_current(1, true);
    EXPECT_EQ(told(), "");
    EXPECT_TRUE(buttons_[1]->isDown() && !buttons_[2]->isDown());
    set_->set_current(-5, false);
    EXPECT_EQ(told(), "b off");
    EXPECT_EQ(set_->getCurrent(), -1);
    buttons_[0]->setState(buttonUp, eRedrawYes);
    EXPECT_EQ(told(), "a on") << "whatever state is asked for";
    for (button_state const state : {buttonUp, buttonDown}) {
        set_->member(2)->setState(state, eRedrawYes);
        EXPECT_EQ(told(), "a off c on") << "through a pointer of the set, too";
        set_->member(0)->setState(state, eRedrawYes);
        EXPECT_EQ(told(), "c off a on");
    }
    buttons_[1]->setMessage(nullptr);
    driver_.click(buttons_[1]);
    EXPECT_EQ(told(), "a off  on");
    buttons_[0]->setActive(false);
    buttons_[2]->setIgnoreMouseClicks(true);
    for (radio_button* button : {buttons_[0], buttons_[2]}) driver_.click(button);
    EXPECT_EQ(told(), "");
}

TEST_F(RadioButtons, ASetIsOneTabStopAndArrowsStepThroughIt) {
    addThree();
    EXPECT_TRUE(buttons_[0]->isTabStopActive()) << "none is chosen: the first";
    EXPECT_FALSE(buttons_[1]->isTabStopActive());
    set_->set_current(1, true);
    EXPECT_TRUE(buttons_[1]->isTabStopActive());
    EXPECT_FALSE(buttons_[0]->isTabStopActive());
    TabOrderManager order(false);
    for (radio_button* button : buttons_) order.addTabStop(*button);
    order.incrementTabStop();
    ASSERT_EQ(get_kbd_focus(), buttons_[1]);
    buttons_[2]->setActive(false);
    driver_.key(Key::right);
    EXPECT_EQ(told(), "b off a on") << "passes the inactive one by, round the end";
    EXPECT_EQ(get_kbd_focus(), buttons_[0]);
    driver_.key(Key::up);
    EXPECT_EQ(set_->getCurrent(), 1);
    set_->set_current(0, true);
    buttons_[0]->claimKbdFocus();
    driver_.key(Key::space);
    EXPECT_EQ(told(), "a off b on");
}

TEST_F(RadioButtons, TheMemberBeyondTheLimitIsRefused) {
    for (std::size_t i = 0; i < radio_set::maxMembers; ++i)
        root_->addChild(new radio_button(L"", "m", set_.get(), 4, 4));
    EXPECT_EQ(set_->count(), 1024u);
    std::string written;
    static std::string* sink = nullptr;
    sink = &written;
    Diagnostics::setSink([](char const* line) { *sink += line; });
    radio_button* const refused = add("late");
    Diagnostics::setSink([](char const*) {});
    EXPECT_THAT(written, testing::HasSubstr("RadioSetBase:: attempt to exceed max no of radio buttons"));
    EXPECT_EQ(refused->index(), -1);
    set_->set_current(7, true);
    driver_.click(refused);
    EXPECT_EQ(set_->getCurrent(), -1) << "clicking it clears the choice";
}

TEST_F(RadioButtons, MembersAndSetsMayDieInAnyOrder) {
    addThree();
    set_->set_current(1, true);
    destroy(buttons_[1]);
    driver_.settle();
    driver_.click(buttons_[2]);
    EXPECT_EQ(told(), "c on") << "its slot is empty";
    set_.reset();
    driver_.click(buttons_[0]);
    EXPECT_EQ(told(), "") << "without its set";
    EXPECT_TRUE(buttons_[2]->isDown());
    expectDiagnostic("radio button's message too long");
    for (std::size_t const length : {95U, 96U, 120U}) {
        buttons_[0]->setMessage(std::string(length, 'm').c_str());
        EXPECT_EQ(Diagnostics::entries().empty(), length + 4 <= radio_button::maxText) << "with \" off\"";
    }
    buttons_[0]->switchState(buttonDown, true);
    EXPECT_EQ(told(), std::string(99, 'm'));
}

} // namespace
} // namespace wainscot
