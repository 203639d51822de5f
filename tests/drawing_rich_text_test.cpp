#include "host/drawing/html_renderer.h"
#include "host/drawing/syntax_highlighting_renderer.h"
#include "host/drawing/word_wrapping_text_renderer.h"
#include "tests/drawing_fixture.h"

#include <gtest/gtest.h>
#include <random>
#include <sstream>

namespace wainscot {
namespace {

using testing::PaintedWindow;
using Text = LightweightString<wchar_t>;

Glib::FontDesc const standard("DejaVu Sans", 12);

/// The lines, each with a "|" behind it.
std::wstring wrapped(Text const& text, int width) {
    std::wstring lines;
    std::size_t count = 0;
    Glib::WordWrappingTextRenderer renderer(Glib::loadFont(standard), width);
    renderer.processString(text, [&](Text const& line, std::size_t index) {
        EXPECT_EQ(index, count++);
        lines += std::wstring(line.view()) + L"|";
        return true;
    });
    return lines;
}

TEST(WordWrapping, BreaksAtBlanksAndLineFeeds) {
    int const width = Glib::loadFont(standard)->textWidth(L"one two");
    EXPECT_EQ(wrapped(L"one two three four", width), L"one two|three|four|");
    EXPECT_EQ(wrapped(L"one two", width), L"one two|");
    EXPECT_EQ(wrapped(L"one\n\ntwo\n", width), L"one||two||");
    EXPECT_EQ(wrapped(L"one two three four", 0), L"one two three four|");
    EXPECT_EQ(wrapped(L"", 50), L"|");
}

TEST(WordWrapping, LosesNoCharacterAndKeepsTheWidth) {
    std::mt19937 random(4);
    Qv::Ptr<iFont> const font = Glib::loadFont(standard);
    for (int round = 0; round < 100; ++round) {
        std::wstring text;
        for (auto i = random() % 400; i > 0; --i)
            text +=
                random() % 7 ? static_cast<wchar_t>((round % 2 ? L'a' : L'\u05D0') + random() % 26) : L' ';
        int const width = 1 + static_cast<int>(random() % 150);
        std::wstring shown;
        std::wistringstream lines(wrapped(Text(std::wstring_view(text)), width));
        for (std::wstring line; std::getline(lines, line, L'|'); shown += line)
            EXPECT_TRUE(line.size() < 2 || font->textWidth(Text(std::wstring_view(line))) <= width + 1 ||
                        line.back() == L' ');
        std::erase(text, L' ');
        std::erase(shown, L' ');
        EXPECT_EQ(shown, text);
    }
    EXPECT_GT(wrapped(Text(200000, L'x'), 100).size(), 209000U);
    // A word of more than one block, the first of which fills the line.
    Text const block(256, L'i');
    EXPECT_EQ(wrapped(block + Text(40, L'w'), font->textWidth(block)).find(L'|'), 256U);
}

TEST(WordWrapping, LinesNameTheirCharactersAndAreDrawnFromTheTop) {
    Text const text(L"one two\nthree");
    Glib::WordWrappingTextRenderer renderer(Glib::loadFont(standard), 45);
    ASSERT_EQ(renderer.analyse(text), 3U);
    EXPECT_EQ(text.substr(renderer.lines()[1].start, renderer.lines()[1].length), Text(L"two"));
    EXPECT_EQ(renderer.lines()[2].start, 8U);
    EXPECT_EQ(renderer.lines()[2].width, Glib::loadFont(standard)->textWidth(L"three"));
    EXPECT_EQ(renderer.size().y, 3 * Glib::loadFont(standard)->lineHeight());
    EXPECT_LE(renderer.size().x, 45);
    PaintedWindow window({120, 60});
    window.paint([&](auto& r) {
        renderer.renderString(r, L"several words that take more lines", {10, 10, 110, 50}, Colour());
    });
    EXPECT_GT(renderer.lines().size(), 2U);
    IntBox const ink = window.inkBox();
    EXPECT_TRUE(IntBox(9, 10, 111, 50).contains(ink)) << "cut off at the box";
    EXPECT_LE(ink.y1, 14);
}

TEST(WordWrapping, DrawsTheMiddleOfAFarLongerText) {
    Qv::Ptr<iFont> const font = Glib::loadFont(standard);
    Text lines;
    for (int i = 0; i < 5000; ++i) lines += i == 3000 ? L"Here\n" : L"\n";
    Glib::WordWrappingTextRenderer text(font, 100);
    text.analyse(lines);
    for (double const scale : {1.0, 1.5}) {
        PaintedWindow window({120, 60}, scale), expected({120, 60}, scale);
        int const top = 30 + 3000 * font->lineHeight();
        window.paint([&](auto& renderer) {
            text.renderString(renderer, lines, {10, top - 5001 * font->lineHeight(), 110, top}, Colour());
        });
        expected.draw(Glib::TextDescription(L"Here", {10, 30 - font->ascent()}, font, Colour()));
        EXPECT_EQ(window.inkBox(), expected.inkBox());
        EXPECT_FALSE(window.inkBox().isEmpty());
    }
}

TEST(Html, TellsRichTextFromOrdinary) {
    for (wchar_t const* rich : {L"<b>x</b>", L"a<br>b", L"<P>text", L"see <a href='x>y'>here</a>", L"x<br/>"})
        EXPECT_TRUE(HTMLRenderer::isHTML(rich)) << rich;
    for (wchar_t const* plain :
         {L"a < b", L"x <b", L"<bold>", L"a<3 && b>2", L"<>", L"</", L"clip <1>.mov", L"a <b <c>", L""})
        EXPECT_FALSE(HTMLRenderer::isHTML(plain)) << plain;
}

TEST(Html, ParsesSpansParagraphsAndCharacters) {
    auto const text =
        HTMLRenderer::parse(L"<p>One  <b>bold <i>both</i></b>\n &lt;x&gt;<br> two &#65;&#x42; &nope; <y></p>"
                            L"<p>see <a href=\"http://a/?b&amp;c\">link</a></p>",
                            Palette());
    ASSERT_EQ(text->size(), 2U);
    std::wstring spans;
    for (auto const& span : (*text)[0].spans)
        spans += std::wstring(span.text.view()) + (span.style & Glib::eFontBold ? L"(b" : L"(") +
                 (span.style & Glib::eFontItalic ? L"i)" : L")");
    EXPECT_EQ(spans, L"One ()bold (b)both(bi) <x>\ntwo AB &nope; <y>()");
    EXPECT_EQ((*text)[1].spans[1].url, Text(L"http://a/?b&c"));
    EXPECT_NE((*text)[1].spans[1].colour, (*text)[1].spans[0].colour);
    EXPECT_TRUE(HTMLRenderer::parse(L"", Palette())->empty());
}

TEST(Html, WrapsMeasuresAndFindsLinks) {
    auto const text = HTMLRenderer::parse(L"plain words <a href='target'>and a link</a> after", Palette());
    int const widest = HTMLRenderer::calcMaxWidth(*text, standard);
    EXPECT_EQ(HTMLRenderer::calcNumDisplayLines(*text, standard, widest), 1);
    EXPECT_EQ(HTMLRenderer::calcNumDisplayLines(*text, standard, widest / 2 + 10), 2);
    EXPECT_EQ(HTMLRenderer::calcHeight(*text, standard, widest), Glib::loadFont(standard)->lineHeight());
    IntBox const area(10, 10, 10 + widest, 60);
    Qv::Ptr<iFont> const font = Glib::loadFont(standard);
    int const left = 10 + font->textWidth(L"plain words ");
    int const right = left + font->textWidth(L"and a link");
    for (int x = 0; x < widest + 20; ++x) {
        bool const onLink = x > left && x < right - 1;
        bool const offLink = x < left - 1 || x > right + 1;
        bool const found = HTMLRenderer::getURLAtPosition(*text, standard, area, {x, 55}) == Text(L"target");
        EXPECT_TRUE(found ? !offLink : !onLink) << x;
    }
    EXPECT_TRUE(HTMLRenderer::getURLAtPosition(*text, standard, area, {left + 5, 30}).empty());
    PaintedWindow window({300, 70});
    window.paint([&](auto& renderer) { HTMLRenderer::render(renderer, *text, standard, area); });
    EXPECT_NEAR(window.inkBox().width(), widest, 4);
    EXPECT_EQ(window.surface.pixelAt({left + 4, 60 - font->ascent() - 2}) & 0xFFFFFF,
              Palette().mark(eMarkAccent).getAsLong());
}

TEST(Html, KeepsWordsOfSeveralStylesTogether) {
    auto const linesAt = [](wchar_t const* source, wchar_t const* width) {
        return HTMLRenderer::calcNumDisplayLines(*HTMLRenderer::parse(source, Palette()), standard,
                                                 Glib::loadFont(standard)->textWidth(width));
    };
    // The full stop takes the word before it along: "see the" and "manual. It".
    EXPECT_EQ(linesAt(L"see the <a href='x'>manual</a>. It", L"see the manual"), 2);
    IntBox const area(0, 0, Glib::loadFont(standard)->textWidth(L"see the manual"), 40);
    auto const text = HTMLRenderer::parse(L"see the <a href='x'>manual</a>. It", Palette());
    EXPECT_EQ(HTMLRenderer::getURLAtPosition(*text, standard, area, {5, 20}), Text(L"x"));
    EXPECT_EQ(linesAt(L"a un<i>believ</i>able b", L"unbelievable "), 3);
    // A word that fits on no line is broken where its style changes.
    EXPECT_EQ(linesAt(L"un<i>believ</i>able", L"believ "), 3);
}

TEST(Html, PaintsAndFindsInTheMiddleOfALongTextWhatAShortOneWould) {
    // Two texts of which the same line is in sight, one of them far up in a long text.
    std::wstring source;
    for (int i = 0; i < 20'000; ++i)
        source += L"<p>piece <b>bold</b> <a href='" + std::to_wstring(i) + L"'>link</a>";
    auto const text = HTMLRenderer::parse(Text(source), Palette());
    int const line = Glib::loadFont(standard)->lineHeight();
    int const step = line + line / 2;
    EXPECT_EQ(HTMLRenderer::calcHeight(*text, standard, 300), 20'000 * step - line / 2);
    int const left = Glib::loadFont(standard)->textWidth(L"piece ") +
                     Glib::loadFont({standard.name, standard.size, Glib::eFontBold})->textWidth(L"bold ");
    auto const paint = [&](PaintedWindow& window, HTMLRenderer::Paragraphs const& what, int top) {
        window.paint([&](auto& renderer) {
            HTMLRenderer::render(renderer, what, standard, {0, top - 500'000, 300, top});
        });
    };
    auto const lone = HTMLRenderer::parse(L"<p>piece <b>bold</b> <a href='x'>link</a>", Palette());
    PaintedWindow expected({300, 30});
    paint(expected, *lone, 28);
    for (int const number : {0, 1, 9'999, 19'999}) {
        PaintedWindow window({300, 30});
        int const top = 28 + number * step;
        paint(window, *text, top);
        for (int y = 28 - line; y < 28; ++y)
            for (int x = 0; x < 300; ++x)
                ASSERT_EQ(window.surface.pixelAt({x, y}), expected.surface.pixelAt({x, y})) << x << " " << y;
        IntBox const area(0, top - 500'000, 300, top);
        std::wstring const url = std::to_wstring(number);
        EXPECT_EQ(HTMLRenderer::getURLAtPosition(*text, standard, area, {left + 3, 27}), Text(url));
        EXPECT_EQ(HTMLRenderer::getURLAtPosition(*text, standard, area, {left + 3, 28 - line}), Text(url));
        EXPECT_TRUE(HTMLRenderer::getURLAtPosition(*text, standard, area, {left + 3, 27 - line}).empty());
    }
}

TEST(Html, EndsOnAnyInput) {
    std::mt19937 random(8);
    wchar_t const letters[] = L"<>/ab=\"'&;#x brpi\n";
    for (int round = 0; round < 3000; ++round) {
        Text text;
        for (auto i = random() % 60; i > 0; --i) text += letters[random() % (std::size(letters) - 1)];
        HTMLRenderer::isHTML(text);
        HTMLRenderer::calcNumDisplayLines(*HTMLRenderer::parse(text, Palette()), standard, 20);
    }
    EXPECT_FALSE(HTMLRenderer::isHTML(Text(200000, L'<')));
}

TEST(SyntaxHighlighting, ColoursKeyWordsInPlace) {
    Qv::Ptr<iFont> const font = Glib::loadFont(standard);
    Text const line(L"print int (int_x, int) (print) HHH");
    SyntaxHighightingRenderer highlighter(font);
    highlighter.addKeyWord(L"print", Colour());
    for (double const scale : {1.0, 1.25, 3.0}) {
        PaintedWindow plain({300, 30}, scale), black({300, 30}, scale);
        plain.draw(Glib::TextDescription(line, {5, 10}, font, Colour()));
        black.paint([&](auto& renderer) { highlighter.render(renderer, line, {5, 10}, Colour()); });
        EXPECT_TRUE(plain.picture() == black.picture()) << scale;
    }
    highlighter.addKeyWord(L"int", Colour(0, 0.5, 0));
    EXPECT_TRUE(highlighter.isKeyWord(L"int"));
    PaintedWindow coloured({300, 30});
    coloured.paint([&](auto& renderer) { highlighter.render(renderer, line, {5, 10}, Colour()); });
    IntBox words;
    for (int x = 0; x < 300; ++x)
        for (int y = 0; y < 30; ++y)
            if ((coloured.device(x, y) >> 8 & 0xFF) > (coloured.device(x, y) & 0xFF) + 20)
                words = words.unitedWith({x, y, x + 1, y + 1});
    EXPECT_NEAR(words.x1, 5 + font->textWidth(L"print "), 2);
    EXPECT_NEAR(words.x2, 5 + font->textWidth(L"print int (int_x, int"), 2);
}

} // namespace
} // namespace wainscot
