#include "host/base/recent_map.h"
#include "host/drawing/font.h"
#include "host/drawing/long_text.h"
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

TEST(Text, CoversWhatItMeasuresAtEveryScaleAndAlignment) {
    Text const label(L"HillH Wainscot 0123 H");
    int const width = standardFont()->textWidth(label);
    EXPECT_GT(width, 80);
    for (double const scale : {1.0, 1.25, 1.5, 2.0, 3.0})
        for (TextAlignment const align : {eAlignLeft, eAlignRight, eAlignCentre}) {
            PaintedWindow window({400, 40}, scale);
            Glib::TextDescription const text(label, {200, 12}, standardFont(), Colour(), align);
            window.draw(text);
            IntBox const bounds = text.calcBounds();
            EXPECT_EQ(bounds.size(), XY<int>(width, standardFont()->lineHeight()));
            EXPECT_EQ(bounds.x1, align == eAlignLeft    ? 200
                                 : align == eAlignRight ? 200 - width
                                                        : 200 - width / 2);
            IntBox const ink = window.inkBox();
            IntBox const box = window.surface.deviceBox(bounds);
            // The letters at both ends stand about one pixel inside their advance.
            EXPECT_NEAR(ink.x1, box.x1 + scale, scale + 1) << scale << " " << align;
            EXPECT_NEAR(ink.x2, box.x2 - scale, scale + 1) << scale << " " << align;
            EXPECT_TRUE(ink.y1 >= box.y1 && ink.y2 <= box.y2) << scale << " " << align;
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
        window.draw(Glib::TextDescription(text, {0, 10}, font, Colour()));
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
    window.draw(Glib::TextDescription(text, {-200000, 10}, font, Colour()));
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
        EXPECT_NEAR(baseline - font->descent(), height - baseline - font->ascent(), 1) << height;
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

    std::wstring flags;
    for (int i = 0; i < 100; ++i) flags += L"\U0001F1E9\U0001F1EA";
    Text const inARow{std::wstring_view(flags)};
    for (int i = 0; i < 200; i += 2) {
        EXPECT_EQ(font->seek(inARow, i, iFont::eSeekNextChar, iFont::currentIndex), i + 2);
        EXPECT_EQ(font->seek(inARow, i + 2, iFont::eSeekPrevChar, iFont::currentIndex), i);
    }

    Text const words(L"  one  two ");
    struct {
        iFont::eCharSeekMethod method;
        int from, to;
    } const steps[] = {
        {iFont::eSeekNextWord, 0, 5},  {iFont::eSeekNextWord, 5, 10}, {iFont::eSeekNextWord, 10, 11},
        {iFont::eSeekPrevWord, 11, 7}, {iFont::eSeekPrevWord, 7, 2},  {iFont::eSeekPrevWord, 2, 0},
        {iFont::eSeekStart, 4, 0},     {iFont::eSeekEnd, 4, 11},      {iFont::eSeekAbsolute, 4, 4}};
    for (auto const& [method, from, to] : steps) EXPECT_EQ(font->seek(words, from, method), to) << from;
    EXPECT_EQ(font->seek(words, 4, iFont::eSeekAbsolute, 99), 11);
}

TEST(Text, MissingGlyphsComeFromOtherFaces) {
    auto const inkOf = [](wchar_t const* text) {
        PaintedWindow window({200, 40});
        window.draw(Glib::TextDescription(text, {5, 10}, standardFont(20), Colour()));
        return window.pixelCount() - window.countOf(white);
    };
    EXPECT_NE(inkOf(L"\u6F22"), inkOf(L"\U000E1234")) << "the box of an unknown character";
    EXPECT_GT(inkOf(L"\u6F22"), 60U);
    EXPECT_NEAR(standardFont(20)->textWidth(L"\u6F22\u5B57"), 40, 3);
}

/// Hebrew words; only the first letter reaches below the line.
Text longHebrewText() {
    Text text(L"\u05E7");
    for (int i = 1; i < 500; ++i) text.push_back(i % 6 ? L'\u05D0' : L' ');
    return text;
}

TEST(Text, RightToLeftTextsRunTheOtherWay) {
    Qv::Ptr<iFont> const font = standardFont();
    for (Text const& hebrew : {Text(L"\u05D0\u05D1\u05D2"), longHebrewText()}) {
        int const width = font->textWidth(hebrew);
        int const length = static_cast<int>(hebrew.size());
        EXPECT_EQ(font->prefixWidth(hebrew, 0), width);
        EXPECT_EQ(font->prefixWidth(hebrew, length), 0);
        for (int i = 1; i <= length; ++i) {
            ASSERT_LT(font->prefixWidth(hebrew, i), font->prefixWidth(hebrew, i - 1)) << i;
            ASSERT_EQ(font->characterAtX(hebrew, font->prefixWidth(hebrew, i)), i);
        }
        EXPECT_EQ(font->characterAtX(hebrew, width + 50), 0);
        EXPECT_EQ(font->characterAtX(hebrew, -50), length);
        // Within a left-to-right line only the Hebrew is turned round.
        Text const mixed = L"abc " + hebrew + L" (123) xyz";
        int const end = font->textWidth(L"abc ") + width;
        EXPECT_NEAR(font->prefixWidth(mixed, 2), font->textWidth(L"ab"), 1);
        EXPECT_NEAR(font->prefixWidth(mixed, 4), end + font->textWidth(L" (123)"), 10);
        EXPECT_GT(font->prefixWidth(mixed, 5), font->prefixWidth(mixed, 3 + length));
        EXPECT_EQ(font->prefixWidth(mixed, length + 14), font->textWidth(mixed));
        EXPECT_EQ(font->characterAtX(mixed, font->textWidth(mixed) - 1), length + 14);
        EXPECT_EQ(font->characterAtX(mixed, 0), 0);
    }
    // The first letter, which alone reaches below the line, is drawn at the right end.
    Text const text = longHebrewText();
    int const width = font->textWidth(text);
    PaintedWindow window({width + 20, 30});
    window.draw(Glib::TextDescription(text, {10, 10}, font, Colour()));
    EXPECT_NEAR(window.inkBox().width(), width, 3);
    int leftmost = width;
    for (int y = 20; y < 30; ++y)
        for (int x = width + 19; x >= 0; --x)
            if (window.device(x, y) != white) leftmost = std::min(leftmost, x);
    EXPECT_NEAR(leftmost, width + 5, 6);
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
        window.draw(Glib::TextDescription(symbol, {10, 10}, standardFont(16), Colour()));
        IntBox const ink = window.inkBox();
        EXPECT_FALSE(ink.isEmpty()) << number;
        EXPECT_TRUE(window.surface.deviceBox({10, 6, 26, 28}).contains(ink)) << number;
    }
    EXPECT_FALSE(getString(QvTTF::eFoldClosed).empty());
    EXPECT_TRUE(getString(QvTTF::eGlyph(127)).empty());
    EXPECT_TRUE(getString(QvTTF::eGlyph(126)).empty());
}

