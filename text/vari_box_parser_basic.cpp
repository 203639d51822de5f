#include "text/vari_box_parser_basic.h"

#include "text/vari_box_number_p.h"

namespace wainscot {

namespace {

/// What a fine step is of the usual one.
constexpr double fineShare = 0.1;

} // namespace

template <class T>
VariBoxParserBasic<T>::VariBoxParserBasic(VariBox* box, Displayer const* displayer, T lower, T upper,
                                          T minorIncrement, T majorIncrement, T initial, T displayScale)
    : VariBoxParser<T>(box, lower, upper, initial, displayScale), displayer_(displayer),
      minorIncrement_(minorIncrement), majorIncrement_(majorIncrement) {}

template <class T>
void VariBoxParserBasic<T>::init() {
    this->setAllowedCharacters(displayer_ ? displayer_->getAllowedCharacters()
                                          : VariBoxPlainDisplayer<T>().getAllowedCharacters());
    this->setMaxNumChars(displayer_ ? displayer_->getMaxNumChars() : static_cast<unsigned char>(0));
}

template <class T>
double VariBoxParserBasic<T>::getPositionWithinRange() const {
    return VariBoxNumber::share(this->getValue(), this->getLowerLimit(), this->getUpperLimit());
}

template <class T>
std::optional<T> VariBoxParserBasic<T>::stepped(typename VariBoxParser<T>::Step step) const {
    T const value = this->getValue();
    bool const isAtEnd = step.isUp ? value == this->getUpperLimit() || value == this->limits_max()
                                   : value == this->getLowerLimit() || value == this->limits_min();
    if (isAtEnd) return std::nullopt;
    T const usual = step.isMajor ? majorIncrement_ : minorIncrement_;
    bool const isFine = this->isFine() && this->hasFineSteps();
    return VariBoxNumber::moved(value, isFine ? static_cast<T>(usual * fineShare) : usual, step.isUp);
}

template <class T>
LightweightString<wchar_t> VariBoxParserBasic<T>::valueToString(T value) const {
    return displayer_ ? displayer_->valueToString(value) : VariBoxPlainDisplayer<T>().valueToString(value);
}

template <class T>
std::optional<T> VariBoxParserBasic<T>::stringToValue(LightweightString<wchar_t> const& text) const {
    return displayer_ ? displayer_->stringToValue(text) : VariBoxPlainDisplayer<T>().stringToValue(text);
}

template class VariBoxParserBasic<int>;
template class VariBoxParserBasic<unsigned int>;
template class VariBoxParserBasic<float>;
template class VariBoxParserBasic<double>;

} // namespace wainscot
