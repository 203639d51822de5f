#include "foundation/effects.h"

#include "host/events/dispatch_scope.h"
#include "host/objects/description.h"
#include "host/objects/glob.h"

namespace wainscot {

void applyEffects(Glob& widget, unsigned int effects) {
    DispatchScope const scope;
    LifeGuard const life = widget.guard();
    if ((effects & Effect::layout) != 0) widget.reshape();
    if (!life.alive()) return;
    if ((effects & Effect::size) != 0) widget.needsChanged();
    if ((effects & (Effect::paint | Effect::layout)) != 0) widget.makeDirty();
    if ((effects & Effect::name) != 0) widget.describeChanged(DescriptionChange::name);
    if ((effects & Effect::value) != 0) widget.describeChanged(DescriptionChange::value);
    if ((effects & Effect::state) != 0) widget.describeChanged(DescriptionChange::state);
}

} // namespace wainscot
