#pragma once

#include "host/base/export.h"
#include "host/base/lightweight_string.h"
#include "host/base/object.h"
#include "text/number_sum.h"

#include <vector>

namespace wainscot {

// How the values of linear value boxes are shown and read.

/// Turns a value into text and text into a value. It is counted: one displayer, made with `new`, may serve
/// any number of parsers.
template <class T>
class WAINSCOT_API VariBoxParserBasicDisplayerBase : public Qv::InternalRefCount {
public:
    virtual LightweightString<wchar_t> valueToString(T value) const = 0;
    /// Throws `Qv::Exception::RuntimeError` for a text that it cannot read.
    virtual T stringToValue(LightweightString<wchar_t> const& text) const = 0;
    /// The characters that can be entered, in UTF-8; empty = all, as here.
    virtual LightweightString<char> getAllowedCharacters() const;
    /// The most characters that can be entered; 0 = any number, as here.
    virtual unsigned char getMaxNumChars() const;
};

/// A plain number, fractions with at most so many decimals. Reads what `plainNumber` does; a whole number is
/// refused with decimals.
template <class T>
class WAINSCOT_API VariBoxPlainDisplayer : public VariBoxParserBasicDisplayerBase<T> {
public:
    static constexpr int usualDecimals = 3;
    /// `trim` leaves out zeros at the end.
    explicit VariBoxPlainDisplayer(int decimals = usualDecimals, bool trim = true)
        : decimals_(decimals), trim_(trim) {}

    LightweightString<wchar_t> valueToString(T value) const override;
    T stringToValue(LightweightString<wchar_t> const& text) const override;

private:
    int decimals_;
    bool trim_;
};

/// A number with a unit, and arithmetic: "2*12+6", "1.5s" (see `sumOf`). Whole numbers are rounded.
template <class T>
class WAINSCOT_API VariBoxUnitDisplayer : public VariBoxParserBasicDisplayerBase<T> {
public:
    /// The unit in which the values are, behind the number, and others that can be entered. A number without
    /// a unit is taken as it is.
    explicit VariBoxUnitDisplayer(LightweightString<wchar_t> const& unit, std::vector<NumberUnit> others = {},
                                  int decimals = VariBoxPlainDisplayer<T>::usualDecimals);

    LightweightString<wchar_t> valueToString(T value) const override;
    T stringToValue(LightweightString<wchar_t> const& text) const override;

private:
    /// Its own is the first.
    std::vector<NumberUnit> units_;
    int decimals_;
};

/// A share of 1, shown in percent. `T` is float or double.
template <class T>
class WAINSCOT_API VariBoxPercentDisplayer : public VariBoxParserBasicDisplayerBase<T> {
public:
    explicit VariBoxPercentDisplayer(int decimals = 1) : decimals_(decimals) {}

    LightweightString<wchar_t> valueToString(T value) const override;
    T stringToValue(LightweightString<wchar_t> const& text) const override;

private:
    int decimals_;
};

/// A factor by which something is amplified, shown in decibels; 0 and less are minus infinity, entered as
/// "-inf" too. `T` is float or double.
template <class T>
class WAINSCOT_API VariBoxDecibelDisplayer : public VariBoxParserBasicDisplayerBase<T> {
public:
    explicit VariBoxDecibelDisplayer(int decimals = 1) : decimals_(decimals) {}

    LightweightString<wchar_t> valueToString(T value) const override;
    T stringToValue(LightweightString<wchar_t> const& text) const override;

private:
    int decimals_;
};

/// A number of frames, shown as hours, minutes, seconds and frames. `T` is int or double.
///
/// Parts may be left out from the left, and only the leftmost may be larger than it is shown: "90:00" are
/// ninety seconds. ":", ";", "." and "," divide alike; digits without a divider fill the parts from the
/// right, two by two. A frame that is dropped is read as the one behind it.
template <class T>
class WAINSCOT_API VariBoxTimecodeDisplayer : public VariBoxParserBasicDisplayerBase<T> {
public:
    /// A rate below 1 counts as 1. With drop frame, of a rate that is a multiple of 30, the numbers of 2 (or
    /// 4, for 60) frames are left out in each minute but every tenth, and ";" stands before the frames.
    explicit VariBoxTimecodeDisplayer(int framesPerSecond, bool dropFrame = false);

    LightweightString<wchar_t> valueToString(T value) const override;
    T stringToValue(LightweightString<wchar_t> const& text) const override;

private:
    int rate_;
    /// How many frame numbers are left out each time; 0 = none.
    int dropped_;
};

extern template class VariBoxParserBasicDisplayerBase<int>;
extern template class VariBoxParserBasicDisplayerBase<unsigned int>;
extern template class VariBoxParserBasicDisplayerBase<float>;
extern template class VariBoxParserBasicDisplayerBase<double>;
extern template class VariBoxPlainDisplayer<int>;
extern template class VariBoxPlainDisplayer<unsigned int>;
extern template class VariBoxPlainDisplayer<float>;
extern template class VariBoxPlainDisplayer<double>;
extern template class VariBoxUnitDisplayer<int>;
extern template class VariBoxUnitDisplayer<unsigned int>;
extern template class VariBoxUnitDisplayer<float>;
extern template class VariBoxUnitDisplayer<double>;
extern template class VariBoxPercentDisplayer<float>;
extern template class VariBoxPercentDisplayer<double>;
extern template class VariBoxDecibelDisplayer<float>;
extern template class VariBoxDecibelDisplayer<double>;
extern template class VariBoxTimecodeDisplayer<int>;
extern template class VariBoxTimecodeDisplayer<double>;

} // namespace wainscot
