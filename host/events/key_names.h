#pragma once

#include "host/base/lightweight_string.h"

#include <cstdint>
#include <optional>

namespace wainscot {

/// A key code as a person writes it: "Ctrl+Shift+A", "Page Up", "F5". Modifiers come in the order Ctrl, Alt,
/// Shift, Meta. An unknown code gives its number in hexadecimal.
WAINSCOT_API LightweightString<char> keyToString(std::uint32_t code);
/// The key code that a text names. Case and blanks do not matter. Nothing when the text names no key.
WAINSCOT_API std::optional<std::uint32_t> keyFromString(LightweightString<char> const& text);

} // namespace wainscot
