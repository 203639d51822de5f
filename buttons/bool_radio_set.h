#pragma once

#include "buttons/radio_set_base.h"
#include "foundation/val_widget.h"

namespace wainscot {

/// Two checkboxes of which one is ticked, as the two sides of a truth value. A click on the other one turns
/// the value round: the adaptor is asked, and where it refuses all stays as it is. Nothing else is told.
///
/// No widget itself: whoever makes it keeps it for as long as the checkboxes are to be a pair.
class WAINSCOT_API BoolRadioSet final : public RadioSetBase<Checkbox>,
                                        public ValWidget<bool>,
                                        public iCheckboxSet {
public:
    BoolRadioSet() = default;
    /// Lets go of the checkboxes, which keep their state.
    ~BoolRadioSet() override;

    /// Makes them a pair; they are not owned. The first one is ticked when the value is true and
    /// `firstIsTrue` says so, in all other cases the second; from then on each change of the value ticks the
    /// other one. False, with a diagnostic, when one of them could not be added.
    bool setWidgets(Checkbox* first, Checkbox* second, bool firstIsTrue);
    bool isFirstTrue() const { return firstIsTrue_; }

    /// As the user does: nothing for the present value, else the adaptor is asked.
    void setState(bool value);
    bool getWidgetValue() const override { return value_; }
    void setNewWidgetValue(bool& value, eRedrawFlag redraw) override;
    void setEnabledState(bool enabled) override;
    /// Choosing one of the two is a click on it, or, when quiet, a change that the adaptor is not asked
    /// about.
    void set_current(int index, bool quiet) override;

    /// The user function of both; `set` is a `BoolRadioSet`.
    static void checkboxCallback(Checkbox* clicked, void* set);

    // iObject: whoever made it owns it, nobody counts.
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
    /// What the value is while the first one is ticked.
    bool valueOfFirst_ = true;
};

} // namespace wainscot
