#include "gallery/page.h"

namespace wainscot::gallery {

std::span<Page const> pages() {
    static constexpr Page list[] = {
        {"globs", L"Globs", makeGlobsPage},
        {"placement", L"Placement", makePlacementPage},
        {"palette", L"Palette", makePalettePage},
        {"shapes", L"Shapes", makeShapesPage},
        {"text", L"Text", makeTextPage},
        {"symbols", L"Symbols", makeSymbolsPage},
        {"icons", L"Icons", makeIconsPage},
        {"longtext", L"Long text", makeLongTextPage},
        {"windows", L"Windows", makeWindowsPage},
        {"keys", L"Keys", makeKeysPage},
        {"pointer", L"Pointer", makePointerPage},
        {"clipboard", L"Clipboard", makeClipboardPage},
        {"dragging", L"Dragging", makeDraggingPage},
        {"panel", L"Panels", makePanelPage},
        {"buttons", L"Buttons", makeButtonsPage},
        {"choices", L"Choices", makeChoicesPage},
        {"form", L"Forms", makeFormPage, true},
        {"scroll", L"Scrolling", makeScrollPage},
        {"timeline", L"Timeline", makeTimelinePage, true},
        {"rating", L"A control of your own", makeRatingPage},
        {"taborder", L"Tab order", makeTabOrderPage},
        {"binding", L"Value binding", makeBindingPage},
    };
    return list;
}

Page const* findPage(LightweightString<char> const& name) {
    for (Page const& page : pages())
        if (name == page.name) return &page;
    return nullptr;
}

} // namespace wainscot::gallery