TEST(RecentMapTest, TheOneAskedForLongestAgoGoes) {
    RecentMap<std::string, int> map(3);
    map.add("a", 1);
    map.add("b", 2);
    map.add("c", 3);
    ASSERT_TRUE(map.find("a"));
    map.add("d", 4);
    EXPECT_FALSE(map.find("b"));
    EXPECT_EQ(*map.find("a"), 1);
    EXPECT_EQ(map.add("a", 5), 5);
    EXPECT_EQ(map.size(), 3u);
    map.clear();
    EXPECT_FALSE(map.find("a"));
    EXPECT_EQ(map.add("a", 6), 6);
}

TEST(LoadedFonts, AreKeptWhileInUseAndForALimitedTime) {
    Qv::Ptr<iFont> const held = Glib::loadFont({"DejaVu Sans", 900});
    EXPECT_EQ(Glib::loadFont({"DejaVu Sans", 900}), held);
    int const width = held->textWidth(L"held");
    for (unsigned short size = 100; size < 600; ++size) Glib::loadFont({"DejaVu Sans", size});
    EXPECT_EQ(held->refCount(), 1u) << "nobody else keeps it any more";
    EXPECT_EQ(held->textWidth(L"held"), width);
    EXPECT_EQ(Glib::loadFont({"DejaVu Sans", 900})->textWidth(L"held"), width);
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

TEST(LongText, PlacesStayRightWhereverTheTextIsChanged) {
    std::mt19937 random(16);
    // All of its characters are equally wide, whatever stands beside them.
    Glib::LongText text(Glib::loadFont({"DejaVu Sans Mono", 15}));
    text.setText(std::wstring(64, L'x'));
    double const wide = text.width() / 64.0;
    auto const x = [&](std::size_t index) { return std::lround(static_cast<double>(index) * wide); };
    std::wstring reference(64, L'x');
    for (int round = 0; round < 1500; ++round) {
        std::size_t const index = random() % 3 ? reference.size() / 3 : random() % (reference.size() + 1);
        std::size_t const count = random() % 40 ? random() % 3 : random() % 4000;
        std::wstring const added(random() % 40 ? random() % 4 : random() % 5000,
                                 static_cast<wchar_t>(L'a' + round % 26));
        if (round % 2)
            text.replace(index, count, added);
        else
            text.replace(index, count, LightweightString<wchar_t>(std::wstring_view(added)));
        reference.replace(index, std::min(count, reference.size() - index), added);
        std::size_t const probe = random() % (reference.size() + 1);
        if (random() % 3 == 0) {
            ASSERT_EQ(text.gapX(probe), x(probe)) << round;
        }
        if (random() % 5 == 0) {
            ASSERT_EQ(text.indexAt(static_cast<int>(x(probe))), probe) << round;
        }
        if (random() % 5 == 0) {
            int const most = static_cast<int>(random() % 20000);
            ASSERT_EQ(text.widthUpTo(most), std::min<long>(most, x(reference.size()))) << round;
        }
        if (random() % 7 == 0) {
            ASSERT_EQ(text.width(), x(reference.size())) << round;
        }
        ASSERT_EQ(text.substr(probe, 20), reference.substr(probe, 20)) << round;
    }
    EXPECT_EQ(text.substr(0, text.length()), reference);
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
        PaintedWindow expected({200, 30}), drawn({200, 30});
        expected.draw(Glib::TextDescription(whole, {x, 10}, standardFont(), Colour()));
        drawn.paint([&](auto& renderer) { text.draw(renderer, {x, 10}, Colour()); });
        EXPECT_TRUE(drawn.picture() == expected.picture()) << x;
        EXPECT_FALSE(drawn.inkBox().isEmpty());
    }
}

} // namespace
} // namespace wainscot
