#include "text/vari_box_displayers.h"

#include "host/base/convert.h"
#include "host/base/letter_case.h"
#include "host/base/runtime_error.h"
#include "text/local_number.h"
#include "text/vari_box_number_p.h"

#include <array>
#include <cmath>
#include <optional>
#include <string>
#include <string_view>

namespace wainscot {

namespace {

using Text = LightweightString<wchar_t>;

constexpr double percent = 100;
/// Of a factor of an amplitude.
constexpr double decibelsPerDecade = 20;
constexpr wchar_t infinitySign = 0x221E;

constexpr int secondsPerMinute = 60;
constexpr int minutesPerHour = 60;
/// The numbers that drop frame leaves out keep time in every tenth minute.
constexpr int minutesPerDecade = 10;
constexpr int droppingRate = 30;
constexpr int droppedPerRate = 2;
/// More frames are shown as so many, which doubles still count one by one.
constexpr double mostFrames = 9e15;
/// Of a part of a timecode; more makes no time that a value can hold.
constexpr std::size_t mostDigits = 10;

[[noreturn]] void refuse() {
    throw Qv::Exception::RuntimeError("no value");
}

/// A double that was read, as a value.
template <class T>
T asValue(std::optional<double> read) {
    if (!read || std::isnan(*read)) refuse();
    return VariBoxNumber::fromDouble<T>(std::is_integral_v<T> ? std::round(*read) : *read);
}

template <class T>
Text numberText(T value, int decimals, bool trim) {
    if constexpr (std::is_integral_v<T>)
        return Qv::WStringFromInteger(value);
    else
        return Qv::WStringFromFloat(static_cast<double>(value), decimals, trim);
}

bool isDigit(wchar_t c) {
    return c >= L'0' && c <= L'9';
}

/// Without blanks round it, and without a sign, which is noted.
std::wstring_view withoutSign(std::wstring_view text, bool& isNegative) {
    while (!text.empty() && text.front() == L' ') text.remove_prefix(1);
    while (!text.empty() && text.back() == L' ') text.remove_suffix(1);
    isNegative = !text.empty() && (text.front() == L'-' || text.front() == trueMinus);
    if (isNegative || (!text.empty() && text.front() == L'+')) text.remove_prefix(1);
    return text;
}

} // namespace

// Any displayer

template <class T>
LightweightString<char> VariBoxParserBasicDisplayerBase<T>::getAllowedCharacters() const {
    return {};
}

template <class T>
unsigned char VariBoxParserBasicDisplayerBase<T>::getMaxNumChars() const {
    return 0;
}

// Plain numbers

template <class T>
Text VariBoxPlainDisplayer<T>::valueToString(T value) const {
    return numberText(value, decimals_, trim_);
}

template <class T>
T VariBoxPlainDisplayer<T>::stringToValue(Text const& text) const {
    auto const plain = plainNumber(text);
    auto const number = plain ? Qv::FloatFromWString(*plain) : std::nullopt;
    if (number && std::is_integral_v<T> && std::trunc(*number) != *number) refuse();
    return asValue<T>(number);
}

// Units

template <class T>
VariBoxUnitDisplayer<T>::VariBoxUnitDisplayer(Text const& unit, std::vector<NumberUnit> others, int decimals)
    : units_{{unit, 1}}, decimals_(decimals) {
    units_.insert(units_.end(), others.begin(), others.end());
}

template <class T>
Text VariBoxUnitDisplayer<T>::valueToString(T value) const {
    return numberText(value, decimals_, true) + L" " + units_.front().name;
}

template <class T>
T VariBoxUnitDisplayer<T>::stringToValue(Text const& text) const {
    return asValue<T>(sumOf(text, units_));
}

// Percent

template <class T>
Text VariBoxPercentDisplayer<T>::valueToString(T value) const {
    return numberText(static_cast<double>(value) * percent, decimals_, true) + L" %";
}

template <class T>
T VariBoxPercentDisplayer<T>::stringToValue(Text const& text) const {
    NumberUnit const unit{L"%", 1};
    auto const read = sumOf(text, {&unit, 1});
    return asValue<T>(read ? std::optional(*read / percent) : std::nullopt);
}

// Decibels

template <class T>
Text VariBoxDecibelDisplayer<T>::valueToString(T value) const {
    if (!(value > 0)) return Text(L"-") + Text(1, infinitySign) + L" dB";
    return numberText(decibelsPerDecade * std::log10(static_cast<double>(value)), decimals_, true) + L" dB";
}

template <class T>
T VariBoxDecibelDisplayer<T>::stringToValue(Text const& text) const {
    bool isNegative = false;
    std::wstring_view const rest = withoutSign(text.view(), isNegative);
    for (std::wstring_view const infinity :
         {std::wstring_view(&infinitySign, 1), std::wstring_view(L"inf")}) {
        if (!isNegative || !isSameText(rest.substr(0, infinity.size()), infinity)) continue;
        std::wstring_view const unit = rest.substr(infinity.size());
        if (unit.empty() || isSameText(unit, L" dB") || isSameText(unit, L"dB")) return 0;
    }
    NumberUnit const unit{L"dB", 1};
    auto const read = sumOf(text, {&unit, 1});
    return asValue<T>(read ? std::optional(std::pow(10, *read / decibelsPerDecade)) : std::nullopt);
}

// Timecode

namespace {

struct Timecode {
    std::int64_t hours = 0;
    std::int64_t minutes = 0;
    std::int64_t seconds = 0;
    std::int64_t frames = 0;
};

struct FrameRate {
    std::int64_t rate;
    std::int64_t dropped;

