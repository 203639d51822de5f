#include "host/objects/activity_p.h"

#include "host/messages/handler_ref.h"
#include "host/objects/description.h"
#include "host/objects/glob.h"
#include "host/objects/tree.h"

#include <vector>

namespace wainscot {

/// Descendants of an inactive object have the flag already: the walk does not go there.
std::vector<Glob*> Activity::spread(Glob& top) {
    return Tree::subtree(top, [&top](Glob& glob) {
        if (&glob == &top) return true;
        bool const above = !glob.parent_->isActive();
        if (glob.hasFlag(Glob::inactiveAboveFlag) == above) return false;
        glob.setFlag(Glob::inactiveAboveFlag, above);
        return glob.isActiveItself();
    });
}

void Activity::parentChanged(Glob& child) {
    bool const above = child.parent_ && !child.parent_->isActive();
    if (child.hasFlag(Glob::inactiveAboveFlag) == above) return;
    child.setFlag(Glob::inactiveAboveFlag, above);
    if (child.isActiveItself()) spread(child);
}

void Activity::switched(Glob& glob) {
    for (Glob* changed : spread(glob)) changed->describeChanged(DescriptionChange::state);
    if (glob.isActive()) return;
    HandlerRef<Glob> const pressed = glob.losePointer(Glob::Whose::below);
    glob.handOnKbdFocus();
    Glob::tellCaptureLost(pressed);
}

} // namespace wainscot
