#include "text/vari_box_parser_log.h"

#include "host/base/convert.h"
#include "host/base/diagnostics.h"
#include "text/local_number.h"
#include "text/vari_box_number_p.h"

#include <charconv>
#include <string>

namespace wainscot {

namespace {

using Text = LightweightString<wchar_t>;

/// The scale goes from the logarithm of 1 to that of 10.
constexpr double decade = 9;
constexpr double fineShare = 0.1;
constexpr int octal = 8;
constexpr int decimal = 10;
constexpr int hexadecimal = 16;
/// Room for the longest double in full, and the most decimals.
constexpr std::size_t longestNumber = 512;
constexpr long mostDecimals = 100;

char upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

std::string magnitudeText(std::uint64_t value, int base) {
    char digits[longestNumber];
    auto const end = std::to_chars(digits, digits + longestNumber, value, base).ptr;
    std::transform(digits, end, digits, upper);
    return {digits, end};
}

template <class T>
std::string fractionText(T value, std::ios_base::fmtflags flags, long precision) {
    char digits[longestNumber];
    bool const isFixed = (flags & std::ios_base::floatfield) == std::ios_base::fixed;
    bool const isScientific = (flags & std::ios_base::floatfield) == std::ios_base::scientific;
    int const decimals = static_cast<int>(std::clamp(precision, 0L, mostDecimals));
    auto const format = isFixed        ? std::chars_format::fixed
                        : isScientific ? std::chars_format::scientific
                                       : std::chars_format::general;
    bool const isShortest = decimals == 0 && format == std::chars_format::general;
    auto const end = isShortest ? std::to_chars(digits, digits + longestNumber, value).ptr
                                : std::to_chars(digits, digits + longestNumber, value, format, decimals).ptr;
    return {digits, end};
}

} // namespace

template <class T>
VariBoxParserLog<T>::VariBoxParserLog(VariBox* box, T lower, T upper, double minorIncrement,
                                      double majorIncrement, T initial, T displayScale,
                                      unsigned char maxChars, std::ios_base::fmtflags flags, long precision,
                                      long fieldWidth)
    : VariBoxParser<T>(box, lower, upper, initial, displayScale), minorIncrement_(minorIncrement),
      majorIncrement_(majorIncrement), flags_(flags), precision_(precision), fieldWidth_(fieldWidth),
      maxChars_(maxChars) {}

template <class T>
int VariBoxParserLog<T>::base() const {
    auto const field = flags_ & std::ios_base::basefield;
    return field == std::ios_base::hex ? hexadecimal : field == std::ios_base::oct ? octal : decimal;
}

template <class T>
void VariBoxParserLog<T>::init() {
    std::string characters;
    if (this->getLowerLimit() < 0) characters = this->getUpperLimit() > 0 ? "-+" : "-";
    characters.append("0123456789ABCDEF", static_cast<std::size_t>(base()));
    this->setAllowedCharacters(LightweightString<char>(characters));
    if (maxChars_ != 0) this->setMaxNumChars(maxChars_);
}

// Position

template <class T>
double VariBoxParserLog<T>::getPositionWithinRange() const {
    double const share = VariBoxNumber::share(this->getValue(), this->getLowerLimit(), this->getUpperLimit());
    return std::clamp(std::log10(share * decade + 1), 0.0, 1.0);
}

template <class T>
T VariBoxParserLog<T>::valueAt(double position) const {
    double const share = (std::pow(10, std::clamp(position, 0.0, 1.0)) - 1) / decade;
    return VariBoxNumber::atShare(share, this->getLowerLimit(), this->getUpperLimit());
}

template <class T>
bool VariBoxParserLog<T>::setPositionWithinRange(double position) {
    DispatchScope const scope;
    if (!std::isnan(position)) return this->changeTo(this->limited(valueAt(position)));
    Diagnostics::count("no number", "VariBoxParserLog::setPositionWithinRange");
    return false;
}

template <class T>
double VariBoxParserLog<T>::wayOf(typename VariBoxParser<T>::Step step) const {
    double const usual = step.isMajor ? majorIncrement_ : minorIncrement_;
    double const way = this->isFine() && this->hasFineSteps() ? usual * fineShare : usual;
    return step.isUp ? way : -way;
}

template <class T>
std::optional<T> VariBoxParserLog<T>::stepped(typename VariBoxParser<T>::Step step) const {
    T const value = this->getValue();
    bool const isAtEnd = step.isUp ? value == this->getUpperLimit() || value == this->limits_max()
                                   : value == this->getLowerLimit() || value == this->limits_min();
    double const position = getPositionWithinRange() + wayOf(step) + (lostAt_ == value ? lost_ : 0);
    if (isAtEnd || std::isnan(position)) return std::nullopt;
    return valueAt(position);
}

/// Without this a small step from a small whole number would be truncated each time.
template <class T>
void VariBoxParserLog<T>::handleStep(typename VariBoxParser<T>::Step step, bool isLost) {
    lost_ = isLost ? (lostAt_ == this->getValue() ? lost_ : 0) + wayOf(step) : 0;
    lostAt_ = this->getValue();
}

// Text

template <class T>
Text VariBoxParserLog<T>::valueToString(T value) const {
    std::string text;
    if constexpr (std::is_floating_point_v<T>)
        text = fractionText(value, flags_, precision_);
    else
        text = (value < 0 ? "-" : "") +
               magnitudeText(static_cast<std::uint64_t>(std::abs(static_cast<std::int64_t>(value))), base());
    if ((flags_ & std::ios_base::showpos) && value > 0) text.insert(0, 1, '+');
    auto const width = static_cast<std::size_t>(std::clamp(fieldWidth_, 0L, mostDecimals));
    if (text.size() < width) text.insert(0, width - text.size(), ' ');
    return fromUTF8(LightweightString<char>(text));
}

template <class T>
std::optional<T> VariBoxParserLog<T>::stringToValue(Text const& text) const {
    if (base() == decimal || !std::is_integral_v<T>) {
        auto const plain = plainNumber(text);
        // As it shows them: with an exponent.
        auto const number = Qv::FloatFromWString(plain.value_or(text));
        return number ? std::optional(VariBoxNumber::fromDouble<T>(*number)) : std::nullopt;
    }
    auto const utf8 = toUTF8(text);
    std::string_view digits = utf8.view();
    while (digits.starts_with(' ')) digits.remove_prefix(1);
    if (digits.starts_with('+')) digits.remove_prefix(1);
    std::int64_t value = 0;
    auto const [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, base());
    if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
    return VariBoxNumber::fromDouble<T>(static_cast<double>(value));
}

template class VariBoxParserLog<int>;
template class VariBoxParserLog<unsigned int>;
template class VariBoxParserLog<float>;
template class VariBoxParserLog<double>;

} // namespace wainscot
