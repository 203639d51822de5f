#include "host/objects/kbd_focus.h"

#include "host/base/diagnostics.h"
#include "host/base/ui_thread.h"
#include "host/drawing/canvas.h"
#include "host/events/dispatch_scope.h"
#include "host/events/event_system.h"
#include "host/messages/handler_ref.h"
#include "host/objects/glob.h"
#include "host/objects/glob_notices.h"
#include "host/objects/root_host.h"

namespace wainscot {

namespace {

constexpr int maxNesting = 32;

Glob* asGlob(EventHandler* handler) {
    return handler ? handler->asGlob() : nullptr;
}

/// The window in which a change of the focus is being told; `get_kbd_focus` answers for it meanwhile.
constinit IdStamp changingWindow;

class Change {
public:
    Change(FocusHolders& focus, IdStamp window) : outer_(changingWindow) {
        changingWindow = window;
        ++focus.nesting;
    }
    ~Change() {
        changingWindow = outer_;
        if (EventSystem* system = EventSystem::current()) --system->focus.nesting;
    }
    Change(Change const&) = delete;
    Change& operator=(Change const&) = delete;

private:
    IdStamp outer_;
};

bool refuse(char const* why) {
    Diagnostics::count("keyboard focus refused", why);
    return false;
}

bool giveToRoot(EventSystem& system) {
    Glob* const holder = asGlob(system.focus.holder(system.focus.activeWindow()));
    return holder && set_kbd_focus(Glob::getRootParent(holder));
}

/// Tells who has lost the focus without hearing of it, and who has inherited it, after the running handler.
class HeirCall final : public EventQueue::Call {
public:
    /// Null where the root of a hidden window has inherited it.
    HeirCall(Glob* heir, Glob& former) : heir_(heir), former_(&former) {}
    void run() override {
        if (Glob* const former = former_.get(); former && !holds(*former)) tell(*former);
        if (Glob* const heir = heir_.get(); heir && holds(*heir)) tell(*heir);
        if (Glob* const heir = heir_.get(); heir && holds(*heir)) KbdFocus::tellWatchers(*heir);
    }

private:
    static bool holds(Glob& glob) { return KbdFocus::holderIn(*Glob::getRootParent(&glob)) == &glob; }
    static void tell(Glob& glob) {
        EventSystem* const system = EventSystem::current();
        if (!system) return;
        Change const telling(system->focus, Glob::getRootParent(&glob)->idStamp());
        runHandler("handleKbdFocus", [&] { glob.handleKbdFocus(); });
    }

    HandlerRef<Glob> heir_;
    HandlerRef<Glob> former_;
};

} // namespace

bool KbdFocus::change(EventSystem& system, Glob& glob, IdStamp window) {
    FocusHolders& focus = system.focus;
    Glob* const old = asGlob(focus.holder(window));
    if (old == &glob) return true;
    if (focus.nesting >= maxNesting) return refuse("too many changes inside each other");
    focus.setHolder(window, &glob);
    LifeGuard const life = glob.guard();
    DispatchScope const scope;
    Change const telling(focus, window);
    if (old) runHandler("handleKbdFocus", [&] { old->handleKbdFocus(); });
    if (EventSystem::current() != &system) return false;
    if (life.alive() && focus.holder(window) == &glob)
        runHandler("handleKbdFocus", [&] { glob.handleKbdFocus(); });
    if (EventSystem::current() != &system) return false;
    if (life.alive() && focus.holder(window) == &glob) GlobNotices::focused(glob);
    return true;
}

Glob* get_kbd_focus() {
    EventSystem const* const system = EventSystem::current();
    if (!system) return nullptr;
    IdStamp const window = changingWindow.valid() ? changingWindow : system->focus.activeWindow();
    return asGlob(system->focus.holder(window));
}

bool set_kbd_focus(Glob* glob) {
    UiThread::check("the keyboard focus set");
    EventSystem* const system = EventSystem::current();
    if (!system) return refuse("no host lives");
    if (!glob) return giveToRoot(*system);
    if (!is_good_glob_ptr(glob)) return refuse("not a live object");
    if (!glob->isActive() || !glob->isShown()) return refuse("not shown or not active");
    if (!Glob::getRootParent(glob)->canvas()->surface()) return refuse("in no window");
    return KbdFocus::change(*system, *glob, Glob::getRootParent(glob)->idStamp());
}

bool glib_appHasFocus() {
    EventSystem const* const system = EventSystem::current();
    return system && system->focus.applicationHasFocus();
}

bool glib_showsKbdFocus(Glob const* glob) {
    if (!glob || get_kbd_focus() != glob || !glib_appHasFocus()) return false;
    iRootHost const* const host = iRootHost::current();
    return !host || !host->isBlocked(*glob);
}

Glob* KbdFocus::holderIn(Glob const& root) {
    EventSystem const* const system = EventSystem::current();
    return system ? asGlob(system->focus.holder(root.idStamp())) : nullptr;
}

Glob* KbdFocus::heirOf(Glob const& leaving) {
    Glob* heir = nullptr;
    Glob* top = nullptr;
    for (Glob* glob = leaving.parent(); glob; glob = glob->parent()) {
        top = glob;
        if (!glob->isVisible() || !glob->canvas()->isMapped())
            heir = nullptr;
        else if (!heir && glob->isActive())
            heir = glob;
    }
    return heir ? heir : top;
}

void KbdFocus::giveUp(Glob& holder) {
    EventSystem* const system = EventSystem::current();
    Glob* const root = Glob::getRootParent(&holder);
    if (!system || holderIn(*root) != &holder || change(*system, *root, root->idStamp())) return;
    // Changes are nested too deep to tell anybody.
    if (EventSystem::current() == system) leave(holder);
}

void KbdFocus::tellWatchers(Glob& holder) {
    GlobNotices::focused(holder);
}

void KbdFocus::leave(Glob& top) {
    EventSystem* const system = EventSystem::current();
    if (!system) return;
    Glob* const root = Glob::getRootParent(&top);
    Glob* const holder = holderIn(*root);
    if (!holder || (holder != &top && !Glob::isParentedTo(holder, &top))) return;
    Glob* const heir = heirOf(top);
    system->focus.setHolder(root->idStamp(), heir ? heir : root);
    if (heir) heir->makeDirty();
    if (heir || holder != root) system->queue.add(Qv::Ptr<EventQueue::Call>(new HeirCall(heir, *holder)));
}

void KbdFocus::joinTree(Glob& child) {
    EventSystem* const system = EventSystem::current();
    if (system && !child.parent()) system->focus.forgetWindow(child.idStamp());
}

void KbdFocus::startIn(Glob& root) {
    if (EventSystem* system = EventSystem::current()) system->focus.setHolder(root.idStamp(), &root);
}

} // namespace wainscot
