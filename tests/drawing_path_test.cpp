#include "host/base/diagnostics.h"
#include "host/drawing/path.h"
#include "host/drawing/pen.h"
#include "tests/drawing_fixture.h"

#include <cmath>
#include <gtest/gtest.h>

namespace wainscot {
namespace {

using testing::PaintedWindow;

constexpr std::uint32_t white = 0xFFFFFFFF;
constexpr std::uint32_t red = 0xFFFF0000;

class PathDrawing : public ::testing::Test {
protected:
    PathDrawing() {
        glib_setcanvas(&window.canvas);
        glib_setcolour({1, 0, 0});
        glib_newpath();
    }
    std::size_t ink() const { return window.pixelCount() - window.countOf(white); }

    Glib::StateSaver saver;
    PaintedWindow window{{60, 50}};
};

TEST_F(PathDrawing, FillsAndStrokesInCanvasCoordinates) {
    window.place.origin = {4, 2};
    glib_addrect(10, 5, 20, 10);
    glib_fill();
    EXPECT_EQ(window.countOf(red), 200U);
    EXPECT_EQ(window.inkBox(), IntBox(14, 50 - 17, 34, 50 - 7));
    EXPECT_FALSE(window.surface.toPresent().empty());
    window.clear();
    glib_setlinewidth(2);
    glib_stroke();
    EXPECT_EQ(window.surface.pixelAt({14, 12}), red);
    EXPECT_EQ(window.surface.pixelAt({24, 12}), white);
}

TEST_F(PathDrawing, ArcsRunCounterClockwise) {
    glib_moveto(20, 20);
    glib_arc1(20, 20, 15, 0, 90);
    glib_closepath();
    glib_fill();
    EXPECT_EQ(window.surface.pixelAt({28, 28}), red);
    EXPECT_EQ(window.surface.pixelAt({28, 12}), white);
    EXPECT_NEAR(static_cast<double>(window.countOf(red)), 3.14159 / 4 * 225, 25);
    window.clear();
    glib_newpath();
    glib_addsoftrect(5, 5, 30, 20, 6);
    glib_fill();
    EXPECT_EQ(window.inkBox(), IntBox(5, 25, 35, 45));
    EXPECT_EQ(window.surface.pixelAt({5, 5}), white);
    EXPECT_NEAR(static_cast<double>(ink()), 600 - 0.86 * 36, 24);
}

TEST_F(PathDrawing, ManyTurnsCoverOneCircleAndCostNoMore) {
    glib_setlinewidth(500);
    glib_arc1(30, 25, 10, -1e9, 1e9);
    for (int i = 0; i < 20; ++i) glib_stroke();
    EXPECT_GT(window.countOf(red), window.pixelCount() / 2);
    for (double const to : {360.0, 3600.0}) {
        window.clear();
        glib_newpath();
        glib_arc1(30, 25, 10, 0, to);
        glib_fill();
        EXPECT_EQ(window.inkBox(), IntBox(20, 15, 40, 35)) << to;
    }
    // The end stays where the angle leads: a quarter after whole turns.
    window.clear();
    glib_newpath();
    glib_setlinewidth(2);
    glib_arc1(30, 25, 10, 0, 10 * 360 + 90);
    glib_lineto(30, 48);
    glib_stroke();
    EXPECT_EQ(window.surface.pixelAt({30, 42}), red);
}

TEST_F(PathDrawing, StateIsSavedAndRestored) {
    glib_moveto(1, 1);
    {
        Glib::StateSaver inner;
        glib_gsave();
        glib_translate(30, 0);
        glib_setcolour({0, 0, 1});
        glib_rect(0, 0, 5, 5);
        EXPECT_EQ(window.surface.pixelAt({31, 1}), 0xFF0000FFU);
        glib_setcanvas(nullptr);
        glib_rect(0, 0, 60, 50);
    }
    EXPECT_EQ(ink(), 25U);
    glib_rect(0, 0, 2, 2);
    EXPECT_EQ(window.surface.pixelAt({1, 1}), red);
    auto const refused = Diagnostics::countOf("drawing state");
    glib_grestore();
    EXPECT_EQ(Diagnostics::countOf("drawing state"), refused + 1);
    Diagnostics::reset();
}

TEST_F(PathDrawing, ADeadCanvasIsForgotten) {
    auto other = std::make_unique<PaintedWindow>();
    glib_setcanvas(&other->canvas);
    glib_setrootcanvas(&other->canvas);
    Pen pen(&other->canvas, nullptr, nullptr, 0, 0);
    EXPECT_EQ(glib_currentcanvas(), glib_rootcanvas());
    other.reset();
    EXPECT_EQ(glib_currentcanvas(), nullptr);
    EXPECT_EQ(glib_rootcanvas(), nullptr);
    glib_rect(0, 0, 10, 10);
    pen.draw_filled_box({0, 0, 10, 10});
    glib_lineto(std::nan(""), 1e300);
    glib_stroke();
}

TEST_F(PathDrawing, CopiesOverlappingPixels) {
    for (XY<int> const by : {XY<int>(3, 0), XY<int>(0, 4), XY<int>(-2, -3)}) {
        window.clear();
        glib_rect(10, 10, 8, 8);
        glib_setcolour({0, 0, 1});
        glib_rect(12, 13, 2, 1);
        glib_setcolour({1, 0, 0});
        glib_copy({10, 10, 18, 18}, XY<int>(10, 10) + by);
        EXPECT_EQ(window.surface.pixelAt(XY<int>(12, 13) + by), 0xFF0000FFU);
        EXPECT_EQ(window.surface.pixelAt(XY<int>(17, 17) + by), red);
        EXPECT_EQ(ink(), static_cast<std::size_t>(128 - (8 - std::abs(by.x)) * (8 - std::abs(by.y))));
    }
    glib_copy({50, 40, 90, 90}, {0, 0});
    EXPECT_EQ(window.surface.pixelAt({9, 9}), white);
}

TEST_F(PathDrawing, RoundedOutlineHonoursTheOffset) {
    glib_translate(10, 5);
    glib_roundedRectOutline({0, 0, 30, 20}, 5, 2);
    EXPECT_EQ(window.inkBox(), IntBox(10, 25, 40, 45));
    EXPECT_EQ(window.surface.pixelAt({25, 6}), red);
    EXPECT_EQ(window.surface.pixelAt({25, 15}), white);
    EXPECT_EQ(window.surface.pixelAt({10, 5}), white);
}

TEST_F(PathDrawing, PenWritesAndMeasures) {
    Colour const colour(1, 0, 0);
    Pen pen(&window.canvas, &colour, "DejaVu Sans", 14, Glib::eFontBold);
    pen.draw_filled_box({2, 3, 5, 9});
    EXPECT_EQ(window.countOf(red), 18U);
    window.clear();
    pen.writeTextAt(L"HH", {10, 10});
    EXPECT_EQ(pen.font(), window.canvas.createFont({"DejaVu Sans", 14, Glib::eFontBold}));
    EXPECT_NEAR(window.inkBox().width(), pen.text_width(L"HH"), 3);
    EXPECT_EQ(window.inkBox().y2, 40);
    std::size_t const once = ink();
    pen.write_text_at_xy(L"HH", 10, 30);
    EXPECT_EQ(ink(), 2 * once);
    int const before = pen.measure(L"HH").y;
    pen.set_font_height(28);
    EXPECT_NEAR(pen.measure(L"HH").y, 2 * before, 2);
    pen.set_font("DejaVu Sans Mono");
    EXPECT_TRUE(pen.font()->isFixedPitch());
}

} // namespace
} // namespace wainscot
