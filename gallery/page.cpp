#include "gallery/page.h"

namespace wainscot::gallery {

std::span<Page const> pages() {
    static constexpr Page list[] = {
        {"globs", L"Globs", makeGlobsPage},       {"placement", L"Placement", makePlacementPage},
        {"palette", L"Palette", makePalettePage}, {"shapes", L"Shapes", makeShapesPage},
        {"text", L"Text", makeTextPage},          {"symbols", L"Symbols", makeSymbolsPage},
        {"icons", L"Icons", makeIconsPage},       {"longtext", L"Long text", makeLongTextPage},
        {"windows", L"Windows", makeWindowsPage}, {"panel", L"Panels", makePanelPage},
    };
    return list;
}

Page const* findPage(LightweightString<char> const& name) {
    for (Page const& page : pages())
        if (name == page.name) return &page;
    return nullptr;
}

} // namespace wainscot::gallery
