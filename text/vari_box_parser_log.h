#pragma once

#include "text/vari_box_parser.h"

#include <ios>

namespace wainscot {

/// The parser of a logarithmic value box, where a step moves the position within the range, so that steps are
/// small at the lower end and large at the upper one. `T` is int, unsigned int, float or double.
template <class T>
class WAINSCOT_API VariBoxParserLog : public VariBoxParser<T> {
public:
    /// The increments are parts of the range, which is 1 long. Numbers are shown as streams do: `flags` says
    /// the base of whole numbers, `fixed` or `scientific` and `showpos`; `precision` is that of fractions,
    /// with 0 or less without either flag as many digits as tell the value from its neighbours; `fieldWidth`
    /// is the least number of characters, filled with blanks from the left. The most characters that can be
    /// entered: 0 = any number. A display scale of 0 or less scales nothing.
    VariBoxParserLog(VariBox* box, T lower, T upper, double minorIncrement, double majorIncrement, T initial,
                     T displayScale, unsigned char maxChars,
                     std::ios_base::fmtflags flags = std::ios_base::dec, long precision = 0,
                     long fieldWidth = 0);

    void init() override;
    double getPositionWithinRange() const override;
    /// As the user does it: the data is asked. A position beyond 0 to 1 counts as the nearer end. Whether the
    /// value has changed.
    bool setPositionWithinRange(double position);
    LightweightString<wchar_t> valueToString(T value) const override;

protected:
    std::optional<T> stepped(typename VariBoxParser<T>::Step step) const override;
    void handleStep(typename VariBoxParser<T>::Step step, bool isLost) override;
    std::optional<T> stringToValue(LightweightString<wchar_t> const& text) const override;

private:
    double wayOf(typename VariBoxParser<T>::Step step) const;
    T valueAt(double position) const;
    int base() const;

    double minorIncrement_;
    double majorIncrement_;
    /// Steps that were too small for a whole number, to be added to the next, and the value then.
    double lost_ = 0;
    T lostAt_ = 0;
    std::ios_base::fmtflags flags_;
    long precision_;
    long fieldWidth_;
    unsigned char maxChars_;
};

extern template class VariBoxParserLog<int>;
extern template class VariBoxParserLog<unsigned int>;
extern template class VariBoxParserLog<float>;
extern template class VariBoxParserLog<double>;

} // namespace wainscot
