#include "gallery/pages/timeline_panel.h"

namespace wainscot::gallery {

namespace {

std::unique_ptr<Glob> make(XY<int> size, LogLine log) {
    return std::make_unique<TimelinePanel>(size, std::move(log));
}

} // namespace

extern Page const timelinePage = {"timeline",
                                  L"Timeline",
                                  PageGroup::showcase,
                                  L"An hour with thousands of clips, of which only those in sight are drawn.",
                                  "gallery/pages/timeline_page.cpp",
                                  make};

} // namespace wainscot::gallery