    std::int64_t perMinute() const { return rate * secondsPerMinute - dropped; }
    std::int64_t perDecade() const { return perMinute() * minutesPerDecade + dropped; }

    /// The number of a frame, with those that are left out counted.
    std::int64_t numberOf(std::int64_t frame) const {
        if (dropped == 0) return frame;
        std::int64_t const inDecade = frame % perDecade();
        // The first minute of ten leaves out nothing.
        std::int64_t const minutes = inDecade < dropped ? 0 : (inDecade - dropped) / perMinute();
        return frame + dropped * ((minutesPerDecade - 1) * (frame / perDecade()) + minutes);
    }
    Timecode timecodeOf(std::int64_t frame) const {
        std::int64_t const number = numberOf(frame);
        std::int64_t const seconds = number / rate;
        std::int64_t const minutes = seconds / secondsPerMinute;
        return {minutes / minutesPerHour, minutes % minutesPerHour, seconds % secondsPerMinute,
                number % rate};
    }
    std::int64_t frameOf(Timecode const& time) const {
        std::int64_t const minutes =
            time.hours * minutesPerHour + time.minutes + time.seconds / secondsPerMinute;
        std::int64_t const seconds = time.seconds % secondsPerMinute;
        bool const isLeftOut = minutes % minutesPerDecade != 0 && seconds == 0 && time.frames < dropped;
        std::int64_t const number =
            (minutes * secondsPerMinute + seconds) * rate + (isLeftOut ? dropped : time.frames);
        return number - dropped * (minutes - minutes / minutesPerDecade);
    }
};

/// The parts of a timecode from the right; nothing when it is none.
class TimecodeReader {
public:
    explicit TimecodeReader(std::int64_t rate) : most_{rate, secondsPerMinute, minutesPerHour, 0} {}

