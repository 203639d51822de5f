#include "host/services/local_time.h"

#include "host/services/clock.h"

#include <algorithm>
#include <ctime>
#include <cwchar>
#include <string>
#include <string_view>

namespace wainscot {

namespace {

constexpr std::wstring_view flags = L"_-0^#+";
constexpr std::wstring_view modifiers = L"EO";
constexpr std::wstring_view conversions = L"aAbBcCdDeFgGhHIjklmMnpPrRsSTtuUVwWxXyYzZ%";
/// Wider fields would only fill the memory.
constexpr std::size_t mostWidthDigits = 2;
/// The limit for one conversion: dates in words are shorter in every locale.
constexpr std::size_t longestPart = 1024;

bool breakDown(std::int64_t seconds, std::tm& broken) {
    static_assert(sizeof(time_t) >= sizeof(std::int64_t));
    tzset();
    return localtime_r(&seconds, &broken) != nullptr;
}

std::size_t countOf(std::wstring_view text, std::size_t at, std::wstring_view allowed) {
    std::size_t const end = text.find_first_not_of(allowed, at);
    return (end == text.npos ? text.size() : end) - at;
}

/// The length of the conversion at the beginning of `text`; 0 when there is none.
std::size_t conversionLength(std::wstring_view text) {
    std::size_t at = 1;
    at += countOf(text, at, flags);
    std::size_t const digits = countOf(text, at, L"0123456789");
    if (digits > mostWidthDigits) return 0;
    at += digits;
    if (at < text.size() && modifiers.find(text[at]) != modifiers.npos) ++at;
    bool const isKnown = at < text.size() && conversions.find(text[at]) != conversions.npos;
    return isKnown ? at + 1 : 0;
}

/// A conversion may give an empty text, which looks like a failure; a mark behind it prevents that.
std::wstring converted(std::wstring_view conversion, std::tm const& broken) {
    std::wstring const marked = std::wstring(conversion) + L'.';
    wchar_t part[longestPart];
    std::size_t const length = std::wcsftime(part, longestPart, marked.c_str(), &broken);
    return length == 0 ? std::wstring(conversion) : std::wstring(part, length - 1);
}

} // namespace

std::optional<LocalTime> getLocalTime(std::int64_t seconds) {
    std::tm broken{};
    if (!breakDown(seconds, broken)) return {};
    LocalTime local;
    local.year = std::int64_t(1900) + broken.tm_year;
    local.month = broken.tm_mon + 1;
    local.day = broken.tm_mday;
    local.hour = broken.tm_hour;
    local.minute = broken.tm_min;
    local.second = broken.tm_sec;
    local.weekday = broken.tm_wday;
    local.dayOfYear = broken.tm_yday + 1;
    local.isSummerTime = broken.tm_isdst > 0;
    local.utcOffset = static_cast<int>(broken.tm_gmtoff);
    return local;
}

std::optional<LocalTime> getLocalTime() {
    return getLocalTime(iClock::current().calendar());
}

LightweightString<wchar_t> formatLocalTime(LightweightString<wchar_t> const& format, std::int64_t seconds) {
    std::tm broken{};
    if (!breakDown(seconds, broken)) return {};
    std::wstring text;
    for (std::wstring_view rest = format.view(); !rest.empty();) {
        std::size_t length = rest.front() == L'%' ? conversionLength(rest) : 0;
        if (length > 0) {
            text += converted(rest.substr(0, length), broken);
        } else {
            length = std::min(rest.size(), rest.find(L'%', 1));
            text += rest.substr(0, length);
        }
        rest.remove_prefix(length);
    }
    return LightweightString<wchar_t>(text);
}

} // namespace wainscot
