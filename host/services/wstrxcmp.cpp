#include "host/services/wstrxcmp.h"

#include <bit>
#include <cstdint>
#include <string_view>
#include <unicode/uchar.h>

namespace wainscot {

namespace {

bool isDigit(wchar_t c) {
    return c >= L'0' && c <= L'9';
}

std::uint32_t folded(wchar_t c) {
    auto const code = std::bit_cast<std::uint32_t>(c);
    if (code >= 'A' && code <= 'Z') return code - 'A' + 'a';
    if (code < 0x80 || code > 0x10FFFF) return code;
    return static_cast<std::uint32_t>(u_foldCase(static_cast<UChar32>(code), U_FOLD_CASE_DEFAULT));
}

template <class T>
int order(T a, T b) {
    return a < b ? -1 : b < a ? 1 : 0;
}

/// Takes the digits from the beginning of `text`; gives them without leading zeros.
std::wstring_view takeNumber(std::wstring_view& text) {
    std::size_t end = 0;
    while (end < text.size() && isDigit(text[end])) ++end;
    std::wstring_view digits = text.substr(0, end);
    text.remove_prefix(end);
    while (!digits.empty() && digits.front() == L'0') digits.remove_prefix(1);
    return digits;
}

int compareNumbers(std::wstring_view& a, std::wstring_view& b) {
    std::wstring_view const first = takeNumber(a);
    std::wstring_view const second = takeNumber(b);
    int const byLength = order(first.size(), second.size());
    return byLength != 0 ? byLength : first.compare(second);
}

int compareNaturally(std::wstring_view a, std::wstring_view b) {
    while (!a.empty() && !b.empty()) {
        int result = 0;
        if (isDigit(a.front()) && isDigit(b.front())) {
            result = compareNumbers(a, b);
        } else {
            result = order(folded(a.front()), folded(b.front()));
            a.remove_prefix(1);
            b.remove_prefix(1);
        }
        if (result != 0) return result;
    }
    return order(a.size(), b.size());
}

int compareCodePoints(std::wstring_view a, std::wstring_view b) {
    for (std::size_t i = 0; i < a.size() && i < b.size(); ++i)
        if (a[i] != b[i]) return order(static_cast<std::uint32_t>(a[i]), static_cast<std::uint32_t>(b[i]));
    return order(a.size(), b.size());
}

} // namespace

int wstrxcmp(LightweightString<wchar_t> const& a, LightweightString<wchar_t> const& b) {
    int const result = compareNaturally(a.view(), b.view());
    return result != 0 ? result : compareCodePoints(a.view(), b.view());
}

} // namespace wainscot
