#include "host/drawing/font.h"
#include "host/drawing/symbols.h"
#include "host/drawing/uif_std.h"
#include "tests/drawing_fixture.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace wainscot {
namespace {

using testing::PaintedWindow;
using Text = LightweightString<wchar_t>;

constexpr std::uint32_t white = 0xFFFFFFFF;

Qv::Ptr<iFont> standardFont(unsigned short size = 12) {
    return Glib::loadFont({"DejaVu Sans", size});
}

void draw(PaintedWindow& window, Glib::TextDescription const& text) {
    CanvasRenderer renderer = window.renderer();
    renderer.renderPrimitive(text);
}

TEST(Text, CoversWhatItMeasures) {
    for (double const scale : {1.0, 1.25, 1.5, 2.0, 3.0}) {
        PaintedWindow window({300, 40}, scale);
        Glib::TextDescription const text(L"HillH Wainscot 0123 H", {20, 12}, standardFont(), Colour());
        draw(window, text);
        IntBox const bounds = text.calcBounds();
        EXPECT_EQ(bounds.size(), XY<int>(standardFont()->textWidth(text.text), standardFont()->lineHeight()));
        IntBox const ink = window.inkBox();
        IntBox const box = window.surface.deviceBox(bounds);
        // The letters at both ends stand about one pixel inside their advance.
        EXPECT_NEAR(ink.x1, box.x1 + scale, scale + 1) << scale;
        EXPECT_NEAR(ink.x2, box.x2 - scale, scale + 1) << scale;
        EXPECT_GE(ink.y1, box.y1);
        EXPECT_LE(ink.y2, box.y2);
    }
}

TEST(Text, MeasuresAlikeAtEveryScaleAndAlignment) {
    Text const label(L"Import selected clips");
    int const width = standardFont()->textWidth(label);
    EXPECT_GT(width, 80);
    for (TextAlignment const align : {eAlignLeft, eAlignRight, eAlignCentre}) {
        PaintedWindow window({400, 40}, 2.0);
        Glib::TextDescription const text(label, {200, 12}, standardFont(), Colour(), align);
        draw(window, text);
        int const left = align == eAlignLeft ? 200 : align == eAlignRight ? 200 - width : 200 - width / 2;
        EXPECT_EQ(text.calcBounds().x1, left);
        EXPECT_NEAR(window.inkBox().x1, 2 * left, 4);
        EXPECT_NEAR(window.inkBox().x2, 2 * (left + width), 4);
    }
}

TEST(Text, GapsRunFromTheStartToTheEnd) {
    Text const text(L"AVATAR fi To, waffle\u00E9");
    Qv::Ptr<iFont> const font = standardFont(17);
    int const length = static_cast<int>(text.size());
    EXPECT_EQ(font->prefixWidth(text, 0), 0);
    EXPECT_EQ(font->prefixWidth(text, length), font->textWidth(text));
    EXPECT_EQ(font->prefixWidth(text, 1000), font->textWidth(text));
    for (int i = 1; i <= length; ++i) {
        EXPECT_GT(font->prefixWidth(text, i), font->prefixWidth(text, i - 1)) << i;
        EXPECT_EQ(font->characterAtX(text, font->prefixWidth(text, i)), i);
        EXPECT_NEAR(font->prefixWidth(text, i), font->textWidth(text.substr(0, static_cast<std::size_t>(i))),
                    3);
    }
    EXPECT_EQ(font->characterAtX(text, -50), 0);
    EXPECT_EQ(font->characterAtX(text, 5000), length);
}

TEST(Text, SurvivesAnythingAsCodePoints) {
    std::mt19937 random(3);
    Qv::Ptr<iFont> const font = standardFont();
    PaintedWindow window({100, 30});
    constexpr std::uint32_t odd[] = {0,      0xD800, 0xDFFF,  0x110000, 0xFFFFFFFF, 0x80000000,
                                     0x200D, 0x301,  0x5D0,   0x627,    0xFFFE,     '\n',
                                     '\r',   'a',    0x1F600, 0x202E,   0xFE0F,     0x1F1E6};
    for (int round = 0; round < 60; ++round) {
        Text text;
        for (auto i = random() % 300; i > 0; --i)
            text.push_back(static_cast<wchar_t>(odd[random() % std::size(odd)]));
        draw(window, Glib::TextDescription(text, {0, 10}, font, Colour()));
        int const length = static_cast<int>(text.size());
        int const found = font->characterAtX(text, static_cast<int>(random() % 200));
        EXPECT_TRUE(found >= 0 && found <= length);
        EXPECT_LE(font->textWidth(Glib::fitTextToWidth(font, text, 50)), 50);
        for (int method = iFont::eSeekPrevChar; method <= iFont::eSeekAbsolute; ++method) {
            int const at =
                font->seek(text, static_cast<int>(random() % 310), iFont::eCharSeekMethod(method), 5);
            EXPECT_TRUE(at >= 0 && at <= length);
        }
    }
}

TEST(Text, AMillionCharactersAreMeasuredAndDrawn) {
    Text const text(1000000, L'm');
    Qv::Ptr<iFont> const font = standardFont();
    EXPECT_NEAR(font->textWidth(text), 1e6 * font->textWidth(L"mmmmmmmmmm") / 10, 5e4);
    PaintedWindow window({100, 30});
    draw(window, Glib::TextDescription(text, {-200000, 10}, font, Colour()));
    EXPECT_EQ(window.inkBox().width(), 100);
    EXPECT_EQ(font->prefixWidth(text, 500000) / 100, font->textWidth(text) / 200);
}

TEST(Text, DefaultFaceNeedsNoConfigurationAndMissingOnesAreReplaced) {
    EXPECT_EQ(Glib::loadFont({"No Such Face", 12})->textWidth(L"width"), standardFont()->textWidth(L"width"));
    Qv::Ptr<iFont> const fixed = Glib::loadFont({"No Such Mono", 12});
    EXPECT_TRUE(fixed->isFixedPitch());
    EXPECT_EQ(fixed->textWidth(L"iiii"), fixed->textWidth(L"MMMM"));
    EXPECT_FALSE(standardFont()->isFixedPitch());
    EXPECT_EQ(standardFont().get(), standardFont().get());
    EXPECT_EQ(Glib::loadFont({"", 0})->size(), 1);
    EXPECT_GT(Glib::loadFont({"", 12, Glib::eFontBold})->textWidth(L"weight"),
              standardFont()->textWidth(L"weight"));
}

TEST(Text, LineStandsInTheMiddleOfABox) {
    Qv::Ptr<iFont> const font = standardFont();
    for (int height = 1; height < 60; ++height) {
        int const baseline = getFontYOffset(height, font);
        int const below = baseline - font->descent();
        int const above = height - baseline - font->ascent();
        EXPECT_LE(std::abs(below - above), 1) << height;
    }
}

TEST(Text, SeekStepsByClustersAndWords) {
    Qv::Ptr<iFont> const font = standardFont();
    Text const text(L"ab e\u0301\u0302 \U0001F468\u200D\U0001F469\u200D\U0001F467 x\r\ny");
    std::vector<int> stops{0};
    while (stops.back() < static_cast<int>(text.size()))
        stops.push_back(font->seek(text, stops.back(), iFont::eSeekNextChar));
    EXPECT_EQ(stops, (std::vector<int>{0, 1, 2, 3, 6, 7, 12, 13, 14, 16, 17}));
    std::vector<int> back{17};
    while (back.back() > 0) back.push_back(font->seek(text, back.back(), iFont::eSeekPrevChar));
    EXPECT_EQ(std::vector<int>(back.rbegin(), back.rend()), stops);
    for (int x = 0; x < font->textWidth(text) + 5; ++x)
        EXPECT_TRUE(std::count(stops.begin(), stops.end(), font->characterAtX(text, x))) << x;

    Text const words(L"  one  two ");
    EXPECT_EQ(font->seek(words, 0, iFont::eSeekNextWord), 5);
    EXPECT_EQ(font->seek(words, 5, iFont::eSeekNextWord), 10);
    EXPECT_EQ(font->seek(words, 10, iFont::eSeekNextWord), 11);
    EXPECT_EQ(font->seek(words, 11, iFont::eSeekPrevWord), 7);
    EXPECT_EQ(font->seek(words, 7, iFont::eSeekPrevWord), 2);
    EXPECT_EQ(font->seek(words, 2, iFont::eSeekPrevWord), 0);
    EXPECT_EQ(font->seek(words, 4, iFont::eSeekStart), 0);
    EXPECT_EQ(font->seek(words, 4, iFont::eSeekEnd), 11);
    EXPECT_EQ(font->seek(words, 4, iFont::eSeekAbsolute, 99), 11);
    EXPECT_EQ(font->seek(words, 4, iFont::eSeekAbsolute), 4);
}

TEST(Text, MissingGlyphsComeFromOtherFaces) {
    PaintedWindow window({200, 40});
    draw(window, Glib::TextDescription(L"\u6F22", {5, 10}, standardFont(20), Colour()));
    std::size_t const ink = window.pixelCount() - window.countOf(white);
    window.clear();
    draw(window, Glib::TextDescription(L"\U000E1234", {5, 10}, standardFont(20), Colour()));
    std::size_t const boxInk = window.pixelCount() - window.countOf(white);
    EXPECT_NE(ink, boxInk);
    EXPECT_GT(ink, 60U);
    EXPECT_NEAR(standardFont(20)->textWidth(L"\u6F22\u5B57"), 40, 3);
}

TEST(Text, ManyFlagsInARowStayWhole) {
    std::wstring flags;
    for (int i = 0; i < 100; ++i) flags += L"\U0001F1E9\U0001F1EA";
    Text const text{std::wstring_view(flags)};
    for (int i = 0; i < 200; i += 2) {
        EXPECT_EQ(standardFont()->seek(text, i, iFont::eSeekNextChar, iFont::currentIndex), i + 2);
        EXPECT_EQ(standardFont()->seek(text, i + 2, iFont::eSeekPrevChar, iFont::currentIndex), i);
    }
}

TEST(Text, RightToLeftTextRunsTheOtherWay) {
    Qv::Ptr<iFont> const font = standardFont();
    Text const hebrew(L"\u05D0\u05D1\u05D2");
    EXPECT_EQ(font->prefixWidth(hebrew, 0), font->textWidth(hebrew));
    EXPECT_EQ(font->prefixWidth(hebrew, 3), 0);
    EXPECT_EQ(font->characterAtX(hebrew, 0), 3);
    // Within a left-to-right line only the Hebrew word is turned round.
    Text const mixed(L"ab \u05D0\u05D1\u05D2 cd");
    EXPECT_LT(font->prefixWidth(mixed, 1), font->prefixWidth(mixed, 2));
    EXPECT_GT(font->prefixWidth(mixed, 3), font->prefixWidth(mixed, 4));
    EXPECT_EQ(font->prefixWidth(mixed, 9), font->textWidth(mixed));
}

/// Hebrew words; only the first letter reaches below the line.
Text longHebrewText() {
    Text text(L"\u05E7");
    for (int i = 1; i < 500; ++i) text.push_back(i % 6 ? L'\u05D0' : L' ');
    return text;
}

TEST(Text, ALongRightToLeftTextBeginsAtItsRightEnd) {
    Qv::Ptr<iFont> const font = standardFont();
    Text const hebrew = longHebrewText();
    int const width = font->textWidth(hebrew);
    EXPECT_EQ(font->prefixWidth(hebrew, 0), width);
    EXPECT_EQ(font->prefixWidth(hebrew, 500), 0);
    for (int i = 1; i <= 500; ++i) {
        ASSERT_LT(font->prefixWidth(hebrew, i), font->prefixWidth(hebrew, i - 1)) << i;
        ASSERT_EQ(font->characterAtX(hebrew, font->prefixWidth(hebrew, i)), i);
    }
    EXPECT_EQ(font->characterAtX(hebrew, width + 50), 0);
    EXPECT_EQ(font->characterAtX(hebrew, -50), 500);
    PaintedWindow window({width + 20, 30});
    draw(window, Glib::TextDescription(hebrew, {10, 10}, font, Colour()));
    EXPECT_NEAR(window.inkBox().width(), width, 3);
    int leftmost = width;
    for (int y = 20; y < 30; ++y)
        for (int x = width + 19; x >= 0; --x)
            if (window.device(x, y) != white) leftmost = std::min(leftmost, x);
    EXPECT_NEAR(leftmost, width + 5, 6);
}

TEST(Text, DirectionsMeetAcrossTheBlocksOfALongText) {
    Qv::Ptr<iFont> const font = standardFont();
    Text const hebrew = longHebrewText();
    Text const mixed = L"abc " + hebrew + L" (123) xyz";
    int const start = font->textWidth(L"abc ");
    int const end = start + font->textWidth(hebrew);
    // The line runs from left to right, and all the Hebrew in it the other way.
    EXPECT_NEAR(font->prefixWidth(mixed, 2), font->textWidth(L"ab"), 1);
    EXPECT_NEAR(font->prefixWidth(mixed, 4), end + font->textWidth(L" (123)"), 10);
    EXPECT_LT(font->prefixWidth(mixed, 300), font->prefixWidth(mixed, 200));
    EXPECT_EQ(font->prefixWidth(mixed, 514), font->textWidth(mixed));
    EXPECT_EQ(font->characterAtX(mixed, font->textWidth(mixed) - 1), 514);
    EXPECT_EQ(font->characterAtX(mixed, 0), 0);
}

TEST(FittedText, IsTheLongestBeginningThatFits) {
    Qv::Ptr<iFont> const font = standardFont();
    Text const text(L"Import selected clips, e\u0301tude");
    int const full = font->textWidth(text);
    std::size_t longest = 0;
    for (int width = 0; width <= full + 3; ++width) {
        bool cut = false;
        Text const fitted = Glib::fitTextToWidth(font, text, static_cast<unsigned short>(width), &cut);
        EXPECT_LE(font->textWidth(fitted), width);
        EXPECT_GE(fitted.size(), longest);
        EXPECT_EQ(cut, width < full) << width;
        EXPECT_TRUE(!cut || fitted.empty() || fitted.back() == Glib::ellipsis) << width;
        EXPECT_NE(fitted.view().substr(0, 25), L"Import selected clips, e\u2026");
        longest = fitted.size();
        Text const end = clipStringToFit(text, static_cast<unsigned short>(width), true, font);
        EXPECT_LE(font->textWidth(end), width);
        EXPECT_TRUE(!cut || end.empty() || end[0] == Glib::ellipsis) << width;
        EXPECT_TRUE(end.empty() || !cut || text.endsWith(end.view().substr(1))) << width;
    }
    EXPECT_EQ(Glib::fitTextToWidth(font, text, 1000), text);
    EXPECT_EQ(clipStringToFit(text, 1000, true, font), text);
}

TEST(FittedText, DropsControlCharactersAndIsQuickOnLongTexts) {
    Qv::Ptr<iFont> const font = standardFont();
    EXPECT_EQ(Glib::fitTextToWidth(font, L"a\tb\nc\x7f", 100), Text(L"abc"));
    Text const text(1000000, L'x');
    Text const fitted = Glib::fitTextToWidth(font, text, 100);
    EXPECT_NEAR(static_cast<double>(fitted.size()), 100.0 / font->textWidth(L"xxxxxxxxxx") * 10, 3);
    EXPECT_NEAR(static_cast<double>(clipStringToFit(text, 100, true, font).size()),
                static_cast<double>(fitted.size()), 1);
}

TEST(FittedText, KnowsLongRightToLeftTexts) {
    Qv::Ptr<iFont> const font = standardFont();
    Text const text = longHebrewText();
    int const full = font->textWidth(text);
    for (int const limit : {60, full / 2, full - 1}) {
        auto const width = static_cast<unsigned short>(limit);
        for (bool const keepEnd : {false, true}) {
            Text const fitted = clipStringToFit(text, width, keepEnd, font);
            EXPECT_LE(font->textWidth(fitted), width);
            EXPECT_GT(font->textWidth(fitted), width - 20);
            // Where the text goes on: at the left of a beginning, at the right of an end.
            int const at = static_cast<int>(keepEnd ? 0 : fitted.size() - 1);
            EXPECT_EQ(fitted[static_cast<std::size_t>(at)], Glib::ellipsis);
            EXPECT_EQ(font->prefixWidth(fitted, at + 1) < 2, !keepEnd);
        }
    }
    EXPECT_EQ(Glib::fitTextToWidth(font, text, static_cast<unsigned short>(full)), text);
}

TEST(Symbols, AreOneSizeWideAndDrawnInAnyFont) {
    for (int number = 0; number < 128; ++number) {
        Text const symbol = getString(QvTTF::eGlyph(number));
        if (symbol.empty()) continue;
        EXPECT_EQ(standardFont(15)->textWidth(L"ab" + symbol), standardFont(15)->textWidth(L"ab") + 15);
        PaintedWindow window({40, 40}, 1.5);
        draw(window, Glib::TextDescription(symbol, {10, 10}, standardFont(16), Colour()));
        IntBox const ink = window.inkBox();
        EXPECT_FALSE(ink.isEmpty()) << number;
        EXPECT_TRUE(window.surface.deviceBox({10, 6, 26, 28}).contains(ink)) << number;
    }
    EXPECT_FALSE(getString(QvTTF::eFoldClosed).empty());
    EXPECT_TRUE(getString(QvTTF::eGlyph(127)).empty());
    EXPECT_TRUE(getString(QvTTF::eGlyph(126)).empty());
}

} // namespace
} // namespace wainscot
