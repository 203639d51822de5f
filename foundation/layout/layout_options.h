#pragma once

#include "host/base/xy.h"

#include <cstdint>

namespace wainscot {

/// Where an item lies in the room that its layout gives it, along one axis. Start is the left edge (the right
/// one for languages that are read from right to left), or the upper one.
enum class LayoutAlign : std::uint8_t {
    /// As large as the room, up to its maximum.
    fill,
    /// In its natural size, as the three others.
    start,
    centre,
    end,
};

/// What the sizes of `LayoutOptions` are counted in.
enum class LayoutUnit : std::uint8_t {
    pixel,
    /// `UifStd::getButtonHeight()`, whatever it is at the time of the layout: such sizes follow the text
    /// size.
    buttonHeight,
};

/// How a layout treats an item. Sizes below 0 are those of the item itself.
struct LayoutOptions {
    /// Its share of the room that is left over, against the others: along the row or the column of a
    /// `BoxLayout`; in a `GridLayout` that of its column.
    int stretch = 0;
    LayoutAlign horizontal = LayoutAlign::fill;
    LayoutAlign vertical = LayoutAlign::fill;
    /// Instead of its natural size, its minimum, and no limit.
    XY<int> size{-1, -1};
    XY<int> minimum{-1, -1};
    XY<int> maximum{-1, -1};
    LayoutUnit unit = LayoutUnit::pixel;

    friend bool operator==(LayoutOptions const&, LayoutOptions const&) = default;
};

} // namespace wainscot
