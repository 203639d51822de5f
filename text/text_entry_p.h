#pragma once

#include "host/events/one_shot_timer.h"
#include "text/text_entry.h"

#include <utility>

namespace wainscot {

/// What a box needs while text is selected in it.
struct TextEntry::Selecting {
    explicit Selecting(TextEntry& box)
        : scroll([&box] { box.scrollWhileSelecting(); }), offer([&box] { box.offerSelection(); }) {}

    Unit unit = Unit::character;
    /// What the press itself selected; the selection always contains it.
    std::pair<int, int> pressed;
    /// As it was before the press.
    int cursorBefore = 0;
    TextSelection selectionBefore;
    /// Where the pointer is, in the box.
    XY<int> pointer;
    /// Goes on selecting while the pointer is held beside the box.
    OneShotTimer scroll;
    /// Lets other programs have what is selected.
    OneShotTimer offer;
};

} // namespace wainscot
