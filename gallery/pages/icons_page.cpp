#include "gallery/page.h"
#include "gallery/sheet.h"

#include "host/drawing/shapes.h"
#include "host/drawing/standard_icons.h"
#include "host/drawing/uif_std.h"

namespace wainscot::gallery {

namespace {

int scaled(int extent) {
    return UifStd::calcScaledValue(static_cast<float>(extent));
}

/// The icons side by side from the left of `area`; answers how many of them found room.
std::size_t drawIcons(CanvasRenderer& renderer, IntBox const& area, int extent, std::size_t first) {
    std::span<std::wstring_view const> const names = Glib::standardIconNames();
    int const step = extent + UifStd::getWidgetGap() * 2;
    std::size_t drawn = 0;
    for (int x = area.x1; first + drawn < names.size() && x + extent <= area.x2; x += step, ++drawn) {
        LightweightString<wchar_t> const name(names[first + drawn]);
        IntBox const box = IntBox::sized({x, area.centre().y - extent / 2}, {extent, extent});
        renderer.renderPrimitive(Glib::ImageDescription(Glib::loadIcon(name), box));
    }
    return drawn;
}

void drawOnGround(SheetCursor& cursor, eTheme theme, int extent) {
    Palette const palette = Palette::standard(theme);
    int const gap = UifStd::getWidgetGap();
    std::size_t const count = Glib::standardIconNames().size();
    for (std::size_t first = 0; first < count;) {
        IntBox const row = cursor.row(extent + gap * 2);
        CanvasRenderer& renderer = cursor.renderer();
        renderer.renderPrimitive(Glib::RectDescription(row, palette.window(eWindowNormal)));
        std::size_t const drawn = drawIcons(renderer, row.inset(gap), extent, first);
        if (drawn == 0) return;
        first += drawn;
    }
}

void drawSheet(SheetCursor& cursor) {
    cursor.note(L"Icons are shapes, drawn anew for every size; a missing one draws nothing");
    for (int const size : {16, 24, 48})
        for (eTheme const theme : {eThemeDark, eThemeLight}) drawOnGround(cursor, theme, scaled(size));
}

std::unique_ptr<Glob> make(XY<int> size, LogLine) {
    return std::make_unique<Sheet>(size, drawSheet);
}

} // namespace

extern Page const iconsPage = {"icons",
                               L"Icons",
                               PageGroup::drawing,
                               L"The icons that come with the toolkit, at several sizes.",
                               "gallery/pages/icons_page.cpp",
                               make};

} // namespace wainscot::gallery
