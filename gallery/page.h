#pragma once

#include "host/objects/glob.h"

#include <functional>
#include <memory>
#include <span>

namespace wainscot::gallery {

/// Takes one line about something that happened on a page.
using LogLine = std::function<void(LightweightString<wchar_t> const&)>;

/// One page of the gallery.
struct Page {
    /// As it stands on the command line and in file names.
    char const* name;
    wchar_t const* title;
    /// Makes the contents for an area of that size; they may keep `log` for as long as they live.
    std::unique_ptr<Glob> (*make)(XY<int> size, LogLine log);
    /// Whether it fits itself into any room, and need not be scrolled, but where it says what it needs.
    bool fitsAnywhere = false;
};

/// All pages, in the order in which they are listed.
std::span<Page const> pages();
/// Null when there is none of that name.
Page const* findPage(LightweightString<char> const& name);

std::unique_ptr<Glob> makeGlobsPage(XY<int> size, LogLine log);
std::unique_ptr<Glob> makePlacementPage(XY<int> size, LogLine log);
std::unique_ptr<Glob> makePalettePage(XY<int> size, LogLine log);
std::unique_ptr<Glob> makeShapesPage(XY<int> size, LogLine log);
std::unique_ptr<Glob> makeTextPage(XY<int> size, LogLine log);
std::unique_ptr<Glob> makeSymbolsPage(XY<int> size, LogLine log);
std::unique_ptr<Glob> makeIconsPage(XY<int> size, LogLine log);
std::unique_ptr<Glob> makeLongTextPage(XY<int> size, LogLine log);
std::unique_ptr<Glob> makeWindowsPage(XY<int> size, LogLine log);
std::unique_ptr<Glob> makeKeysPage(XY<int> size, LogLine log);
std::unique_ptr<Glob> makePointerPage(XY<int> size, LogLine log);
std::unique_ptr<Glob> makeClipboardPage(XY<int> size, LogLine log);
std::unique_ptr<Glob> makeDraggingPage(XY<int> size, LogLine log);
std::unique_ptr<Glob> makePanelPage(XY<int> size, LogLine log);
std::unique_ptr<Glob> makeButtonsPage(XY<int> size, LogLine log);
std::unique_ptr<Glob> makeChoicesPage(XY<int> size, LogLine log);
std::unique_ptr<Glob> makeFormPage(XY<int> size, LogLine log);
std::unique_ptr<Glob> makeScrollPage(XY<int> size, LogLine log);
std::unique_ptr<Glob> makeTimelinePage(XY<int> size, LogLine log);
std::unique_ptr<Glob> makeRatingPage(XY<int> size, LogLine log);
std::unique_ptr<Glob> makeTabOrderPage(XY<int> size, LogLine log);
std::unique_ptr<Glob> makeBindingPage(XY<int> size, LogLine log);

} // namespace wainscot::gallery
