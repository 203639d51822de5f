#include "host/backends/desktop/desktop_pointer_p.h"
#include "host/backends/desktop/desktop_scale_p.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace wainscot;
using Button = InputEvent::Button;

TEST(DesktopPointer, PressesInQuickSuccessionAreCountedToThree) {
    ClickCounter clicks;
    EXPECT_EQ(clicks.press(1, Button::left, {50, 50}, 1000.0), 1);
    EXPECT_EQ(clicks.press(1, Button::left, {54, 46}, 1500.0), 2);
    EXPECT_EQ(clicks.press(1, Button::left, {50, 50}, 1900.0), 3);
    EXPECT_EQ(clicks.press(1, Button::left, {50, 50}, 2000.0), 1);
}

TEST(DesktopPointer, PressesApartBeginAnew) {
    ClickCounter clicks;
    clicks.press(1, Button::left, {50, 50}, 1000.0);
    EXPECT_EQ(clicks.press(1, Button::left, {50, 50}, 1500.5), 1) << "too late";
    EXPECT_EQ(clicks.press(1, Button::left, {55, 50}, 1600.0), 1) << "too far";
    EXPECT_EQ(clicks.press(1, Button::right, {55, 50}, 1700.0), 1) << "another button";
    EXPECT_EQ(clicks.press(2, Button::right, {55, 50}, 1800.0), 1) << "another window";
    EXPECT_EQ(clicks.press(2, Button::right, {58, 50}, 1900.0), 2);
    EXPECT_EQ(clicks.press(2, Button::right, {61, 50}, 2000.0), 1) << "the series wanders";
}

TEST(DesktopPointer, WheelMotionIsSummedToWholeNotches) {
    WheelSum wheel;
    EXPECT_EQ(wheel.add(1.0), 1);
    EXPECT_EQ(wheel.add(-2.0), -2);
    int notches = 0;
    for (int i = 0; i < 100; ++i) notches += wheel.add(0.1);
    EXPECT_EQ(notches, 10);
    EXPECT_EQ(wheel.add(0.6), 0);
    EXPECT_EQ(wheel.add(-0.6), 0) << "a turn back forgets the fraction";
    EXPECT_EQ(wheel.add(-0.4), -1);
    EXPECT_EQ(wheel.add(2.75), 2);
    EXPECT_EQ(wheel.add(0.25), 1);
}

TEST(DesktopPointer, BrokenWheelsDoNoHarm) {
    WheelSum wheel;
    EXPECT_EQ(wheel.add(1e9), WheelSum::most);
    EXPECT_EQ(wheel.add(-1e9), -WheelSum::most);
    EXPECT_EQ(wheel.add(std::numeric_limits<double>::quiet_NaN()), 0);
    EXPECT_EQ(wheel.add(std::numeric_limits<double>::infinity()), 0);
    EXPECT_EQ(wheel.add(1.0), 1);
}

TEST(DesktopScale, SettingThenResourcesThenOne) {
    EXPECT_EQ(chooseDeviceScale("1.5", "Xft.dpi:\t192\n"), 1.5);
    EXPECT_EQ(chooseDeviceScale(nullptr, "*foo: 1\nXft.dpi:\t192\nXft.dpi2: 96"), 2.0);
    EXPECT_EQ(chooseDeviceScale("", "Xft.dpi: 118"), 1.25);
    EXPECT_EQ(chooseDeviceScale(nullptr, "XXft.dpi: 192\nXft.antialias: 1"), 1.0);
    EXPECT_EQ(chooseDeviceScale(nullptr, nullptr), 1.0);
    for (char const* const nonsense : {"0", "-2", "nan", "inf", "big", " "})
        EXPECT_EQ(chooseDeviceScale(nonsense, nonsense), 1.0) << nonsense;
    EXPECT_EQ(chooseDeviceScale("1000", nullptr), 4.0);
}

TEST(DesktopScale, LogicalLengthsSurviveTheWayToTheDevice) {
    for (double const scale : {1.0, 1.25, 1.5, 1.75, 2.0, 3.0, 4.0})
        for (int length = 0; length < 2000; ++length)
            ASSERT_EQ(toLogical(toDevice(length, scale), scale), length) << "scale " << scale;
}

TEST(DesktopScale, RootSpaceHasItsOriginAtTheLowerLeft) {
    DeviceRect const desktop = DeviceRect{0, 0, 1024, 768}.unitedWith({1024, -100, 800, 600});
    EXPECT_EQ(desktop, (DeviceRect{0, -100, 1824, 868}));
    RootSpace const space(desktop, 1.0);
    EXPECT_EQ(space.toRoot({0, 0, 1024, 768}), IntBox(0, 0, 1024, 768));
    EXPECT_EQ(space.toRoot({1024, -100, 800, 600}), IntBox(1024, 268, 1824, 868));
    IntBox const window = space.toRoot({100, 100, 300, 200});
    EXPECT_EQ(window, IntBox(100, 468, 400, 668));
    EXPECT_EQ(space.toDeviceCorner(window.bottomLeft(), 200), (XY<int>{100, 100}));
    EXPECT_EQ(space.pixelInWindow(window, {0, 0}), (XY<int>{100, 667}));
    EXPECT_EQ(space.pixelInWindow(window, {299, 199}), (XY<int>{399, 468}));
    EXPECT_EQ(space.pixelInWindow(window, {-1, 200}), (XY<int>{99, 467}));
}

TEST(DesktopScale, RootSpaceIsLogical) {
    RootSpace const space({0, 0, 2048, 1536}, 2.0);
    IntBox const window = space.toRoot({200, 200, 600, 400});
    EXPECT_EQ(window, IntBox(100, 468, 400, 668));
    EXPECT_EQ(space.toDeviceCorner({100, 468}, 400), (XY<int>{200, 200}));
    EXPECT_EQ(space.pixelInWindow(window, {1, 1}), (XY<int>{100, 667}));
    EXPECT_EQ(space.pixelInWindow(window, {2, 2}), (XY<int>{101, 666}));
    EXPECT_EQ(space.pixelInWindow(window, {599, 399}), (XY<int>{399, 468}));
    EXPECT_EQ(space.pixelInWindow(window, {-1, -1}), (XY<int>{99, 668}));
}

TEST(DesktopScale, APixelBelongsToTheLogicalOneThatCoversIt) {
    for (double const scale : {1.0, 1.25, 1.5, 1.75, 2.0, 2.25}) {
        RootSpace const space({0, 0, 4000, 3000}, scale);
        IntBox const window(0, 0, 201, 101);
        int const height = toDevice(101, scale);
        for (int logical = 0; logical < 101; ++logical) {
            for (int pixel = toDevice(logical, scale); pixel < toDevice(logical + 1, scale); ++pixel)
                ASSERT_EQ(space.pixelInWindow(window, {pixel, height - 1 - pixel}),
                          (XY<int>{logical, logical}))
                    << "scale " << scale << " pixel " << pixel;
        }
    }
}
