#pragma once

#include "text/text_box.h"

namespace wainscot {

/// A box for a number, which can be stepped up and down with the arrow keys and the wheel. Only "-", digits
/// and, for ranges of fractions, "." can be entered. The range limits what is stepped, not what is typed.
///
/// A step tells the owner `eEditEnd` at once, and bound data is asked before. A step below 0.0005 changes
/// nothing, since numbers are shown with 3 decimals.
///
/// Bound data never gets a text that is no number: the box shows the former text again.
class WAINSCOT_API NumericTextBox : public TextBox {
public:
    enum class Step { up, down };
    static constexpr KeyRow<Step> keyTable[] = {
        {Key::up, Step::up, "a step up"},
        {Key::down, Step::down, "a step down"},
    };

    /// Whole numbers from 0 to 100 at first. The characters of the record do not matter.
    explicit NumericTextBox(InitArgs const& args);

    LightweightString<wchar_t> getEligibleCharacters() const;
    using TextBox::isAllowed;
    /// Whether a character may be part of a number; "." only where `allowPoint` says so.
    bool isAllowed(wchar_t character, bool allowPoint) const;

    /// Fractions; a step is a 500th of the range. NaN is refused: false.
    bool setValueRange(double low, double high);
    /// Whole numbers; a step is a 500th of the range, at least 1.
    bool setValueRange(int low, int high);
    double getMinimum() const { return low_; }
    double getMaximum() const { return high_; }
    double getStep() const { return step_; }
    /// The number in the text; nothing when it is no number.
    std::optional<double> getNumber() const;
    /// Shows a number, with up to 3 decimals, as `setText` does. NaN is refused: false.
    bool setNumber(double number);
    /// One step up or down, within the range; a text that is no number counts as 0.
    void nudge(bool up);

    int handleKeyboardEvent(int keyCode) override;
    int handleMouseEvent(Event const& event) override;
    void paste(Text const& text) override;
    void describe(GlobDescription& description) const override;

protected:
    bool isTextValid() const override;

private:
    bool storeRange(double low, double high, double step, bool allowPoint);

    double step_ = 1;
    double high_ = 100;
    double low_ = 0;
};

} // namespace wainscot
