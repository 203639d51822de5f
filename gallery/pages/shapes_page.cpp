#include "gallery/page.h"
#include "gallery/sheet.h"

#include "host/drawing/path.h"
#include "host/drawing/shapes.h"
#include "host/drawing/uif_std.h"

#include <cmath>
#include <numbers>

namespace wainscot::gallery {

namespace {

IntBox cellIn(IntBox const& row, int index, int count) {
    int const width = row.width() / count;
    return IntBox(row.x1 + index * width, row.y1, row.x1 + (index + 1) * width, row.y2)
        .inset(UifStd::getWidgetGap());
}

void drawRounded(SheetCursor& cursor) {
    cursor.note(L"Rounded boxes: radius 0 to 12, edges 1 to 3");
    IntBox const row = cursor.row(UifStd::getButtonHeight() * 2);
    Palette const& palette = cursor.palette();
    constexpr int count = 7;
    for (int i = 0; i < count; ++i)
        Glib::drawRoundedRect(cursor.renderer(), palette.button(), palette.mark(eMarkEdge),
                              cellIn(row, i, count), 1 + i / 3, static_cast<unsigned>(i * 2));
}

void drawDepths(SheetCursor& cursor) {
    cursor.note(L"Depth from sunken to raised, a recess, a frame, the mark of the focus");
    IntBox const row = cursor.row(UifStd::getButtonHeight() * 2);
    Palette const& palette = cursor.palette();
    constexpr int count = 8;
    for (int i = 0; i < 5; ++i)
        Glib::drawDepthBox(cursor.renderer(), palette.button(), cellIn(row, i, count), 2, i * 2 - 4);
    Glib::drawIndentBox(cursor.renderer(), palette.window(eWindowNormal), cellIn(row, 5, count));
    Glib::drawFrame(cursor.renderer(), palette.mark(eMarkNormal), cellIn(row, 6, count), 2);
    Glib::drawFocusRect(cursor.renderer(), cellIn(row, 7, count), palette.mark(eMarkFocus));
}

void drawSlanted(SheetCursor& cursor) {
    cursor.note(L"Ellipses and lines, smooth and not");
    IntBox const row = cursor.row(UifStd::getButtonHeight() * 3);
    Palette const& palette = cursor.palette();
    CanvasRenderer& renderer = cursor.renderer();
    constexpr int count = 5;
    renderer.renderPrimitive(Glib::EllipseDescription(cellIn(row, 0, count), palette.doIt()));
    renderer.renderPrimitive(Glib::EllipseDescription(cellIn(row, 1, count), palette.warning(), 3));
    for (bool const smooth : {true, false}) {
        renderer.setAntialiasingEnabled(smooth);
        IntBox const cell = cellIn(row, smooth ? 2 : 3, count);
        for (int i = 0; i <= 6; ++i)
            renderer.renderPrimitive(Glib::LineDescription(
                {cell.x1, cell.y1}, {cell.x2, cell.y1 + cell.height() * i / 6}, palette.mark(eMarkNormal)));
    }
    renderer.setAntialiasingEnabled(true);
    IntBox const cell = cellIn(row, 4, count);
    for (int i = 0; i < 4; ++i)
        renderer.renderPrimitive(Glib::RectDescription(cell.inset(i * 4).translated({i * 6, 0}),
                                                       i % 2 ? palette.doIt() : palette.warning(), 0.5));
}

/// A wave, as a path on the current canvas.
void drawPath(SheetCursor& cursor) {
    cursor.note(L"A path");
    IntBox const row = cursor.row(UifStd::getButtonHeight() * 3);
    Glib::StateSaver const saver;
    glib_setcanvas(cursor.renderer().canvas());
    glib_setcolour(cursor.palette().mark(eMarkAccent));
    glib_setlinewidth(2.0);
    glib_newpath();
    for (int x = 0; x <= row.width(); x += 4) {
        double const phase = 6.0 * std::numbers::pi * x / row.width();
        glib_lineto(row.x1 + x, row.centre().y + std::sin(phase) * row.height() * 0.4 * x / row.width());
    }
    glib_stroke();
}

void drawShapes(SheetCursor& cursor) {
    drawRounded(cursor);
    drawDepths(cursor);
    drawSlanted(cursor);
    drawPath(cursor);
}

std::unique_ptr<Glob> make(XY<int> size, LogLine) {
    return std::make_unique<Sheet>(size, drawShapes);
}

} // namespace

extern Page const shapesPage = {"shapes",
                                L"Shapes",
                                PageGroup::drawing,
                                L"Boxes, lines, curves and paths.",
                                "gallery/pages/shapes_page.cpp",
                                make};

} // namespace wainscot::gallery
