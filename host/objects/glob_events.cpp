#include "host/base/diagnostics.h"
#include "host/events/dispatch_scope.h"
#include "host/events/event_system.h"
#include "host/events/messages.h"
#include "host/messages/handler_ref.h"
#include "host/objects/dispatch.h"
#include "host/objects/glob.h"
#include "host/objects/glob_side_p.h"
#include "host/objects/kbd_focus.h"
#include "host/objects/placement_p.h"

namespace wainscot {

namespace {

/// An object that is being asked, and for which event; linked to the calls round it.
struct Asked {
    Event const* event = nullptr;
    Glob const* glob = nullptr;
    /// The caller goes on with its parent, so that `Glob::react` need not do that.
    bool goesOn = false;
    Asked const* outer = nullptr;
};
constinit Asked const* asked = nullptr;

class Asking {
public:
    Asking(Event const& event, Glob const& glob, bool goesOn = true) : asked_{&event, &glob, goesOn, asked} {
        asked = &asked_;
    }
    ~Asking() { asked = asked_.outer; }
    Asking(Asking const&) = delete;
    Asking& operator=(Asking const&) = delete;

private:
    Asked asked_;
};

bool isBeingAsked(Glob const& glob, Event const& event) {
    return asked && asked->event == &event && asked->glob == &glob;
}

/// Whether it has handed such an event down. When no descendant uses the event, the answer comes back to it,
/// and it is not asked again. The event may be a copy.
bool hasHandedDown(Glob const& glob, Event const& event) {
    for (Asked const* entry = asked; entry; entry = entry->outer)
        if (entry->glob == &glob && entry->event->kind() == event.kind()) return true;
    return false;
}
/// An object whose handlers are being offered an event. They may offer it to their own handlers, but not in a
/// ring, and only to a limited depth.
class Offering {
public:
    Offering(Event const& event, Glob const& glob) : event_(&event), glob_(&glob), outer_(innermost) {
        int depth = 0;
        for (Offering const* running = outer_; running && isAllowed_; running = running->outer_) {
            bool const isSame = running->event_ == &event && running->glob_ == &glob;
            isAllowed_ = !isSame && ++depth < maxDepth;
        }
        innermost = this;
    }
    ~Offering() { innermost = outer_; }
    Offering(Offering const&) = delete;
    Offering& operator=(Offering const&) = delete;

    bool isAllowed() const { return isAllowed_; }

private:
    static constexpr int maxDepth = 64;
    static constinit Offering* innermost;

