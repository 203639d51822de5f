#include "gallery/page.h"
#include "gallery/sheet.h"

#include "host/base/convert.h"
#include "host/drawing/symbols.h"
#include "host/drawing/uif_std.h"

namespace wainscot::gallery {

namespace {

void drawSymbols(SheetCursor& cursor) {
    CanvasRenderer& renderer = cursor.renderer();
    IntBox const area = cursor.area();
    Palette const& palette = cursor.palette();
    cursor.note(L"Symbols are characters that are drawn as shapes, in any font and size");
    Glib::FontDesc desc = UifStd::getFont();
    for (int const size : {12, 18, 28}) {
        desc.size = toSize16(UifStd::calcScaledValue(static_cast<float>(size)));
        Qv::Ptr<iFont> const font = Glib::loadFont(desc);
        IntBox row = cursor.row(font->lineHeight());
        int x = row.x1;
        for (int glyph = 0; glyph < QvTTF::codePointCount; ++glyph) {
            LightweightString<wchar_t> const symbol = getString(static_cast<QvTTF::eGlyph>(glyph));
            if (symbol.empty() || font->textWidth(symbol) == 0) continue;
            int const step = font->textWidth(symbol) + UifStd::getRowGap();
            if (x + step > area.x2) {
                row = cursor.row(font->lineHeight());
                x = row.x1;
            }
            renderer.renderPrimitive(Glib::TextDescription(symbol, {x, row.y1 + font->descent()}, font,
                                                           palette.mark(eMarkNormal)));
            x += step;
        }
    }
}

std::unique_ptr<Glob> make(XY<int> size, LogLine) {
    return std::make_unique<Sheet>(size, drawSymbols);
}

} // namespace

extern Page const symbolsPage = {"symbols",
                                 L"Symbols",
                                 PageGroup::drawing,
                                 L"The marks that are drawn as part of texts.",
                                 "gallery/pages/symbols_page.cpp",
                                 make};

} // namespace wainscot::gallery
