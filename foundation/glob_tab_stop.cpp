#include "foundation/glob_tab_stop.h"

#include "foundation/focus_stop.h"
#include "host/events/messages.h"
#include "host/objects/glob.h"
#include "host/objects/glob_notices.h"
#include "host/objects/kbd_focus.h"

namespace wainscot {

GlobTabStop::GlobTabStop(Glob& widget)
    : widget_(&widget),
      deletion_(GlobNotices::watchDeletion(widget, makeCallback<int, NotifyMsg>([this](NotifyMsg const&) {
                                               leaveAllManagers();
                                               return 0;
                                           }))),
      focus_(GlobNotices::watchFocus(widget, makeCallback<int, NotifyMsg>([this](NotifyMsg const&) {
                                         if (!isTabStopFocus()) setTabStopFocus();
                                         return 0;
                                     }))) {}

GlobTabStop::~GlobTabStop() = default;

Glob* GlobTabStop::widget() const {
    return widget_.get();
}

bool GlobTabStop::isTabStopActive() {
    Glob* const glob = widget();
    // A widget that is a stop itself must not become a second stop.
    auto const* const own = dynamic_cast<TabOrderable const*>(glob);
    bool const isStopItself = own && !own->tabOrderManagers().empty();
    return glob && !isStopItself && FocusStop::canTake(*glob);
}

void GlobTabStop::handleTabStopFocusReceipt(eDirection) {
    Glob* const glob = widget();
    if (glob && !focusHolderInside()) glob->claimKbdFocus();
}

void GlobTabStop::handleTabStopFocusLoss() {
    if (isReceivingTabStopFocus()) return;
    if (Glob* const holder = focusHolderInside()) holder->relinquishKbdFocus(widget()->parent());
}

Glob* GlobTabStop::focusHolderInside() const {
    Glob* const glob = widget();
    if (!glob) return nullptr;
    Glob* const holder = FocusStop::holderBeside(*glob);
    return holder == glob || Glob::isParentedTo(holder, glob) ? holder : nullptr;
}

bool GlobTabStop::passKey(Event const& event) {
    // A key that the widget does not consume goes up to its parents, and so comes here again.
    if (passing_ || !widget() || focusHolderInside() || !isTabStopFocus()) return false;
    LifeGuard const life(tabStopLife());
    passing_ = true;
    bool const consumed = deliverEvent(widget_.get(), event);
    if (life.alive()) passing_ = false;
    return consumed;
}

} // namespace wainscot
