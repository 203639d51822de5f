#include "host/objects/lifetime.h"

#include "host/events/dispatch_scope.h"
#include "host/events/event_system.h"
#include "host/objects/glob_notices.h"
#include "host/objects/glob_side_p.h"
#include "host/objects/kbd_focus.h"
#include "host/objects/root_host.h"
#include "host/objects/tree.h"

namespace wainscot {

namespace {

void freeGlob(void* object) {
    auto* const glob = static_cast<Glob*>(object);
    void* const memory = dynamic_cast<void*>(glob);
    runHandler("destructor", [&] { glob->~Glob(); });
    Glob::operator delete(memory);
}

} // namespace

void Lifetime::destroy(Glob& glob) {
    if (glob.isDying()) return;
    std::vector<Glob*> const doomed = Tree::subtree(glob);
    detach(glob, doomed);
    DispatchScope const untilAllAreListed;
    for (Glob* dead : doomed) DispatchScope::freeWhenUnwound(freeGlob, dead);
}

void Lifetime::detachFromDestructor(Glob& glob) {
    if (glob.isDying()) return;
    std::vector<Glob*> doomed = Tree::subtree(glob);
    detach(glob, doomed);
    doomed.erase(doomed.begin());
    DispatchScope const untilAllAreListed;
    for (Glob* dead : doomed) DispatchScope::freeWhenUnwound(freeGlob, dead);
}

void Lifetime::detach(Glob& top, std::vector<Glob*> const& doomed) {
    for (Glob* glob : doomed) glob->setFlag(Glob::dyingFlag, true);
    for (Glob* glob : doomed)
        if (glob->hasFlag(Glob::watchedFlag)) GlobNotices::deleted(*glob);
    leaveWindow(top);
    EventSystem* const system = EventSystem::current();
    for (Glob* glob : doomed) {
        if (system) system->forget(glob);
        glob->retireStamp();
    }
    if (top.parent_) Tree::unlink(top);
    Tree::scatter(doomed);
}

void Lifetime::leaveWindow(Glob& top) {
    top.damageWithSurround();
    KbdFocus::leave(top);
    iRootHost* const host = iRootHost::current();
    if (!top.parent_ && top.ownCanvas_.surface() && host) host->rootDying(top);
    top.ownCanvas_.attach(nullptr);
}

} // namespace wainscot
