#pragma once

#include "host/base/lightweight_string.h"

#include <cstdint>
#include <optional>

namespace wainscot {

/// A key code as a person writes it: "Ctrl+Shift+A", "Page Up", "F5". Modifiers come in the order Ctrl, Alt,
/// Shift, Meta. A code that names no key gives its number in hexadecimal.
WAINSCOT_API LightweightString<char> keyToString(std::uint32_t code);
/// The other way round; names are taken in any case and with or without blanks. Nothing when it names no key.
WAINSCOT_API std::optional<std::uint32_t> keyFromString(LightweightString<char> const& text);

} // namespace wainscot
