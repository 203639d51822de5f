#include "gallery/page.h"
#include "gallery/sheet.h"

#include "host/base/convert.h"
#include "host/drawing/shapes.h"
#include "host/drawing/uif_std.h"

namespace wainscot::gallery {

namespace {

struct Ground {
    wchar_t const* name;
    Colour colour;
};

struct Ink {
    wchar_t const* name;
    Colour colour;
};

std::vector<Ground> groundsOf(Palette const& palette) {
    return {{L"Window", palette.window(eWindowNormal)},
            {L"Recessed", palette.window(eWindowRecessed)},
            {L"Raised", palette.window(eWindowRaised)},
            {L"Alternate", palette.window(eWindowAlternate)},
            {L"Button", palette.button()},
            {L"Warning", palette.warning()},
            {L"Child panel", palette.childWindow(eChildPanel)},
            {L"Child text", palette.childWindow(eChildText)},
            {L"Pop-up", palette.childWindow(eChildPopup)}};
}

std::vector<Ink> inksOf(Palette const& palette) {
    return {{L"Text", palette.text(eTextEnabled)},      {L"Secondary", palette.text(eTextSecondary)},
            {L"Disabled", palette.text(eTextDisabled)}, {L"Heading", palette.headingText()},
            {L"Subheading", palette.subheadingText()},  {L"Edge", palette.mark(eMarkEdge)},
            {L"Mark", palette.mark(eMarkNormal)},       {L"Focus", palette.mark(eMarkFocus)},
            {L"Accent", palette.mark(eMarkAccent)},     {L"Wrong", palette.mark(eMarkWarning)}};
}

void text(CanvasRenderer& renderer, IntBox const& cell, LightweightString<wchar_t> const& words,
          Colour const& ink) {
    Qv::Ptr<iFont> const font = Glib::loadFont(UifStd::getFont());
    auto const fitted = Glib::fitTextToWidth(font, words, toSize16(cell.width() - UifStd::getWidgetGap()));
    renderer.renderPrimitive(Glib::TextDescription(
        fitted, {cell.centre().x, cell.y1 + getFontYOffset(cell.height(), font)}, font, ink, eAlignCentre));
}

/// Every ground as a row, every ink as a column; the cells show the ink and its contrast with the ground.
void drawTable(SheetCursor& cursor) {
    CanvasRenderer& renderer = cursor.renderer();
    IntBox const area = cursor.area();
    Palette const& palette = cursor.palette();
    cursor.note(
        L"Contrast of each ink on each ground: at least 4.5 for text, 2.5 for disabled text, 3 for marks.");
    std::vector<Ink> const inks = inksOf(palette);
    int const columns = static_cast<int>(inks.size()) + 1;
    int const width = area.width() / columns;
    int const height = UifStd::getButtonHeight();
    auto const cellOf = [&](IntBox const& row, int column) {
        return IntBox(row.x1 + column * width, row.y1, row.x1 + (column + 1) * width, row.y2);
    };
    IntBox const head = cursor.row(height);
    for (int i = 1; i < columns; ++i)
        text(renderer, cellOf(head, i), inks[static_cast<std::size_t>(i - 1)].name,
             palette.text(eTextSecondary));
    for (Ground const& ground : groundsOf(palette)) {
        IntBox const row = cursor.row(height);
        Glib::drawOutlinedRect(renderer, ground.colour, palette.separator(), row);
        text(renderer, cellOf(row, 0), ground.name, palette.text(eTextEnabled));
        for (int i = 1; i < columns; ++i) {
            Ink const& ink = inks[static_cast<std::size_t>(i - 1)];
            double const contrast = contrastRatio(ink.colour, ground.colour);
            text(renderer, cellOf(row, i), Qv::WStringFromFloat(contrast, 1, false), ink.colour);
        }
    }
    IntBox const row = cursor.row(height);
    std::vector<Ground> const accents = {{L"Do it ", palette.doIt()},
                                         {L"Selection ", palette.selection(eSelectionActive)},
                                         {L"Selection elsewhere ", palette.selection(eSelectionInactive)}};
    int const third = row.width() / static_cast<int>(accents.size());
    IntBox cell(row.x1, row.y1, row.x1 + third, row.y2);
    for (Ground const& accent : accents) {
        renderer.renderPrimitive(Glib::RectDescription(cell, accent.colour));
        Colour const ink = palette.text(eTextSelected);
        double const contrast = contrastRatio(ink, accent.colour);
        text(renderer, cell,
             LightweightString<wchar_t>(accent.name) + Qv::WStringFromFloat(contrast, 1, false), ink);
        cell = cell.translated({third, 0});
    }
}

std::unique_ptr<Glob> make(XY<int> size, LogLine) {
    return std::make_unique<Sheet>(size, drawTable);
}

} // namespace

extern Page const palettePage = {"palette",
                                 L"Palette",
                                 PageGroup::drawing,
                                 L"The colours of the current theme, by their roles.",
                                 "gallery/pages/palette_page.cpp",
                                 make};

} // namespace wainscot::gallery
