#pragma once

#include "host/base/lightweight_string.h"

#include <concepts>
#include <cstdint>
#include <optional>
#include <type_traits>

namespace wainscot {

/// Wide text as UTF-8. Surrogates and values beyond U+10FFFF become U+FFFD.
WAINSCOT_API LightweightString<char> toUTF8(LightweightString<wchar_t> const& text);
/// UTF-8 as wide text. Invalid bytes become U+FFFD: one for the longest beginning of a character, one for
/// each other stray byte. Zero characters are kept both ways.
WAINSCOT_API LightweightString<wchar_t> fromUTF8(LightweightString<char> const& bytes);

// Numbers are read and written alike in every locale: "." before the decimals, no separators between
// thousands.

namespace ConvertDetail {
WAINSCOT_API LightweightString<char> signedAsString(std::int64_t value);
WAINSCOT_API LightweightString<char> unsignedAsString(std::uint64_t value);
/// With as many digits as tell the value from its neighbours.
WAINSCOT_API LightweightString<char> shortestAsString(double value);
WAINSCOT_API LightweightString<wchar_t> widened(LightweightString<char> const& ascii);
WAINSCOT_API std::optional<std::int64_t> signedFrom(LightweightString<wchar_t> const& text);
WAINSCOT_API std::optional<std::uint64_t> unsignedFrom(LightweightString<wchar_t> const& text);
} // namespace ConvertDetail

template <std::integral T>
LightweightString<char> StringFromInteger(T value) {
    if constexpr (std::is_signed_v<T>)
        return ConvertDetail::signedAsString(value);
    else
        return ConvertDetail::unsignedAsString(value);
}

/// With `decimals` (0 to 20) decimals, rounded; `trim` takes off zeros at the end, and the "." when nothing
/// follows it. Never "-0". NaN and infinity give "nan", "inf" or "-inf".
WAINSCOT_API LightweightString<char> StringFromFloat(double value, int decimals = 3, bool trim = true);

/// "true" or "false".
WAINSCOT_API LightweightString<char> BoolAsString(bool value);

/// An amount of memory for people: "1 byte", "1023 bytes", "1.5 KB", up to EB; units of 1,024, one decimal.
WAINSCOT_API LightweightString<wchar_t> bytesAsString(std::uint64_t bytes);

namespace Qv {

template <std::integral T>
LightweightString<wchar_t> WStringFromInteger(T value) {
    return ConvertDetail::widened(StringFromInteger(value));
}
/// As `StringFromFloat`.
WAINSCOT_API LightweightString<wchar_t> WStringFromFloat(double value, int decimals = 3, bool trim = true);

/// The number in a text. Blanks and tabs around it and a "+" before it are allowed. Nothing when the text is
/// not a number, is out of the type's range, or is NaN or infinite.
WAINSCOT_API std::optional<int> IntFromWString(LightweightString<wchar_t> const& text);
WAINSCOT_API std::optional<unsigned int> UIntFromWString(LightweightString<wchar_t> const& text);
WAINSCOT_API std::optional<double> FloatFromWString(LightweightString<wchar_t> const& text);

} // namespace Qv

/// Whether two values are the same but for rounding: they differ by at most 1e-12 of the larger value, or by
/// 1e-12 when both are below 1. Two NaNs count as the same.
WAINSCOT_API bool valEqualsVal(double a, double b);

/// A size as the host's constructors take it: 0 for what is negative, 65,535 for what is larger.
constexpr std::uint16_t toSize16(int size) {
    return static_cast<std::uint16_t>(size < 0 ? 0 : size > 65535 ? 65535 : size);
}

} // namespace wainscot
