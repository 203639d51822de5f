#include "buttons/checkbox_members_p.h"

#include "host/drawing/drawable.h"

namespace wainscot::CheckboxMembers {

void join(Checkbox& box, iCheckboxSet& set, unsigned int index, Checkbox::UserFunction clicked,
          void* context) {
    box.setUserFunction(clicked, context);
    box.setMembership(&set, index);
}

void leave(Checkbox& box, void const* context) {
    // The user function may have been replaced since.
    if (box.getUserContext() == context) box.setUserFunction(nullptr, nullptr);
    box.setMembership(nullptr);
    box.setNotChosen(false);
}

bool belongs(Glob const& member, iCheckboxSet const& set, int index) {
    auto const& box = static_cast<Checkbox const&>(member);
    return box.getMembership() == &set && static_cast<int>(box.getMemberIndex()) == index;
}

int indexIn(iCheckboxSet const& set, Glob const& glob) {
    auto const* const box = dynamic_cast<Checkbox const*>(&glob);
    return box && box->getMembership() == &set ? static_cast<int>(box->getMemberIndex()) : -1;
}

void tickOnly(ChoiceCore& set, int index, std::function<bool()> const& goesOn) {
    Glob const* const chosen = set.memberAt(index);
    Glib::UpdateDeferrer const deferrer(chosen ? chosen->canvas() : nullptr);
    for (int i = 0; goesOn() && i < set.numMembers(); ++i) {
        auto* const box = static_cast<Checkbox*>(set.memberAt(i));
        if (!box) continue;
        box->setNotChosen(index >= 0 && i != index);
        box->setState(i == index);
    }
}

} // namespace wainscot::CheckboxMembers
