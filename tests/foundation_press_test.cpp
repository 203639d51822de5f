#include "tests/controls.h"
#include "tests/widget_fixture.h"

#include "foundation/glob_tab_stop.h"
#include "foundation/tab_order_manager.h"
#include "host/events/one_shot_timer.h"

#include <stdexcept>

namespace wainscot {
namespace {

class Presses : public WidgetTest {
protected:
    Slider* addSlider() { return show(newSlider(0.5), 20, 100); }
    static XY<int> thumb(Slider const& slider) {
        return slider.globXYToScreenXY(slider.getThumbArea().centre());
    }
};

class ThrowingAdaptor final : public ValAdaptorBase<double> {
public:
    double getDataValue() const override { return 0; }
    bool requestSetNewDataValue(double const&, DataChangeType why) override {
        if (why == DataChangeType::finished) throw std::runtime_error("no end");
        return true;
    }
};

TEST_F(Presses, WhoLosesTheFocusMayEndThem) {
    Slider* const slider = addSlider();
    auto* const before = show(new ProbeGlob, 300, 20);
    before->claimKbdFocus();
    before->onFocus = [slider] {
        slider->setActive(false);
        slider->setActive(true);
    };
    driver_.moveTo(thumb(*slider));
    driver_.press();
    EXPECT_FALSE(slider->isThumbHeld());
    driver_.release();
}

TEST_F(Presses, AnEndThatThrowsHindersNobody) {
    Slider* const slider = addSlider();
    slider->setDataAdaptor(Qv::makePtr<ThrowingAdaptor>());
    driver_.moveTo(thumb(*slider));
    driver_.press();
    driver_.moveTo(thumb(*slider) + XY<int>{20, 0});
    EXPECT_THROW(slider->setActive(false), std::runtime_error);
    EXPECT_FALSE(slider->isActive() || slider->isThumbHeld());
    driver_.release();
}

TEST_F(Presses, WhatIsAStopItselfIsNotStoppedAtTwice) {
    TabOrderManager order(false);
    Slider* const slider = addSlider();
    auto* const button = show(newButton());
    GlobTabStop companion(*slider);
    for (TabOrderable* const stop : {static_cast<TabOrderable*>(&companion),
                                     static_cast<TabOrderable*>(slider), static_cast<TabOrderable*>(button)})
        order.addTabStop(*stop);
    order.incrementTabStop();
    EXPECT_EQ(get_kbd_focus(), slider);
    order.incrementTabStop();
    EXPECT_EQ(get_kbd_focus(), button);
}

TEST_F(Presses, ATimerCallsOnceAndMayDieInItsCall) {
    std::unique_ptr<OneShotTimer> timer;
    int calls = 0;
    timer = std::make_unique<OneShotTimer>([&] {
        if (++calls == 1) return timer->start(50);
        timer.reset();
    });
    timer->start(100);
    driver_.advance(99);
    EXPECT_TRUE(timer->isRunning() && calls == 0);
    driver_.advance(1000);
    EXPECT_EQ(calls, 2);
    EXPECT_FALSE(timer);
    OneShotTimer stopped([&] { ++calls; });
    stopped.start(10);
    stopped.stop();
    driver_.advance(100);
    EXPECT_TRUE(calls == 2 && !stopped.isRunning());
}

} // namespace
} // namespace wainscot
