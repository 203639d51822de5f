#include "host/drawing/font_p.h"
#include "host/drawing/text_shaper_p.h"

#include <gtest/gtest.h>
#include <random>
#include <string>

namespace wainscot {
namespace {

void expectSameLayout(Font const& font, std::wstring const& text) {
    TextLayoutPtr const quick = TextShaper(font, text).shape();
    TextLayoutPtr const full = TextShaper(font, text).shapeInFull();
    ASSERT_EQ(quick->width(), full->width()) << std::string(text.begin(), text.end());
    ASSERT_EQ(quick->glyphs().size(), full->glyphs().size());
    for (std::size_t i = 0; i < quick->glyphs().size(); ++i) {
        ASSERT_EQ(quick->glyphs()[i].index, full->glyphs()[i].index) << std::string(text.begin(), text.end());
        ASSERT_EQ(quick->glyphs()[i].x, full->glyphs()[i].x) << std::string(text.begin(), text.end());
    }
    for (std::size_t i = 0; i <= text.size(); ++i) ASSERT_EQ(quick->gap(i), full->gap(i)) << i;
    EXPECT_EQ(font.blockWidth(text), static_cast<double>(full->width()));
}

TEST(Shaping, PairsGiveTheLayoutOfTheShaper) {
    std::mt19937 random(5);
    std::wstring const likely = L"fil fTAVoWay. ";
    for (auto const& [name, style] :
         {std::pair{"DejaVu Sans", 0U}, {"DejaVu Sans", 1U}, {"DejaVu Sans Mono", 0U}}) {
        Qv::Ptr<iFont> const loaded = Glib::loadFont({name, 13, style});
        Font const& font = Font::of(*loaded);
        ASSERT_TRUE(font.pairs());
        expectSameLayout(font, L"office waffle fluffy AVATAR To. fi");
        expectSameLayout(font,
                         L"\u0431\u044B \u0430 (7) \u03BB\u03B9 a [ x\u0301 \u0431\u044B\u0441 To \u03BB");
        for (int round = 0; round < 1500; ++round) {
            std::wstring text(1 + random() % 40, L' ');
            for (wchar_t& c : text)
                c = round % 2 ? static_cast<wchar_t>(0x20 + random() % 0x5F)
                              : likely[random() % likely.size()];
            expectSameLayout(font, text);
            if (HasFatalFailure()) return;
        }
    }
}

TEST(Shaping, EachScriptIsShapedByItsRules) {
    Qv::Ptr<iFont> const loaded = Glib::loadFont({"DejaVu Sans", 12});
    EXPECT_EQ(TextShaper(Font::of(*loaded), L"a \u0644\u0627").shape()->glyphs().size(), 2U) << "a ligature";
}

TEST(Shaping, KnownTextsComeFromTheCacheWhichStaysSmall) {
    Qv::Ptr<iFont> const loaded = Glib::loadFont({"DejaVu Sans", 12});
    Font const& font = Font::of(*loaded);
    TextLayouts::clear();
    TextLayoutPtr const first = TextLayouts::get(font, L"label");
    EXPECT_EQ(TextLayouts::get(font, L"label"), first);
    EXPECT_NE(TextLayouts::get(Font::of(*Glib::loadFont({"DejaVu Sans", 13})), L"label"), first);
    EXPECT_EQ(TextLayouts::statistics().hits, 1U);
    for (int i = 0; i < 40000; ++i) {
        TextLayouts::get(font, L"new text number " + std::to_wstring(i));
        TextLayouts::get(font, L"label");
    }
    EXPECT_LE(TextLayouts::statistics().bytes, 4U << 20);
    EXPECT_GT(TextLayouts::statistics().bytes, 3U << 20);
    EXPECT_EQ(TextLayouts::get(font, L"label"), first);
    auto const before = TextLayouts::statistics().misses;
    TextLayouts::get(font, L"new text number 0");
    EXPECT_EQ(TextLayouts::statistics().misses, before + 1);
    loaded->textWidth(LightweightString<wchar_t>(1000000, L'q'));
    EXPECT_EQ(TextLayouts::get(font, L"label"), first);
}

TEST(Shaping, BlocksEndBetweenClustersAndAfterBlanks) {
    std::wstring words;
    while (words.size() < 1000) words += L"words ";
    std::wstring marks(1000, L'\u0301');
    std::wstring clusters;
    while (clusters.size() < 1000) clusters += L"e\u0301\u0302";
    for (std::wstring const& text : {words, marks, clusters}) {
        std::size_t total = 0;
        forEachBlock(text, [&](std::wstring_view block, std::size_t start) {
            EXPECT_EQ(start, total);
            EXPECT_TRUE(!block.empty() && block.size() <= TextLayout::maxLength);
            total += block.size();
            EXPECT_TRUE(text != words || total == text.size() || block.back() == L' ');
            EXPECT_TRUE(text != clusters || total == text.size() || total % 3 == 0);
            return true;
        });
        EXPECT_EQ(total, text.size());
    }
}

TEST(FontFinder, UsualTextsNeedNoConfiguration) {
    Qv::Ptr<iFont> const loaded = Glib::loadFont({"DejaVu Sans", 12});
    loaded->textWidth(L"Text with \u00E9, \t, \u200B, \u2026 and \u0416");
    Glib::loadFont({"DejaVu Sans Mono", 12, Glib::eFontBold})->textWidth(L"code");
    EXPECT_FALSE(FontFinder::hasAskedConfiguration());
    loaded->textWidth(L"\u6F22");
    EXPECT_TRUE(FontFinder::hasAskedConfiguration());
}

} // namespace
} // namespace wainscot
