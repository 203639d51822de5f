#pragma once

#include "host/base/convert.h"

#include <algorithm>
#include <cmath>
#include <concepts>
#include <limits>
#include <optional>
#include <type_traits>
#include <utility>

namespace wainscot {

/// Turns values of one type into another: truth values, integers, floating numbers, narrow (UTF-8) and wide
/// strings.
///
/// Numbers are cut towards zero and moved to the nearer end of the target's range; NaN becomes 0 or false. A
/// number becomes a text that reads back as the same number. A text that is not a value of the target type
/// gives `onFailure`.
class DataConvert {
public:
    template <class To, class From>
    static To convert(From const& from, To const& onFailure = To()) {
        if constexpr (std::is_same_v<To, From>)
            return from;
        else if constexpr (isText<From>)
            return fromText<To>(wide(from), onFailure);
        else if constexpr (isText<To>)
            return textOf<To>(from);
        else
            return number<To>(from);
    }

    /// From a literal or a zero-terminated text.
    template <class To, class CharT>
    requires std::same_as<CharT, char> || std::same_as<CharT, wchar_t>
    static To convert(CharT const* from, To const& onFailure = To()) {
        return convert<To>(LightweightString<CharT>(from), onFailure);
    }

private:
    template <class T>
    static constexpr bool isText =
        std::is_same_v<T, LightweightString<char>> || std::is_same_v<T, LightweightString<wchar_t>>;

    static LightweightString<wchar_t> wide(LightweightString<char> const& text) { return fromUTF8(text); }
    static LightweightString<wchar_t> const& wide(LightweightString<wchar_t> const& text) { return text; }

    static std::optional<bool> boolFrom(LightweightString<wchar_t> const& text) {
        if (text == L"true" || text == L"1") return true;
        if (text == L"false" || text == L"0") return false;
        return {};
    }

    template <class To>
    static To fromText(LightweightString<wchar_t> const& text, To const& onFailure) {
        if constexpr (std::is_same_v<To, LightweightString<char>>)
            return toUTF8(text);
        else if constexpr (std::is_same_v<To, LightweightString<wchar_t>>)
            return text;
        else if constexpr (std::is_same_v<To, bool>)
            return boolFrom(text).value_or(onFailure);
        else if constexpr (std::floating_point<To>)
            return inRange<To>(Qv::FloatFromWString(text)).value_or(onFailure);
        else if constexpr (std::is_signed_v<To>)
            return inRange<To>(ConvertDetail::signedFrom(text)).value_or(onFailure);
        else
            return inRange<To>(ConvertDetail::unsignedFrom(text)).value_or(onFailure);
    }

    template <class To, class From>
    static std::optional<To> inRange(std::optional<From> value) {
        using Limits = std::numeric_limits<To>;
        if (!value || *value < Limits::lowest() || *value > Limits::max()) return {};
        return static_cast<To>(*value);
    }

    template <class To, class From>
    static To textOf(From value) {
        LightweightString<char> text;
        if constexpr (std::is_same_v<From, bool>)
            text = BoolAsString(value);
        else if constexpr (std::integral<From>)
            text = StringFromInteger(value);
        else
            text = ConvertDetail::shortestAsString(static_cast<double>(value));
        return convert<To>(text);
    }

    template <class To, class From>
    static To number(From value) {
        if constexpr (std::is_same_v<To, bool>)
            return value < From() || value > From();
        else if constexpr (std::floating_point<To>)
            return floating<To>(static_cast<long double>(value));
        else if constexpr (std::floating_point<From>)
            return cutToInteger<To>(static_cast<double>(value));
        else
            return saturated<To>(value);
    }

    template <class To>
    static To floating(long double value) {
        using Limits = std::numeric_limits<To>;
        if (!std::isfinite(value)) return static_cast<To>(value);
        return static_cast<To>(std::clamp<long double>(value, Limits::lowest(), Limits::max()));
    }

    template <class To>
    static To cutToInteger(double value) {
        using Limits = std::numeric_limits<To>;
        if (std::isnan(value)) return 0;
        // One above the maximum is a power of two, which a double holds exactly.
        double const end = std::ldexp(1.0, Limits::digits);
        if (value >= end) return Limits::max();
        if (value <= static_cast<double>(Limits::min())) return Limits::min();
        return static_cast<To>(value);
    }

    template <class To, class From>
    static To saturated(From value) {
        using Limits = std::numeric_limits<To>;
        if constexpr (std::is_same_v<From, bool>) {
            return static_cast<To>(value);
        } else {
            if (std::cmp_less(value, Limits::min())) return Limits::min();
            if (std::cmp_greater(value, Limits::max())) return Limits::max();
            return static_cast<To>(value);
        }
    }
};

} // namespace wainscot