    Event const* event_;
    Glob const* glob_;
    Offering* outer_;
    bool isAllowed_ = true;
};
constinit Offering* Offering::innermost = nullptr;

bool goesToParents(Event const& event) {
    return mouse_event(event) || mouse_zoom_event(event) || isKeyPressEvent(event) ||
           isKeyReleaseEvent(event);
}

/// Inactive objects hear no keys.
bool mayHear(Glob const& glob, Event const& event) {
    bool const isKey = isKeyPressEvent(event) || isKeyReleaseEvent(event);
    return glob.isActive() || !isKey;
}

/// Asks `glob` and its ancestors until one consumes the event, or has handed it down. An object that dies
/// while it is asked has consumed it.
bool askUpwards(Glob* glob, Event const& event, Glob** consumer = nullptr) {
    while (glob && !hasHandedDown(*glob, event)) {
        if (!mayHear(*glob, event)) {
            glob = glob->parent();
            continue;
        }
        LifeGuard const life = glob->guard();
        Asking const asking(event, *glob);
        if (glob->react(event) || !life.alive()) {
            if (consumer && life.alive()) *consumer = glob;
            return true;
        }
        glob = glob->parent();
    }
    return false;
}

} // namespace

bool dispatchTo(Glob* target, Event const& event) {
    DispatchScope const scope(event);
    if (!is_good_glob_ptr(target) || !mayHear(*target, event)) return false;
    LifeGuard const life = target->guard();
    Asking const asking(event, *target);
    return target->handleEvent(event) || !life.alive();
}

bool dispatchUpwards(Glob* target, Event const& event, Glob** consumer) {
    DispatchScope const scope(event);
    if (consumer) *consumer = nullptr;
    if (!is_good_glob_ptr(target)) return false;
    LifeGuard const life = target->guard();
    if (dispatchTo(target, event)) {
        if (consumer && life.alive()) *consumer = target;
        return true;
    }
    return goesToParents(event) && askUpwards(target->parent(), event, consumer);
}

bool Glob::handleEvent(Event const& event) {
    Asking const asking(event, *this, isBeingAsked(*this, event) && asked->goesOn);
    LifeGuard const life = guard();
    if (side_ && side_->offers && (offerToHandlers(event) || !life.alive())) return true;
    return react(event);
}

bool Glob::offerToHandlers(Event const& event) {
    Offering const offering(event, *this);
    if (!offering.isAllowed()) {
        Diagnostics::count("event handlers offered in a ring", "addEventHandler");
        return false;
    }
    LifeGuard const life = guard();
    bool isUsed = false;
    side_->offers->list.walk([&](Side::Offered const& entry) {
        bool const wanted = (entry.kinds & event.kind() & EventKind::groupMask) != 0;
        if (isUsed || !life.alive() || !wanted) return;
        Glob* const handler = entry.handler.get();
        if (!handler) return;
        Asking const asking(event, *handler);
        isUsed = handler->handleEvent(event);
    });
    return isUsed;
}

bool Glob::react(Event const& event) {
    if (isMessageEvent(event)) {
        LightweightString<char> const& name = event.message();
        int const answer = event.hasData() ? handleDataMessageEvent(name, event.sender(), event.data())
                                           : handleMessageEvent(name, event.sender());
        noteMessageAnswer(answer);
        if (answer != 1 && name != pootMsg && name != compoundTextInputMsg)
            Diagnostics::count("message not handled", name.c_str());
        return answer == 1;
    }
    if (isMoving() && followPointer(event)) return true;
    if (!goesToParents(event)) return false;
    bool const dispatchGoesOn = isBeingAsked(*this, event) && asked->goesOn;
    return !dispatchGoesOn && askUpwards(parent_, event);
}

bool Glob::followPointer(Event const& event) {
    if (mouse_move_event(event)) {
        setScreenPos(event.place() - side().grip);
        return true;
    }
    if (!mouse_up_event(event)) return false;
    stopMoving();
    return true;
}

void Glob::startMoving() {
    EventSystem* const system = EventSystem::current();
    if (!system || !isMovable() || isMoving()) return;
    side().grip = screenXYToGlobXY(system->pointer.place);
    setFlag(movingFlag, true);
    EventHandler* const captured = system->pointer.captureHolder();
    if (system->pointer.heldButtons == 0 || captured == this) return;
    system->pointer.capture(this);
    tellCaptureLost(HandlerRef<Glob>(captured ? captured->asGlob() : nullptr));
}

void Glob::stopMoving() {
    if (!isMoving()) return;
    setFlag(movingFlag, false);
    // Its present place becomes its place rule, so that it stays when the parent is laid out again.
    if (parent_) Placement::setRule(*this, WidgetPosition(CoordinateOrigin::bottomLeft, position_));
}

HandlerRef<Glob> Glob::loseInput() {
    KbdFocus::leave(*this);
    return losePointer(Whose::itsToo);
}

HandlerRef<Glob> Glob::losePointer(Whose whose) {
    EventSystem* const system = EventSystem::current();
    EventHandler* const captured = system ? system->pointer.captureHolder() : nullptr;
    Glob* const holder = captured ? captured->asGlob() : nullptr;
    bool const isIts = whose == Whose::itsToo && holder == this;
    if (!isIts && !isParentedTo(holder, this)) return {};
    system->pointer.releaseCapture();
    return HandlerRef<Glob>(holder);
}

void Glob::tellCaptureLost(HandlerRef<Glob> const& holder) {
    DispatchScope const scope;
    if (Glob* const told = holder.get()) runHandler("handleCaptureLost", [&] { told->handleCaptureLost(); });
}

void Glob::handleCaptureLost() {
    stopMoving();
}

void Glob::setInterest(int kinds) {
    interest_ |= kinds;
    EventTimeServer* const timers = EventTimeServer::theEventTimeServer();
    if ((kinds & EventKind::timer) != 0 && timers && !isDying()) timers->registerForTimeEvents(this);
}

void Glob::clearInterest(int kinds) {
    interest_ &= ~kinds;
    EventTimeServer* const timers = EventTimeServer::theEventTimeServer();
    if ((kinds & EventKind::timer) != 0 && timers) timers->unregister(this);
}

void Glob::setNextTimer(double ms) {
    if (EventTimeServer* timers = EventTimeServer::theEventTimeServer()) timers->setNextTimer(this, ms);
}

void Glob::addEventHandler(Glob* handler, int kinds) {
    if (!is_good_glob_ptr(handler) || handler == this) {
        Diagnostics::count("event handler refused", "addEventHandler");
        return;
    }
    if (!side().offers) side_->offers = std::make_unique<Side::Offers>();
    side_->offers->add({HandlerRef<Glob>(handler), kinds});
}

void Glob::removeEventHandler(int kinds) {
    if (side_ && side_->offers) side_->offers->remove(kinds);
}

void Glob::Side::Offers::add(Offered const& entry) {
    if (list.size() >= sweepAt) dropDead();
    byKinds[entry.kinds].push_back(list.add(entry));
}

void Glob::Side::Offers::remove(int kinds) {
    auto const ids = byKinds.extract(kinds);
    if (ids.empty()) return;
    for (Id const id : ids.mapped()) list.remove(id);
}

void Glob::Side::Offers::dropDead() {
    std::vector<Offered> living;
    list.walk([&](Offered const& entry) {
        if (entry.handler) living.push_back(entry);
    });
    list.clear();
    byKinds.clear();
    for (Offered const& entry : living) byKinds[entry.kinds].push_back(list.add(entry));
    sweepAt = std::max<std::size_t>(16, 2 * living.size());
}

void Glob::handleMouseContainment(bool) {}

void Glob::handleKbdFocus() {}

bool Glob::repeatsReturnAndSpace() const {
    return false;
}

bool Glob::isPlainKey(unsigned int code) {
    return Glib::isPlainKey(code);
}

bool Glob::sendMsg(Glob* target, char const* name) {
    return sendMessage(name, target, this);
}

int Glob::callMsg(Glob* target, char const* name) {
    return callMessage(name, target, this);
}

bool Glob::claimKbdFocus() {
    return set_kbd_focus(this);
}

void Glob::relinquishKbdFocus(Glob* to) {
    Glob* const root = getRootParent(this);
    if (KbdFocus::holderIn(*root) != this) return;
    LifeGuard const life = guard();
    if (is_good_glob_ptr(to) && to != this && set_kbd_focus(to)) return;
    if (life.alive() && root != this) KbdFocus::giveUp(*this);
}

XY<int> eventXYToGlobXY(Event const& event, Glob const& glob) {
    return glob.screenXYToGlobXY(event.place());
}

Glob* event_to_sender_glob(Event const& event) {
    return event.sender();
}

} // namespace wainscot
