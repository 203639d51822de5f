#pragma once

#include "host/base/export.h"

#include <cstdint>

namespace wainscot {

/// Key codes: the character or PC scan code in the low bits, these flags above it. Compared as unsigned.
namespace Key {

inline constexpr std::uint32_t shift = 0x1000000;
inline constexpr std::uint32_t ctrl = 0x2000000;
inline constexpr std::uint32_t alt = 0x4000000;
/// Marks a key that is not a character; the low bits are then a scan code.
inline constexpr std::uint32_t special = 0x8000000;
inline constexpr std::uint32_t meta = 0x100000;
inline constexpr std::uint32_t keypad = 0x80000000;
inline constexpr std::uint32_t modifierMask = shift | ctrl | alt | meta;

inline constexpr std::uint32_t backspace = 8;
inline constexpr std::uint32_t tab = 9;
inline constexpr std::uint32_t shiftTab = shift | tab;
inline constexpr std::uint32_t enter = 13;
inline constexpr std::uint32_t escape = 27;
inline constexpr std::uint32_t space = 32;

inline constexpr std::uint32_t home = special | 0x47;
inline constexpr std::uint32_t up = special | 0x48;
inline constexpr std::uint32_t pageUp = special | 0x49;
inline constexpr std::uint32_t left = special | 0x4B;
inline constexpr std::uint32_t right = special | 0x4D;
inline constexpr std::uint32_t end = special | 0x4F;
inline constexpr std::uint32_t down = special | 0x50;
inline constexpr std::uint32_t pageDown = special | 0x51;
inline constexpr std::uint32_t insert = special | 0x52;
inline constexpr std::uint32_t del = special | 0x53;
inline constexpr std::uint32_t menu = special | 0x5D;
inline constexpr std::uint32_t f1 = special | 0x3B;
inline constexpr std::uint32_t f10 = special | 0x44;
inline constexpr std::uint32_t f11 = special | 0x57;
inline constexpr std::uint32_t f12 = special | 0x58;

/// The code of a function key, 1 to 12; 0 for any other number.
constexpr std::uint32_t function(int number) {
    if (number >= 1 && number <= 10) return f1 + static_cast<std::uint32_t>(number - 1);
    return number == 11 ? f11 : number == 12 ? f12 : 0;
}

/// The key without its modifiers.
constexpr std::uint32_t base(std::uint32_t code) {
    return code & ~modifierMask;
}
/// Whether the key is not a character.
constexpr bool isSpecial(std::uint32_t code) {
    return (code & special) != 0;
}

} // namespace Key

namespace Glib {
/// A character without Ctrl, Alt or Meta, or one of the plain control characters (Backspace, Tab, Return,
/// Escape).
WAINSCOT_API bool isPlainKey(unsigned int code);
} // namespace Glib

} // namespace wainscot