    std::optional<Timecode> read(std::wstring_view text) {
        bool const isDivided = text.find_first_of(dividers) != std::wstring_view::npos;
        while (!text.empty() || numParts_ == 0) {
            std::size_t const divider = text.find_last_of(dividers);
            std::size_t const from = divider == std::wstring_view::npos ? 0 : divider + 1;
            bool const isLast = numParts_ + 1 == most_.size();
            std::size_t const length =
                isDivided || isLast ? text.size() - from : std::min<std::size_t>(text.size(), 2);
            std::wstring_view const digits = text.substr(text.size() - length);
            bool const goesOn = length < text.size();
            if (!take(digits, goesOn)) return std::nullopt;
            text.remove_suffix(length + (isDivided && goesOn ? 1 : 0));
            if (isDivided && goesOn && text.empty()) return std::nullopt;
        }
        return Timecode{parts_[3], parts_[2], parts_[1], parts_[0]};
    }

private:
    static constexpr std::wstring_view dividers = L":;.,";

    bool take(std::wstring_view digits, bool isBounded) {
        if (numParts_ == parts_.size() || digits.empty() || digits.size() > mostDigits) return false;
        std::int64_t value = 0;
        for (wchar_t const c : digits) {
            if (!isDigit(c)) return false;
            value = value * 10 + (c - L'0');
        }
        if (isBounded && value >= most_[numParts_]) return false;
        parts_[numParts_++] = value;
        return true;
    }

    std::array<std::int64_t, 4> parts_{};
    std::array<std::int64_t, 4> most_;
    std::size_t numParts_ = 0;
};

std::wstring twoDigits(std::int64_t number) {
    std::wstring const digits = std::to_wstring(number);
    return digits.size() < 2 ? L"0" + digits : digits;
}

} // namespace

template <class T>
VariBoxTimecodeDisplayer<T>::VariBoxTimecodeDisplayer(int framesPerSecond, bool dropFrame)
    : rate_(std::max(framesPerSecond, 1)),
      dropped_(dropFrame && rate_ % droppingRate == 0 ? rate_ / droppingRate * droppedPerRate : 0) {}

template <class T>
Text VariBoxTimecodeDisplayer<T>::valueToString(T value) const {
    if (VariBoxNumber::isNaN(value)) return Text(L"--:--:--:--");
    double const frames = std::round(static_cast<double>(value));
    auto const count = static_cast<std::int64_t>(std::min(std::abs(frames), mostFrames));
    Timecode const time = FrameRate{rate_, dropped_}.timecodeOf(count);
    return Text((frames < 0 ? L"-" : L"") + twoDigits(time.hours) + L":" + twoDigits(time.minutes) + L":" +
                twoDigits(time.seconds) + (dropped_ > 0 ? L";" : L":") + twoDigits(time.frames));
}

template <class T>
T VariBoxTimecodeDisplayer<T>::stringToValue(Text const& text) const {
    bool isNegative = false;
    auto time = TimecodeReader(rate_).read(withoutSign(text.view(), isNegative));
    if (!time) refuse();
    time->seconds += time->frames / rate_;
    time->frames %= rate_;
    auto const frames = static_cast<double>(FrameRate{rate_, dropped_}.frameOf(*time));
    return asValue<T>(isNegative ? -frames : frames);
}

template class VariBoxParserBasicDisplayerBase<int>;
template class VariBoxParserBasicDisplayerBase<unsigned int>;
template class VariBoxParserBasicDisplayerBase<float>;
template class VariBoxParserBasicDisplayerBase<double>;
template class VariBoxPlainDisplayer<int>;
template class VariBoxPlainDisplayer<unsigned int>;
template class VariBoxPlainDisplayer<float>;
template class VariBoxPlainDisplayer<double>;
template class VariBoxUnitDisplayer<int>;
template class VariBoxUnitDisplayer<unsigned int>;
template class VariBoxUnitDisplayer<float>;
template class VariBoxUnitDisplayer<double>;
template class VariBoxPercentDisplayer<float>;
template class VariBoxPercentDisplayer<double>;
template class VariBoxDecibelDisplayer<float>;
template class VariBoxDecibelDisplayer<double>;
template class VariBoxTimecodeDisplayer<int>;
template class VariBoxTimecodeDisplayer<double>;

} // namespace wainscot
