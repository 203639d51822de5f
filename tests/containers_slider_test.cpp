#include "tests/controls.h"
#include "tests/widget_fixture.h"

#include "foundation/glob_tab_stop.h"
#include "foundation/tab_order_manager.h"
#include "foundation/val_server_adaptor.h"

#include <cmath>
#include <limits>

namespace wainscot {
namespace {

constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

class Sliders : public WidgetTest {
protected:
    Slider* add(double minimum, double maximum, double value, Orientation orientation = eHorizontal) {
        return show(newSlider(value, minimum, maximum, orientation));
    }
    XY<int> placeOf(Slider* slider, int along) {
        int const across = UifStd::getButtonHeight() / 2;
        bool const flat = slider->getOrientation() == eHorizontal;
        return slider->globXYToScreenXY(flat ? XY<int>{along + margin_, across}
                                             : XY<int>{across, along + margin_});
    }
    using WidgetTest::pressAt;
    void pressAt(Slider* slider, int along, Driver::Button button = Driver::Button::left) {
        driver_.moveTo(placeOf(slider, along));
        driver_.press(button);
    }
    void moveAlong(Slider* slider, int along) { driver_.moveTo(placeOf(slider, along)); }

    int const margin_ = UifStd::getIndentWidth();
};

TEST_F(Sliders, PixelsAndValuesMapBothWaysOnAnyRange) {
    expectDiagnostic("no number");
    Slider* const slider = add(10, 30, 20);
    EXPECT_EQ(slider->v2x(10), margin_);
    EXPECT_EQ(slider->v2x(30), margin_ + 200);
    EXPECT_EQ(slider->x2v(margin_ + 50), 15);
    EXPECT_TRUE(slider->setValueRange(30, 10));
    EXPECT_EQ(slider->x2v(margin_ + 50), 25) << "a falling range";
    EXPECT_FALSE(slider->setValueRange(0, infinity));
    EXPECT_FALSE(slider->setValueRange(noNumber, 1));
    EXPECT_EQ(slider->getMinimum(), 30);
    EXPECT_TRUE(slider->setValueRange(5, 5));
    EXPECT_EQ(slider->getWidgetValue(), 5) << "an empty range";
    EXPECT_EQ(slider->v2x(7), margin_);
    EXPECT_EQ(slider->x2v(100), 5);
    double const huge = std::numeric_limits<double>::max();
    EXPECT_TRUE(slider->setValueRange(-huge, huge));
    EXPECT_EQ(slider->v2x(0), margin_ + 100);
    EXPECT_EQ(slider->x2v(margin_ + 100), 0);
    EXPECT_EQ(slider->x2v(noNumber), -huge);
    slider->setPosition(noNumber);
    EXPECT_EQ(slider->getWidgetValue(), 5);
    slider->setPosition(-infinity);
    EXPECT_EQ(slider->getWidgetValue(), -huge);
    EXPECT_TRUE(slider->nudge(true));
    slider->resize(0, 0);
    EXPECT_EQ(slider->x2v(0), -huge) << "an empty channel";
    EXPECT_THAT(told(), testing::MatchesRegex("slider -.* slider_released -.*"));
}

TEST_F(Sliders, RoundingAnswersThousandthsAndTheExactEnds) {
    Slider* const slider = add(0, 1, 0);
    slider->setRounding(true);
    slider->setValueRange(0.0003, 0.9);
    EXPECT_EQ(slider->x2v(margin_), 0.0003);
    EXPECT_EQ(slider->x2v(margin_ + 200), 0.9);
    EXPECT_EQ(slider->x2v(margin_ + 10), 0.049) << "of 0.045285 and 0.0497835";
    slider->setValueRange(0.9, 0.0003);
    EXPECT_EQ(slider->x2v(margin_ + 10), 0.855) << "of 0.855015 and 0.8505165";
    slider->setValueRange(0, 0.01);
    double const here = 0.01 * 33 / 200;
    EXPECT_DOUBLE_EQ(slider->x2v(margin_ + 33), here) << "never below the pixel's own value";
    double last = -1;
    for (int x = 0; x <= 200; ++x) {
        EXPECT_GE(slider->x2v(margin_ + x), last) << x;
        last = slider->x2v(margin_ + x);
    }
}

TEST_F(Sliders, DraggingReportsEachChangeAndTheRelease) {
    for (Orientation const orientation : {eHorizontal, eVertical}) {
        Slider* const slider = add(0, 2, 1, orientation);
        auto const adaptor = Qv::makePtr<TestData<double>>();
        slider->setDataAdaptor(adaptor);
        auto const button = orientation == eHorizontal ? Driver::Button::left : Driver::Button::right;
        pressAt(slider, 102, button);
        EXPECT_TRUE(slider->isThumbHeld());
        moveAlong(slider, 152);
        EXPECT_DOUBLE_EQ(slider->getWidgetValue(), 1.5) << "the thumb does not jump under the pointer";
        moveAlong(slider, 1000);
        moveAlong(slider, 1100);
        driver_.release(button);
        EXPECT_THAT(adaptor->asked, ElementsAre(1.5, 2, 2));
        EXPECT_THAT(adaptor->whys, ElementsAre(0, 1, 2));
        EXPECT_EQ(told(), "slider 1.500000 slider 2.000000 slider_released 2.000000");
        EXPECT_FALSE(slider->isThumbHeld());

        adaptor->asked.clear();
        pressAt(slider, 197);
        driver_.release();
        EXPECT_EQ(told(), "slider_released 2.000000");
        EXPECT_THAT(adaptor->asked, IsEmpty()) << "nothing has changed";
        pressAt(slider, 60);
        driver_.release();
        EXPECT_EQ(slider->getWidgetValue(), 2) << "a press beside the thumb";
        EXPECT_EQ(told(), "");

        destroy(slider);
        told();
    }
}

TEST_F(Sliders, ItIsNotHeldWhereThereIsNoThumbOrNobodyMayMoveIt) {
    Slider* const slider = add(0, 1, 0.5);
    pressAt(slider, 100);
    slider->setThumbVisibility(false);
    moveAlong(slider, 150);
    driver_.release();
    slider->setThumbVisibility(true);
    EXPECT_EQ(slider->getWidgetValue(), 0.5);
    EXPECT_FALSE(slider->isThumbHeld());
    EXPECT_EQ(told(), "");
}

TEST_F(Sliders, KeysNudgeItWhileItIsTheTabStop) {
    Slider* const slider = add(0, 500, 250);
    TabOrderManager tabs(false);
    GlobTabStop stop(*slider);
    tabs.addTabStop(stop);
    stop.setTabStopFocus();
    ASSERT_EQ(get_kbd_focus(), slider);
    auto const keyed = [&](std::uint32_t key) {
        driver_.key(key);
        return slider->getWidgetValue();
    };
    EXPECT_EQ(keyed(Key::right), 251);
    EXPECT_EQ(told(), "slider 251.000000 slider_released 251.000000");
    EXPECT_EQ(keyed(Key::up), 252);
    EXPECT_EQ(keyed(Key::left), 251);
    EXPECT_EQ(keyed(Key::down), 250);
    EXPECT_EQ(keyed(Key::pageUp), 300) << "a tenth";
    EXPECT_EQ(keyed(Key::pageDown), 250);
    EXPECT_EQ(keyed(Key::home), 0);
    EXPECT_EQ(keyed(Key::end), 500);
    told();
    auto const adaptor = Qv::makePtr<TestData<double>>();
    slider->setDataAdaptor(adaptor);
    EXPECT_FALSE(slider->nudge(true));
    EXPECT_EQ(keyed(Key::right), 500);
    EXPECT_EQ(told(), "") << "nothing lies beyond the maximum";
    EXPECT_THAT(adaptor->asked, IsEmpty());
    slider->setValueRange(500, 0);
    EXPECT_EQ(keyed(Key::right), 499) << "towards the maximum, also where that is less";
    EXPECT_THAT(adaptor->asked, ElementsAre(499));
}

TEST_F(Sliders, PointsOfInterestTakeTheThumb) {
    expectDiagnostic("no number");
    Slider* const slider = add(0, 1, 0.5);
    slider->setPointsOfInterest(
        {{0.1, Colour(1, 0, 0)}, {noNumber, Colour()}, {0.11, Colour(1, 0, 0)}, {9, Colour()}});
    EXPECT_EQ(slider->getPointsOfInterest().size(), 3u);
    slider->setPointOfInterest(0.9);
    slider->setPointOfInterest(infinity);
    EXPECT_EQ(slider->getPointOfInterest(), 0.9);
    driver_.settle();
    EXPECT_EQ(driver_.pixel(slider, {margin_ + 20, 1}), 0xFF0000u);
    pressAt(slider, 23);
    driver_.release();
    EXPECT_EQ(slider->getWidgetValue(), 0.11) << "the nearest one";
    EXPECT_EQ(told(), "slider 0.110000 slider_released 0.110000");
    pressAt(slider, 178, Driver::Button::right);
    driver_.release(Driver::Button::right);
    pressAt(slider, 60);
    driver_.release();
    EXPECT_EQ(slider->getWidgetValue(), 0.11);
    pressAt(slider, 178);
    driver_.release();
    EXPECT_EQ(slider->getWidgetValue(), 0.9);
    slider->removePointOfInterest();
    EXPECT_FALSE(slider->getPointOfInterest());
}

TEST_F(Sliders, TheThumbStaysInsideAndAnswersThePointer) {
    Slider* const slider = add(0, 1, 0);
    for (int const height : {1, 2, 5, 6, 24}) {
        slider->resize(slider->width(), height);
        for (double const value : {0.0, 1.0, 0.5}) {
            slider->setPosition(value);
            EXPECT_FALSE(slider->getThumbArea().isEmpty()) << height;
            EXPECT_TRUE(slider->bounds().contains(slider->getThumbArea())) << height << " " << value;
        }
    }
    driver_.moveTo({5, 5});
    driver_.settle();
    XY<int> const centre{margin_ + 100, UifStd::getButtonHeight() / 2};
    std::uint32_t const atRest = driver_.pixel(slider, centre);
    EXPECT_NE(atRest, driver_.pixel(slider, {margin_ + 50, centre.y}));
    pressAt(slider, 100);
    driver_.settle();
    EXPECT_NE(driver_.pixel(slider, centre), atRest);
    driver_.release();
    driver_.moveTo({5, 5});
    slider->setPosition(0.8);
    driver_.settle();
    EXPECT_EQ(driver_.pixel(slider, centre), driver_.pixel(slider, {margin_ + 50, centre.y}));
    EXPECT_EQ(driver_.pixel(slider, {margin_ + 160, centre.y}), atRest);
    EXPECT_EQ(driver_.find(Role::slider, L""), slider);
}

TEST_F(Sliders, WhatTheDataRefusesIsNotReported) {
    ScrollBar* const bar = show(newBar(eHorizontal, {0.25, 0.25}));
    auto const ofBar = Qv::makePtr<TestData<ThumbSettings>>();
    bar->setDataAdaptor(ofBar);
    Slider* const slider = show(newSlider(0.5), 20, 120);
    auto const ofSlider = Qv::makePtr<TestData<double>>();
    slider->setDataAdaptor(ofSlider);
    pressAt(bar, 70);
    moveIn(bar, 80, midY);
    EXPECT_EQ(told(), "ScrollBar::thumbMoved");
    ofBar->accepts = false;
    moveIn(bar, 100, midY);
    EXPECT_EQ(bar->getThumbPos(), ofBar->value.position) << "what was taken last";
    EXPECT_EQ(told(), "");
    driver_.key(Key::escape);
    EXPECT_EQ(bar->getThumbPos(), ofBar->value.position) << "that was refused, too";
    driver_.release();
    EXPECT_EQ(told(), "ScrollBar::thumbReleased");
    pressAt(slider, 100);
    moveAlong(slider, 120);
    ofSlider->accepts = false;
    moveAlong(slider, 140);
    driver_.release();
    EXPECT_NEAR(slider->getWidgetValue(), 0.6, 1e-9);
    EXPECT_EQ(slider->getWidgetValue(), ofSlider->value);
    EXPECT_EQ(told(), "slider 0.600000 slider_released 0.600000");
}

/// A server whose guard takes multiples of a step only.
template <class T>
class Steps final : public iValGuard<T>, public Qv::InternalRefCount {
public:
    explicit Steps(double step) : step_(step) {}
    bool requestValChange(ValServer<T>*, T& value) override {
        if constexpr (std::is_same_v<T, double>)
            value = snapped(value);
        else
            value.position = snapped(value.position);
        return true;
    }

private:
    double snapped(double value) const { return std::round(value / step_) * step_; }
    double step_;
};

TEST_F(Sliders, WhatTheDataMakesOfAValueIsReported) {
    ValServer<ThumbSettings> thumb({0.2, 0.25});
    ValServer<double> value(0.5);
    thumb.setGuard(Qv::makePtr<Steps<ThumbSettings>>(0.2));
    value.setGuard(Qv::makePtr<Steps<double>>(0.1));
    ScrollBar* const bar = show(newBar(eHorizontal, {}));
    Slider* const slider = show(newSlider(0), 20, 120);
    bindToServer(*bar, thumb);
    bindToServer(*slider, value);
    pressAt(bar, 60);
    moveIn(bar, 110, midY);
    EXPECT_NEAR(bar->getThumbPos(), 0.4, 1e-9);
    EXPECT_EQ(told(), "ScrollBar::thumbMoved");
    for (int x = 111; x <= 150; ++x) moveIn(bar, x, midY);
    EXPECT_NEAR(bar->getThumbPos(), 0.6, 1e-9) << "small steps add up";
    EXPECT_EQ(told(), "ScrollBar::thumbMoved");
    driver_.key(Key::escape);
    EXPECT_EQ(told(), "ScrollBar::thumbMoved ScrollBar::thumbReleased");
    driver_.release();
    pressAt(bar, 180);
    driver_.release();
    EXPECT_NEAR(bar->getThumbPos(), 0.4, 1e-9) << "a page of 0.25";
    EXPECT_EQ(told(), "ScrollBar::thumbMoved");
    pressAt(slider, 100);
    moveAlong(slider, 104);
    EXPECT_EQ(told(), "") << "it has not moved";
    moveAlong(slider, 114);
    driver_.release();
    EXPECT_EQ(told(), "slider 0.600000 slider_released 0.600000");
    EXPECT_TRUE(slider->changePosition(0.87));
    EXPECT_FALSE(slider->nudge(true));
    EXPECT_EQ(told(), "slider 0.900000 slider_released 0.900000");
}

TEST_F(Sliders, DataMayDestroyAnythingWhenWhatIsHeldIsMovedOrTakenOut) {
    expectDiagnostic("keyboard focus refused");
    expectDiagnostic("tree operation refused");
    expectDiagnostic("message not handled");
    for (int victim = 0; victim < 5; ++victim) {
        for (bool const moves : {true, false}) {
            Glob* const from = show(new Glob(300, 100), 20, 0);
            Glob* const to = show(new Glob(300, 100), 20, 200);
            Slider* const slider = show(newSlider(0.5), 20, 120);
            from->addChild(slider, BottomLeft(10, 10));
            driver_.settle();
            auto const data = Qv::makePtr<TestData<double>>();
            slider->setDataAdaptor(data);
            pressAt(slider, 100);
            moveAlong(slider, 120);
            data->onAsk = [&] {
                if (victim == 0) destroy(slider);
                if (victim == 1) destroy(from);
                if (victim == 2) destroy(to);
                if (victim == 3) root_->addChild(slider, BottomLeft(0, 0));
                if (victim == 4) slider->claimKbdFocus();
            };
            std::unique_ptr<Glob> taken;
            if (moves)
                to->addChild(slider, BottomLeft(0, 0));
            else
                taken = from->takeWidget(slider);
            data->onAsk = {};
            EXPECT_THAT(data->whys, ElementsAre(0, 2));
            EXPECT_EQ(is_good_glob_ptr(slider), victim != 0 && !(moves && victim == 2)) << victim;
            EXPECT_FALSE(taken && get_kbd_focus() == slider);
            driver_.release();
            taken.reset();
            for (Glob* const glob : {static_cast<Glob*>(slider), from, to}) destroy(glob);
            driver_.settle();
        }
    }
}

TEST_F(Sliders, AnotherAdaptorHearsNothingOfAnEarlierStart) {
    Slider* const slider = show(newSlider(0.5), 20, 120);
    auto const first = Qv::makePtr<TestData<double>>();
    auto const second = Qv::makePtr<TestData<double>>();
    slider->setDataAdaptor(first);
    pressAt(slider, 100);
    moveAlong(slider, 120);
    slider->setDataAdaptor(second);
    moveAlong(slider, 130);
    slider->claimKbdFocus();
    driver_.key(Key::right);
    driver_.release();
    EXPECT_THAT(first->whys, ElementsAre(0, 2));
    EXPECT_THAT(second->whys, ElementsAre(0, 2)) << "a key does nothing to what is held";
}

TEST_F(Sliders, DraggedValuesComeOutRound) {
    Slider* const slider = show(newSlider(0), 20, 120);
    slider->setRounding(true);
    for (auto const& [low, high] : {std::pair{0.0, 1.0}, {-1.0, 1.0}, {0.0, 100.0}, {-60.0, 12.0}}) {
        slider->setValueRange(low, high);
        for (int x = 1; x < 199; ++x) {
            double const exact = low + (high - low) * (x + 1) / 200;
            double const round = std::round(exact * 1000) / 1000;
            if (std::abs(exact - round) > 1e-9) continue;
            EXPECT_NEAR(slider->x2v(4 + x), round, 1e-9) << low << " to " << high;
        }
    }
    slider->setValueRange(-1e307, 1e307);
    EXPECT_TRUE(std::isfinite(slider->x2v(60)));
}

} // namespace
} // namespace wainscot
