#include "tests/widget_fixture.h"

#include "buttons/button.h"
#include "buttons/standard_buttons.h"
#include "foundation/standard_panel.h"
#include "host/drawing/uif_std.h"

namespace wainscot {
namespace {

class RoughButtons : public WidgetTest {
protected:
    Button* add(Glob* parent, int events = Button::onMouseUp) {
        auto* const button = addTo(parent, new Button(L"Apply", "apply", 80, 24), BottomLeft(20, 20));
        button->setCallbackEvents(static_cast<unsigned>(events));
        driver_.settle();
        return button;
    }
    void onReport(Button* button, std::function<void()> act) {
        button->setCallback(calling([act](NotifyMsg const&) { act(); }));
    }
};

TEST_F(RoughButtons, WhatALatchingButtonHasReportedStaysWhenItIsDisabledOrHidden) {
    for (bool hides : {false, true}) {
        Button* const button = add(root_);
        button->setLatching(true, false);
        onReport(button, [&] { hides ? button->setVisible(false) : button->setActive(false); });
        driver_.press(button);
        driver_.release();
        EXPECT_TRUE(button->isDown()) << hides;
        button->setVisible(true);
        button->setActive(true);
        driver_.settle();
        driver_.click(button);
        EXPECT_FALSE(button->isDown()) << hides;
        destroy(button);
    }
}

TEST_F(RoughButtons, AButtonWhosePanelItsReportHidesIsUpWhenItComesBack) {
    for (bool const byKey : {false, true}) {
        auto* const panel = addTo(root_, new RecordingParent(200, 100), BottomLeft(10, 10));
        Button* const button = add(panel, Button::onMouseDown);
        onReport(button, [&] { panel->setVisible(false); });
        button->claimKbdFocus();
        byKey ? driver_.key(Key::space) : driver_.click(button);
        panel->setVisible(true);
        driver_.settle();
        EXPECT_FALSE(button->isDown()) << byKey;
        destroy(panel);
    }
}

TEST_F(RoughButtons, ASharedCanvasChangesNothing) {
    auto* const panel = addTo(root_, new RecordingParent(200, 100), BottomLeft(30, 40));
    auto* const button =
        addTo(panel, new Button(L"b", "shared", 60, 24, true, panel->canvas()), BottomLeft(100, 50));
    driver_.settle();
    driver_.click(button);
    EXPECT_EQ(panel->names(), "shared");
    EXPECT_TRUE(button->isTabStopActive());
    button->claimKbdFocus();
    driver_.key(Key::space);
    EXPECT_EQ(panel->names(), "shared shared");
    driver_.press(button);
    driver_.moveTo(button->globXYToScreenXY({-1, 12}));
    EXPECT_FALSE(button->isDown());
    driver_.moveTo(button->globXYToScreenXY({60, 24}));
    EXPECT_TRUE(button->isDown());
    driver_.release();
    EXPECT_EQ(panel->names(), "shared shared shared");
    button->setCols(Colour::fromLong(0xFFFFFF), Colour::fromLong(0x204060));
    button->setString(L"");
    driver_.moveTo({100, 390});
    driver_.settle();
    EXPECT_EQ(driver_.pixel(button, {8, 8}), 0x204060u);
    panel->setVisible(false);
    EXPECT_FALSE(button->isTabStopActive());
    panel->setVisible(true);
    DispatchScope const scope;
    destroy(button);
    EXPECT_FALSE(button->isTabStopActive()) << "gone, though its memory waits";
}

TEST_F(RoughButtons, AButtonThatIgnoresClicksFromItsPressOnIsUp) {
    Button* const button = add(root_, Button::onMouseDown);
    onReport(button, [&] { button->setIgnoreMouseClicks(true); });
    driver_.click(button);
    EXPECT_FALSE(button->isDown());
    button->setIgnoreMouseClicks(false);
    driver_.press(button);
    EXPECT_FALSE(button->isDown());
    driver_.release();
}

TEST_F(RoughButtons, SettersInsideTheReportTakeEffect) {
    Button* const button = add(root_, 3);
    int reports = 0;
    onReport(button, [&] {
        ++reports;
        button->setLatching(reports % 2 == 1, false);
        button->setRepeating(reports % 3, 0.1);
        button->setMessageOnDrag(reports % 2 == 0);
        button->setIgnoreMouseClicks(reports == 3);
        button->setString(L"x");
        button->setCallbackEvents(3);
        button->setPayload(wrapData(reports));
    });
    for (int i = 0; i < 8; ++i) {
        driver_.press(button);
        driver_.advance(50);
        driver_.moveTo(button->globXYToScreenXY({200, 100}));
        driver_.release();
    }
    EXPECT_GE(reports, 3);
    button->setState(buttonUp, eRedrawYes);
}

} // namespace

TEST(HostlessButton, WorksWithoutAHost) {
    Button button(L"Label", "m", 0, 0);
    int codes = 0;
    button.setCallback(WidgetCallback(makeCallback<int, NotifyMsg>([&](NotifyMsg const& message) {
                                          codes += message.code();
                                          return 1;
                                      }),
                                      ""));
    button.setRepeating(5, 1.0);
    button.react(Event(EventKind::leftPress, XY<int>{3, 3}));
    EXPECT_TRUE(button.isDown());
    button.react(Event(EventKind::timer));
    button.react(Event(EventKind::leftRelease, XY<int>{3, 3}));
    EXPECT_EQ(codes, Button::codeUp);
    button.react(Event(EventKind::keyPress, Key::space));
    button.handleTabStopFocusReceipt(TabOrderable::forward);
    button.handleTabStopFocusLoss();
    button.setCallback(WidgetCallback("again"));
    button.switchState(buttonDown, true);
    button.setActive(false);
    button.setVisible(false);
}

} // namespace wainscot
