#include "host/drawing/image.h"
#include "host/drawing/png.h"
#include "host/drawing/region.h"
#include "tests/drawing_fixture.h"
#include "tests/temporary_folder.h"

#include <gtest/gtest.h>
#include <random>
#include <sys/stat.h>

namespace wainscot {
namespace {

using testing::PaintedWindow;

constexpr std::uint32_t white = 0xFFFFFFFF;

/// A window's picture with four different corners, as PNG.
std::vector<std::uint8_t> smallPng() {
    PaintedWindow window({4, 3});
    window.surface.pixels()[0] = 0xFFFF0000;
    window.surface.pixels()[11] = 0x80008000;
    std::vector<std::uint8_t> bytes;
    EXPECT_TRUE(writePng(window.surface, bytes).empty());
    EXPECT_FALSE(writePng(window.surface, "/no such folder/picture.png").empty());
    return bytes;
}

TEST(Image, ReadsWhatWasWritten) {
    Glib::LoadedImage const loaded = Glib::loadPng(smallPng());
    ASSERT_TRUE(loaded.image) << loaded.message.c_str();
    EXPECT_EQ(loaded.image->size(), XY<int>(4, 3));
    EXPECT_EQ(loaded.image->pixelAt({0, 2}), 0xFFFF0000U);
    EXPECT_EQ(loaded.image->pixelAt({3, 0}), 0x80008000U);
    EXPECT_EQ(loaded.image->pixelAt({1, 1}), white);
    EXPECT_EQ(loaded.image->pixelAt({4, 0}), 0U);
}

TEST(Image, RefusesHostileFilesWithAMessage) {
    std::vector<std::uint8_t> const good = smallPng();
    for (std::size_t length = 0; length + 12 < good.size(); ++length) {
        Glib::LoadedImage const cut = Glib::loadPng(std::span(good).first(length));
        ASSERT_FALSE(cut.image) << length;
        ASSERT_FALSE(cut.message.empty());
    }
    std::vector<std::uint8_t> huge = good;
    huge[16] = 0x7F;
    EXPECT_EQ(Glib::loadPng(huge).message, "the picture is too large");
    std::mt19937 random(2);
    for (int round = 0; round < 2000; ++round) {
        std::vector<std::uint8_t> broken = good;
        for (int i = 0; i < 3; ++i)
            broken[8 + random() % (broken.size() - 8)] = static_cast<std::uint8_t>(random());
        Glib::LoadedImage const loaded = Glib::loadPng(broken);
        EXPECT_NE(static_cast<bool>(loaded.image), !loaded.message.empty());
    }
    EXPECT_EQ(Glib::loadPng("/no such picture").message, "the file cannot be opened");
    // A pipe has no end to wait for, and a folder is no picture.
    TemporaryFolder const folder;
    ASSERT_EQ(mkfifo(folder.path("pipe.png").c_str(), 0600), 0);
    EXPECT_FALSE(Glib::loadPng(folder.text("pipe.png")).message.empty());
    EXPECT_NE(Glib::loadPng(folder.text("")).message, "the file is too large");
    EXPECT_FALSE(Glib::Image::fromPixels({3, 3}, std::vector<std::uint32_t>(8)));
    EXPECT_FALSE(Glib::Image::fromPixels({1 << 20, 1 << 20}, {}));
}

TEST(Image, IsDrawnUprightBlendedAndScaled) {
    Qv::Ptr<Glib::Image> const image = Glib::loadPng(smallPng()).image;
    for (double const scale : {1.0, 2.0}) {
        PaintedWindow window({20, 20}, scale);
        window.clear(0xFF0000FF);
        window.draw(Glib::ImageDescription(image, {5, 5}));
        EXPECT_EQ(window.inkBox(0xFF0000FF), window.surface.deviceBox({5, 5, 9, 8})) << scale;
        if (scale == 1.0) {
            EXPECT_EQ(window.surface.pixelAt({5, 7}), 0xFFFF0000U);
            EXPECT_EQ(window.surface.pixelAt({8, 5}), 0xFF00807FU);
        }
        window.clear(0xFF0000FF);
        window.draw(Glib::ImageDescription(image, IntBox(0, 0, 16, 12), 0.5));
        EXPECT_NEAR(static_cast<double>(window.surface.pixelAt({8, 6}) >> 16 & 0xFF), 128, 2);
    }
}

TEST(Icons, AreFoundByBareNameOnly) {
    TemporaryFolder const folder;
    ASSERT_TRUE(writePng(PaintedWindow({6, 6}).surface, folder.text("icon_test.png")).empty());
    Glib::setIconFolder(LightweightString<char>(folder.path()));
    Qv::Ptr<Glib::Image> const icon = Glib::loadIcon(L"icon_test.png");
    ASSERT_TRUE(icon);
    EXPECT_EQ(Glib::loadIcon(L"icon_test.png"), icon);
    std::wstring const name(folder.path().begin(), folder.path().end());
    EXPECT_FALSE(Glib::loadIcon(
        LightweightString<wchar_t>(L".." + name.substr(name.rfind(L'/')) + L"/icon_test.png")));
    EXPECT_FALSE(Glib::loadIcon(L"missing.png"));
    Glib::setIconFolder("");
    EXPECT_FALSE(Glib::loadIcon(L"icon_test.png"));
}

TEST(Region, CurvesTheCornersAskedFor) {
    Qv::Ptr<iRegion> const all = makeCurvedRegion({40, 30}, 8);
    Qv::Ptr<iRegion> const top = makeCurvedRegion({40, 30}, 8, eCurvedTop);
    EXPECT_EQ(all->bounds(), IntBox(0, 0, 40, 30));
    int pixels = 0;
    for (IntBox const& box : all->boxes()) pixels += box.width() * box.height();
    EXPECT_NEAR(pixels, 40 * 30 - (4 - 3.14159) * 64, 12);
    EXPECT_FALSE(all->contains({0, 0}) || all->contains({39, 29}) || top->contains({0, 29}));
    EXPECT_TRUE(top->contains({0, 0}));
    EXPECT_TRUE(makeCurvedRegion({0, 5}, 3)->isEmpty());
    EXPECT_TRUE(makeCurvedRegion({10, 10}, 4000000000U)->contains({5, 5}));
    EXPECT_TRUE(region_eq(region_intersect(all, top), all));
    EXPECT_FALSE(region_eq(all, top));
    EXPECT_TRUE(region_eq(region_intersect(all, {}), all));
}

TEST(Region, IsBuiltFromImages) {
    auto const image = Glib::Image::fromPixels({3, 2}, {0, white, white, 0x7F7F7F7F, 0, white});
    EXPECT_TRUE(region_eq(glib_buildRegionFromImage(image),
                          Glib::RegionBuilder().add({1, 1, 3, 2}).add({2, 0, 3, 1}).build()));
    EXPECT_FALSE(glib_buildRegionFromImage({}));
}

TEST(Region, FollowsStepsInOrderWhateverTheirNumber) {
    std::mt19937 random(6);
    auto const next = [&](int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); };
    for (int round = 0; round < 100; ++round) {
        Glib::RegionBuilder builder;
        std::vector<bool> reference(32 * 32);
        for (int i = next(40); i > 0; --i) {
            IntBox const box = IntBox::sized({next(30), next(30)}, {1 + next(12), 1 + next(12)});
            bool const adds = next(3) > 0;
            adds ? builder.add(box) : builder.subtract(box);
            for (int y = box.y1; y < std::min(box.y2, 32); ++y)
                for (int x = box.x1; x < std::min(box.x2, 32); ++x)
                    reference[static_cast<std::size_t>(y * 32 + x)] = adds;
        }
        Qv::Ptr<iRegion> const region = builder.build();
        for (int i = 0; i < 32 * 32; ++i)
            ASSERT_EQ(region->contains({i % 32, i / 32}), reference[static_cast<std::size_t>(i)]) << round;
    }
    // Each step alone on all that went before would take minutes here.
    Glib::RegionBuilder many;
    for (int i = 0; i < 60000; ++i)
        many.add(IntBox::sized({i % 250 * 4, i / 250 * 4}, {3, 3}))
            .subtract(IntBox::sized({i % 250 * 4 + 1, i / 250 * 4 + 1}, {1, 1}));
    EXPECT_EQ(many.build()->boxes().size(), 60000U * 4);
    EXPECT_LE(makeCurvedRegion({1 << 24, 1 << 24}, ~0U, eCurvedAll)->boxes().size(), 40000U);
}

TEST(Region, ShapesACanvas) {
    for (double const scale : {1.0, 1.5}) {
        PaintedWindow window({40, 40}, scale);
        window.place.origin = {5, 5};
        glib_reshapecanvas(&window.canvas,
                           Glib::RegionBuilder().add({0, 0, 10, 10}).add({20, 20, 25, 25}).build());
        EXPECT_EQ(window.surface.toPaint().bounds(), window.place.visible);
        {
            CanvasRenderer renderer(&window.canvas, {-5, -5, 40, 40});
            renderer.renderPrimitive(Glib::RectDescription(IntBox(-5, -5, 40, 40), Colour(1, 0, 0)));
        }
        IntBox const low = window.surface.deviceBox({5, 5, 15, 15});
        IntBox const high = window.surface.deviceBox({25, 25, 30, 30});
        EXPECT_EQ(window.countOf(0xFFFF0000),
                  static_cast<std::size_t>(low.width() * low.height() + high.width() * high.height()));
    }
}

} // namespace
} // namespace wainscot
