#include "gallery/page.h"

namespace wainscot::gallery {

// Each is defined in its own source.
extern Page const deskPage;
extern Page const timelinePage;
extern Page const buttonsPage;
extern Page const choicesPage;
extern Page const scrollPage;
extern Page const ratingPage;
extern Page const textBoxesPage;
extern Page const valueBoxesPage;
extern Page const gradingPage;
extern Page const notesPage;
extern Page const logPage;
extern Page const scriptsPage;
extern Page const scriptLinesPage;
extern Page const menusPage;
extern Page const dropDownsPage;
extern Page const tablePage;
extern Page const treePage;
extern Page const formPage;
extern Page const entryFormPage;
extern Page const panelPage;
extern Page const tabsPage;
extern Page const tabOrderPage;
extern Page const bindingPage;
extern Page const windowsPage;
extern Page const textPage;
extern Page const longTextPage;
extern Page const symbolsPage;
extern Page const iconsPage;
extern Page const shapesPage;
extern Page const palettePage;
extern Page const globsPage;
extern Page const placementPage;
extern Page const keysPage;
extern Page const pointerPage;
extern Page const clipboardPage;
extern Page const draggingPage;

LightweightString<wchar_t> titleOf(PageGroup group) {
    switch (group) {
    case PageGroup::showcase:
        return L"Showcase";
    case PageGroup::controls:
        return L"Controls";
    case PageGroup::panels:
        return L"Panels and windows";
    case PageGroup::drawing:
        return L"Text and drawing";
    case PageGroup::testBench:
        return L"Test bench";
    }
    return {};
}

std::span<Page const* const> pages() {
    static constexpr Page const* list[] = {
        &deskPage,       &timelinePage,  &buttonsPage, &choicesPage, &scrollPage,      &textBoxesPage,
        &valueBoxesPage, &notesPage,     &logPage,     &scriptsPage, &scriptLinesPage, &menusPage,
        &dropDownsPage,  &tablePage,     &treePage,    &ratingPage,  &bindingPage,     &gradingPage,
        &formPage,       &entryFormPage, &panelPage,   &tabsPage,    &tabOrderPage,    &windowsPage,
        &textPage,       &longTextPage,  &symbolsPage, &iconsPage,   &shapesPage,      &palettePage,
        &globsPage,      &placementPage, &keysPage,    &pointerPage, &clipboardPage,   &draggingPage,
    };
    return list;
}

Page const* findPage(LightweightString<char> const& name) {
    for (Page const* const page : pages())
        if (name == page->name) return page;
    return nullptr;
}

} // namespace wainscot::gallery
