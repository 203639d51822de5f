#include "buttons/checkbox_radio_set_base.h"

#include "buttons/checkbox_members_p.h"
#include "host/events/dispatch_scope.h"

namespace wainscot {

CheckboxRadioSetBase::~CheckboxRadioSetBase() {
    clear();
}

// Members

void CheckboxRadioSetBase::addCheckbox(Checkbox* checkbox) {
    if (!checkbox || checkbox->getMembership() == this) return;
    DispatchScope const scope;
    unsigned int const index = static_cast<unsigned int>(addMemberGlob(*checkbox));
    CheckboxMembers::join(*checkbox, *this, index, checkboxClickCallback, this);
    checkbox->setShownMixed(mixed_);
}

void CheckboxRadioSetBase::clear() {
    for (unsigned int i = 0; i < numCheckboxes(); ++i)
        if (Checkbox* const box = checkbox(i)) CheckboxMembers::leave(*box, this);
    removeMemberGlobs();
}

Checkbox* CheckboxRadioSetBase::checkbox(unsigned int index) const {
    return static_cast<Checkbox*>(memberAt(static_cast<int>(index)));
}

bool CheckboxRadioSetBase::belongs(Glob const& member, int index) const {
    return CheckboxMembers::belongs(member, *this, index);
}

bool CheckboxRadioSetBase::isChosenMember(int index) const {
    Checkbox const* const box = checkbox(static_cast<unsigned int>(index));
    return box && box->isTicked();
}

int CheckboxRadioSetBase::indexOfMember(Glob const& glob) const {
    return CheckboxMembers::indexIn(*this, glob);
}

unsigned int CheckboxRadioSetBase::findCheckbox(Checkbox const* sought) const {
    for (unsigned int i = 0; sought && i < numCheckboxes(); ++i)
        if (checkbox(i) == sought) return i;
    return noCheckbox;
}

unsigned int CheckboxRadioSetBase::getSelectedCheckbox() const {
    for (unsigned int i = 0; i < numCheckboxes(); ++i) {
        Checkbox const* const box = checkbox(i);
        if (box && box->isTicked()) return i;
    }
    return noCheckbox;
}

// Choosing

void CheckboxRadioSetBase::setSelectedItem(unsigned short index) {
    if (Checkbox* const box = checkbox(index)) handleCheckboxClickInternal(box);
}

void CheckboxRadioSetBase::checkboxClickCallback(Checkbox* clicked, void* set) {
    if (set) static_cast<CheckboxRadioSetBase*>(set)->handleCheckboxClickInternal(clicked);
}

void CheckboxRadioSetBase::handleCheckboxClickInternal(Checkbox* clicked) {
    DispatchScope const scope;
    if (!clicked || clicked->isTicked()) return;
    unsigned int const index = findCheckbox(clicked);
    if (index == noCheckbox) return;
    HandlerRef<Checkbox> const ref(clicked);
    previous_ = getSelectedCheckbox();
    if (tickOnly(index)) handleCheckboxClick(ref.get());
}

void CheckboxRadioSetBase::handleCheckboxClick(Checkbox*) {}

bool CheckboxRadioSetBase::tickOnly(unsigned int index) {
    Choosing const choosing(*this);
    CheckboxMembers::tickOnly(*this, static_cast<int>(index), [&] { return choosing.goesOn(); });
    if (choosing.goesOn()) takeFocusAlong();
    return choosing.goesOn();
}

void CheckboxRadioSetBase::showMixed(bool mixed) {
    mixed_ = mixed;
    LifeGuard const life(choiceLife());
    for (unsigned int i = 0; life.alive() && i < numCheckboxes(); ++i)
        if (Checkbox* const box = checkbox(i)) box->setShownMixed(mixed);
}

// Keys

bool CheckboxRadioSetBase::isTabStop(Checkbox const& member) const {
    return isTabStopAt(static_cast<int>(member.getMemberIndex()));
}

bool CheckboxRadioSetBase::stepFrom(Checkbox& member, XY<int> direction) {
    unsigned int const from = findCheckbox(&member);
    int const next = from == noCheckbox ? -1 : nextUsable(static_cast<int>(from), direction);
    if (next < 0) return false;
    Checkbox* const chosen = checkbox(static_cast<unsigned int>(next));
    if (chosen->isTicked())
        takeFocusAlong();
    else
        handleCheckboxClickInternal(chosen);
    return true;
}

} // namespace wainscot
