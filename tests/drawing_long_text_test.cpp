#include "host/drawing/long_text.h"
#include "tests/drawing_fixture.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace wainscot {
namespace {

using testing::PaintedWindow;

Qv::Ptr<iFont> standardFont() {
    return Glib::loadFont({"DejaVu Sans", 12});
}

TEST(LongText, EditsLikeAStringAndMeasuresLikeTheFont) {
    std::mt19937 random(9);
    std::wstring reference;
    Glib::LongText text(standardFont());
    for (int round = 0; round < 400; ++round) {
        std::size_t const index = random() % (reference.size() + 1);
        std::size_t const count = random() % 3 ? 0 : random() % 700;
        std::wstring added(random() % (round % 20 ? 12 : 900), L'x');
        for (wchar_t& c : added) c = random() % 6 ? static_cast<wchar_t>(L'a' + random() % 26) : L' ';
        text.replace(index, count, added);
        reference.replace(index, std::min(count, reference.size() - index), added);
        ASSERT_EQ(text.length(), reference.size());
    }
    ASSERT_EQ(text.substr(0, reference.size()), reference);
    EXPECT_EQ(text.substr(10, 300), reference.substr(10, 300));
    EXPECT_EQ(text.substr(reference.size() + 5, 10), L"");
    // Kerning and ligatures may be lost where blocks meet, a pixel or so each.
    LightweightString<wchar_t> const whole((std::wstring_view(reference)));
    EXPECT_NEAR(text.width(), standardFont()->textWidth(whole), 2.0 + text.width() / 500.0);
    for (std::size_t i = 0; i <= reference.size(); i += 37) {
        EXPECT_GE(text.gapX(i + 1), text.gapX(i));
        EXPECT_NEAR(static_cast<double>(text.indexAt(text.gapX(i))), static_cast<double>(i), 1);
    }
    text.replace(0, reference.size(), L"");
    EXPECT_EQ(text.width(), 0);
    EXPECT_EQ(text.indexAt(100), 0U);
}

TEST(LongText, MeasuresWordsOfSeveralScriptsAsTheyAreLaidOut) {
    std::wstring whole;
    for (std::size_t i = 0; whole.size() < 20000; ++i) {
        static constexpr std::wstring_view words[] = {
            L"office ",          L"AVAT ",  L"— ", L"быстрая ", L"(7) ", L"λίγες ", L"日本 ", L"[ ",
            L"  x\u0301\u0301 ", L"\u0301", L"\t"};
        whole += words[i * i % 17 % std::size(words)];
    }
    for (int const size : {9, 12, 31}) {
        auto const font = Glib::loadFont({"DejaVu Sans", static_cast<unsigned short>(size)});
        Glib::LongText text(font);
        text.setText(whole);
        EXPECT_EQ(text.width(), font->textWidth(LightweightString<wchar_t>(std::wstring_view(whole))));
        for (std::size_t i = 1; i < whole.size(); i += 101) EXPECT_GE(text.gapX(i + 1), text.gapX(i));
    }
}

TEST(LongText, KeepsClustersTogetherAcrossBlocks) {
    Glib::LongText text(standardFont());
    text.setText(std::wstring(4000, L'a'));
    for (std::size_t i = 1; i < 2000; i += 3) text.replace(i, 0, L"\u0301");
    for (int x = 0; x < 3000; ++x) {
        std::size_t const index = text.indexAt(x);
        ASSERT_NE(text.substr(index, 1), L"\u0301") << index;
    }
}

TEST(LongText, DrawsTheSameAsItsTextWouldBe) {
    LightweightString<wchar_t> const whole(400, L'w');
    Glib::LongText text(standardFont());
    text.setText(whole.view());
    for (int const x : {0, -1500, -3300}) {
        PaintedWindow expected({200, 30});
        PaintedWindow drawn({200, 30});
        {
            CanvasRenderer renderer = expected.renderer();
            renderer.renderPrimitive(Glib::TextDescription(whole, {x, 10}, standardFont(), Colour()));
            CanvasRenderer other = drawn.renderer();
            text.draw(other, {x, 10}, Colour());
        }
        EXPECT_TRUE(std::equal(drawn.surface.pixels(), drawn.surface.pixels() + drawn.pixelCount(),
                               expected.surface.pixels()))
            << x;
        EXPECT_FALSE(drawn.inkBox().isEmpty());
    }
}

} // namespace
} // namespace wainscot
