#include "buttons/choice_core.h"

#include "foundation/focus_stop.h"
#include "foundation/tab_orderable.h"
#include "host/objects/glob.h"

#include <algorithm>

namespace wainscot {

namespace {

int wrapped(int value, int size) {
    return (value % size + size) % size;
}

} // namespace

ChoiceCore::~ChoiceCore() = default;

// Members

int ChoiceCore::addMemberGlob(Glob& member) {
    members_.emplace_back(&member);
    return numMembers() - 1;
}

void ChoiceCore::removeMemberGlobs() {
    members_.clear();
    ++choice_;
}

Glob* ChoiceCore::memberAt(int index) const {
    if (index < 0 || index >= numMembers()) return nullptr;
    Glob* const member = members_[static_cast<std::size_t>(index)].get();
    return member && belongs(*member, index) ? member : nullptr;
}

bool ChoiceCore::belongs(Glob const&, int) const {
    return true;
}

bool ChoiceCore::isChosenMember(int index) const {
    return index == chosenIndex();
}

bool ChoiceCore::isUsable(int index) const {
    Glob const* const member = memberAt(index);
    return member && FocusStop::canTake(*member);
}

// Focus and keys

/// Looks back only to the nearest other candidate, so that asking all members takes linear time.
bool ChoiceCore::isTabStopAt(int index) const {
    if (!memberAt(index)) return false;
    bool const isChosen = isChosenMember(index);
    for (int i = index - 1; i >= 0; --i)
        if (isChosen ? memberAt(i) && isChosenMember(i) : isUsable(i)) return false;
    return isChosen || !isUsable(chosenIndex());
}

int ChoiceCore::nextUsable(int from, XY<int> direction) const {
    int const count = numMembers();
    if (count == 0) return -1;
    bool const isLine = columns_ <= 1 || columns_ >= count || from < 0;
    bool const staysInColumn = direction.x == 0 && !isLine;
    int const steps = staysInColumn ? (count + columns_ - 1) / columns_ : count;
    for (int i = 1; i <= steps; ++i) {
        int const index = staysInColumn
                              ? wrapped(from / columns_ + direction.y * i, steps) * columns_ + from % columns_
                              : wrapped(from + (direction.x + direction.y) * i, count);
        if (isUsable(index)) return index;
    }
    return -1;
}

void ChoiceCore::takeFocusAlong() {
    int const index = chosenIndex();
    if (!isUsable(index)) return;
    Glob& chosen = *memberAt(index);
    Glob const* const holder = FocusStop::holderBeside(chosen);
    int const held = holder && holder != &chosen ? indexOfMember(*holder) : -1;
    if (held < 0 || isChosenMember(held)) return;
    if (auto* const stop = dynamic_cast<TabOrderable*>(&chosen)) FocusStop::giveFocus(chosen, *stop);
}

} // namespace wainscot
