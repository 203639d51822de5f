#pragma once

#include "foundation/val_widget.h"
#include "text/vari_box_parser_base.h"

#include <limits>
#include <optional>

namespace wainscot {

/// What the parsers for numbers share: a value within limits, which can be bound to data. `T` is int,
/// unsigned int, float or double.
///
/// A value is brought to at most the upper, then to at least the lower limit: with limits the wrong way round
/// the lower one counts. Values that are no numbers are refused and counted in the diagnostics; limits that
/// are none, or infinite, become those of the type.
///
/// The data is asked at each step. The first step of a drag tells it `started` with the value from before,
/// each step tells `continued`, the end of the drag `finished`; all other changes are told with
/// `getDataChangeType`.
template <class T>
class WAINSCOT_API VariBoxParser : public VariBoxParserBase, public ValWidget<T> {
public:
    /// A display scale above 0 multiplies what is shown, and divides what is entered.
    VariBoxParser(VariBox* box, T lower, T upper, T initial, T displayScale);

    /// The limits of the type itself.
    static constexpr T limits_min() { return std::numeric_limits<T>::lowest(); }
    static constexpr T limits_max() { return std::numeric_limits<T>::max(); }

    T getValue() const { return value_; }
    /// Nobody is told.
    void setValue(T value);
    T getLowerLimit() const { return lower_; }
    T getUpperLimit() const { return upper_; }
    /// The value is brought between them.
    void setLimits(T lower, T upper);
    T getDisplayScale() const { return displayScale_; }
    /// The value that a double click, or the context menu, puts back.
    void setDefaultValue(std::optional<T> value) { default_ = value; }
    std::optional<T> getDefaultValue() const { return default_; }

    /// A value, already scaled, as it is shown.
    virtual LightweightString<wchar_t> valueToString(T value) const = 0;

    // --- VariBoxParserBase
    bool handleMinorInc() override { return step({true, false}); }
    bool handleMajorInc() override { return step({true, true}); }
    bool handleMinorDec() override { return step({false, false}); }
    bool handleMajorDec() override { return step({false, true}); }
    void handleDragStart() override;
    bool handleDragCancel() override;
    bool handleNoChange() override;
    bool handleParseText() override;
    bool hasDefault() const override { return default_.has_value(); }
    bool handleDefault() override;
    bool isMixed() const override { return this->isDataMixed(); }
    bool hasFineSteps() const override { return !std::numeric_limits<T>::is_integer; }
    std::optional<NumberValue> getNumber() const override;
    void handleBoxGone() override;

    // --- ValWidget
    T getWidgetValue() const override { return value_; }
    void setNewWidgetValue(T& value, eRedrawFlag redraw) override;
    void setEnabledState(bool enabled) override { setEnabled(enabled); }
    void handleDataMixed(bool mixed, eRedrawFlag redraw) override;
    void handleDataAdaptorChange() override;

protected:
    struct Step {
        bool isUp;
        bool isMajor;
    };
    /// What becomes of a value that equals the present one.
    enum class How : unsigned char { store, storeAndRefresh };

    /// The value after a step, before it is brought between the limits; nothing where there is no such step.
    virtual std::optional<T> stepped(Step step) const = 0;
    /// A step is about to change the value; or it does not, because it is too small for the type. Does
    /// nothing here.
    virtual void handleStep(Step step, bool isLost);
    /// The value in a text that the user has entered; nothing, or an exception, when it cannot be read.
    virtual std::optional<T> stringToValue(LightweightString<wchar_t> const& text) const = 0;
    LightweightString<wchar_t> makeText() const override;

    T limited(T value) const;
    void setValueInternal(T value, How how, eRedrawFlag redraw = eRedrawYes);
    /// Asks the data for another value, and answers whether the value has changed. It may destroy everything.
    bool changeTo(T value);

private:
    bool step(Step step);
    std::optional<T> nextAfter(Step step);
    /// Tells the data that a drag has begun. False when it has ended by that.
    bool openDrag();
    std::optional<T> readEntered() const;

    T lower_;
    T upper_;
    T value_;
    T displayScale_;
    std::optional<T> default_;
    ValGesture<T> gesture_;
    /// Whether the data knows of the drag.
    bool isDragTold_ = false;
};

extern template class VariBoxParser<int>;
extern template class VariBoxParser<unsigned int>;
extern template class VariBoxParser<float>;
extern template class VariBoxParser<double>;

} // namespace wainscot
