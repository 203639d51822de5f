#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <type_traits>

/// Arithmetic of the values of value boxes, which never leaves the type.
namespace wainscot::VariBoxNumber {

template <class T>
bool isNaN(T value) {
    if constexpr (std::is_floating_point_v<T>)
        return std::isnan(value);
    else
        return false;
}

/// The value, or `other` where it is no number or infinite.
template <class T>
T finite(T value, T other) {
    if constexpr (std::is_floating_point_v<T>)
        return std::isfinite(value) ? value : other;
    else
        return value;
}

/// From a double, which is no NaN: kept within the type, and truncated towards zero for whole numbers.
template <class T>
T fromDouble(double value) {
    constexpr auto lowest = static_cast<double>(std::numeric_limits<T>::lowest());
    constexpr auto highest = static_cast<double>(std::numeric_limits<T>::max());
    if (value <= lowest) return std::numeric_limits<T>::lowest();
    if (value >= highest) return std::numeric_limits<T>::max();
    return static_cast<T>(value);
}

/// Wide enough for what two whole numbers make.
template <class T>
using Wide = std::conditional_t<std::is_signed_v<T>, std::int64_t, std::uint64_t>;

template <class T>
T saturated(Wide<T> value) {
    return static_cast<T>(
        std::clamp<Wide<T>>(value, std::numeric_limits<T>::lowest(), std::numeric_limits<T>::max()));
}

template <class T>
T product(T value, T factor) {
    if constexpr (std::is_floating_point_v<T>)
        return value * factor;
    else
        return saturated<T>(Wide<T>{value} * Wide<T>{factor});
}

/// The sum, or the difference, kept within the type.
template <class T>
T moved(T value, T step, bool isUp) {
    if constexpr (std::is_floating_point_v<T>)
        return std::clamp(isUp ? value + step : value - step, std::numeric_limits<T>::lowest(),
                          std::numeric_limits<T>::max());
    else {
        std::int64_t const way = isUp ? std::int64_t{step} : -std::int64_t{step};
        return static_cast<T>(std::clamp<std::int64_t>(
            std::int64_t{value} + way, std::numeric_limits<T>::lowest(), std::numeric_limits<T>::max()));
    }
}

/// How far a value lies in a range, from 0 to 1; 0 where the range is empty. Computed with halves where the
/// length of the range is too large for a double.
template <class T>
double share(T value, T lower, T upper) {
    double const length = static_cast<double>(upper) - static_cast<double>(lower);
    double const result = std::isfinite(length)
                              ? (static_cast<double>(value) - static_cast<double>(lower)) / length
                              : (static_cast<double>(value) / 2 - static_cast<double>(lower) / 2) /
                                    (static_cast<double>(upper) / 2 - static_cast<double>(lower) / 2);
    return std::isfinite(result) ? std::max(result, 0.0) : 0;
}

/// The value at such a share.
template <class T>
T atShare(double share, T lower, T upper) {
    auto const low = static_cast<double>(lower);
    double const length = static_cast<double>(upper) - low;
    return fromDouble<T>(std::isfinite(length) ? low + share * length
                                               : low * (1 - share) + share * static_cast<double>(upper));
}

} // namespace wainscot::VariBoxNumber
