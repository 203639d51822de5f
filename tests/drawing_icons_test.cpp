#include "host/drawing/palette.h"
#include "host/drawing/standard_icons.h"
#include "tests/drawing_fixture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>
#include <string>

namespace wainscot {
namespace {

using testing::PaintedWindow;

LightweightString<wchar_t> named(std::wstring_view name) {
    return LightweightString<wchar_t>(name);
}

/// An icon over a ground, at the place (2, 2).
void show(PaintedWindow& window, Qv::Ptr<Glib::Image> const& icon, int extent, Colour const& ground) {
    window.clear(0xFF000000 | ground.getAsLong());
    CanvasRenderer renderer = window.renderer();
    renderer.renderPrimitive(Glib::ImageDescription(icon, IntBox::sized({2, 2}, {extent, extent})));
}

/// Which pixels an icon covers at least by half.
std::vector<bool> outline(std::wstring_view name) {
    Qv::Ptr<Glib::Image> const icon = Glib::loadIcon(named(name));
    std::vector<bool> covered;
    for (int i = 0; i < icon->size().x * icon->size().y; ++i) covered.push_back(icon->pixels()[i] >> 31);
    return covered;
}

std::size_t difference(std::vector<bool> const& a, std::vector<bool> const& b) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < a.size(); ++i) count += a[i] != b[i];
    return count;
}

TEST(StandardIcons, AreFoundByNameUnlessSomethingStandsBeforeThem) {
    std::set<std::wstring_view> const names(Glib::standardIconNames().begin(),
                                            Glib::standardIconNames().end());
    EXPECT_EQ(names.size(), Glib::standardIconNames().size());
    for (wchar_t const* stated :
         {L"led_red.png", L"led_red_on.png", L"led_green.png", L"led_green_on.png", L"led_blue.png",
          L"led_blue_on.png", L"led_grey.png", L"led_yellow.png", L"led_orange.png", L"led_white.png",
          L"folder.png", L"arrow_up.png", L"close.png", L"pin.png", L"size.png", L"settings.png"})
        EXPECT_TRUE(Glib::loadIcon(named(stated))) << std::string(stated, stated + std::wcslen(stated));
    Qv::Ptr<Glib::Image> const own = Glib::loadIcon(L"folder.png");
    EXPECT_EQ(Glib::loadIcon(L"folder.png"), own) << "made once";
    Qv::Ptr<Glib::Image> const other = Glib::Image::fromPixels({1, 1}, {0xFF123456});
    Glib::registerIcon(L"folder.png", other);
    EXPECT_EQ(Glib::loadIcon(L"folder.png"), other);
    Glib::registerIcon(L"folder.png", {});
    EXPECT_EQ(Glib::loadIcon(L"folder.png"), own);
    EXPECT_FALSE(Glib::loadIcon(L"led_red"));
    PaintedWindow window;
    show(window, Glib::loadIcon(L"no such icon.png"), 16, Colour(1, 1, 1));
    EXPECT_TRUE(window.inkBox().isEmpty()) << "a missing icon draws nothing";
}

TEST(StandardIcons, LightsDifferInShapeWhateverTheirColour) {
    constexpr std::wstring_view lights[] = {L"led_red.png",  L"led_green.png",  L"led_blue.png",
                                            L"led_grey.png", L"led_yellow.png", L"led_orange.png",
                                            L"led_white.png"};
    for (std::wstring_view const a : lights)
        for (std::wstring_view const b : lights)
            if (a != b) {
                EXPECT_GE(difference(outline(a), outline(b)), 24u)
                    << std::string(a.begin(), a.end()) << " and " << std::string(b.begin(), b.end());
            }
    for (std::wstring const hue : {L"red", L"green", L"blue", L"yellow", L"orange", L"white"}) {
        std::wstring const plain = L"led_" + hue + L".png";
        std::wstring const lit = L"led_" + hue + L"_on.png";
        EXPECT_EQ(difference(outline(plain), outline(lit)), 0u) << std::string(hue.begin(), hue.end());
        Qv::Ptr<Glib::Image> const off = Glib::loadIcon(named(plain));
        Qv::Ptr<Glib::Image> const on = Glib::loadIcon(named(lit));
        EXPECT_GT(
            contrastRatio(Colour::fromLong(on->pixelAt({8, 8})), Colour::fromLong(off->pixelAt({8, 8}))),
            1.3);
    }
}

TEST(StandardIcons, CanBeSeenOnEveryGroundOfBothThemes) {
    for (std::wstring_view const name : Glib::standardIconNames()) {
        Qv::Ptr<Glib::Image> const icon = Glib::loadIcon(named(name));
        for (eTheme const theme : {eThemeDark, eThemeLight})
            for (eWindowShade const shade :
                 {eWindowNormal, eWindowRecessed, eWindowRaised, eWindowAlternate}) {
                Colour const ground = Palette::standard(theme).window(shade);
                PaintedWindow window({20, 20});
                show(window, icon, 16, ground);
                int visible = 0;
                for (int y = 0; y < 20; ++y)
                    for (int x = 0; x < 20; ++x)
                        visible += contrastRatio(Colour::fromLong(window.device(x, y)), ground) >= 2.95;
                EXPECT_GE(visible, 14)
                    << std::string(name.begin(), name.end()) << ' ' << theme << ' ' << shade;
            }
    }
}

