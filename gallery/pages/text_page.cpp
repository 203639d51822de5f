#include "gallery/page.h"
#include "gallery/sheet.h"

#include "host/base/convert.h"
#include "host/drawing/html_renderer.h"
#include "host/drawing/syntax_highlighting_renderer.h"
#include "host/drawing/uif_std.h"
#include "host/drawing/word_wrapping_text_renderer.h"

#include <string>

namespace wainscot::gallery {

namespace {

struct Sample {
    wchar_t const* script;
    wchar_t const* text;
};

constexpr Sample samples[] = {
    {L"Latin", L"Grumpy wizards make toxic brew \u2014 \u00c5ngstr\u00f6m, na\u00efve, \u0141\u00f3d\u017a"},
    {L"Combining", L"e\u0301 n\u0303 o\u0308\u0323 a\u030a\u0301"},
    {L"Greek", L"\u039e\u03b5\u03c3\u03ba\u03b5\u03c0\u03ac\u03b6\u03c9 \u03c4\u03b7\u03bd "
               L"\u03c8\u03c5\u03c7\u03bf\u03c6\u03b8\u03cc\u03c1\u03b1"},
    {L"Cyrillic", L"\u0421\u044a\u0435\u0448\u044c \u0436\u0435 \u0435\u0449\u0451 \u044d\u0442\u0438\u0445 "
                  L"\u043c\u044f\u0433\u043a\u0438\u0445"},
    {L"Hebrew", L"\u05e9\u05dc\u05d5\u05dd \u05e2\u05d5\u05dc\u05dd 123"},
    {L"Arabic", L"\u0627\u0644\u0633\u0644\u0627\u0645 \u0639\u0644\u064a\u0643\u0645 \u2014 42"},
    {L"Devanagari", L"\u0928\u092e\u0938\u094d\u0924\u0947 \u0926\u0941\u0928\u093f\u092f\u093e"},
    {L"Chinese", L"\u4f60\u597d\uff0c\u4e16\u754c"},
    {L"Mixed", L"abc \u05d0\u05d1\u05d2 def \u0627\u0628 123"},
};

void line(SheetCursor& cursor, Qv::Ptr<iFont> const& font, LightweightString<wchar_t> const& text, int x,
          IntBox const& row, Colour const& ink) {
    cursor.renderer().renderPrimitive(Glib::TextDescription(text, {x, row.y1 + font->descent()}, font, ink));
}

void drawScripts(SheetCursor& cursor) {
    Palette const& palette = cursor.palette();
    Qv::Ptr<iFont> const small = Glib::loadFont(UifStd::getFont());
    Qv::Ptr<iFont> const font = Glib::loadFont(UifStd::getTitleFont());
    for (Sample const& sample : samples) {
        IntBox const row = cursor.row(font->lineHeight());
        line(cursor, small, sample.script, row.x1, row, palette.text(eTextSecondary));
        line(cursor, font, sample.text, row.x1 + UifStd::getButtonHeight() * 4, row,
             palette.text(eTextEnabled));
    }
}

/// More than a row holds, from right to left: what begins it stands at the right, and its end is cut off.
void drawLongRightToLeftText(SheetCursor& cursor) {
    std::wstring text;
    for (int number = 1; text.size() < 600; ++number) {
        text += L"[" + std::to_wstring(number) + L"] ";
        text += number % 2
                    ? L"\u05e9\u05dc\u05d5\u05dd \u05e2\u05d5\u05dc\u05dd, "
                    : L"\u0627\u0644\u0633\u0644\u0627\u0645 \u0639\u0644\u064a\u0643\u0645 (clip 4:2) ";
    }
    Qv::Ptr<iFont> const font = Glib::loadFont(UifStd::getFont());
    IntBox const row = cursor.row(font->lineHeight());
    cursor.renderer().setClipRect(row);
    cursor.renderer().renderPrimitive(Glib::TextDescription(
        LightweightString<wchar_t>(std::wstring_view(text)), {row.x2, row.y1 + font->descent()}, font,
        cursor.palette().text(eTextEnabled), eAlignRight));
    cursor.renderer().clearClipRect();
}

void drawStyles(SheetCursor& cursor) {
    IntBox const row = cursor.row(UifStd::getButtonHeight());
    int x = row.x1;
    for (unsigned int const style : {0u, 1u, 2u, 3u}) {
        for (int const size : {11, 14, 18}) {
            Glib::FontDesc desc = Glib::getDefaultFont(style);
            desc.size = toSize16(UifStd::calcScaledValue(static_cast<float>(size)));
            Qv::Ptr<iFont> const font = Glib::loadFont(desc);
            line(cursor, font, L"Aag", x, row, cursor.palette().text(eTextEnabled));
            x += font->textWidth(L"Aag") + UifStd::getRowGap() * 2;
        }
    }
}

void drawLongTexts(SheetCursor& cursor) {
    Palette const& palette = cursor.palette();
    LightweightString<wchar_t> const plain = L"Words are wrapped to the width of their box, a line at a "
                                             L"time, and what does not fit is cut off at its end.";
    LightweightString<wchar_t> const rich =
        L"<p>Rich text knows <b>bold</b>, <i>italic</i>, <b><i>both</i></b>,<br>breaks and "
        L"<a href=\"https://example.org\">links</a>.</p>";
    IntBox const row = cursor.row(UifStd::getButtonHeight() * 3);
    int const third = row.width() / 3;
    IntBox const left(row.x1, row.y1, row.x1 + third - UifStd::getRowGap(), row.y2);
    Qv::Ptr<iFont> const font = Glib::loadFont(UifStd::getFont());
    Glib::WordWrappingTextRenderer(font, left.width())
        .renderString(cursor.renderer(), plain, left, palette.text(eTextEnabled));
    IntBox const middle = left.translated({third, 0});
    HTMLRenderer::render(cursor.renderer(), *HTMLRenderer::parse(rich, palette), UifStd::getFont(), middle);
    Glib::FontDesc const fixed("DejaVu Sans Mono", UifStd::getFont().size);
    SyntaxHighightingRenderer code(Glib::loadFont(fixed));
    for (wchar_t const* word : {L"for", L"int", L"return"}) code.addKeyWord(word, palette.mark(eMarkAccent));
    XY<int> place{middle.x1 + third, row.y2 - font->lineHeight()};
    for (wchar_t const* source : {L"for (int i = 0; i < n; ++i)", L"    sum += values[i];", L"return sum;"}) {
        code.render(cursor.renderer(), source, place, palette.text(eTextEnabled));
        place.y -= font->lineHeight();
    }
}

void drawText(SheetCursor& cursor) {
    cursor.note(L"Many scripts, with fonts that are installed");
    drawScripts(cursor);
    drawLongRightToLeftText(cursor);
    cursor.note(L"Styles and sizes");
    drawStyles(cursor);
    cursor.note(L"Wrapped, rich and highlighted text");
    drawLongTexts(cursor);
}

std::unique_ptr<Glob> make(XY<int> size, LogLine) {
    return std::make_unique<Sheet>(size, drawText);
}

} // namespace

extern Page const textPage = {"text",
                              L"Text",
                              PageGroup::drawing,
                              L"Scripts, styles, alignment and wrapping.",
                              "gallery/pages/text_page.cpp",
                              make};

} // namespace wainscot::gallery
