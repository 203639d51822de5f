#pragma once

#include "buttons/checkbox.h"
#include "buttons/choice_core.h"

namespace wainscot {

/// Keeps one of several checkboxes ticked: a click on one ticks it and clears all others, a click on the
/// ticked one changes nothing. The checkboxes are not owned, and may die before it. None is ticked until one
/// is clicked.
class WAINSCOT_API CheckboxRadioSetBase : public iCheckboxSet, public ChoiceCore {
public:
    /// The index of a checkbox that is not a member.
    static constexpr unsigned int noCheckbox = 0xFFFFFFFF;

    /// Gives up the checkboxes, which keep their state.
    ~CheckboxRadioSetBase() override;

    /// Takes the checkbox's user function for itself. Null and members are ignored.
    void addCheckbox(Checkbox* checkbox);
    /// Gives up all checkboxes.
    void clear();
    /// `noCheckbox` when it is not a member.
    unsigned int findCheckbox(Checkbox const* checkbox) const;
    /// Members that have died are counted: the others keep their indices.
    unsigned int numCheckboxes() const { return static_cast<unsigned int>(numMembers()); }
    /// Null for a member that has died or joined another set, and for an index out of range.
    Checkbox* checkbox(unsigned int index) const;

    /// The index of the first ticked member; `noCheckbox` when none is ticked.
    unsigned int getSelectedCheckbox() const;
    unsigned int getSelectedItem() const { return getSelectedCheckbox(); }
    /// Chooses a member as a click does. Does nothing for an index out of range.
    void setSelectedItem(unsigned short index);

    /// The user function of the members; `set` is a `CheckboxRadioSetBase`.
    static void checkboxClickCallback(Checkbox* clicked, void* set);

    // ChoiceCore
    int chosenIndex() const override { return static_cast<int>(getSelectedCheckbox()); }

    // iCheckboxSet
    bool isTabStop(Checkbox const& member) const override;
    bool stepFrom(Checkbox& member, XY<int> direction) override;
    unsigned int getNumMembers() const override { return numCheckboxes(); }

protected:
    bool belongs(Glob const& member, int index) const override;
    bool isChosenMember(int index) const override;
    int indexOfMember(Glob const& glob) const override;
    /// A member was clicked, and is ticked now. It may destroy everything. Does nothing here.
    virtual void handleCheckboxClick(Checkbox* clicked);
    /// Ticks one member, or with `noCheckbox` none, and tells nobody. False when the set was destroyed
    /// meanwhile, or another choice was made.
    bool tickOnly(unsigned int index);
    /// The index that was ticked before the click that is being handled.
    unsigned int getPreviousSelection() const { return previous_; }
    /// Shows all members as mixed, or no longer.
    void showMixed(bool mixed);

private:
    void handleCheckboxClickInternal(Checkbox* clicked);

    unsigned int previous_ = noCheckbox;
    bool mixed_ = false;
};

} // namespace wainscot
