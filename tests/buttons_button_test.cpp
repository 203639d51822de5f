#include "tests/widget_fixture.h"

#include "buttons/button.h"
#include "buttons/command_button.h"
#include "buttons/custom_border_button.h"
#include "buttons/standard_buttons.h"
#include "foundation/tab_order_manager.h"
#include "host/drawing/uif_std.h"
#include "host/events/keybinding_manager.h"
#include "host/objects/description.h"
#include "host/objects/tooltip_details.h"
#include "host/services/command_map.h"

namespace wainscot {
namespace {

class Buttons : public WidgetTest {
protected:
    Button* addButton(wchar_t const* label = L"Apply", int x = 20, int y = 20) {
        return show(new Button(label, "apply", 80, 24), x, y);
    }
    /// Records name and code of every report, instead of sending it.
    void record(Button* button) {
        button->setCallback(calling([this](NotifyMsg const& message) {
            log_.push_back(std::string(message.name().c_str()) + " " + std::to_string(message.code()));
            if (onReport_) onReport_();
        }));
    }

    std::function<void()> onReport_;
};

TEST_F(Buttons, AClickInsideReportsAndOneThatEndsOutsideDoesNot) {
    Button* const button = addButton();
    button->setPayload(wrapData(7));
    driver_.holdModifiers(Key::ctrl);
    driver_.click(button);
    driver_.holdModifiers(0);
    ASSERT_EQ(sent(), "apply");
    EXPECT_EQ(root_->messages()[0].sender, button);
    EXPECT_EQ(*unwrapData<int>(root_->messages()[0].data), 7);
    EXPECT_EQ(root_->messages()[0].modifiers, Key::ctrl);

    record(button);
    driver_.press(button);
    EXPECT_TRUE(button->isDown());
    moveIn(button, 40, 26);
    EXPECT_FALSE(button->isDown()) << "visibly released";
    moveIn(button, 80, 24);
    EXPECT_TRUE(button->isDown()) << "its far corner still counts";
    moveIn(button, -1, 5);
    driver_.release();
    EXPECT_FALSE(button->isDown());
    EXPECT_THAT(log_, IsEmpty());
    driver_.click(button);
    EXPECT_THAT(log_, ElementsAre("apply 1"));
}

TEST_F(Buttons, WhatIsReportedFollowsTheCallbackEvents) {
    Button* const button = addButton();
    record(button);
    button->setMessageOnMouseUp(false);
    driver_.press(button);
    EXPECT_THAT(log_, ElementsAre("apply 2"));
    driver_.release();
    EXPECT_THAT(takeLog(), ElementsAre("apply 2"));
    EXPECT_FALSE(button->isDown());
    button->setCallbackEvents(Button::onMouseUp | Button::onMouseDown);
    driver_.click(button);
    EXPECT_THAT(takeLog(), ElementsAre("apply 2", "apply 1"));
    button->setMessageOnDrag(true);
    EXPECT_EQ(button->getCallbackEvents(), 7u);
    button->setMessageOnMouseUp(true);
    EXPECT_EQ(button->getCallbackEvents(), 1u) << "replaces the set";
}

TEST_F(Buttons, ADragIsReportedFromFourPixelsOnAsLongAsItIsThatFarAway) {
    Button* const button = addButton();
    record(button);
    button->setMessageOnDrag(true);
    moveIn(button, 10, 10);
    driver_.press();
    moveIn(button, 12, 12);
    moveIn(button, 13, 10);
    EXPECT_THAT(log_, IsEmpty());
    moveIn(button, 14, 10);
    moveIn(button, 200, 100);
    moveIn(button, 11, 10);
    EXPECT_THAT(log_, ElementsAre("apply drag 4", "apply drag 4"));
    EXPECT_TRUE(button->isDown()) << "sliding off does not release it";
    driver_.release();
    EXPECT_EQ(log_.back(), "apply 1");
}

TEST_F(Buttons, ALatchingButtonChangesAtThePressAndStays) {
    Button* const button = addButton();
    record(button);
    button->setLatching(true, false);
    driver_.press(button);
    moveIn(button, 200, 100);
    EXPECT_TRUE(button->isDown()) << "moves are nothing to it";
    driver_.release();
    EXPECT_TRUE(button->isDown());
    driver_.click(button);
    EXPECT_FALSE(button->isDown());
    EXPECT_THAT(log_, ElementsAre("apply on 2", "apply off 1"));
    takeLog();
    button->setCallbackEvents(Button::onMouseUp);
    driver_.press(button);
    driver_.key(Key::escape);
    driver_.release();
    EXPECT_FALSE(button->isDown());
    EXPECT_THAT(log_, IsEmpty()) << "the press was not reported";
    button->setCallbackEvents(Button::onMouseDown);
    button->setLatching(false, false);
    EXPECT_EQ(button->getCallbackEvents(), 2u) << "stays as it is";
}

TEST_F(Buttons, RepeatingIsTimedByTheProcessorClock) {
    Button* const button = addButton();
    record(button);
    button->setRepeating(2, 1.0);
    driver_.press(button);
    driver_.advance(500);
    EXPECT_THAT(log_, IsEmpty()) << "strictly more than the delay";
    driver_.advance(2);
    EXPECT_THAT(log_, ElementsAre("apply 4098"));
    driver_.advance(1000);
    EXPECT_EQ(log_.size(), 4u) << "every 250 ms";
    moveIn(button, 200, 100);
    driver_.advance(1000);
    EXPECT_EQ(log_.size(), 4u) << "not while it is up";
    moveIn(button, 10, 10);
    driver_.advance(499);
    EXPECT_EQ(log_.size(), 4u) << "pressed anew: the delay again";
    moveIn(button, 12, 10);
    driver_.advance(5);
    EXPECT_EQ(log_.size(), 5u) << "moves inside do not begin it again";
    virtualClock().advanceProcessor(5000000);
    driver_.advance(250);
    EXPECT_LE(log_.size(), 7u) << "threads that use the processor do not hurry it: one report a tick";
    button->setRepeating(0, 0.0);
    driver_.advance(1000);
    std::size_t const until = log_.size();
    button->setRepeating(5, 1.0);
    driver_.advance(499);
    EXPECT_EQ(log_.size(), until) << "switched on while it is held: after the delay";
    driver_.advance(5);
    EXPECT_EQ(log_.size(), until + 1);
    button->setRepeating(50, 1.0);
    driver_.advance(105);
    EXPECT_GE(log_.size(), until + 9) << "faster at once";
    button->setRepeating(0, 0.0);
    takeLog();
    driver_.release();
    EXPECT_THAT(log_, ElementsAre("apply 1"));
    EXPECT_FALSE(EventSystem::live().timers.isRegistered(button));

    // The receiver of a message can tell a repeat from the click at the end.
    button->setCallback(WidgetCallback(""));
    auto* const panel = addTo(root_, new ProbeGlob(200, 100), BottomLeft(20, 60));
    panel->addChild(button, BottomLeft(0, 0));
    panel->onMessage = [this](auto const&, Glob*) {
        return log_.push_back(std::to_string(currentReportCode())), 1;
    };
    takeLog();
    button->setRepeating(2, 1.0);
    driver_.press(button);
    driver_.advance(505);
    driver_.release();
    EXPECT_THAT(log_, ElementsAre("4098", "1"));
}

/// Repeats in a way of its own.
class SelfRepeating : public Button {
public:
    using Button::Button;
    bool isAutoRepeating() const override { return true; }
};

TEST_F(Buttons, WhatIsThrownOrDestroyedOnTheWayLeavesItInStep) {
    expectDiagnostic("exception in handler");
    Button* button = addButton();
    auto const fails = calling([](NotifyMsg const&) { throw 1; });
    button->setCallbackEvents(3);
    button->setCallback(fails);
    driver_.press(button);
    EXPECT_TRUE(button->isDown()) << "the report was thrown in";
    driver_.release();
    EXPECT_FALSE(button->isDown());
    destroy(button);

    button = show(new SelfRepeating(L"Apply", "apply", 80, 24));
    EXPECT_FALSE(button->react(Event(EventKind::timer)));

    // The old callback goes, and takes the button along.
    struct Killer {
        explicit Killer(Button* victim) : button(victim) {}
        ~Killer() { destroy(button); }
        Button* button;
    };
    auto killer = std::make_shared<Killer>(button);
    button->setCallback(calling([killer](NotifyMsg const&) {}));
    killer.reset();
    button->setCallback(WidgetCallback("other"));
    EXPECT_FALSE(is_good_glob_ptr(button));
}

TEST_F(Buttons, ReturnAndSpaceClickItAtItsCentreWhateverLiesThere) {
    Button* const button = addButton();
    show(new Glob(20, 24), 50, 20);
    ASSERT_TRUE(button->claimKbdFocus());
    driver_.keyDown(Key::enter);
    EXPECT_EQ(sent(), "apply");
    moveIn(button, 5, 5);
    EXPECT_TRUE(Driver::describe(*button).states & GlobDescription::pressed);
    EXPECT_EQ(Consistency(driver_).fault(), "");
    driver_.keyUp(Key::enter);
    EXPECT_EQ(Consistency(driver_).fault(), "") << "shown up again";
    driver_.key(Key::space);
    driver_.key(Key::shift | Key::enter);
    driver_.key(Key::ctrl | Key::space);
    EXPECT_EQ(sent(), "apply apply");
    button->setIgnoreMouseClicks(true);
    driver_.key(Key::space);
    EXPECT_EQ(sent(), "apply apply");
}

TEST_F(Buttons, TabFocusIsTheKeyboardFocus) {
    Button* const first = addButton(L"One", 20, 20);
    Button* const second = addButton(L"Two", 120, 20);
    TabOrderManager order(false);
    order.addTabStop(*first);
    order.addTabStop(*second);
    order.incrementTabStop();
    EXPECT_EQ(get_kbd_focus(), first);
    order.incrementTabStop();
    EXPECT_EQ(get_kbd_focus(), second);
    EXPECT_TRUE(driver_.painted(second));
    order.setTabStopFocus(TabOrderManager::noTabStop);
    EXPECT_EQ(get_kbd_focus(), root_) << "given to the parent";
    order.setTabStopFocus(*first);
    order.setTabStopFocus(*first);
    EXPECT_EQ(get_kbd_focus(), first) << "its own loss after its own receipt is passed over";
    ASSERT_TRUE(second->claimKbdFocus());
    EXPECT_TRUE(order.isTabStopFocus(*second)) << "the focus by other ways is a tab focus too";
}

TEST_F(Buttons, SizesFollowTheMetricsAndTheLabel) {
    int const text = Glib::loadFont(UifStd::getFont())->textWidth(L"ab");
    int const height = UifStd::getButtonHeight();
    Button* const button = show(new Button(L"ab", "m", 0, 0));
    EXPECT_EQ(button->size(), (XY<int>{text + height, height}));
    Button* const tall = show(new Button(L"ab", "m", 0, 50));
    EXPECT_EQ(tall->size(), (XY<int>{text + height, 50}));
    Button* const empty = show(new Button(L"", "m", 0, 0));
    EXPECT_EQ(empty->width(), 0);
    button->setString(L"abcdef");
    EXPECT_EQ(button->width(), text + height) << "a new label does not resize it";
    Button* const resource = show(new Button(UIString(ResId(10001)), "m", 0, 0));
    EXPECT_EQ(resource->width(), Glib::loadFont(UifStd::getFont())->textWidth(L"Off") + height);
}

TEST_F(Buttons, WithoutAParentItReportsToWhatItLiesOn) {
    auto* const lonely = new Button(L"b", "lonely", 60, 24);
    ASSERT_TRUE(host_->globManager().realize(lonely, XY<int>{120, 120}));
    driver_.settle();
    lonely->switchState(buttonDown, true);
    driver_.settle();
    EXPECT_EQ(sent(), "lonely");
    lonely->setScreenPos({900, 900});
    driver_.settle();
    lonely->switchState(buttonUp, true);
    driver_.settle();
    EXPECT_EQ(sent(), "lonely") << "nothing there";
}

TEST_F(Buttons, MessagesThatArriveGoToTheValueFaceFirst) {
    Button* const button = addButton();
    expectDiagnostic("message not handled");
    int answer = 1;
    Lines heard;
    button->setInnerMessageCallback(makeCallback<int, NotifyMsg>([&](NotifyMsg const& message) {
        heard.push_back(message.name().c_str());
        return answer;
    }));
    EXPECT_TRUE(callMessage("inner", static_cast<Glob*>(button)));
    answer = 0;
    EXPECT_FALSE(callMessage("other", static_cast<Glob*>(button)));
    EXPECT_THAT(heard, ElementsAre("inner", "other"));
}

TEST_F(Buttons, OwnColoursAreDrawnAsGivenAndOnlyChangesRepaint) {
    Button* const button = addButton(L"");
    auto const face = [&] {
        driver_.settle();
        return driver_.pixel(button, {8, 8});
    };
    button->setCols(Colour::fromLong(0xFFFFFF), Colour::fromLong(0x204060));
    driver_.moveTo({100, 390});
    EXPECT_EQ(face(), 0x204060u);
    button->setDownCols(Colour::fromLong(0xFFFFFF), Colour::fromLong(0x602040));
    driver_.press(button);
    EXPECT_EQ(face(), 0x602040u) << "as it was given";
    driver_.moveTo({100, 390});
    driver_.release();
    std::uint64_t const presented = nativeOf(root_)->numPresented();
    button->setState(buttonDown, eRedrawNo);
    driver_.settle();
    EXPECT_EQ(nativeOf(root_)->numPresented(), presented) << "not wanted";
    button->makeDirty();
}

TEST_F(Buttons, LabelsFitAndSayTheRestInATip) {
    Button* const button = addButton(L"A label that is much too long for it");
    TooltipDetails details;
    ASSERT_TRUE(button->getTooltipDetails({1, 1}, details));
    EXPECT_EQ(details.text.text(), LightweightString<wchar_t>(L"A label that is much too long for it"));
    button->setString(L"Short");
    EXPECT_FALSE(button->getTooltipDetails({1, 1}, details));
    button->setSecondString(L"Down");
    button->setState(buttonDown, eRedrawYes);
    EXPECT_EQ(Driver::describe(*button).name, LightweightString<wchar_t>(L"Down"));
    EXPECT_TRUE(Driver::describe(*button).states & GlobDescription::pressed);
    Button* const flat = show(new Button(L"x", "m", 40, 7), 20, 100);
    EXPECT_FALSE(driver_.painted(flat) &&
                 driver_.pixel(flat, {20, 3}) == flat->getPalette().text(eTextEnabled).getAsLong());
}

TEST_F(Buttons, IndicatorsAndIconsStandAtTheirEnd) {
    Button* const button = addButton(L" ");
    driver_.moveTo({390, 390});
    // The columns that show something.
    auto const ink = [&](eButtonStyle style, TextAlignment alignment) {
        button->setStyle(style);
        button->setAlignment(alignment);
        button->makeDirty();
        driver_.settle();
        XY<int> columns{80, 0};
        for (int x = 2; x < 78; ++x)
            for (int y = 3; y < 21; ++y)
                if (driver_.pixel(button, {x, y}) != driver_.pixel(button, {6, 3}))
                    columns = {std::min(columns.x, x), x + 1};
        return columns;
    };
    XY<int> const folding = ink(eButtonFolding, eAlignCentre);
    XY<int> const dropDown = ink(eButtonDropDown, eAlignCentre);
    EXPECT_NEAR(folding.x + folding.y, 2 * (80 - 8), 2);
    EXPECT_NEAR(dropDown.x + dropDown.y, 2 * (80 - 8), 2);
    UifStd::Metrics metrics;
    metrics.utilityFontSize = 18;
    UifStd::setMetrics(metrics);
    EXPECT_EQ(ink(eButtonFolding, eAlignCentre), folding);
    EXPECT_NE(ink(eButtonDropDown, eAlignCentre), dropDown) << "in the utility font's size";
    button->setIcons(L"led_red.png", L"");
    XY<int> const icon = ink(eButtonStandard, eAlignLeft);
    EXPECT_NEAR(icon.x + icon.y, 2 * (80 - 12) - Glib::loadIcon(L"led_red.png")->size().x, 2);
    UifStd::setMetrics({});
}

TEST_F(Buttons, StylesIconsAndCustomDrawing) {
    Button* const button = addButton();
    static Button const* drawn = nullptr;
    button->setCustomDrawFn([](Button const& which) { drawn = &which; });
    driver_.settle();
    EXPECT_EQ(drawn, button);
    auto* const ground = show(new StandardPanel(XY<int>{100, 40}), 230, 10);
    ground->setCol(Colour::fromLong(0xFF0000));
    auto* const flat = addTo(ground, new Button(L"", "m", 60, 24), BottomLeft(20, 10));
    flat->setStyle(eButtonFlat);
    driver_.settle();
    EXPECT_EQ(driver_.pixel(flat, {30, 12}), 0xFF0000u) << "it has no face at rest";
    auto* const edged = show(new CustomBorderButton(L"", "m", 60, 24), 150, 20);
    edged->setCustomBorderColours(Colour::fromLong(0xFF0000), Colour::fromLong(0x00FF00));
    driver_.settle();
    EXPECT_EQ(driver_.pixel(edged, {30, 0}), 0xFF0000u);
    edged->setState(buttonDown, eRedrawYes);
    driver_.settle();
    EXPECT_EQ(driver_.pixel(edged, {30, 0}), 0x00FF00u);
    edged->setUseCustomBorderColour(false);
    driver_.settle();
    EXPECT_NE(driver_.pixel(edged, {30, 0}), 0x00FF00u);
}

TEST_F(Buttons, CommandsAndTitleButtons) {
    expectDiagnostic("unknown command");
    int runs = 0;
    CommandRegistrar const save("save", L"Save all", [&](Cmd::Context const&) { ++runs; });
    KeybindingManager::instance().assignKey(Key::ctrl | 'S', "save");
    auto* const command = show(new CommandButton("save", 0, 24));
    EXPECT_EQ(command->getString().text(), LightweightString<wchar_t>(L"Save all"));
    driver_.click(command);
    EXPECT_EQ(runs, 1);
    TooltipDetails details;
    ASSERT_TRUE(command->getTooltipDetails({1, 1}, details));
    EXPECT_EQ(details.more.text(), LightweightString<wchar_t>(L"Ctrl+S"));
    EXPECT_EQ(details.text.text(), LightweightString<wchar_t>(L"Save all"));
    auto* const unknown = show(new CommandButton("nothing", 60, 24, L"x"), 20, 60);
    driver_.click(unknown);
    EXPECT_EQ(runs, 1);

    auto* const pin = show(new PinButton(Palette()), 20, 100);
    driver_.click(pin);
    EXPECT_TRUE(static_cast<iStateButton*>(pin)->isDown());
    driver_.click(show(new PootButton(Palette()), 60, 100));
    EXPECT_EQ(sent(), "poot");
}

} // namespace
} // namespace wainscot
