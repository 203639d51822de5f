#include "host/objects/glob_notices.h"

#include "host/events/dispatch_scope.h"
#include "host/messages/handler_ref.h"
#include "host/objects/glob.h"

#include <memory>
#include <unordered_map>

namespace wainscot {

namespace {

using Watched = std::unordered_map<Glob const*, std::shared_ptr<Notifier>>;

Watched& watched() {
    static Watched notifiers;
    return notifiers;
}

/// A notice must not stop the destruction, so exceptions end here.
void issue(Glob& glob, LightweightString<char> const& name) {
    auto const found = watched().find(&glob);
    if (found == watched().end()) return;
    std::shared_ptr<Notifier> const held = found->second;
    DispatchScope const scope;
    NotifyMsg const notice(name, wrapData<Glob*>(&glob));
    runHandler("notice", [&] { held->issueNotification(notice); });
}

NotifierSubscription watch(Glob& glob, LightweightString<char> const& name, GlobNotices::Callback callback) {
    std::shared_ptr<Notifier>& notifier = watched()[&glob];
    if (!notifier) notifier = std::make_shared<Notifier>();
    return notifier->subscribe(name, std::move(callback));
}

} // namespace

NotifierSubscription GlobNotices::watchDeletion(Glob& glob, Callback callback) {
    if (glob.isDying()) return {};
    glob.setFlag(Glob::watchedFlag, true);
    return watch(glob, deletedMsg, std::move(callback));
}

NotifierSubscription GlobNotices::watchMoves(Glob& glob, Callback callback) {
    if (glob.isDying()) return {};
    glob.setFlag(Glob::watchedFlag, true);
    return watch(glob, movedMsg, std::move(callback));
}

NotifierSubscription GlobNotices::watchFocus(Glob& glob, Callback callback) {
    if (glob.isDying()) return {};
    glob.setFlag(Glob::watchedFlag, true);
    return watch(glob, focusedMsg, std::move(callback));
}

void GlobNotices::focused(Glob& holder) {
    std::vector<HandlerRef<Glob>> told;
    for (Glob* glob = &holder; glob; glob = glob->parent_)
        if (glob->hasFlag(Glob::watchedFlag)) told.emplace_back(glob);
    for (HandlerRef<Glob> const& glob : told)
        if (glob.get()) issue(*glob.get(), focusedMsg);
}

void GlobNotices::deleted(Glob& glob) {
    issue(glob, deletedMsg);
    forget(glob);
}

void GlobNotices::moved(Glob& glob) {
    issue(glob, movedMsg);
}

void GlobNotices::forget(Glob const& glob) {
    watched().erase(&glob);
}

} // namespace wainscot
