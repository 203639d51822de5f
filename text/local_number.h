#pragma once

#include "host/base/lightweight_string.h"

#include <optional>

namespace wainscot {

/// The sign that typesetters use for "-".
inline constexpr wchar_t trueMinus = 0x2212;

/// A text that is a number as people write it in some language, as number boxes take it: "." before the
/// decimals, no separators between thousands, "-" for every kind of minus. Blanks round it are left out. A
/// lone comma counts as the decimal sign unless exactly three digits follow it. Nothing for other texts.
WAINSCOT_API std::optional<LightweightString<wchar_t>> plainNumber(LightweightString<wchar_t> const& text);

} // namespace wainscot