/// How steep the steps between neighbouring pixels are; a scaled picture has gentle ones only.
double sharpness(PaintedWindow const& window) {
    double sum = 0;
    double squares = 0;
    for (int y = 0; y < window.surface.deviceSize().y; ++y)
        for (int x = 1; x < window.surface.deviceSize().x; ++x) {
            int const step = std::abs(static_cast<int>(window.device(x, y) >> 8 & 0xFF) -
                                      static_cast<int>(window.device(x - 1, y) >> 8 & 0xFF));
            sum += step;
            squares += static_cast<double>(step) * step;
        }
    return squares / sum;
}

TEST(StandardIcons, AreDrawnAnewAtEveryScaleInsteadOfStretched) {
    for (std::wstring_view const name : Glib::standardIconNames()) {
        Qv::Ptr<Glib::Image> const icon = Glib::loadIcon(named(name));
        std::vector<std::uint32_t> const pixels(icon->pixels(), icon->pixels() + 16 * 16);
        Qv::Ptr<Glib::Image> const stretched = Glib::Image::fromPixels({16, 16}, pixels);
        for (double const scale : {1.5, 2.0, 3.0}) {
            PaintedWindow window({20, 20}, scale);
            show(window, stretched, 16, Colour(1, 1, 1));
            double const before = sharpness(window);
            show(window, icon, 16, Colour(1, 1, 1));
            EXPECT_GT(sharpness(window), before * 1.1)
                << std::string(name.begin(), name.end()) << ' ' << scale;
            IntBox const room = window.surface.deviceBox(IntBox::sized({2, 2}, {16, 16}));
            IntBox const ink = window.inkBox();
            EXPECT_EQ(ink.unitedWith({room.x1, room.y1, room.x2, room.y2}), room) << "outside its box";
            EXPECT_GE(ink.height(), room.height() / 2);
        }
    }
}

TEST(StandardIcons, StraightEdgesLieOnPixelsAndArrowsAreMirrored) {
    for (int const extent : {16, 20, 24, 28, 32, 48}) {
        PaintedWindow window({60, 60});
        show(window, Glib::loadIcon(L"led_red.png"), extent, Colour(1, 1, 1));
        IntBox const ink = window.inkBox();
        std::uint32_t const edge = window.device(ink.x1, ink.centre().y);
        for (int y = ink.y1 + 4; y < ink.y2 - 4; ++y)
            EXPECT_EQ(window.device(ink.x1, y), edge) << extent << ": the left edge is one colour";
        EXPECT_LT(contrastRatio(Colour::fromLong(edge), Colour::fromLong(window.device(ink.x1, ink.y1 + 5))),
                  1.01);
        show(window, Glib::loadIcon(L"arrow_left.png"), extent, Colour(1, 1, 1));
        std::vector<std::uint32_t> const left(window.surface.pixels(),
                                              window.surface.pixels() + window.pixelCount());
        IntBox const room = window.surface.deviceBox(IntBox::sized({2, 2}, {extent, extent}));
        show(window, Glib::loadIcon(L"arrow_right.png"), extent, Colour(1, 1, 1));
        for (int y = room.y1; y < room.y2; ++y)
            for (int i = 0; i < extent; ++i) {
                auto const mirrored = static_cast<std::size_t>(y * window.surface.stride() + room.x2 - 1 - i);
                int const a = static_cast<int>(window.device(room.x1 + i, y) & 0xFF);
                EXPECT_NEAR(a, static_cast<int>(left[mirrored] & 0xFF), 8) << extent << ' ' << i << ' ' << y;
            }
    }
}

TEST(Image, APainterIsAskedOncePerSizeAndHostileSizesAreRefused) {
    std::vector<XY<int>> asked;
    auto const paint = [&](XY<int> size, std::span<std::uint32_t> pixels) {
        ASSERT_EQ(pixels.size(), static_cast<std::size_t>(size.x * size.y));
        asked.push_back(size);
        std::fill(pixels.begin(), pixels.end(), 0xFF000000U + static_cast<unsigned>(size.x));
    };
    Qv::Ptr<Glib::Image> const image = Glib::Image::fromPainter({4, 3}, paint);
    EXPECT_EQ(image->pixelAt({0, 0}), 0xFF000004U);
    PaintedWindow window({60, 60});
    for (int round = 0; round < 3; ++round) {
        CanvasRenderer renderer = window.renderer();
        renderer.renderPrimitive(Glib::ImageDescription(image, {0, 0}));
        renderer.renderPrimitive(Glib::ImageDescription(image, IntBox(10, 10, 17, 15)));
    }
    EXPECT_EQ(asked, (std::vector<XY<int>>{{4, 3}, {7, 5}}));
    EXPECT_EQ(window.surface.pixelAt({12, 12}), 0xFF000007U);
    EXPECT_FALSE(Glib::Image::fromPainter({0, 3}, paint));
    EXPECT_FALSE(Glib::Image::fromPainter({1 << 30, 1 << 30}, paint));
    EXPECT_FALSE(Glib::Image::fromPainter({3, 3}, {}));
}

} // namespace
} // namespace wainscot
