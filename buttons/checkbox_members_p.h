#pragma once

#include "buttons/checkbox.h"
#include "buttons/choice_core.h"

namespace wainscot {

/// For sets whose members are checkboxes.
namespace CheckboxMembers {

/// The set takes the checkbox's user function for itself; `context` is handed to it.
void join(Checkbox& box, iCheckboxSet& set, unsigned int index, Checkbox::UserFunction clicked,
          void* context);
/// Takes a checkbox out of the set; it keeps its state.
void leave(Checkbox& box, void const* context);
bool belongs(Glob const& member, iCheckboxSet const& set, int index);
/// The index of a member; -1 when it is not a member.
int indexIn(iCheckboxSet const& set, Glob const& glob);
/// Ticks one member and clears all others; a negative index clears all. Stops when `goesOn` answers false.
void tickOnly(ChoiceCore& set, int index, std::function<bool()> const& goesOn);

} // namespace CheckboxMembers

} // namespace wainscot
