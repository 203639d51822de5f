#include "foundation/automatic_size.h"

#include "host/events/dispatch_scope.h"
#include "host/objects/glob.h"

namespace wainscot {

void AutomaticSize::apply(Glob& glob, XY<int> needed) {
    XY<int> size = glob.size();
    bool const isFirst = given_.x < 0;
    if (width_ && (isFirst || size.x == given_.x)) size.x = needed.x;
    if (height_ && (isFirst || size.y == given_.y)) size.y = needed.y;
    given_ = size;
    DispatchScope const scope;
    LifeGuard const life = glob.guard();
    if (size != glob.size()) glob.resize(size.x, size.y);
    if (life.alive()) glob.needsChanged();
}

SizeNeeds AutomaticSize::needs(XY<int> needed, XY<int> minimum) const {
    SizeNeeds needs;
    if (width_) needs.natural.x = needed.x;
    if (height_) needs.natural.y = needed.y;
    if (width_) needs.minimum.x = minimum.x;
    if (height_) needs.minimum.y = minimum.y;
    return needs;
}

} // namespace wainscot
