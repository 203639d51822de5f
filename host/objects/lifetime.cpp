#include "host/objects/lifetime_p.h"

#include "host/events/dispatch_scope.h"
#include "host/events/event_system.h"
#include "host/objects/glob_notices.h"
#include "host/objects/glob_side_p.h"
#include "host/objects/kbd_focus.h"
#include "host/objects/root_host.h"
#include "host/objects/tree.h"

namespace wainscot {

namespace {

using Doomed = std::vector<Glob*>;

/// Objects that are destroyed in a destructor wait behind all others.
void freeGlobs(void* list) {
    std::unique_ptr<Doomed> const doomed(static_cast<Doomed*>(list));
    for (Glob* glob : *doomed) {
        void* const memory = dynamic_cast<void*>(glob);
        runHandler("destructor", [&] { glob->~Glob(); });
        Glob::operator delete(memory);
    }
}

void freeWhenUnwound(Doomed doomed) {
    if (!doomed.empty()) DispatchScope::freeWhenUnwound(freeGlobs, new Doomed(std::move(doomed)));
}

} // namespace

void Lifetime::destroy(Glob& glob) {
    if (glob.isDying()) return;
    // Objects that die in a notice keep their memory until this is done.
    DispatchScope const untilAllAreListed;
    freeWhenUnwound(detach(glob));
}

void Lifetime::detachFromDestructor(Glob& glob) {
    if (glob.isDying()) return;
    DispatchScope const untilAllAreListed;
    std::vector<Glob*> others = detach(glob);
    std::erase(others, &glob);
    freeWhenUnwound(std::move(others));
}

/// A notice may destroy an ancestor: objects that are being detached already are then left out.
std::vector<Glob*> Lifetime::detach(Glob& top) {
    std::vector<Glob*> leaving;
    bool isWatched = false;
    std::vector<Glob*> doomed = Tree::collect(top, [&](Glob& glob) {
        if (glob.isDying()) {
            leaving.push_back(&glob);
            return false;
        }
        glob.setFlag(Glob::dyingFlag, true);
        isWatched = isWatched || glob.hasFlag(Glob::watchedFlag);
        return true;
    });
    for (std::size_t i = 0; isWatched && i < doomed.size(); ++i)
        if (doomed[i]->hasFlag(Glob::watchedFlag)) GlobNotices::deleted(*doomed[i]);
    leaveWindow(top);
    for (Glob* glob : leaving)
        if (glob->parent_) Tree::unlink(*glob);
    if (top.parent_) Tree::unlink(top);
    std::vector<Glob*> sharing;
    // Many objects do not fit into the cache: each is visited as seldom as possible.
    for (Glob* glob : doomed) {
        glob->retireStamp();
        glob->leaveSharedCanvas();
        Tree::scatter(*glob);
        if (glob->ownCanvas_.isShared()) sharing.push_back(glob);
    }
    for (Glob* glob : doomed) glob->handleDetached();
    for (Glob* glob : sharing) glob->ownCanvas_.dismissSharers();
    return doomed;
}

void Lifetime::leaveWindow(Glob& top) {
    top.damageWithSurround();
    KbdFocus::leave(top);
    EventSystem* const system = EventSystem::current();
    if (system && !top.parent_) system->focus.forgetWindow(top.idStamp());
    iRootHost* const host = iRootHost::current();
    if (!top.parent_ && top.ownCanvas_.surface() && host) host->rootDying(top);
    top.ownCanvas_.attach(nullptr);
}

} // namespace wainscot
