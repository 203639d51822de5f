#include "text/local_number.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace wainscot {

namespace {

/// Longer texts are not numbers that anybody has copied.
constexpr std::size_t longest = 400;
constexpr std::size_t groupLength = 3;

bool isDigit(wchar_t c) {
    return c >= L'0' && c <= L'9';
}

bool isSpaceOfGroups(wchar_t c) {
    return c == L' ' || c == 0xA0 || c == 0x2009 || c == 0x202F;
}

/// Signs between groups of thousands, besides the two that can also stand before the decimals.
bool isGroupSign(wchar_t c) {
    return isSpaceOfGroups(c) || c == L'\'' || c == 0x2019;
}

std::wstring_view trimmed(std::wstring_view text) {
    auto const isBlank = [](wchar_t c) { return isSpaceOfGroups(c) || (c >= L'\t' && c <= L'\r'); };
    while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
    return text;
}

/// The sign before the decimals, if there is one; 0 = none. Nothing when the signs make no number.
std::optional<wchar_t> decimalSignOf(std::wstring_view digits) {
    auto const commas = std::ranges::count(digits, L',');
    auto const points = std::ranges::count(digits, L'.');
    if (commas > 0 && points > 0) {
        wchar_t const last = digits[digits.find_last_of(L".,")];
        return (last == L',' ? commas : points) == 1 ? std::optional(last) : std::nullopt;
    }
    if (commas == 0) return points <= 1 ? std::optional(points == 1 ? L'.' : L'\0') : L'\0';
    std::size_t const behind = digits.size() - digits.rfind(L',') - 1;
    // No group of thousands begins with a zero.
    bool const isGroup = behind == groupLength && digits.front() != L'0';
    return commas == 1 && !isGroup ? L',' : L'\0';
}

/// The digits without the signs between their groups; nothing when the groups are not those of thousands.
std::optional<std::wstring> withoutGroups(std::wstring_view whole, wchar_t decimalSign) {
    std::wstring result;
    wchar_t sign = 0;
    std::size_t length = 0;
    for (wchar_t const c : whole) {
        if (isDigit(c)) {
            result += c;
            ++length;
            continue;
        }
        bool const isFirst = sign == 0;
        bool const canDivide = isGroupSign(c) || ((c == L',' || c == L'.') && c != decimalSign);
        bool const isInPlace = isFirst ? length >= 1 && length <= groupLength : length == groupLength;
        if (!canDivide || !isInPlace || (!isFirst && c != sign)) return std::nullopt;
        sign = c;
        length = 0;
    }
    return sign == 0 || length == groupLength ? std::optional(result) : std::nullopt;
}

} // namespace

std::optional<LightweightString<wchar_t>> plainNumber(LightweightString<wchar_t> const& text) {
    std::wstring_view rest = trimmed(text.view());
    if (rest.empty() || rest.size() > longest) return std::nullopt;
    bool const isNegative = rest.front() == L'-' || rest.front() == trueMinus;
    if (isNegative || rest.front() == L'+') rest.remove_prefix(1);
    auto const sign = decimalSignOf(rest);
    if (!sign) return std::nullopt;
    std::size_t const at = *sign ? rest.rfind(*sign) : rest.size();
    std::wstring_view const decimals = rest.substr(std::min(at + 1, rest.size()));
    auto const whole = withoutGroups(rest.substr(0, at), *sign);
    if (!whole || !std::ranges::all_of(decimals, isDigit) || whole->size() + decimals.size() == 0)
        return std::nullopt;
    std::wstring result = (isNegative ? L"-" : L"") + *whole;
    if (!decimals.empty()) result.append(1, L'.').append(decimals);
    return LightweightString<wchar_t>(result);
}

} // namespace wainscot
