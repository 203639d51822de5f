#include "buttons/checkbox_radio_set_base.h"

#include "buttons/choice_steps_p.h"
#include "foundation/focus_stop.h"
#include "host/drawing/drawable.h"
#include "host/events/dispatch_scope.h"

#include <algorithm>

namespace wainscot {

CheckboxRadioSetBase::~CheckboxRadioSetBase() {
    clear();
}

// Members

void CheckboxRadioSetBase::addCheckbox(Checkbox* checkbox) {
    if (!checkbox || checkbox->getMembership() == this) return;
    checkbox->setUserFunction(checkboxClickCallback, this);
    checkbox->setMembership(this, numCheckboxes());
    checkbox->setShownMixed(mixed_);
    members_.emplace_back(checkbox);
}

void CheckboxRadioSetBase::clear() {
    for (unsigned int i = 0; i < numCheckboxes(); ++i) {
        Checkbox* const box = checkbox(i);
        if (!box) continue;
        // Somebody else may have taken the function since.
        if (box->getUserContext() == this) box->setUserFunction(nullptr, nullptr);
        box->setMembership(nullptr);
        box->setNotChosen(false);
    }
    members_.clear();
}

Checkbox* CheckboxRadioSetBase::checkbox(unsigned int index) const {
    Checkbox* const box = index < members_.size() ? members_[index].get() : nullptr;
    return box && box->getMembership() == this && box->getMemberIndex() == index ? box : nullptr;
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
    GlobRef<Checkbox> const ref(clicked);
    previous_ = getSelectedCheckbox();
    if (tickOnly(index)) handleCheckboxClick(ref.get());
}

void CheckboxRadioSetBase::handleCheckboxClick(Checkbox*) {}

bool CheckboxRadioSetBase::tickOnly(unsigned int index) {
    LifeGuard const life(life_);
    unsigned int const choice = ++choice_;
    Checkbox const* const chosen = checkbox(index);
    Glib::UpdateDeferrer const deferrer(chosen ? chosen->canvas() : nullptr);
    for (unsigned int i = 0; i < members_.size(); ++i) {
        Checkbox* const box = checkbox(i);
        if (!box) continue;
        box->setNotChosen(index != noCheckbox && i != index);
        box->setState(i == index);
        if (!life.alive() || choice != choice_) return false;
    }
    takeFocusAlong();
    return life.alive() && choice == choice_;
}

/// The set is one stop: the focus does not stay behind on a member that is not the chosen one.
void CheckboxRadioSetBase::takeFocusAlong() {
    Checkbox* const chosen = checkbox(getSelectedCheckbox());
    if (!chosen || !FocusStop::canTake(*chosen)) return;
    auto const* const holder = dynamic_cast<Checkbox*>(FocusStop::holderBeside(*chosen));
    if (holder && holder->getMembership() == this && !holder->isTicked())
        FocusStop::giveFocus(*chosen, *chosen);
}

void CheckboxRadioSetBase::showMixed(bool mixed) {
    mixed_ = mixed;
    LifeGuard const life(life_);
    for (unsigned int i = 0; life.alive() && i < numCheckboxes(); ++i)
        if (Checkbox* const box = checkbox(i)) box->setShownMixed(mixed);
}

// Keys

int CheckboxRadioSetBase::nextUsable(int from, XY<int> direction) const {
    return ChoiceSteps::next(from, direction, static_cast<int>(members_.size()), columns_, [this](int index) {
        Checkbox const* const box = checkbox(static_cast<unsigned int>(index));
        return box && FocusStop::canTake(*box);
    });
}

/// Looks back to the nearest other one only, so that asking all members takes linear time.
template <class Test>
bool CheckboxRadioSetBase::isFirst(Checkbox const& member, Test test) const {
    for (unsigned int i = std::min(member.getMemberIndex(), numCheckboxes()); i-- > 0;) {
        Checkbox const* const box = checkbox(i);
        if (box && test(*box)) return false;
    }
    return true;
}

bool CheckboxRadioSetBase::isTabStop(Checkbox const& member) const {
    if (member.isTicked()) return isFirst(member, [](Checkbox const& box) { return box.isTicked(); });
    if (!isFirst(member, [](Checkbox const& box) { return FocusStop::canTake(box); })) return false;
    Checkbox const* const chosen = checkbox(getSelectedCheckbox());
    return !chosen || !FocusStop::canTake(*chosen);
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
