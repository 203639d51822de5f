#include "buttons/checkbox_radio_set_base.h"

#include "buttons/choice_steps_p.h"
#include "foundation/focus_stop.h"
#include "host/drawing/drawable.h"

namespace wainscot {

CheckboxRadioSetBase::~CheckboxRadioSetBase() {
    clear();
}

// Members

void CheckboxRadioSetBase::addCheckbox(Checkbox* checkbox) {
    if (!checkbox) return;
    checkbox->setUserFunction(checkboxClickCallback, this);
    checkbox->setMembership(this);
    members_.emplace_back(checkbox);
}

void CheckboxRadioSetBase::clear() {
    for (GlobRef<Checkbox> const& member : members_) {
        Checkbox* const box = member.get();
        // It may have gone to another set since.
        if (!box || box->getMembership() != this) continue;
        box->setUserFunction(nullptr, nullptr);
        box->setMembership(nullptr);
        box->setNotChosen(false);
    }
    members_.clear();
}

Checkbox* CheckboxRadioSetBase::checkbox(unsigned int index) const {
    return index < members_.size() ? members_[index].get() : nullptr;
}

unsigned int CheckboxRadioSetBase::findCheckbox(Checkbox const* checkbox) const {
    for (unsigned int i = 0; checkbox && i < members_.size(); ++i)
        if (members_[i].get() == checkbox) return i;
    return noCheckbox;
}

unsigned int CheckboxRadioSetBase::getSelectedCheckbox() const {
    for (unsigned int i = 0; i < members_.size(); ++i) {
        Checkbox const* const box = members_[i].get();
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
    if (!clicked || clicked->isTicked()) return;
    GlobRef<Checkbox> const ref(clicked);
    if (tickOnly(findCheckbox(clicked))) handleCheckboxClick(ref.get());
}

void CheckboxRadioSetBase::handleCheckboxClick(Checkbox*) {}

bool CheckboxRadioSetBase::tickOnly(unsigned int index) {
    LifeGuard const life(life_);
    unsigned int const choice = ++choice_;
    Checkbox const* const chosen = checkbox(index);
    Glib::UpdateDeferrer const deferrer(chosen ? chosen->canvas() : nullptr);
    for (unsigned int i = 0; i < members_.size(); ++i) {
        Checkbox* const box = members_[i].get();
        if (!box) continue;
        box->setNotChosen(index != noCheckbox && i != index);
        box->setState(i == index);
        if (!life.alive() || choice != choice_) return false;
    }
    return true;
}

// Keys

int CheckboxRadioSetBase::nextUsable(int from, XY<int> direction) const {
    return ChoiceSteps::next(from, direction, static_cast<int>(members_.size()), columns_, [this](int index) {
        Checkbox const* const box = checkbox(static_cast<unsigned int>(index));
        return box && FocusStop::canTake(*box);
    });
}

bool CheckboxRadioSetBase::isTabStop(Checkbox const& member) const {
    if (member.isTicked()) return true;
    // Asked first, since that is quick: then only one member looks for the chosen one.
    if (checkbox(static_cast<unsigned int>(nextUsable(-1, {1, 0}))) != &member) return false;
    Checkbox const* const chosen = checkbox(getSelectedCheckbox());
    return !chosen || !FocusStop::canTake(*chosen);
}

bool CheckboxRadioSetBase::stepFrom(Checkbox& member, XY<int> direction) {
    unsigned int const from = findCheckbox(&member);
    int const next = from == noCheckbox ? -1 : nextUsable(static_cast<int>(from), direction);
    if (next < 0) return false;
    GlobRef<Checkbox> const chosen(checkbox(static_cast<unsigned int>(next)));
    handleCheckboxClickInternal(chosen.get());
    if (Checkbox* const box = chosen.get()) FocusStop::giveFocus(*box, *box);
    return true;
}

} // namespace wainscot
