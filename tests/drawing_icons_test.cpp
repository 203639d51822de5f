#include "host/drawing/palette.h"
#include "host/drawing/standard_icons.h"
#include "tests/drawing_fixture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>
#include <stdexcept>
#include <string>

namespace wainscot {
namespace {

using testing::PaintedWindow;

Qv::Ptr<Glib::Image> iconNamed(std::wstring_view name) {
    return Glib::loadIcon(LightweightString<wchar_t>(name));
}

/// An icon over a ground, at the place (2, 2).
void show(PaintedWindow& window, Qv::Ptr<Glib::Image> const& icon, int extent,
          Colour const& ground = Colour(1, 1, 1)) {
    window.clear(0xFF000000 | ground.getAsLong());
    window.draw(Glib::ImageDescription(icon, IntBox::sized({2, 2}, {extent, extent})));
}

/// Which pixels an icon covers at least by half.
std::vector<bool> outline(std::wstring_view name) {
    Qv::Ptr<Glib::Image> const icon = iconNamed(name);
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
    for (std::wstring_view const stated :
         {L"led_red.png", L"led_red_on.png", L"led_green.png", L"led_green_on.png", L"led_blue.png",
          L"led_blue_on.png", L"led_grey.png", L"led_yellow.png", L"led_orange.png", L"led_white.png",
          L"folder.png", L"arrow_up.png", L"close.png", L"pin.png", L"size.png", L"settings.png"})
        EXPECT_TRUE(names.contains(stated) && iconNamed(stated)) << std::string(stated.begin(), stated.end());
    Qv::Ptr<Glib::Image> const own = Glib::loadIcon(L"folder.png");
    EXPECT_EQ(Glib::loadIcon(L"folder.png"), own) << "made once";
    Qv::Ptr<Glib::Image> const other = Glib::Image::fromPixels({1, 1}, {0xFF123456});
    Glib::registerIcon(L"folder.png", other);
    EXPECT_EQ(Glib::loadIcon(L"folder.png"), other);
    Glib::registerIcon(L"folder.png", {});
    EXPECT_EQ(Glib::loadIcon(L"folder.png"), own);
    EXPECT_FALSE(Glib::loadIcon(L"led_red"));
    PaintedWindow window;
    show(window, iconNamed(L"no such icon.png"), 16);
    EXPECT_TRUE(window.inkBox().isEmpty()) << "a missing icon draws nothing";
}

TEST(StandardIcons, LightsDifferInShapeWhateverTheirColour) {
    std::wstring const hues[] = {L"red", L"green", L"blue", L"yellow", L"orange", L"white", L"grey"};
    for (std::wstring const& hue : hues) {
        SCOPED_TRACE(std::string(hue.begin(), hue.end()));
        std::wstring const plain = L"led_" + hue + L".png";
        for (std::wstring const& other : hues)
            EXPECT_TRUE(hue == other || difference(outline(plain), outline(L"led_" + other + L".png")) >= 24);
        if (hue == L"grey") continue;
        std::wstring const lit = L"led_" + hue + L"_on.png";
        EXPECT_EQ(difference(outline(plain), outline(lit)), 0u);
        auto const middle = [](std::wstring const& name) {
            return Colour::fromLong(iconNamed(name)->pixelAt({8, 8}));
        };
        EXPECT_GT(contrastRatio(middle(lit), middle(plain)), 1.3);
    }
}

TEST(StandardIcons, CanBeSeenOnEveryGroundOfBothThemes) {
    for (std::wstring_view const name : Glib::standardIconNames())
        for (eTheme const theme : {eThemeDark, eThemeLight})
            for (int shade = eWindowNormal; shade <= eWindowAlternate; ++shade) {
                Colour const ground = Palette::standard(theme).window(eWindowShade(shade));
                PaintedWindow window({20, 20});
                show(window, iconNamed(name), 16, ground);
                auto const pixels = window.picture();
                EXPECT_GE(std::count_if(pixels.begin(), pixels.end(),
                                        [&](std::uint32_t pixel) {
                                            return contrastRatio(Colour::fromLong(pixel), ground) >= 2.95;
                                        }),
                          14)
                    << std::string(name.begin(), name.end()) << ' ' << theme << ' ' << shade;
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
        Qv::Ptr<Glib::Image> const icon = iconNamed(name);
        std::vector<std::uint32_t> const pixels(icon->pixels(), icon->pixels() + 16 * 16);
        Qv::Ptr<Glib::Image> const stretched = Glib::Image::fromPixels({16, 16}, pixels);
        for (double const scale : {1.5, 2.0, 3.0}) {
            PaintedWindow window({20, 20}, scale);
            show(window, stretched, 16);
            double const before = sharpness(window);
            show(window, icon, 16);
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
        PaintedWindow window({60, 60}), mirror({60, 60});
        show(window, iconNamed(L"led_red.png"), extent);
        IntBox const ink = window.inkBox();
        std::uint32_t const edge = window.device(ink.x1, ink.centre().y);
        for (int y = ink.y1 + 4; y < ink.y2 - 4; ++y)
            EXPECT_EQ(window.device(ink.x1, y), edge) << extent << ": the left edge is one colour";
        show(window, iconNamed(L"arrow_right.png"), extent);
        show(mirror, iconNamed(L"arrow_left.png"), extent);
        IntBox const room = window.surface.deviceBox(IntBox::sized({2, 2}, {extent, extent}));
        for (int y = room.y1; y < room.y2; ++y)
            for (int i = 0; i < extent; ++i)
                EXPECT_NEAR(static_cast<int>(window.device(room.x1 + i, y) & 0xFF),
                            static_cast<int>(mirror.device(room.x2 - 1 - i, y) & 0xFF), 8)
                    << extent << ' ' << i << ' ' << y;
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
        window.draw(Glib::ImageDescription(image, {0, 0}));
        window.draw(Glib::ImageDescription(image, IntBox(10, 10, 17, 15)));
    }
    EXPECT_EQ(asked, (std::vector<XY<int>>{{4, 3}, {7, 5}}));
    EXPECT_EQ(window.surface.pixelAt({12, 12}), 0xFF000007U);
    bool throws = false;
    Qv::Ptr<Glib::Image> const throwing = Glib::Image::fromPainter({4, 4}, [&](XY<int>, auto) {
        if (throws) throw std::runtime_error("painter");
    });
    throws = true;
    EXPECT_THROW(window.draw(Glib::ImageDescription(throwing, IntBox(0, 0, 8, 8))), std::runtime_error);
    EXPECT_FALSE(Glib::Image::fromPainter({0, 3}, paint));
    EXPECT_FALSE(Glib::Image::fromPainter({1 << 30, 1 << 30}, paint));
    EXPECT_FALSE(Glib::Image::fromPainter({3, 3}, {}));
}

} // namespace
} // namespace wainscot
