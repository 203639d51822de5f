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

void freeGlob(void* object) {
    auto* const glob = static_cast<Glob*>(object);
    void* const memory = dynamic_cast<void*>(glob);
    runHandler("destructor", [&] { glob->~Glob(); });
    Glob::operator delete(memory);
}

} // namespace

void Lifetime::destroy(Glob& glob) {
    if (glob.isDying()) return;
    // Whatever dies inside a notice waits with its memory until this is done.
    DispatchScope const untilAllAreListed;
    for (Glob* dead : detach(glob)) DispatchScope::freeWhenUnwound(freeGlob, dead);
}

void Lifetime::detachFromDestructor(Glob& glob) {
    if (glob.isDying()) return;
    DispatchScope const untilAllAreListed;
    for (Glob* dead : detach(glob))
        if (dead != &glob) DispatchScope::freeWhenUnwound(freeGlob, dead);
}

/// A notice may destroy an ancestor: what is being detached already is then left to the one who does it.
std::vector<Glob*> Lifetime::detach(Glob& top) {
    std::vector<Glob*> leaving;
    std::vector<Glob*> doomed = Tree::subtree(top, [&](Glob& glob) {
        if (glob.isDying()) leaving.push_back(&glob);
        return !glob.isDying();
    });
    for (Glob* glob : doomed) glob->setFlag(Glob::dyingFlag, true);
    for (Glob* glob : doomed)
        if (glob->hasFlag(Glob::watchedFlag)) GlobNotices::deleted(*glob);
    leaveWindow(top);
    for (Glob* glob : doomed) glob->retireStamp();
    for (Glob* glob : doomed) glob->leaveSharedCanvas();
    for (Glob* glob : leaving)
        if (glob->parent_) Tree::unlink(*glob);
    if (top.parent_) Tree::unlink(top);
    Tree::scatter(doomed);
    for (Glob* glob : doomed) glob->handleDetached();
    for (Glob* glob : doomed) glob->ownCanvas_.dismissSharers();
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
