#include "host/drawing/coverage_blend_p.h"
#include "host/drawing/glyph_raster_p.h"

#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace wainscot {
namespace {

std::uint32_t randomPixel(std::mt19937& random) {
    auto const part = [&] { return static_cast<double>(random() % 256) / 255.0; };
    return CoverageBlend::premultiplied(Colour(part(), part(), part()), random() % 3 ? 1.0 : part());
}

TEST(CoverageBlend, FourAtATimeEqualOneByOneAndTheExactMixture) {
    std::mt19937 random(6);
    for (int round = 0; round < 20000; ++round) {
        std::uint32_t const ink = randomPixel(random);
        std::array<std::uint32_t, 4> together;
        std::array<std::uint8_t, 4> coverage;
        for (std::size_t i = 0; i < 4; ++i) {
            together[i] = randomPixel(random);
            coverage[i] = static_cast<std::uint8_t>(random() % 4 ? random() % 256 : random() % 2 * 255);
        }
        std::array<std::uint32_t, 4> const ground = together;
        if (CoverageBlend::isOpaque(ink))
            CoverageBlend::blendFour<true>(together.data(), coverage.data(), ink);
        else
            CoverageBlend::blendFour<false>(together.data(), coverage.data(), ink);
        for (std::size_t i = 0; i < 4; ++i) {
            std::uint32_t single = ground[i];
            CoverageBlend::blend(single, ink, coverage[i]);
            ASSERT_EQ(together[i], single) << std::hex << ink << " " << ground[i] << " " << int(coverage[i]);
            for (int shift = 0; shift < 32; shift += 8) {
                double const c = coverage[i] / 255.0;
                double const exact =
                    (ink >> shift & 0xFF) * c + (ground[i] >> shift & 0xFF) * (1 - (ink >> 24) * c / 255.0);
                ASSERT_NEAR(single >> shift & 0xFF, exact, 1.51);
            }
        }
    }
}

TEST(GlyphRasters, AreKeptAndStayWithinTheirMemory) {
    GlyphRasters& rasters = GlyphRasters::instance();
    FontFace* face = FontFinder::find("DejaVu Sans", 0);
    ASSERT_TRUE(face);
    {
        GlyphRasters::Use use(rasters);
        GlyphRasters::DeviceFace& small = rasters.deviceFace(face, 12);
        EXPECT_EQ(&small, &rasters.deviceFace(face, 12));
        GlyphPicture const& picture = rasters.picture(small, 40);
        EXPECT_GT(picture.width, 0);
        EXPECT_EQ(&picture, &rasters.picture(small, 40));
        EXPECT_EQ(rasters.picture(small, 0x7FFFFFFF).width, 0);
        for (int size = 500; size < 600; ++size) rasters.picture(rasters.deviceFace(face, size), 40);
        EXPECT_GT(rasters.bytes(), GlyphRasters::memoryLimit / 4);
        for (std::uint32_t glyph = 36; glyph < 60 && rasters.bytes() <= GlyphRasters::memoryLimit; ++glyph)
            for (int size = 900; size < 1000; size += 10)
                rasters.picture(rasters.deviceFace(face, size), glyph);
        EXPECT_GT(rasters.bytes(), GlyphRasters::memoryLimit);
        EXPECT_GT(rasters.picture(small, 40).width, 0);
    }
    GlyphRasters::Use again(rasters);
    EXPECT_EQ(rasters.bytes(), 0U);
    EXPECT_EQ(rasters.numFaces(), 0U);
    rasters.deviceFace(face, 12);
    EXPECT_GT(rasters.bytes(), 0U) << "faces without pictures count, too";
}

} // namespace
} // namespace wainscot
