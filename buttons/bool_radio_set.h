#pragma once

#include "buttons/radio_set_base.h"
#include "foundation/val_widget.h"

namespace wainscot {

/// Two checkboxes for the two sides of a truth value: one of them is ticked. A click on the other one inverts
/// the value, if the adaptor allows it. Only the adaptor is told.
///
/// It is not a widget: its maker keeps it for as long as the checkboxes are a pair.
class WAINSCOT_API BoolRadioSet final : public RadioSetBase<Checkbox>,
                                        public ValWidget<bool>,
                                        public iCheckboxSet {
public:
    BoolRadioSet() = default;
    /// Gives up the checkboxes, which keep their state.
    ~BoolRadioSet() override;

    /// Makes a pair of two checkboxes; they are not owned. The first one is ticked at first when both the
    /// value and `firstIsTrue` are true, else the second. From then on each change of the value ticks the
    /// other checkbox. False, with a diagnostic, when a checkbox could not be added.
    bool setWidgets(Checkbox* first, Checkbox* second, bool firstIsTrue);
    bool isFirstTrue() const { return firstIsTrue_; }

    /// Changes the value as the user does: the adaptor is asked, unless the value is the present one.
    void setState(bool value);
    bool getWidgetValue() const override { return value_; }
    void setNewWidgetValue(bool& value, eRedrawFlag redraw) override;
    void setEnabledState(bool enabled) override;
    /// Chooses a checkbox like a click on it; with `quiet` the adaptor is not asked.
    void set_current(int index, bool quiet) override;

    /// The user function of both; `set` is a `BoolRadioSet`.
    static void checkboxCallback(Checkbox* clicked, void* set);

    // iObject: its maker owns it, nobody counts.
    void addRef() const noexcept override {}
    void release() const noexcept override {}

    // iCheckboxSet
    bool isTabStop(Checkbox const& member) const override;
    bool stepFrom(Checkbox& member, XY<int> direction) override;
    unsigned int getNumMembers() const override { return static_cast<unsigned int>(count()); }

protected:
    void switchMember(Checkbox& member, bool on, bool notify) override;
    bool belongs(Glob const& member, int index) const override;
    bool isChosenMember(int index) const override;
    int indexOfMember(Glob const& glob) const override;
    void handleDataMixed(bool mixed, eRedrawFlag redraw) override;

private:
    void letGo();
    int indexFor(bool value) const { return value == valueOfFirst_ ? 0 : 1; }
    void click(Checkbox const* clicked);
    void show(bool value);

    bool value_ = false;
    bool firstIsTrue_ = true;
    /// The value while the first checkbox is ticked.
    bool valueOfFirst_ = true;
};

} // namespace wainscot
