#pragma once

#include "host/objects/glob.h"

#include <functional>
#include <memory>
#include <span>

namespace wainscot::gallery {

/// Takes one line about something that happened on a page.
using LogLine = std::function<void(LightweightString<wchar_t> const&)>;

/// What the list of pages is divided into, in its order.
enum class PageGroup { showcase, controls, panels, drawing, testBench };
LightweightString<wchar_t> titleOf(PageGroup group);

/// One page of the gallery. Its source defines it, and `pages()` lists it.
struct Page {
    /// As it stands on the command line and in file names.
    char const* name;
    wchar_t const* title;
    PageGroup group;
    /// One line that says what is to be seen.
    wchar_t const* shows;
    /// Its source, from the root of the tree.
    char const* source;
    /// Makes the contents for an area of that size; they may keep `log` for as long as they live.
    std::unique_ptr<Glob> (*make)(XY<int> size, LogLine log);
};

/// All pages, group by group, in the order in which they are listed.
std::span<Page const* const> pages();
/// Null when there is none of that name.
Page const* findPage(LightweightString<char> const& name);

} // namespace wainscot::gallery
