#pragma once

#include "host/base/lightweight_string.h"

#include <string_view>
#include <vector>

namespace wainscot {

/// The syntax of labels: "shown", "shown|ignored", "shown||at the right", "shown||[option] [option]".
namespace MenuLabel {

using View = std::wstring_view;

/// Up to the first "|".
View shown(View label);
/// Behind the first "||"; empty without one.
View atRight(View label);

/// What stands at the right.
struct Parts {
    /// The texts in brackets.
    std::vector<View> options;
    /// All the rest. A bracket that is not closed belongs to it, with everything behind.
    LightweightString<wchar_t> plain;
};
Parts partsAtRight(View label);

} // namespace MenuLabel
} // namespace wainscot
