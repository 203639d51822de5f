#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

/// Where a text may be cut: grapheme clusters and words. Any sequence of code points is accepted.
namespace wainscot::TextBoundaries {

/// The code point itself, or the replacement character when it is invalid.
constexpr std::uint32_t validCodePoint(std::uint32_t c) {
    return c > 0x10FFFF || (c >= 0xD800 && c < 0xE000) ? 0xFFFD : c;
}

/// The character that is laid out for a code point, so that every text can be shaped.
constexpr std::uint32_t shapedAs(std::uint32_t c) {
    if (c == '\t') return ' ';
    // Control characters take part with no width and no ink.
    if (c < 0x20 || (c >= 0x7F && c < 0xA0)) return 0x200B;
    return validCodePoint(c);
}

constexpr bool isBlank(wchar_t c) {
    return c == L' ' || (c >= L'\t' && c <= L'\r') || c == 0xA0 || (c >= 0x2000 && c <= 0x200A) ||
           c == 0x3000;
}

constexpr bool isControl(wchar_t c) {
    auto const code = static_cast<std::uint32_t>(c);
    return code < 0x20 || (code >= 0x7F && code < 0xA0) || code == 0x2028 || code == 0x2029;
}

/// True where a grapheme cluster begins or the text ends. Looks at the neighbourhood only.
bool isStop(std::wstring_view text, std::size_t index);
/// The stop after or before `index`; at an end of the text that end.
std::size_t nextStop(std::wstring_view text, std::size_t index);
std::size_t previousStop(std::wstring_view text, std::size_t index);
/// For every gap of the text (length + 1 of them), whether it lies inside a cluster; empty when none does.
std::vector<bool> gapsInsideClusters(std::wstring_view text);

/// The word or the row of blanks beside a gap, as two gaps; the word where both meet. Empty for an empty
/// text.
std::pair<std::size_t, std::size_t> wordAt(std::wstring_view text, std::size_t index);

} // namespace wainscot::TextBoundaries
