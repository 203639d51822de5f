#include "host/windows/pointer_wishes_p.h"

#include "host/events/dispatch_scope.h"
#include "host/objects/glob.h"

namespace wainscot {

MouseCursorID PointerWishes::cursorAt(Glob* under) const {
    if (!under) return events_.pointer.defaultCursor;
    XY<int> place = under->screenXYToGlobXY(events_.pointer.place);
    DispatchScope const scope;
    for (Glob* glob = under; glob;) {
        LifeGuard const life = glob->guard();
        MouseCursorID wish = inheritCursor;
        runHandler("contextCursor", [&] { wish = glob->contextCursor(place); });
        if (wish != inheritCursor) return wish;
        if (!life.alive()) break;
        place += glob->box().bottomLeft();
        glob = glob->parent();
    }
    return events_.pointer.defaultCursor;
}

void PointerWishes::updateCursor(Glob* under, MouseCursorID forced) {
    seenDefault_ = events_.pointer.defaultCursor;
    MouseCursorID const wanted = forced != inheritCursor ? forced : cursorAt(under);
    if (wanted == shown_) return;
    shown_ = wanted;
    backend_.setCursor(wanted);
}

void PointerWishes::updateMotion(Glob const* holder) {
    bool const full = holder && holder->wantsFullMotion();
    if (full != fullMotion_) backend_.setFullMotion(full);
    fullMotion_ = full;
    bool const unbounded = holder && holder->wantsUnboundedMotion();
    if (unbounded == unbounded_) return;
    unbounded_ = unbounded;
    backend_.setUnboundedMotion(unbounded);
    if (unbounded)
        leftAt_ = events_.pointer.place;
    else
        events_.pointer.place = leftAt_;
}

} // namespace wainscot
