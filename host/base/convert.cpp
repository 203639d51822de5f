#include "host/base/convert.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>

namespace wainscot {

namespace {

constexpr char32_t replacement = 0xFFFD;

bool isCodePoint(char32_t c) {
    return c < 0xD800 || (c > 0xDFFF && c <= 0x10FFFF);
}

void appendUTF8(std::string& bytes, char32_t c) {
    auto const add = [&bytes](char32_t byte) { bytes.push_back(static_cast<char>(byte)); };
    if (c < 0x80) return add(c);
    if (c < 0x800) {
        add(0xC0 | c >> 6);
    } else {
        if (c < 0x10000) {
            add(0xE0 | c >> 12);
        } else {
            add(0xF0 | c >> 18);
            add(0x80 | (c >> 12 & 0x3F));
        }
        add(0x80 | (c >> 6 & 0x3F));
    }
    add(0x80 | (c & 0x3F));
}

/// What may follow a first byte: how many bytes, and the range of the first of them. The range excludes
/// overlong forms, surrogates and numbers beyond the last code point.
struct Continuation {
    int count;
    unsigned char low;
    unsigned char high;
};

Continuation continuationOf(unsigned char lead) {
    if (lead >= 0xC2 && lead <= 0xDF) return {1, 0x80, 0xBF};
    if (lead == 0xE0) return {2, 0xA0, 0xBF};
    if (lead == 0xED) return {2, 0x80, 0x9F};
    if (lead >= 0xE1 && lead <= 0xEF) return {2, 0x80, 0xBF};
    if (lead == 0xF0) return {3, 0x90, 0xBF};
    if (lead >= 0xF1 && lead <= 0xF3) return {3, 0x80, 0xBF};
    if (lead == 0xF4) return {3, 0x80, 0x8F};
    return {0, 0, 0};
}

/// Reads one character that does not begin with an ASCII byte, and moves behind it.
char32_t readMultibyte(char const*& at, char const* end) {
    auto const lead = static_cast<unsigned char>(*at++);
    Continuation next = continuationOf(lead);
    if (next.count == 0) return replacement;
    char32_t c = lead & (0x3Fu >> next.count);
    for (int i = 0; i < next.count; ++i, ++at) {
        auto const byte = at == end ? 0u : static_cast<unsigned char>(*at);
        if (byte < next.low || byte > next.high) return replacement;
        c = c << 6 | (byte & 0x3F);
        next.low = 0x80;
        next.high = 0xBF;
    }
    return c;
}

bool isBlank(wchar_t c) {
    return c == L' ' || c == L'\t';
}

/// The text without blanks around it and without a leading "+"; empty when it cannot be a number.
std::string numberPart(std::wstring_view text) {
    while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
    if (text.size() > 1 && text[0] == L'+' && text[1] != L'-') text.remove_prefix(1);
    std::string ascii;
    ascii.reserve(text.size());
    for (wchar_t const c : text) {
        if (c < 0x20 || c > 0x7E) return {};
        ascii.push_back(static_cast<char>(c));
    }
    return ascii;
}

template <class T>
std::optional<T> numberFrom(std::wstring_view text) {
    std::string const ascii = numberPart(text);
    T value{};
    auto const [end, error] = std::from_chars(ascii.data(), ascii.data() + ascii.size(), value);
    if (error != std::errc() || end != ascii.data() + ascii.size()) return {};
    return value;
}

template <class T>
LightweightString<char> shortest(T value) {
    std::array<char, 32> digits;
    char const* const end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    return {digits.data(), static_cast<std::size_t>(end - digits.data())};
}

std::string_view trimmed(std::string_view number) {
    if (number.find('.') == std::string_view::npos) return number;
    number.remove_suffix(number.size() - 1 - number.find_last_not_of('0'));
    if (number.back() == '.') number.remove_suffix(1);
    return number;
}

bool isZero(std::string_view number) {
    return number.find_first_not_of("-0.") == std::string_view::npos;
}

} // namespace

LightweightString<char> toUTF8(LightweightString<wchar_t> const& text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (wchar_t const c : text) {
        auto const point = static_cast<char32_t>(c);
        appendUTF8(bytes, isCodePoint(point) ? point : replacement);
    }
    return LightweightString<char>(bytes);
}

LightweightString<wchar_t> fromUTF8(LightweightString<char> const& bytes) {
    LightweightString<wchar_t> text;
    text.reserve(bytes.size());
    std::array<wchar_t, 256> part;
    char const* const end = bytes.end();
    for (char const* at = bytes.begin(); at != end;) {
        std::size_t length = 0;
        while (at != end && length < part.size()) {
            bool const isAscii = static_cast<unsigned char>(*at) < 0x80;
            part[length++] =
                isAscii ? static_cast<wchar_t>(*at++) : static_cast<wchar_t>(readMultibyte(at, end));
        }
        text.append({part.data(), length});
    }
    return text;
}

namespace ConvertDetail {

LightweightString<char> signedAsString(std::int64_t value) {
    return shortest(value);
}

LightweightString<char> unsignedAsString(std::uint64_t value) {
    return shortest(value);
}

LightweightString<char> shortestAsString(double value) {
    return shortest(value);
}

LightweightString<wchar_t> widened(LightweightString<char> const& ascii) {
    return LightweightString<wchar_t>(std::wstring(ascii.begin(), ascii.end()));
}

std::optional<std::int64_t> signedFrom(LightweightString<wchar_t> const& text) {
    return numberFrom<std::int64_t>(text.view());
}

std::optional<std::uint64_t> unsignedFrom(LightweightString<wchar_t> const& text) {
    return numberFrom<std::uint64_t>(text.view());
}

} // namespace ConvertDetail

LightweightString<char> StringFromFloat(double value, int decimals, bool trim) {
    if (std::isnan(value)) return "nan";
    if (std::isinf(value)) return value < 0.0 ? "-inf" : "inf";
    // The largest double has 309 digits before the point.
    std::array<char, 352> digits;
    auto const end = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                   std::chars_format::fixed, std::clamp(decimals, 0, 20))
                         .ptr;
    std::string_view number(digits.data(), static_cast<std::size_t>(end - digits.data()));
    if (number.front() == '-' && isZero(number)) number.remove_prefix(1);
    return LightweightString<char>(trim ? trimmed(number) : number);
}

