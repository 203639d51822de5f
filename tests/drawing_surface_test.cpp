#include "host/base/diagnostics.h"
#include "host/drawing/drawable.h"
#include "host/drawing/shapes.h"
#include "tests/drawing_fixture.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>
#include <string>

namespace wainscot {
namespace {

using testing::PaintedWindow;

constexpr std::uint32_t white = 0xFFFFFFFF;
constexpr std::uint32_t red = 0xFFFF0000;
Colour const redInk(1, 0, 0);

void fill(CanvasRenderer& renderer, IntBox const& box, double opacity = 1.0) {
    renderer.renderPrimitive(Glib::RectDescription(box, redInk, opacity));
}

void fill(PaintedWindow& window, IntBox const& box) {
    window.draw(Glib::RectDescription(box, redInk));
}

TEST(Damage, NeverLosesAPixelAndKeepsFewBoxes) {
    std::mt19937 random(7);
    auto const next = [&](int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); };
    for (int round = 0; round < 200; ++round) {
        Damage damage;
        std::vector<IntBox> added;
        for (int i = 0; i < 60; ++i) {
            added.push_back(IntBox::sized({next(60), next(60)}, {next(12), next(12)}));
            damage.add(added.back());
        }
        ASSERT_LE(damage.boxes().size(), Damage::maxBoxes);
        for (IntBox const& box : added)
            for (int i = 0; i < box.width() * box.height(); ++i)
                ASSERT_TRUE(damage.intersects(
                    IntBox::sized({box.x1 + i % box.width(), box.y1 + i / box.width()}, {1, 1})))
                    << round;
    }
}

TEST(Damage, JoinsWhatFitsAndDropsWhatIsCovered) {
    Damage damage;
    damage.add({0, 0, 10, 10});
    damage.add({2, 2, 5, 5});
    damage.add({10, 0, 20, 10});
    damage.add({3, 3, 3, 9});
    EXPECT_EQ(damage.boxes(), std::vector<IntBox>{IntBox(0, 0, 20, 10)});
    damage.add({100, 100, 101, 101});
    EXPECT_EQ(damage.boxes().size(), 2U);
    EXPECT_EQ(damage.take().size(), 2U);
    EXPECT_TRUE(damage.empty());
}

TEST(Surface, NeighboursShareAnEdgeAtEveryScale) {
    for (double const scale : {1.0, 1.25, 1.5, 1.75, 2.0, 3.0}) {
        PaintedWindow window({40, 30}, scale);
        // Half-transparent neighbours: a gap stays white, an overlap turns darker.
        window.paint([](CanvasRenderer& renderer) {
            for (int x = 0; x < 40; ++x)
                for (int y = 0; y < 30; y += 3) fill(renderer, {x, y, x + 1, y + 3}, 0.5);
        });
        EXPECT_EQ(window.countOf(window.device(0, 0)), window.pixelCount()) << scale;
        EXPECT_NE(window.device(0, 0), white);
        EXPECT_EQ(window.surface.deviceBox({7, 5, 9, 8}).x1, std::floor(7 * scale + 0.5));
        EXPECT_EQ(window.surface.deviceBox({0, 0, 1, 1}).y2, window.surface.deviceSize().y);
    }
}

TEST(Surface, ClampsSizesAndDamagesAllOnResize) {
    Surface surface({0, -5}, std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(surface.size(), XY<int>(1, 1));
    surface.toPresent().add({0, 0, 1, 1});
    surface.resize({1 << 30, 10}, 2.0);
    EXPECT_TRUE(surface.toPresent().empty());
    EXPECT_EQ(surface.deviceSize(), XY<int>(Surface::maxDeviceExtent, 20));
    EXPECT_EQ(surface.toPaint().bounds(), surface.bounds());
    surface.toPaint().clear();
    surface.resize({1 << 30, 10}, 2.0);
    EXPECT_TRUE(surface.toPaint().empty());
    EXPECT_EQ(surface.pixelAt({-1, 0}), 0U);
}

TEST(CanvasRenderer, PlacesTheOriginBelowAndClipsToEverything) {
    PaintedWindow window({50, 40});
    window.place.origin = {10, 5};
    window.place.visible = {10, 5, 30, 25};
    {
        CanvasRenderer renderer(&window.canvas, IntBox(0, 0, 100, 12));
        fill(renderer, {-100, -100, 1 << 30, 1 << 30});
    }
    EXPECT_EQ(window.inkBox(), IntBox(10, 40 - 17, 30, 40 - 5));
    window.clear();
    {
        CanvasRenderer renderer(&window.canvas, IntBox(0, 0, 20, 20));
        renderer.setClipRect({2, 3, 4, 6});
        fill(renderer, {0, 0, 20, 20});
        renderer.setClipRect({5, 5, 5, 9});
        fill(renderer, {0, 0, 20, 20});
        EXPECT_FALSE(renderer.isVisible({0, 0, 20, 20}));
    }
    EXPECT_EQ(window.countOf(red), 6U);
    EXPECT_EQ(window.surface.pixelAt({12, 8}), red);
}

TEST(CanvasRenderer, OutsideAVisitReportsWhatItPainted) {
    PaintedWindow window({50, 40});
    fill(window, {5, 5, 8, 9});
    EXPECT_EQ(window.surface.toPresent().boxes(), std::vector<IntBox>{IntBox(5, 5, 8, 9)});
    EXPECT_EQ(window.above, std::vector<IntBox>{IntBox(5, 5, 8, 9)});
    EXPECT_TRUE(window.surface.toPaint().empty());
}

TEST(CanvasRenderer, InAVisitPaintsTheDamageOnceAndReportsNothing) {
    std::vector<IntBox> many;
    for (int i = 0; i < 24; ++i) many.push_back(IntBox::sized({2 * i, i}, {1, 2}));
    // Where boxes overlap nothing is blended twice.
    std::pair<std::vector<IntBox>, std::size_t> const damages[] = {
        {{{0, 0, 10, 10}, {5, 5, 20, 12}}, 100 + 105 - 25}, {many, 48}};
    for (auto const& [damage, painted] : damages) {
        PaintedWindow window({50, 40});
        PaintPhase phase(damage);
        phase.enter(&window.canvas, window.place);
        window.paint([&](CanvasRenderer& renderer) {
            fill(renderer, window.surface.bounds(), 0.5);
            renderer.addModifiedArea({0, 0, 50, 40});
        });
        EXPECT_EQ(window.countOf(window.surface.pixelAt({0, 1})), painted);
        EXPECT_EQ(window.countOf(white), 50U * 40U - painted);
        EXPECT_TRUE(window.above.empty());
        EXPECT_TRUE(window.surface.toPresent().empty());
    }
}

TEST(CanvasRenderer, DrawsNothingOnNoCanvasOrAHiddenOne) {
    CanvasRenderer none(nullptr, {0, 0, 10, 10});
    fill(none, {0, 0, 10, 10});
    EXPECT_FALSE(none.isDrawing());
    PaintedWindow window;
    window.canvas.setMapped(false);
    fill(window, {0, 0, 10, 10});
    window.canvas.setMapped(true);
    window.place.mapped = false;
    fill(window, {0, 0, 10, 10});
    window.place = {};
    fill(window, {0, 0, 10, 10});
    window.canvas.damage({0, 0, 10, 10});
    EXPECT_EQ(window.countOf(white), window.pixelCount());
    EXPECT_TRUE(window.above.empty());
}

TEST(CanvasRenderer, OutlivesItsCanvasAndPixels) {
    auto dying = std::make_unique<PaintedWindow>();
    CanvasRenderer orphan = dying->renderer();
    fill(orphan, {0, 0, 10, 10});
    dying.reset();
    EXPECT_FALSE(orphan.isDrawing());
    fill(orphan, {0, 0, 10, 10});
    orphan.setClipRect({0, 0, 5, 5});
    orphan.flush();

    PaintedWindow window({300, 200});
    CanvasRenderer before = window.renderer();
    fill(before, {0, 0, 5, 5});
    window.surface.resize({20, 10}, 1.0);
    fill(before, {0, 0, 300, 200});
    EXPECT_FALSE(before.isDrawing());
    EXPECT_EQ(window.countOf(red), 0U);
    fill(window, {0, 0, 300, 200});
    EXPECT_EQ(window.countOf(red), 200U);
}

TEST(Shapes, WhatBelongsTogetherIsRoundedTogether) {
    for (double const scale : {1.0, 1.25, 1.5, 1.75, 2.0})
        for (int at = 4; at < 8; ++at) {
            SCOPED_TRACE(std::to_string(scale) + " " + std::to_string(at));
            PaintedWindow window({60, 60}, scale);
            window.paint([&](auto& r) {
                Glib::drawRoundedMark(r, redInk, redInk, {at, at, at + 14, at + 14}, 1, 0);
            });
            int const side = static_cast<int>(std::floor(14 * scale + 0.5));
            EXPECT_EQ(window.inkBox().size(), (XY<int>{side, side}));
            IntBox const box{at, at, at + 31, at + 33};
            window.clear();
            window.paint([&](auto& r) { Glib::drawRoundedRectFilled(r, redInk, box, 0); });
            IntBox const whole = window.inkBox();
            /// Where the ink lies, inwards from the middle of a side.
            auto const row = [&](bool upright, bool back) {
                std::string ink;
                for (int i = 0; i < 12; ++i) {
                    XY<int> place = whole.centre();
                    (upright ? place.y : place.x) =
                        back ? (upright ? whole.y2 : whole.x2) - 1 - i : (upright ? whole.y1 : whole.x1) + i;
                    ink += window.device(place.x, place.y) != white ? 'x' : '.';
                }
                return ink;
            };
            window.clear();
            window.paint([&](auto& r) { Glib::drawLitFrame(r, redInk, redInk, box, 1, 1); });
            for (bool const upright : {false, true})
                for (bool const back : {false, true}) EXPECT_EQ(row(upright, back), row(false, false));
            for (bool const upright : {false, true}) {
                window.clear();
                window.paint([&](auto& r) { Glib::drawGripLines(r, redInk, box, upright, 3, 4, 2); });
                EXPECT_EQ(row(upright, false), row(upright, true));
                EXPECT_NE(row(upright, false).find("x"), std::string::npos);
            }
        }
}

TEST(CanvasRenderer, AbsurdPlacesAreNoFault) {
    constexpr int least = std::numeric_limits<int>::min();
    constexpr int most = std::numeric_limits<int>::max();
    PaintedWindow window({50, 40}, 1.5);
    Qv::Ptr<iFont> const font = Glib::loadFont({});
    for (int const a : {least, -70000, 0, 70000, most}) {
        for (int const b : {least, -70000, 0, 70000, most}) {
            CanvasRenderer renderer = window.renderer();
            renderer.renderPrimitive(Glib::LineDescription({a, b}, {b, 10}, redInk, 65535));
            renderer.renderPrimitive(Glib::TextDescription(L"text", {a, b}, font, redInk, eAlignCentre));
            renderer.renderPrimitive(Glib::TextDescription({3000, L'x'}, {a, b}, font, redInk));
            Glib::drawDepthBox(renderer, redInk, {a, a, b, b}, b, a);
            getFontYOffset(a, font);
        }
    }
    EXPECT_EQ(window.surface.pixelAt({5, 20}), red);
}

TEST(CanvasRenderer, HonoursOpacityOfCanvasAndPrimitive) {
    PaintedWindow window;
    window.canvas.setOpacity(0.5F);
    fill(window, {0, 0, 4, 4});
    EXPECT_NEAR(static_cast<double>(window.surface.pixelAt({1, 1}) & 0xFF), 127.5, 1.0);
    EXPECT_EQ(window.surface.pixelAt({1, 1}) >> 16, 0xFFFFU);
    window.clear();
    window.canvas.setOpacity(0);
    fill(window, {0, 0, 4, 4});
    EXPECT_EQ(window.countOf(white), window.pixelCount());
}

TEST(CanvasRenderer, LinesAndFramesKeepTheirThickness) {
    for (double const scale : {1.0, 1.5, 2.0}) {
        PaintedWindow window({50, 40}, scale);
        int const thick = std::max(1, static_cast<int>(std::floor(scale + 0.5)));
        window.draw(Glib::LineDescription({5, 7}, {15, 7}, redInk));
        IntBox const line = window.surface.deviceBox({5, 7, 15, 8});
        EXPECT_EQ(window.inkBox(), IntBox(line.x1, line.y2 - thick, line.x2, line.y2));
        window.clear();
        window.paint([](auto& renderer) { Glib::drawFrame(renderer, redInk, {3, 3, 33, 23}, 1); });
        IntBox const outer = window.surface.deviceBox({3, 3, 33, 23});
        EXPECT_EQ(window.inkBox(), outer);
        auto const edge = static_cast<std::size_t>(2 * thick * (outer.width() + outer.height() - 2 * thick));
        EXPECT_EQ(window.countOf(red), edge);
        EXPECT_EQ(window.surface.toPresent().bounds(), IntBox(3, 3, 33, 23));
    }
}

TEST(CanvasRenderer, SlantedLinesAndEllipsesStayInPlace) {
    PaintedWindow window({60, 60});
    window.draw(Glib::EllipseDescription({10, 10, 50, 40}, redInk));
    EXPECT_EQ(window.inkBox(), IntBox(10, 20, 50, 50));
    EXPECT_NEAR(static_cast<double>(window.countOf(red)), 3.14159 / 4 * 40 * 30, 90);
    window.clear();
    window.draw(Glib::EllipseDescription({10, 10, 50, 12}, redInk, 1));
    EXPECT_EQ(window.inkBox(), IntBox(10, 48, 50, 50)) << "an edge that leaves nothing inside";
    window.clear();
    window.paint([](auto& renderer) {
        renderer.setAntialiasingEnabled(false);
        renderer.renderPrimitive(Glib::LineDescription({0, 0}, {60, 60}, redInk));
    });
    EXPECT_EQ(window.countOf(red) + window.countOf(white), window.pixelCount());
    EXPECT_EQ(window.surface.pixelAt({30, 30}), red);
    EXPECT_EQ(window.surface.pixelAt({30, 40}), white);
}

TEST(RoundedRect, CoversItsBoxButTheCorners) {
    for (double const scale : {1.0, 1.5, 2.0})
        for (int const edge : {0, 1, 3, 9}) {
            SCOPED_TRACE(std::to_string(scale) + " " + std::to_string(edge));
            PaintedWindow window({60, 50}, scale);
            window.paint([&](auto& renderer) {
                Glib::drawRoundedRect(renderer, Colour(0, 0, 1), redInk, {10, 10, 50, 40}, edge, 6);
            });
            IntBox const box = window.surface.deviceBox({10, 10, 50, 40});
            EXPECT_EQ(window.inkBox(), box);
            EXPECT_EQ(window.countOf(red) == 0, edge == 0);
            double const radius = std::floor(6 * scale + 0.5);
            double const corners = (4 - 3.14159) * radius * radius;
            auto const covered = static_cast<double>(window.pixelCount() - window.countOf(white));
            EXPECT_NEAR(covered, box.width() * box.height() - corners, 4 * radius);
            // No ground shines through inside the arc, where edge and fill meet: nothing there has any green.
            for (int y = 0; y < radius; ++y)
                for (int x = 0; x < radius; ++x)
                    EXPECT_TRUE(std::hypot(radius - x, radius - y) > radius - 0.5 ||
                                (window.device(box.x1 + x, box.y1 + y) & 0xFF00U) == 0)
                        << x << " " << y;
            for (int x = 0; x < box.width(); ++x) {
                EXPECT_EQ(window.device(box.x1 + x, box.y1), window.device(box.x2 - 1 - x, box.y1));
                EXPECT_EQ(window.device(box.x1 + x, box.y1), window.device(box.x1 + x, box.y2 - 1));
            }
        }
    PaintedWindow window({60, 50});
    window.paint([](auto& renderer) {
        renderer.setClipRect({10, 10, 30, 40});
        Glib::drawRoundedRectOutline(renderer, redInk, {10, 10, 50, 40}, 2, 6);
    });
    EXPECT_EQ(window.inkBox(), IntBox(10, 10, 30, 40));
    EXPECT_EQ(window.surface.pixelAt({13, 25}), white) << "an outline leaves the inside alone";
    EXPECT_EQ(window.surface.pixelAt({11, 25}), red);
    EXPECT_EQ(window.surface.pixelAt({10, 10}), white);
}

TEST(DepthBox, IsLitFromAboveOrBelow) {
    PaintedWindow window({60, 50});
    Colour const grey(0.5, 0.5, 0.5);
    CanvasRenderer renderer = window.renderer();
    auto const green = [&](XY<int> place) { return window.surface.pixelAt(place) >> 8 & 0xFF; };
    for (int const depth : {2, -2}) {
        Glib::drawDepthBox(renderer, grey, {0, 0, 20, 20}, 2, depth);
        EXPECT_EQ(green({10, 19}) > green({10, 10}), depth > 0);
        EXPECT_EQ(green({10, 0}) > green({10, 10}), depth < 0);
    }
    indent_box(&window.canvas, {0, 0, 20, 20}, grey);
    EXPECT_EQ(window.surface.pixelAt({10, 10}) & 0xFFFFFFU, getIndentBoxColour(grey).getAsLong());
}

TEST(Drawable, PaintsOnlyWithoutHoldsAndVisits) {
    struct Counter : Drawable::Painter {
        int painted = 0, dropped = 0;
        void paintPending() override { ++painted; }
        void dropPending() override { ++dropped; }
    } counter;
    Drawable::setPainter(&counter);
    Drawable::update();
    {
        RedrawHold outer;
        RedrawHold inner;
        Drawable::update();
    }
    {
        std::vector<IntBox> const damage;
        PaintPhase phase(damage);
        Drawable::update();
    }
    EXPECT_EQ(counter.painted, 1);
    Drawable::clearPendingRedraws();
    EXPECT_EQ(counter.dropped, 1);
    Drawable::setPainter(nullptr);
    Drawable::update();
    auto const refused = Diagnostics::countOf("redraw hold");
    Drawable::enableRedraws();
    EXPECT_EQ(Drawable::holdCount(), 0);
    EXPECT_EQ(Diagnostics::countOf("redraw hold"), refused + 1);
    refresh_off();
    Drawable::disableRedraws();
    EXPECT_EQ(Drawable::holdCount(), 2) << "the old form counts with the other";
    Drawable::enableRedraws();
    refresh_on();
    refresh_on();
    EXPECT_EQ(Drawable::holdCount(), 0) << "never below none";
    Diagnostics::reset();
}

} // namespace
} // namespace wainscot
