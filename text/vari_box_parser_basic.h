#pragma once

#include "host/base/ptr.h"
#include "text/vari_box_displayers.h"
#include "text/vari_box_parser.h"

namespace wainscot {

/// The parser of a linear value box: a step adds an increment to the value, or takes it off, and stops at the
/// limits of the type. `T` is int, unsigned int, float or double.
template <class T>
class WAINSCOT_API VariBoxParserBasic : public VariBoxParser<T> {
public:
    using Displayer = VariBoxParserBasicDisplayerBase<T>;

    /// The displayer shows and reads the values; it is counted, and shared with other parsers. Null = plain
    /// numbers. A display scale of 0 or less scales nothing.
    VariBoxParserBasic(VariBox* box, Displayer const* displayer, T lower, T upper, T minorIncrement,
                       T majorIncrement, T initial, T displayScale = 0);

    Qv::Ptr<Displayer const> const& getDisplayer() const { return displayer_; }

    void init() override;
    double getPositionWithinRange() const override;
    LightweightString<wchar_t> valueToString(T value) const override;

protected:
    std::optional<T> stepped(typename VariBoxParser<T>::Step step) const override;
    std::optional<T> stringToValue(LightweightString<wchar_t> const& text) const override;

private:
    Qv::Ptr<Displayer const> displayer_;
    T minorIncrement_;
    T majorIncrement_;
};

extern template class VariBoxParserBasic<int>;
extern template class VariBoxParserBasic<unsigned int>;
extern template class VariBoxParserBasic<float>;
extern template class VariBoxParserBasic<double>;

} // namespace wainscot
