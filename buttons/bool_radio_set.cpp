#include "buttons/bool_radio_set.h"

#include "foundation/focus_stop.h"
#include "host/drawing/drawable.h"

namespace wainscot {

BoolRadioSet::~BoolRadioSet() {
    letGo();
}

void BoolRadioSet::letGo() {
    for (int i = 0; i < static_cast<int>(count()); ++i) {
        Checkbox* const box = member(i);
        if (!box || box->getMembership() != this) continue;
        box->setUserFunction(nullptr, nullptr);
        box->setMembership(nullptr);
        box->setNotChosen(false);
    }
    removeMembers();
}

bool BoolRadioSet::setWidgets(Checkbox* first, Checkbox* second, bool firstIsTrue) {
    letGo();
    if (!first || !second) return false;
    for (Checkbox* const box : {first, second}) {
        if (addMember(*box) == refused) return false;
        box->setUserFunction(checkboxCallback, this);
        box->setMembership(this);
    }
    firstIsTrue_ = firstIsTrue;
    valueOfFirst_ = firstIsTrue || !value_;
    show(value_);
    return true;
}

// Value

void BoolRadioSet::setState(bool value) {
    if (value == value_) return;
    LifeGuard const life(radioSetLife());
    bool const taken = requestSetNewDataValue(value, DataChangeType::single);
    if (life.alive() && taken) show(value);
}

void BoolRadioSet::setNewWidgetValue(bool& value, eRedrawFlag) {
    if (value != value_) show(value);
}

void BoolRadioSet::setEnabledState(bool enabled) {
    LifeGuard const life(radioSetLife());
    for (int i = 0; life.alive() && i < static_cast<int>(count()); ++i)
        if (Checkbox* const box = member(i)) box->setActive(enabled);
}

void BoolRadioSet::show(bool value) {
    value_ = value;
    int const chosen = indexFor(value);
    storeCurrent(chosen);
    LifeGuard const life(radioSetLife());
    for (int i = 0; i < static_cast<int>(count()); ++i) {
        Checkbox* const box = member(i);
        if (!box) continue;
        Glib::UpdateDeferrer const deferrer(box->canvas());
        box->setNotChosen(i != chosen);
        switchMember(*box, i == chosen, false);
        // Whoever was shown it may have chosen otherwise.
        if (!life.alive() || value_ != value || getCurrent() != chosen) return;
    }
}

// Choosing

void BoolRadioSet::set_current(int index, bool quiet) {
    if (index < 0) return RadioSetBase::set_current(index, quiet);
    if (index == getCurrent() || index >= static_cast<int>(count())) return;
    bool const value = (index == 0) == valueOfFirst_;
    // None was chosen: the value is the right one already.
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
    for (int i = 0; i < static_cast<int>(count()); ++i)
        if (member(i) == clicked) return set_current(i, false);
}

// Keys

bool BoolRadioSet::isTabStop(Checkbox const& stop) const {
    if (stop.isTicked()) return true;
    Checkbox const* const other = member(0) == &stop ? member(1) : member(0);
    bool const otherTakesIt = other && FocusStop::canTake(*other);
    return !otherTakesIt || (!other->isTicked() && member(0) == &stop);
}

bool BoolRadioSet::stepFrom(Checkbox& from, XY<int>) {
    int const next = member(0) == &from ? 1 : 0;
    GlobRef<Checkbox> const chosen(member(next));
    if (!chosen.get() || !FocusStop::canTake(*chosen.get())) return false;
    set_current(next, false);
    Checkbox* const box = chosen.get();
    // Where the data refused, the focus stays with the choice.
    if (box && box->isTicked()) FocusStop::giveFocus(*box, *box);
    return true;
}

} // namespace wainscot
