#pragma once

#include "host/base/lightweight_string.h"

#include <cstdint>
#include <initializer_list>

namespace wainscot {

/// The number of a text in the language files.
using ResId = std::uint32_t;
/// Stands for "no resource text".
inline constexpr ResId noResText = 999999;

/// How a text is changed for its place; the values may be added.
enum ResStrFmt : std::uint32_t {
    eResStrPlain = 0,
    /// A blank on both sides.
    eResStrPadded = 1,
    /// "..." behind it: a question follows.
    eResStrEllipsis = 2,
    eResStrUpperCase = 4,
    eResStrLowerCase = 8,
};

/// The text of a number in the user's language, else in English; "#" and the number where there is none,
/// which is counted in the diagnostics. Empty for `noResText`.
WAINSCOT_API LightweightString<wchar_t> resourceStrW(ResId id);
WAINSCOT_API LightweightString<wchar_t> resourceStrW(ResId id, ResStrFmt format);
/// With `eResStrPadded`.
WAINSCOT_API LightweightString<wchar_t> paddedResourceStrW(ResId id);
/// With `eResStrEllipsis`.
WAINSCOT_API LightweightString<wchar_t> ellipsisResourceStrW(ResId id);

/// A text in a format. Empty texts stay empty, and a text never gets a second ellipsis.
WAINSCOT_API LightweightString<wchar_t> formatString(LightweightString<wchar_t> const& text,
                                                     ResStrFmt format);
/// A text with `%1` to `%9` replaced by the values in order, and `%%` by "%". A `%` number without a value
/// stays as it is, and so does one that stands in a value.
WAINSCOT_API LightweightString<wchar_t>
formatString(LightweightString<wchar_t> const& text,
             std::initializer_list<LightweightString<wchar_t>> values);
/// The label of a menu option: blanks at its ends are taken off, then the format is applied.
WAINSCOT_API LightweightString<wchar_t> menuFormatString(LightweightString<wchar_t> const& text,
                                                         std::uint32_t format);

/// Reads the language files again at the next use, for the language that the environment then names.
///
/// They are `texts/<language>.txt` in the data folders: UTF-8, a line `number = text` for each text. "#"
/// begins a line of remarks; in a text, `\n`, `\t`, `\s` and `\\` stand for a line end, a tab, a blank and a
/// backslash. Other lines are reported and ignored.
WAINSCOT_API void reloadResourceTexts();

} // namespace wainscot
