#include "tests/widget_fixture.h"

#include "containers/slider.h"
#include "foundation/glob_tab_stop.h"
#include "foundation/tab_order_manager.h"
#include "foundation/val_server_adaptor.h"
#include "host/drawing/uif_std.h"

#include <limits>

namespace wainscot {
namespace {

constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

/// Channels of 200 pixels.
class Sliders : public WidgetTest {
protected:
    Slider* add(double minimum, double maximum, double value, Orientation orientation = eHorizontal) {
        Slider::InitArgs args(Colour(0.4, 0.5, 0.6), static_cast<unsigned short>(200 + margin_), orientation);
        args.minimum = minimum;
        args.maximum = maximum;
        args.value = value;
        auto* const slider = new Slider(args);
        root_->addChild(slider, BottomLeft(20, 20));
        driver_.settle();
        root_->forgetMessages();
        return slider;
    }
    XY<int> placeOf(Slider* slider, int along) {
        int const across = UifStd::getButtonHeight() / 2;
        bool const flat = slider->getOrientation() == eHorizontal;
        return slider->globXYToScreenXY(flat ? XY<int>{along + margin_, across}
                                             : XY<int>{across, along + margin_});
    }
    void pressAt(Slider* slider, int along, Driver::Button button = Driver::Button::left) {
        driver_.moveTo(placeOf(slider, along));
        driver_.press(button);
    }
    void moveAlong(Slider* slider, int along) { driver_.moveTo(placeOf(slider, along)); }
    std::vector<std::string> sent() {
        std::vector<std::string> names;
        for (auto const& message : root_->messages()) names.push_back(message.name.c_str());
        root_->forgetMessages();
        return names;
    }

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
    driver_.settle();
    EXPECT_THAT(sent(),
                ElementsAre(testing::StartsWith("slider -"), testing::StartsWith("slider_released -")));
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
        EXPECT_THAT(sent(), ElementsAre("slider 1.500000", "slider 2.000000", "slider_released 2.000000"));
        EXPECT_FALSE(slider->isThumbHeld());

        adaptor->asked.clear();
        pressAt(slider, 197);
        driver_.release();
        EXPECT_THAT(sent(), ElementsAre("slider_released 2.000000"));
        EXPECT_THAT(adaptor->asked, IsEmpty()) << "nothing has changed";
        pressAt(slider, 60);
        driver_.release();
        EXPECT_EQ(slider->getWidgetValue(), 2) << "a press beside the thumb";
        EXPECT_THAT(sent(), IsEmpty());

        destroy(slider);
        driver_.settle();
        sent();
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
    EXPECT_THAT(sent(), IsEmpty());
    slider->setActive(false);
    pressAt(slider, 100);
    EXPECT_FALSE(slider->isThumbHeld());
    driver_.release();
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
    EXPECT_THAT(sent(), ElementsAre("slider 251.000000", "slider_released 251.000000"));
    EXPECT_EQ(keyed(Key::up), 252);
    EXPECT_EQ(keyed(Key::left), 251);
    EXPECT_EQ(keyed(Key::down), 250);
    EXPECT_EQ(keyed(Key::home), 0);
    EXPECT_EQ(keyed(Key::end), 500);
    sent();
    auto const adaptor = Qv::makePtr<TestData<double>>();
    slider->setDataAdaptor(adaptor);
    EXPECT_FALSE(slider->nudge(true));
    EXPECT_EQ(keyed(Key::right), 500);
    EXPECT_THAT(sent(), IsEmpty()) << "nothing lies beyond the maximum";
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
    EXPECT_THAT(sent(), ElementsAre("slider 0.110000", "slider_released 0.110000"));
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
    for (double const value : {0.0, 0.5, 1.0}) {
        slider->setPosition(value);
        EXPECT_TRUE(slider->bounds().contains(slider->getThumbArea())) << value;
    }
    slider->setPosition(0.5);
    driver_.moveTo({5, 5});
    driver_.settle();
    XY<int> const middle{margin_ + 100, UifStd::getButtonHeight() / 2};
    std::uint32_t const atRest = driver_.pixel(slider, middle);
    EXPECT_NE(atRest, driver_.pixel(slider, {margin_ + 50, middle.y}));
    pressAt(slider, 100);
    driver_.settle();
    EXPECT_NE(driver_.pixel(slider, middle), atRest);
    driver_.release();
    driver_.moveTo({5, 5});
    slider->setPosition(0.8);
    driver_.settle();
    EXPECT_EQ(driver_.pixel(slider, middle), driver_.pixel(slider, {margin_ + 50, middle.y}));
    EXPECT_EQ(driver_.pixel(slider, {margin_ + 160, middle.y}), atRest);
    EXPECT_EQ(driver_.find(Role::slider, L""), slider);
}

} // namespace
} // namespace wainscot
