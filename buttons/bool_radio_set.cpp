#include "buttons/bool_radio_set.h"

#include "foundation/focus_stop.h"
#include "host/drawing/drawable.h"

namespace wainscot {

BoolRadioSet::~BoolRadioSet() {
    letGo();
}

void BoolRadioSet::letGo() {
    for (int i = 0; i < static_cast<int>(count()); ++i) {
        Checkbox* const box = side(i);
        if (!box) continue;
        // Somebody else may have taken the function since.
        if (box->getUserContext() == this) box->setUserFunction(nullptr, nullptr);
        box->setMembership(nullptr);
        box->setNotChosen(false);
    }
    removeMembers();
}

bool BoolRadioSet::setWidgets(Checkbox* first, Checkbox* second, bool firstIsTrue) {
    letGo();
    if (!first || !second || first == second) return false;
    for (Checkbox* const box : {first, second}) {
        std::uint32_t const index = addMember(*box);
        if (index == refused) return false;
        box->setUserFunction(checkboxCallback, this);
        box->setMembership(this, index);
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
    LifeGuard const life(radioSetLife());
    for (int i = 0; life.alive() && i < static_cast<int>(count()); ++i)
        if (Checkbox* const box = side(i)) box->setActive(enabled);
}

void BoolRadioSet::show(bool value) {
    value_ = value;
    int const chosen = indexFor(value);
    storeCurrent(chosen);
    LifeGuard const life(radioSetLife());
    for (int i = 0; i < static_cast<int>(count()); ++i) {
        Checkbox* const box = side(i);
        if (!box) continue;
        Glib::UpdateDeferrer const deferrer(box->canvas());
        box->setNotChosen(i != chosen);
        switchMember(*box, i == chosen, false);
        // Whoever was shown it may have chosen otherwise.
        if (!life.alive() || value_ != value || getCurrent() != chosen) return;
    }
    takeFocusAlong();
}

/// The pair is one stop: the focus does not stay behind on the side that is not ticked.
void BoolRadioSet::takeFocusAlong() {
    Checkbox* const chosen = side(getCurrent());
    if (!chosen || !chosen->isTicked() || !FocusStop::canTake(*chosen)) return;
    auto const* const holder = dynamic_cast<Checkbox*>(FocusStop::holderBeside(*chosen));
    if (holder && holder->getMembership() == this && !holder->isTicked())
        FocusStop::giveFocus(*chosen, *chosen);
}

Checkbox* BoolRadioSet::side(int index) const {
    Checkbox* const box = member(index);
    return box && box->getMembership() == this ? box : nullptr;
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
    for (int i = 0; i < static_cast<int>(count()); ++i) {
        if (side(i) != clicked) continue;
        // The program may have cleared the chosen one.
        return i == getCurrent() ? show(value_) : set_current(i, false);
    }
}

// Mixed values

void BoolRadioSet::handleDataMixed(bool mixed, eRedrawFlag) {
    LifeGuard const life(radioSetLife());
    for (int i = 0; life.alive() && i < static_cast<int>(count()); ++i)
        if (Checkbox* const box = side(i)) box->setShownMixed(mixed);
}

// Keys

bool BoolRadioSet::isTabStop(Checkbox const& stop) const {
    if (stop.isTicked()) return true;
    Checkbox const* const other = side(0) == &stop ? side(1) : side(0);
    bool const otherTakesIt = other && FocusStop::canTake(*other);
    return !otherTakesIt || (!other->isTicked() && side(0) == &stop);
}

bool BoolRadioSet::stepFrom(Checkbox& from, XY<int>) {
    Checkbox* const next = side(side(0) == &from ? 1 : 0);
    if (!next || !FocusStop::canTake(*next)) return false;
    if (next->isTicked())
        takeFocusAlong();
    else
        click(next);
    return true;
}

} // namespace wainscot
