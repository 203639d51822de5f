#include "tests/panel_fixture.h"

#include "host/windows/look.h"

namespace wainscot {
namespace {

using enum StandardPanel::StandardWidgetFlags;
using namespace PanelMetrics;
using PanelFrames = PanelTest;

TEST_F(PanelFrames, TheTitleStripMovesAMovablePanelWithinReach) {
    ProbePanel* const panel = add(Border::window, closeWidget);
    dragIn(panel, {20, 140}, {30, -20});
    EXPECT_EQ(panel->box().bottomLeft(), XY<int>(100, 100)) << "it is not movable";
    panel->setMovable(true);
    dragIn(panel, {20, 140}, {30, -20});
    EXPECT_EQ(panel->box().bottomLeft(), XY<int>(130, 80));
    EXPECT_FALSE(panel->isMoving());
    dragIn(panel, {20, 20}, {30, 0});
    EXPECT_EQ(panel->box().bottomLeft(), XY<int>(130, 80)) << "its body is no handle";
    dragIn(panel, {20, 140}, {-4000, 4000});
    EXPECT_EQ(panel->box().bottomLeft(), XY<int>(B - 200, 250)) << "part of the strip stays";
    panel->setScreenPos(root_->globXYToScreenXY({100, 100}));
    dragIn(panel, {20, 140}, {4000, -4000});
    EXPECT_EQ(panel->box().bottomLeft(), XY<int>(500 - B, 2 * edge + B - 150));
    panel->setScreenPos(root_->globXYToScreenXY({100, 100}));

    moveIn(panel, 20, 140);
    driver_.press();
    moveIn(panel, 60, 140);
    EXPECT_EQ(panel->contextCursor({20, 140}), moveCursor);
    driver_.key(Key::escape);
    driver_.release();
    EXPECT_EQ(panel->box().bottomLeft(), XY<int>(100, 100)) << "Escape takes it back";
    EXPECT_EQ(panel->contextCursor({20, 140}), inheritCursor);
    panel->log.clear();
    panel->answers["press"] = 1;
    dragIn(panel, {20, 140}, {30, 0});
    EXPECT_EQ(panel->box().bottomLeft(), XY<int>(100, 100)) << "the handler comes first";
}

TEST_F(PanelFrames, EdgesAndCornersResizeAResizablePanel) {
    ProbePanel* const panel = add(Border::window, closeWidget);
    EXPECT_EQ(panel->contextCursor({1, 70}), inheritCursor);
    dragIn(panel, {1, 70}, {-30, 0});
    EXPECT_EQ(panel->box(), IntBox(100, 100, 300, 250)) << "only when it was asked for";
    panel->setResizable(true);
    EXPECT_EQ(panel->contextCursor({1, 70}), sizeHorizontalCursor);
    EXPECT_EQ(panel->contextCursor({100, 1}), sizeVerticalCursor);
    EXPECT_EQ(panel->contextCursor({1, 1}), sizeRisingCursor);
    EXPECT_EQ(panel->contextCursor({195, 149}), sizeRisingCursor);
    EXPECT_EQ(panel->contextCursor({1, 140}), sizeFallingCursor);
    EXPECT_EQ(panel->contextCursor({199, 10}), sizeFallingCursor);
    EXPECT_EQ(panel->contextCursor({100, 70}), inheritCursor);

    dragIn(panel, {1, 70}, {-30, 9});
    EXPECT_EQ(panel->box(), IntBox(70, 100, 300, 250));
    dragIn(panel, {229, 1}, {20, -10});
    EXPECT_EQ(panel->box(), IntBox(70, 90, 320, 250));
    dragIn(panel, {100, 159}, {0, 5});
    EXPECT_EQ(panel->box(), IntBox(70, 90, 320, 255));
    moveIn(panel, 1, 20);
    driver_.press();
    moveIn(panel, -20, 20);
    driver_.key(Key::escape);
    driver_.release();
    EXPECT_EQ(panel->box(), IntBox(70, 90, 320, 255)) << "Escape takes it back";
    panel->setMinSize(100, 80);
    dragIn(panel, {1, 1}, {4000, 4000});
    EXPECT_EQ(panel->box(), IntBox(220, 175, 320, 255)) << "the far corner stays";
    panel->setMinSize(0, 0);
    dragIn(panel, {1, 1}, {4000, 4000});
    EXPECT_EQ(panel->size(), XY<int>(2 * edge + B, 2 * edge + B + 4 * I)) << "room for strip and widgets";
    panel->grid = 50;
    dragIn(panel, {1, 20}, {-99, 0});
    EXPECT_EQ(panel->width(), 100) << "as the panel constrains it";
}

TEST_F(PanelFrames, MinimisingLeavesTheStripAndComesBack) {
    ProbePanel* const panel = add(Border::window, sizeWidget | settingsWidget | doItWidget);
    Glob* const shown = panel->addChild(new ProbeGlob(20, 20), BottomLeft(10, 10));
    Glob* const hidden = panel->addChild(new ProbeGlob(20, 20), BottomLeft(40, 10));
    hidden->setVisible(false);
    driver_.click(panel->getStandardWidget(StandardWidget::size));
    EXPECT_EQ(panel->height(), 150) << "not asked for";
    panel->setMinimisable(true);
    driver_.click(panel->getStandardWidget(StandardWidget::size));
    EXPECT_EQ(panel->box(), IntBox(100, 250 - 2 * edge - B, 300, 250));
    EXPECT_EQ(panel->getSizeFlag(), sizeMinimised);
    EXPECT_TRUE(dynamic_cast<iStateButton*>(panel->getStandardWidget(StandardWidget::settings))->isDown());
    EXPECT_FALSE(shown->isVisible());
    EXPECT_FALSE(panel->getStandardWidget(StandardWidget::doIt)->isVisible());
    driver_.click(panel->getStandardWidget(StandardWidget::size));
    EXPECT_EQ(panel->box(), IntBox(100, 100, 300, 250));
    EXPECT_TRUE(shown->isVisible());
    EXPECT_FALSE(hidden->isVisible());
    EXPECT_EQ(panel->getSizeFlag(), sizeFull);
    panel->answers["flip"] = 1;
    driver_.click(panel->getStandardWidget(StandardWidget::size));
    EXPECT_EQ(panel->height(), 150) << "the handler has done something else";
}

TEST_F(PanelFrames, EveryBorderIsSeenAndLeavesTheMiddleAlone) {
    std::array<bool, Border::group + 1> isLit{};
    for (double const radius : {0.0, 8.0})
        for (double const scale : {1.0, 1.5, 2.0})
            for (int kind = Border::none; kind <= Border::group; ++kind) {
                Look::setDeviceScale(scale);
                // Round lines of 1.5 pixels are 2 pixels of the screen.
                int const inside = scale == 1.5 ? edge + 1 : edge;
                ProbePanel* const panel = add(static_cast<Border::eType>(kind));
                panel->set_radius(radius);
                driver_.settle();
                std::uint32_t const body = panel->getcol().getAsLong();
                EXPECT_EQ(driver_.pixel(panel, {100, 75}), body);
                EXPECT_EQ(driver_.pixel(panel, {inside, 75}), body)
                    << kind << " the border keeps to its width";
                EXPECT_EQ(driver_.pixel(panel, {0, 75}) == body, kind == Border::none)
                    << kind << " " << radius;
                EXPECT_EQ(driver_.pixel(panel, {199, 75}) == body, kind == Border::none)
                    << kind << " " << radius;
                std::uint32_t const corner =
                    radius > 0.0 ? root_->getCol().getAsLong() : driver_.pixel(panel, {0, 0});
                EXPECT_EQ(driver_.pixel(panel, {0, 0}), corner) << kind;
                if (radius == 0.0)
                    isLit[std::size_t(kind)] =
                        driver_.pixel(panel, {100, 149}) != driver_.pixel(panel, {100, 0});
                else
                    EXPECT_EQ(driver_.pixel(panel, {0, 120}) != driver_.pixel(panel, {0, 30}),
                              isLit[std::size_t(kind)])
                        << kind << ": the light fades along the sides";
                delete panel;
            }
    Look::setDeviceScale(1.0);
}

TEST_F(PanelFrames, AGrooveLeavesOutItsTitle) {
    ProbePanel* const panel = add(Border::group);
    panel->setTitle(L"i");
    driver_.settle();
    int const y = 150 - edge - B / 2 - 1;
    std::uint32_t const body = panel->getcol().getAsLong();
    EXPECT_NE(driver_.pixel(panel, {150, y}), body);
    EXPECT_EQ(driver_.pixel(panel, {edge + I - 2, y}), body);
    EXPECT_EQ(driver_.pixel(panel, {100, 149}), body) << "nothing above it";
    panel->eraseRectangle({140, 0, 400, 400}, Colour(1, 0, 0));
    EXPECT_EQ(driver_.pixel(panel, {100, 75}), body);
    panel->makeDirty();
}

} // namespace
} // namespace wainscot
