#pragma once

#include "buttons/checkbox.h"
#include "buttons/choice_core.h"

namespace wainscot {

/// What sets do with members that are checkboxes.
namespace CheckboxMembers {

/// The set takes the checkbox's user function for itself; `context` is handed to it.
void join(Checkbox& box, iCheckboxSet& set, unsigned int index, Checkbox::UserFunction clicked,
          void* context);
/// Lets go of it; it keeps its state.
void leave(Checkbox& box, void const* context);
bool belongs(Glob const& member, iCheckboxSet const& set, int index);
/// -1 for what is none of the set's checkboxes.
int indexIn(iCheckboxSet const& set, Glob const& glob);
/// Ticks one member and clears all others, or all at a negative index, until `goesOn` says no.
void tickOnly(ChoiceCore& set, int index, std::function<bool()> const& goesOn);

} // namespace CheckboxMembers

} // namespace wainscot
