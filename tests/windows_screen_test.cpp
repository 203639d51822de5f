#include "tests/host_fixture.h"

#include "host/base/convert.h"
#include "host/drawing/uif_std.h"
#include "host/windows/look.h"
#include "host/windows/screen.h"
#include "host/windows/screen_places_p.h"

#include <cmath>
#include <random>

namespace wainscot {
namespace {

class Screen : public HostTest {
protected:
    GlobManager& manager() { return host_->globManager(); }
    void setMonitors(std::vector<IntBox> const& monitors) {
        host_->offscreen()->setMonitors(monitors);
        driver_.settle();
    }
    bool liesOnOne(IntBox const& box) {
        auto const all = manager().monitors();
        return std::any_of(all.begin(), all.end(), [&](IntBox const& m) { return m.contains(box); });
    }
};

/// Side by side, on top of each other, and three of different sizes with gaps and a step.
std::vector<std::vector<IntBox>> const layouts{
    {{0, 0, 1920, 1080}, {1920, 0, 3840, 1080}, {3840, 0, 5120, 1024}},
    {{0, 0, 1280, 1024}, {0, 1024, 1920, 2104}, {-800, 300, 0, 900}},
    {{0, 400, 1000, 1200}, {1100, 0, 3020, 1080}, {900, 1300, 2500, 2200}},
};

TEST_F(Screen, EveryPopUpLiesWhollyOnTheMonitorOfItsAnchor) {
    std::mt19937 random(20260719);
    auto const between = [&](int low, int high) {
        return std::uniform_int_distribution<int>(low, high)(random);
    };
    RecordingParent* const window = openWindow(50, 50, {10, 10});
    int opened = 0, moved = 0;
    for (auto const& layout : layouts) {
        setMonitors(layout);
        for (int i = 0; i < 1000; ++i) {
            IntBox const monitor = manager().monitors()[static_cast<std::size_t>(between(0, 2))];
            XY<int> const corner{between(monitor.x1, monitor.x2 - 1), between(monitor.y1, monitor.y2 - 1)};
            IntBox const anchor = IntBox::sized(corner, {std::min(between(1, 300), monitor.x2 - corner.x),
                                                         std::min(between(1, 40), monitor.y2 - corner.y)});
            auto* const popUp = new Glob(toSize16(between(1, 600)), toSize16(between(1, 590)));
            PopUpOptions options;
            options.anchor = anchor;
            options.place = XY<int>{between(-9000, 9000), between(-9000, 9000)};
            ASSERT_TRUE(manager().openPopUp(popUp, options));
            ++opened;
            moved += popUp->screenBox().bottomLeft() != *options.place;
            ASSERT_TRUE(monitor.contains(popUp->screenBox())) << i;
            ASSERT_EQ(nativeOf(popUp)->place(), popUp->screenBox().bottomLeft());
            for (int side = 0; side < 4; ++side) {
                bool opposite = false;
                auto const relativity = static_cast<WidgetRelativity>(side);
                XY<int> const safe = manager().getSafePosForGlob(
                    GlobCreationInfo(toSize16(popUp->width()), toSize16(popUp->height())), anchor, relativity,
                    between(0, 5), static_cast<WidgetAlignment>(between(0, 2)), &opposite);
                ASSERT_TRUE(monitor.contains(IntBox::sized(safe, popUp->size()))) << i << " " << side;
                XY<int> const exact = manager().calcPosForGlob(popUp->size(), anchor, relativity);
                IntBox const box = IntBox::sized(exact, popUp->size());
                if (exact.y >= 0) {
                    ASSERT_TRUE(monitor.contains(box));
                    ASSERT_FALSE(box.intersects(anchor));
                }
            }
            destroy(popUp);
        }
    }
    EXPECT_EQ(opened, 3000);
    EXPECT_GT(moved, 2000);
    destroy(window);
}

TEST_F(Screen, SafePlacesGoToTheOtherSideWhereThereIsNoRoom) {
    RecordingParent* const window = openWindow(400, 300, {1500, 700});
    auto* const row = addTo(window, new ProbeGlob(100, 20), BottomLeft(250, 100));
    GlobCreationInfo const menu(300, 200);
    bool opposite = false;
    EXPECT_EQ(manager().getPosForGlob(menu, RightOf(2, row)), (XY<int>{1852, 800}));
    EXPECT_EQ(manager().getSafePosForGlob(menu, RightOf(2, row), &opposite), (XY<int>{1448, 800}));
    EXPECT_TRUE(opposite);
    EXPECT_EQ(manager().getSafePosForGlob(menu, LeftOf(2, row), &opposite), (XY<int>{1448, 800}));
    EXPECT_FALSE(opposite);
    EXPECT_EQ(manager().getSafePosForGlob(menu, Below(0, row), &opposite), (XY<int>{1620, 600}))
        << "moved along the edge";
    EXPECT_FALSE(opposite);
    EXPECT_EQ(manager().getPosForGlob(menu, TopRight(10, 20)), (XY<int>{1610, 860}));
    EXPECT_EQ(manager().getSafePosForGlob(menu, TopRight(-10, 20)), (XY<int>{1620, 860}));
    // One that has no room on either side lies where there is more.
    EXPECT_EQ(manager().getSafePosForGlob({1800, 20}, RightOf(0, row), &opposite), (XY<int>{0, 800}));
    EXPECT_TRUE(opposite);
    EXPECT_EQ(manager().calcPosForGlob({100, 200}, row->screenBox()), (XY<int>{1750, 600}));
    EXPECT_LT(manager().calcPosForGlob({100, 801}, row->screenBox()).y, 0) << "no room below";
    EXPECT_EQ(manager().calcPosForGlob({100, 260}, row->screenBox(), WidgetRelativity::above),
              (XY<int>{1750, 820}));
    EXPECT_LT(manager().calcPosForGlob({2000, 10}, row->screenBox()).y, 0);
}

TEST_F(Screen, WhatIsTooLargeOrFarAwayKeepsItsUpperLeftCorner) {
    IntBox const monitor(100, 100, 500, 400);
    EXPECT_EQ(ScreenPlaces::movedOnto(monitor, IntBox(0, 0, 1000, 1000)), IntBox(100, -600, 1100, 400));
    EXPECT_EQ(ScreenPlaces::monitorOf({monitor, {500, 0, 900, 400}}, IntBox(450, 0, 520, 300)), monitor);
    EXPECT_EQ(ScreenPlaces::monitorOf({monitor, {500, 0, 900, 400}}, IntBox(5000, 5000, 5000, 5000)),
              IntBox(500, 0, 900, 400));
    constexpr int low = std::numeric_limits<int>::min();
    constexpr int high = std::numeric_limits<int>::max();
    for (IntBox const& anchor : {IntBox(low, low, low + 9, low + 9), IntBox(high - 9, high - 9, high, high),
                                 IntBox(low, low, high, high), IntBox(high, high, low, low)})
        for (auto side : {WidgetRelativity::above, WidgetRelativity::below, WidgetRelativity::leftOf,
                          WidgetRelativity::rightOf})
            for (auto alignment : {WidgetAlignment::start, WidgetAlignment::centre, WidgetAlignment::end})
                for (int gap : {low, 0, high}) {
                    IntBox const on = ScreenPlaces::monitorOf({monitor, {500, 0, 900, 400}}, anchor);
                    IntBox const box = ScreenPlaces::besideOn(on, anchor, {60, 40}, side, gap, alignment).box;
                    EXPECT_TRUE(on.contains(box)) << anchor.x1 << " " << gap;
                }
}

/// A pixel more than there is room for turns it round; each side is as far from the anchor as the others.
TEST_F(Screen, APopUpTurnsRoundWhereItsSideHasNoRoom) {
    IntBox const monitor(100, 100, 500, 500);
    IntBox const anchor(190, 190, 410, 410);
    for (auto side : {WidgetRelativity::above, WidgetRelativity::below, WidgetRelativity::leftOf,
                      WidgetRelativity::rightOf})
        for (int const missing : {0, 1}) {
            // The other side has ten pixels more.
            IntBox larger = monitor;
            if (side == WidgetRelativity::above) larger.y1 -= 10;
            if (side == WidgetRelativity::below) larger.y2 += 10;
            if (side == WidgetRelativity::leftOf) larger.x2 += 10;
            if (side == WidgetRelativity::rightOf) larger.x1 -= 10;
            int const length = 90 - 5 + missing;
            auto const found =
                ScreenPlaces::besideOn(larger, anchor, {length, length}, side, 5, WidgetAlignment::centre);
            EXPECT_EQ(found.opposite, missing == 1) << static_cast<int>(side);
            EXPECT_TRUE(larger.contains(found.box) && !found.box.intersects(anchor));
        }
}

TEST_F(Screen, PlacesOfWindows) {
    setMonitors(layouts[0]);
    EXPECT_EQ(glib_getRootWindowWidth(), 5120);
    EXPECT_EQ(glib_getRootWindowHeight(), 1080);
    RecordingParent* const window = openWindow(400, 300, {4000, 100});
    EXPECT_EQ(glib_getMonitorWidth(), 1280);
    EXPECT_EQ(glib_getMonitorHeight(), 1024);
    EXPECT_EQ(glib_getMonitorBox(window->screenBox()), layouts[0][2]);
    EXPECT_EQ(glib_getPosForWindow({200, 100}), (XY<int>{4100, 200}));
    EXPECT_EQ(glib_getConstrainedPosForWindow(nullptr, {1900, -20}, {100, 50}), (XY<int>{1920, 0}));
    EXPECT_EQ(glib_getConstrainedPosForWindow(window->canvas(), {-5000, 9000}, {100, 50}),
              (XY<int>{3840, 974}))
        << "seen nowhere: on the window's monitor";
    setupRootPos(window->canvas(), {5000, -50});
    EXPECT_EQ(window->screenBox().bottomLeft(), (XY<int>{4720, 0}));
    auto* const panel = new RecordingParent(100, 50);
    ASSERT_TRUE(manager().redisplay(panel, {1920, 1080}, CoordinateOrigin::topRight, false));
    EXPECT_EQ(panel->screenBox(), IntBox(1820, 1030, 1920, 1080));
    panel->setVisible(false);
    ASSERT_TRUE(manager().redisplay(panel, {500, 500}, CoordinateOrigin::centre, true));
    EXPECT_EQ(panel->screenBox(), IntBox(450, 475, 550, 525));
    EXPECT_TRUE(panel->isVisible());
    EXPECT_TRUE(canvas_is_topmost(panel->canvas()));
    manager().canvasKeepTopmost(window->canvas(), true);
    EXPECT_TRUE(nativeOf(window)->keepsAbove());
    panel->popToTop();
    EXPECT_FALSE(canvas_is_topmost(panel->canvas()));
    manager().canvasKeepTopmost(window->canvas(), false);
    panel->popToTop();
    EXPECT_TRUE(canvas_is_topmost(panel->canvas()));
    expectDiagnostic("window refused");
    EXPECT_FALSE(manager().redisplay(nullptr, {0, 0}, CoordinateOrigin::centre, true));
}

TEST_F(Screen, WhatLiesUnderThePointerAndUnderAnEvent) {
    RecordingParent* const window = openWindow(400, 300, {100, 100});
    auto* const child = addTo(window, new ProbeGlob(60, 40), BottomLeft(10, 10));
    EXPECT_EQ(event_to_glob(Event(EventKind::mouseMove, {120, 120})), child);
    EXPECT_EQ(event_to_glob(Event(EventKind::mouseMove, {90, 120})), nullptr);
    driver_.moveTo({300, 300});
    EXPECT_EQ(glib_getCurrentMouseCanvas(), window->canvas());
    window->reshapeWidgetAt(child, {250, 250}, {100, 40});
    EXPECT_EQ(child->box(), IntBox(250, 250, 350, 290));
    driver_.moveTo({360, 360});
    EXPECT_EQ(glib_getCurrentMouseCanvas(), child->canvas());
}

TEST_F(Screen, WindowsComeBackWhenTheirMonitorGoes) {
    setMonitors(layouts[0]);
    RecordingParent* const window = openWindow(400, 300, {4000, 100});
    auto* const popUp = new ProbeGlob(50, 50);
    popUp->onMessage = [popUp](LightweightString<char> const&, Glob*) { return delete popUp, 1; };
    ASSERT_TRUE(manager().openPopUp(popUp, {}));
    setMonitors({{0, 0, 1920, 1080}});
    EXPECT_EQ(window->screenBox(), IntBox(1520, 100, 1920, 400));
    EXPECT_FALSE(manager().popUps().isOpen());
}

TEST_F(Screen, WindowsFitOnTheirMonitor) {
    setMonitors({{0, 0, 800, 600}});
    RecordingParent* const window = openWindow(1000, 700, {0, 0});
    EXPECT_EQ(window->size(), (XY<int>{800, 600}));
    setMonitors({{0, 0, 400, 500}});
    EXPECT_EQ(window->screenBox(), IntBox(0, 0, 400, 500));
}

/// Computes its height from the metrics, as widgets do.
class MeasuredGlob : public ProbeGlob {
public:
    MeasuredGlob() : ProbeGlob(100, UifStd::getButtonHeight()) {}
    void handleLookChange(LookChange what) override {
        ++changes;
        last = what;
        if (auto const act = std::exchange(onChange, {}))
            act();
        else
            resize(width(), UifStd::getButtonHeight());
    }
    /// Once, instead of that.
    std::function<void()> onChange;
    int changes = 0;
    LookChange last = LookChange::none;
};

TEST_F(Screen, ChangesOfTheLookReachEveryObjectOfEveryWindow) {
    RecordingParent* const first = openWindow(400, 300, {0, 0});
    RecordingParent* const second = openWindow(400, 300, {500, 0});
    std::vector<MeasuredGlob*> measured;
    for (RecordingParent* root : {first, second}) {
        auto* const panel = addTo(root, new ProbeGlob(200, 200), TopLeft(0, 0));
        measured.push_back(addTo(panel, new MeasuredGlob(), TopLeft(0, 0)));
        addTo(panel, new ProbeGlob(10, 10), Below(0, measured.back()));
    }
    driver_.settle();
    std::uint32_t const dark = driver_.pixel(first, {300, 10});
    int const height = measured[0]->height();
    Look::setTheme(eThemeLight);
    driver_.settle();
    EXPECT_EQ(measured[0]->changes + measured[1]->changes, 2);
    EXPECT_EQ(measured[0]->last, LookChange::theme);
    EXPECT_NE(driver_.pixel(first, {300, 10}), dark);
    EXPECT_NE(driver_.pixel(second, {300, 10}), dark);
    Look::setTheme(eThemeDark);
    Look::setSize(2.0);
    driver_.settle();
    EXPECT_EQ(driver_.pixel(first, {300, 10}), dark);
    EXPECT_EQ(measured[0]->height(), 2 * height);
    EXPECT_EQ(measured[0]->last, LookChange::textSize);
    EXPECT_EQ(measured[1]->nextSibling()->box().y2, 200 - 2 * height) << "laid out again";
    Look::setSize(1.0);
    Look::setDeviceScale(2.0);
    EXPECT_EQ(measured[0]->last, LookChange::deviceScale);
    EXPECT_EQ(Look::deviceScale(), 2.0);
    Look::broadcast(LookChange::fonts);
    EXPECT_EQ(measured[1]->last, LookChange::fonts);
    measured[0]->onChange = [&] {
        Look::setSize(1.5);
        Look::setTheme(eThemeLight);
    };
    Look::broadcast(LookChange::fonts);
    EXPECT_EQ(measured[1]->last, LookChange::theme | LookChange::textSize) << "an answer, told together";
    EXPECT_TRUE(includes(measured[1]->last, LookChange::theme));
    EXPECT_FALSE(includes(measured[1]->last, LookChange::fonts));
    Look::setSize(1.0);
    Look::setTheme(eThemeDark);
    driver_.settle();
    for (RecordingParent* root : {first, second}) {
        EXPECT_EQ(root->size(), (XY<int>{400, 300}));
        EXPECT_EQ(manager().windowOf(root)->surface().deviceSize(), (XY<int>{800, 600}));
        EXPECT_EQ(driver_.pixel(root, {399, 299}), dark) << "painted to the last corner";
    }
    expectDiagnostic("scale refused");
    for (double const nonsense : {0.0, -1.0, std::nan(""), HUGE_VAL}) Look::setDeviceScale(nonsense);
    EXPECT_EQ(host_->backend().deviceScale(), 2.0);
    RecordingParent* const third = openWindow(100, 100, {950, 0});
    EXPECT_EQ(manager().windowOf(third)->surface().deviceSize(), (XY<int>{200, 200}));
    UifStd::Metrics metrics;
    metrics.buttonHeight = 30;
    Look::setMetrics(metrics);
    EXPECT_EQ(measured[0]->last, LookChange::metrics);
}

} // namespace
} // namespace wainscot
