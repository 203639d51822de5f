#include "host/drawing/bidi_levels_p.h"
#include "host/drawing/long_text.h"
#include "host/drawing/text_line_p.h"
#include "host/drawing/text_shaper_p.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <tuple>

namespace wainscot {
namespace {

using Text = LightweightString<wchar_t>;

constexpr double tolerance = 0.02;

Qv::Ptr<iFont> standardFont() {
    return Glib::loadFont({"DejaVu Sans", 12});
}

/// All of a text as one block, whatever its length.
TextLayoutPtr oneBlock(std::wstring_view text) {
    return TextShaper(Font::of(*standardFont()), text).shape();
}

/// Words of both directions, numbers, brackets, marks, controls of direction, blanks.
std::wstring mixedText(std::mt19937& random, std::size_t length) {
    static std::vector<std::wstring> const alphabets = {
        L"abcdefgh",
        L"\u05D0\u05D1\u05D2\u05E9\u05DC\u05DD",
        L"\u0628\u0627\u0644\u0645\u0633\u0639\u064E",
        L"0123456789",
        L"\u0660\u0661\u0662",
        L"()[]<>.,:;-+/%\u20AC",
        L"a\u0301\u05D0\u05B8",
        L"\u202A\u202B\u202C\u202D\u202E\u2066\u2067\u2068\u2069\u200E\u200F",
        L"\U0001F600\u0416"};
    // Some texts have a few kinds of words only, as texts do.
    std::size_t const kinds = 2 + random() % (alphabets.size() - 1);
    std::size_t const first = random() % alphabets.size();
    std::wstring text;
    while (text.size() < length) {
        std::wstring const& letters = alphabets[(first + random() % kinds) % alphabets.size()];
        for (auto i = 1 + random() % 7; i > 0; --i) text += letters[random() % letters.size()];
        if (random() % 2 ||
            text.find(L' ', text.size() - std::min<std::size_t>(text.size(), 20)) == text.npos)
            text += L' ';
    }
    return text;
}

struct Glyph {
    double x, y;
    std::uint32_t index, face;