LightweightString<char> BoolAsString(bool value) {
    return value ? "true" : "false";
}

LightweightString<wchar_t> bytesAsString(std::uint64_t bytes) {
    if (bytes == 1) return L"1 byte";
    if (bytes < 1024) return Qv::WStringFromInteger(bytes) + L" bytes";
    static constexpr std::array<wchar_t const*, 6> units{L" KB", L" MB", L" GB", L" TB", L" PB", L" EB"};
    double amount = static_cast<double>(bytes) / 1024.0;
    std::size_t unit = 0;
    // 1023.95 would be shown as 1024 of the smaller unit.
    for (; amount >= 1023.95 && unit + 1 < units.size(); ++unit) amount /= 1024.0;
    return Qv::WStringFromFloat(amount, 1) + units[unit];
}

namespace Qv {

LightweightString<wchar_t> WStringFromFloat(double value, int decimals, bool trim) {
    return ConvertDetail::widened(StringFromFloat(value, decimals, trim));
}

std::optional<int> IntFromWString(LightweightString<wchar_t> const& text) {
    return numberFrom<int>(text.view());
}

std::optional<unsigned int> UIntFromWString(LightweightString<wchar_t> const& text) {
    return numberFrom<unsigned int>(text.view());
}

std::optional<double> FloatFromWString(LightweightString<wchar_t> const& text) {
    std::optional<double> const value = numberFrom<double>(text.view());
    return value && std::isfinite(*value) ? value : std::nullopt;
}

} // namespace Qv

bool valEqualsVal(double a, double b) {
    if (a == b || (std::isnan(a) && std::isnan(b))) return true;
    if (!std::isfinite(a) || !std::isfinite(b)) return false;
    return std::abs(a - b) <= 1e-12 * std::max({1.0, std::abs(a), std::abs(b)});
}

} // namespace wainscot
