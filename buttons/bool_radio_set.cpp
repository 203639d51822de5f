#include "buttons/bool_radio_set.h"

#include "buttons/checkbox_members_p.h"

namespace wainscot {

BoolRadioSet::~BoolRadioSet() {
    letGo();
}

void BoolRadioSet::letGo() {
    for (int i = 0; i < numMembers(); ++i)
        if (Checkbox* const box = member(i)) CheckboxMembers::leave(*box, this);
    removeMembers();
}

bool BoolRadioSet::belongs(Glob const& member, int index) const {
    return CheckboxMembers::belongs(member, *this, index);
}

bool BoolRadioSet::isChosenMember(int index) const {
    Checkbox const* const box = member(index);
    return box && box->isTicked();
}

int BoolRadioSet::indexOfMember(Glob const& glob) const {
    return CheckboxMembers::indexIn(*this, glob);
}

bool BoolRadioSet::setWidgets(Checkbox* first, Checkbox* second, bool firstIsTrue) {
    letGo();
    if (!first || !second || first == second) return false;
    for (Checkbox* const box : {first, second}) {
        std::uint32_t const index = addMember(*box);
        CheckboxMembers::join(*box, *this, index, checkboxCallback, this);
        box->setShownMixed(isDataMixed());
    }
    firstIsTrue_ = firstIsTrue;
    valueOfFirst_ = firstIsTrue || !value_;
    show(value_);
    return true;
}

// Value

void BoolRadioSet::setState(bool value) {
    changeByUser(value);
}

void BoolRadioSet::setNewWidgetValue(bool& value, eRedrawFlag) {
    if (value != value_) show(value);
}

void BoolRadioSet::setEnabledState(bool enabled) {
    LifeGuard const life(choiceLife());
    for (int i = 0; life.alive() && i < static_cast<int>(count()); ++i)
        if (Checkbox* const box = member(i)) box->setActive(enabled);
}

void BoolRadioSet::show(bool value) {
    value_ = value;
    storeCurrent(indexFor(value));
    Choosing const choosing(*this);
    CheckboxMembers::tickOnly(*this, getCurrent(), [&] { return choosing.goesOn(); });
    // Listeners may have made another choice.
    if (choosing.goesOn() && isChosenMember(getCurrent())) takeFocusAlong();
}

// Choosing

void BoolRadioSet::set_current(int index, bool quiet) {
    if (index < 0) return RadioSetBase::set_current(index, quiet);
    if (index == getCurrent() || index >= static_cast<int>(count())) return;
    bool const value = (index == 0) == valueOfFirst_;
    // None was chosen: the value is right already.
    if (quiet || value == value_) return show(value);
    setState(value);
}

void BoolRadioSet::switchMember(Checkbox& member, bool on, bool) {
    member.setState(on);
}

void BoolRadioSet::checkboxCallback(Checkbox* clicked, void* set) {
    if (set) static_cast<BoolRadioSet*>(set)->click(clicked);
}

void BoolRadioSet::click(Checkbox const* clicked) {
    if (!clicked || clicked->isTicked()) return;
    for (int i = 0; i < static_cast<int>(count()); ++i) {
        if (member(i) != clicked) continue;
        // The program may have cleared the chosen member.
        return i == getCurrent() ? show(value_) : set_current(i, false);
    }
}

// Mixed values

void BoolRadioSet::handleDataMixed(bool mixed, eRedrawFlag) {
    LifeGuard const life(choiceLife());
    for (int i = 0; life.alive() && i < static_cast<int>(count()); ++i)
        if (Checkbox* const box = member(i)) box->setShownMixed(mixed);
}

// Keys

bool BoolRadioSet::isTabStop(Checkbox const& stop) const {
    return isTabStopAt(static_cast<int>(stop.getMemberIndex()));
}

bool BoolRadioSet::stepFrom(Checkbox& from, XY<int>) {
    int const index = static_cast<int>(from.getMemberIndex());
    Checkbox* const next = member(nextUsable(index, {1, 0}));
    if (!next || next == &from) return false;
    if (next->isTicked())
        takeFocusAlong();
    else
        click(next);
    return true;
}

} // namespace wainscot