    auto key() const { return std::tuple(face, index, std::lround(x * 8), y); }
};

std::vector<Glyph> glyphsOf(TextLayout const& layout) {
    std::vector<Glyph> all;
    for (PlacedGlyph const& glyph : layout.glyphs())
        all.emplace_back(double(glyph.x), double(glyph.y), glyph.index, glyph.face);
    return all;
}

std::vector<Glyph> glyphsOf(TextLine const& line, double left = -1e9, double right = 1e9) {
    std::vector<Glyph> all;
    line.forEachVisible(left, right, [&](std::span<PlacedGlyph const> glyphs, double x) {
        for (PlacedGlyph const& glyph : glyphs)
            all.emplace_back(x + double(glyph.x), double(glyph.y), glyph.index, glyph.face);
    });
    return all;
}

/// Each glyph of `found` is one of `expected`, at its place.
void expectSameGlyphs(std::vector<Glyph> found, std::vector<Glyph> expected) {
    ASSERT_EQ(found.size(), expected.size());
    for (auto* glyphs : {&found, &expected}) std::ranges::sort(*glyphs, {}, &Glyph::key);
    for (std::size_t i = 0; i < found.size(); ++i) {
        ASSERT_EQ(found[i].index, expected[i].index);
        ASSERT_NEAR(found[i].x, expected[i].x, tolerance);
        ASSERT_NEAR(found[i].y, expected[i].y, tolerance);
    }
}

/// How far the nearest stop of a layout is.
double nearestDistance(TextLayout const& layout, double x) {
    return std::abs(double(layout.gap(layout.nearestStop(static_cast<float>(x)))) - x);
}

void expectLineLikeOneBlock(std::wstring const& text, std::mt19937& random) {
    Font const& font = Font::of(*standardFont());
    TextLayoutPtr const whole = oneBlock(text);
    TextLine const line(font, text);
    ASSERT_NEAR(line.width(), double(whole->width()), tolerance);
    for (std::size_t i = random() % 9; i <= text.size(); i += 1 + random() % 17)
        ASSERT_NEAR(TextLine::gap(font, text, i), double(whole->gap(i)), tolerance) << i;
    for (int probe = 0; probe < 12; ++probe) {
        double const x = static_cast<double>(random() % 1200) / 1000 * line.width() - 20;
        std::size_t const found = TextLine::nearestStop(font, text, x);
        ASSERT_TRUE(whole->isStop(found));
        ASSERT_NEAR(std::abs(double(whole->gap(found)) - x), nearestDistance(*whole, x), tolerance) << x;
    }
    expectSameGlyphs(glyphsOf(line), glyphsOf(*whole));
}

TEST(Bidi, OnlyCertainCharactersTurnALine) {
    for (std::uint32_t c = 1; c < 0x110000; c += c < 0x3000 || (c > 0xF000 && c < 0x20000) ? 1 : 97) {
        std::wstring const text{L'(', static_cast<wchar_t>(c), L')'};
        BidiLevels const levels(text);
        bool const turns = levels.runs().size() > 1 || levels.runs()[0].level > 0;
        ASSERT_TRUE(!turns || Bidi::mayTurn(text)) << std::hex << c;
    }
    for (wchar_t const* plain : {L"abc", L"\u2019\u2026\u6F22\u0416\uFEFF\u200E", L"\U0001F600"})
        EXPECT_FALSE(Bidi::mayTurn(plain));
    for (wchar_t const* turning : {L"abc\u05D0", L"\u0627", L"a\u202E", L"\u200F", L"\u2067", L"\U00010900"})
        EXPECT_TRUE(Bidi::mayTurn(turning));
    EXPECT_TRUE(Bidi::startsPlainly(L"12 a \u05D0", 4));
    EXPECT_FALSE(Bidi::startsPlainly(L"12 a \u05D0", 3));
    EXPECT_TRUE(Bidi::startsPlainly(L"12 a b", 3));
}

std::vector<int> levelsOf(std::wstring const& line) {
    std::vector<int> all;
    BidiLevels const levels(line);
    for (BidiLevels::Run const& run : levels.runs()) all.resize(run.end, run.level);
    return all;
}

TEST(Bidi, LettersSideBySideAreAnalysedTogether) {
    std::mt19937 random(17);
    // Letters of the same directions that are looked at one by one.
    auto const alone = [](wchar_t c) {
        if ((c >= L'A' && c <= L'Z') || (c >= L'a' && c <= L'z')) return L'\u0416';
        if (c >= 0x5D0 && c <= 0x5EA) return L'\uFB2A';
        return c >= 0x620 && c <= 0x64A ? L'\uFB50' : c;
    };
    for (int round = 0; round < 300; ++round) {
        std::wstring const line = mixedText(random, 1 + random() % 300) + L"a\u0301b AzZ\u05EA\u05D0";
        std::wstring single = line;
        std::ranges::transform(line, single.begin(), alone);
        ASSERT_EQ(levelsOf(line), levelsOf(single)) << round;
    }
    // What stands beside the letters in the order of characters is none, or a mark.
    for (wchar_t const beside : {L'@', L'[', L'`', L'{', L'\u064B'}) {
        EXPECT_TRUE(BidiLevels(std::wstring{beside, L'\u05D0'}).isRightToLeft()) << int(beside);
        EXPECT_FALSE(BidiLevels(std::wstring{beside, L'a'}).isRightToLeft()) << int(beside);
    }
}

TEST(Bidi, LinesOfSeveralBlocksAreThoseOfOne) {
    std::mt19937 random(11);
    std::mt19937 probes(12);
    std::wstring const numbers(600, L'7');
    // Letters that join across blocks, with marks and without.
    std::wstring withMarks;
    while (withMarks.size() < 700) withMarks += L"\u0633\u064E\u0651";
    std::vector<std::wstring> texts = {std::wstring(700, L'\u0628'), withMarks};
    // Marks on numbers, behind letters that run against their script.
    for (wchar_t const* letters : {L"\u05D0", L"\u0628"})
        texts.push_back(L"\u202D" + (letters + numbers) + L"0\u0301 \u0661\u064E");
    // What comes later may turn a beginning without letters.
    for (wchar_t const* end : {L"", L"abc", L" \u05D0", L"a\u05D0", L"\u0627 abc"})
        texts.push_back(L"12 (" + numbers + L") 5 " + end);
    for (std::size_t i = 0; i < 60 + texts.size(); ++i) {
        expectLineLikeOneBlock(i < 60 ? mixedText(random, 200 + random() % 1200) : texts[i - 60], probes);
        ASSERT_FALSE(testing::Test::HasFailure()) << i;
    }
}

TEST(Bidi, OnlyWhatIsSeenIsVisited) {
    std::wstring text;
    for (int i = 0; i < 3000; ++i) text += i % 7 ? L'\u05D0' : L' ';
    TextLine const line(Font::of(*standardFont()), text);
    std::vector<Glyph> const seen = glyphsOf(line, 5000, 5100);
    EXPECT_GT(seen.size(), 10U);
    EXPECT_LT(seen.size(), 600U);
    auto const inside = [](Glyph const& g) { return g.x >= 5000 && g.x <= 5100; };
    std::vector<Glyph> const all = glyphsOf(line);
    EXPECT_EQ(std::count_if(seen.begin(), seen.end(), inside), std::count_if(all.begin(), all.end(), inside));
}

TEST(Bidi, EditedTextsStandAsOneBlock) {
    std::mt19937 random(14);
    Glib::LongText text(standardFont());
    std::wstring reference;
    for (int round = 0; round < 150; ++round) {
        std::size_t const index = random() % (reference.size() + 1);
        std::size_t const count = random() % 3 ? random() % 4 : random() % 300;
        std::wstring const added = mixedText(random, random() % (round % 10 ? 8 : 900));
        text.replace(index, count, added);
        reference.replace(index, std::min(count, reference.size() - index), added);
        TextLayoutPtr const whole = oneBlock(reference);
        ASSERT_EQ(text.substr(0, text.length()), reference);
        ASSERT_NEAR(text.width(), double(whole->width()), 1) << round;
        for (std::size_t i = 0; i <= reference.size(); i += 1 + random() % 3)
            ASSERT_NEAR(text.gapX(i), double(whole->gap(i)), 1) << round << " " << i;
        int const x = static_cast<int>(random() % 4000);
        ASSERT_NEAR(std::abs(double(whole->gap(text.indexAt(x))) - x), nearestDistance(*whole, x), 1);
    }
    Glib::LongText const copy = text;
    text.setFont(Glib::loadFont({"DejaVu Sans", 24}));
    EXPECT_NEAR(text.width(), 2.0 * copy.width(), copy.width() * 0.05);
    text.setText(L"plain");
    EXPECT_EQ(text.gapX(5), text.width());
    EXPECT_EQ(copy.length(), reference.size());
}

/// What each character covers.
std::vector<Glib::LongText::Span> characterSpans(Glib::LongText const& text, std::wstring const& line) {
    std::vector<Glib::LongText::Span> all;
    BidiLevels const levels(line);
    for (BidiLevels::Run const& run : levels.runs()) {
        for (std::size_t i = run.start; i < run.end; ++i) {
            auto const own = text.spans(i, i + 1, -1, 1 << 20);
            all.push_back(own.empty() ? Glib::LongText::Span{text.gapX(i), text.gapX(i)} : own[0]);
            EXPECT_LE(own.size(), 1U);
            EXPECT_EQ(run.isRightToLeft() ? all[i].right : all[i].left, text.gapX(i)) << i;
        }
    }
    return all;
}

/// The spans of some characters, joined.
std::vector<Glib::LongText::Span> joined(std::vector<Glib::LongText::Span> spans) {
    std::erase_if(spans, [](auto const& span) { return span.left == span.right; });
    std::ranges::sort(spans, {}, &Glib::LongText::Span::left);
    std::vector<Glib::LongText::Span> all;
    for (auto const& span : spans) {
        if (all.empty() || all.back().right != span.left) all.push_back(span);
        all.back().right = span.right;
    }
    return all;
}

TEST(Bidi, SpansCoverEachCharacterOnceFromItsGap) {
    std::mt19937 random(15);
    for (int round = 0; round < 40; ++round) {
        std::wstring const line = round % 4 ? mixedText(random, random() % 700) + L'x'
                                            : std::wstring(400, L'w') + L" plain " + std::wstring(400, L'w');
        Glib::LongText text(standardFont());
        text.setText(line);
        auto const spans = characterSpans(text, line);
        Glib::LongText::Span const whole{0, text.width()};
        ASSERT_EQ(joined(spans), std::vector{whole});
        for (int probe = 0; probe < 30; ++probe) {
            std::size_t const from = random() % line.size();
            std::size_t const to = from + 1 + random() % (line.size() - from);
            auto expected = joined({spans.begin() + static_cast<std::ptrdiff_t>(from),
                                    spans.begin() + static_cast<std::ptrdiff_t>(to)});
            ASSERT_EQ(text.spans(from, to, 0, whole.right), expected) << round;
            int const left = static_cast<int>(random() % 1500);
            int const right = left + static_cast<int>(random() % 1500);
            for (auto& span : expected) span = {std::max(span.left, left), std::min(span.right, right)};
            std::erase_if(expected, [](auto const& span) { return span.left >= span.right; });
            Glib::LongText fresh(standardFont());
            fresh.setText(line);
            ASSERT_EQ(fresh.spans(from, to, left, right), expected) << round;
        }
    }
}

TEST(Bidi, ALineIsPlainAgainWithoutWhatTurnedIt) {
    std::wstring plain;
    for (int i = 0; i < 2000; ++i) plain += i % 6 == 5 ? L' ' : static_cast<wchar_t>(L'a' + i * 7 % 26);
    Glib::LongText text(standardFont());
    text.setText(plain);
    int const middle = text.gapX(1000);
    int const end = text.width();
    text.replace(500, 0, L"\u05D0\u05D1\u05D2");
    EXPECT_GT(text.gapX(500), text.gapX(502));
    EXPECT_GT(text.gapX(1003), middle + 15);
    EXPECT_GT(text.width(), end + 15);
    text.replace(500, 3, L"");
    EXPECT_NEAR(text.gapX(1000), middle, 1);
    EXPECT_NEAR(text.width(), end, 1);
    EXPECT_EQ(text.indexAt(text.gapX(1000)), 1000U);
}

} // namespace
} // namespace wainscot
