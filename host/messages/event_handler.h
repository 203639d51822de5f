#pragma once

#include "host/base/life.h"
#include "host/base/object.h"
#include "host/base/ptr.h"

namespace wainscot {

class Event;
class Glob;

/// Whatever can receive events and messages. It has a stamp that is never used again; address and stamp
/// together name it safely even after its death.
class WAINSCOT_API EventHandler : public virtual iObject {
public:
    EventHandler();
    ~EventHandler() override;
    EventHandler(EventHandler const&) = delete;
    EventHandler& operator=(EventHandler const&) = delete;

    /// Invalid once the handler is dying.
    IdStamp idStamp() const { return stamp_; }
    /// Whether `handler` still is the object that once had `stamp`; never touches it.
    static bool valid(EventHandler const* handler, IdStamp stamp) { return Liveness::alive(handler, stamp); }
    LifeGuard guard() const { return LifeGuard(this, stamp_); }

    /// Entry point of events that the host delivers. True = consumed.
    virtual bool handleEvent(Event const& event);
    /// Asked for key presses and releases while on the intercept stack. True = consumed.
    virtual bool intercept(Event const& event);
    /// A named message without data, from `sender` (null when it is no `Glob` or dead). 1 = consumed, 0 =
    /// not.
    virtual int handleMessageEvent(LightweightString<char> name, Glob* sender);
    /// A named message with data.
    virtual int handleDataMessageEvent(LightweightString<char> name, Glob* sender, Qv::Ptr<iObject> data);
    /// The stamp of the root of the window that the handler belongs to; invalid = of no window.
    virtual IdStamp windowStamp() const;
    /// The tree object that this handler is; null for all others.
    virtual Glob* asGlob();

    /// Installs a function that is told of every handler that ends, so that nothing goes on remembering the
    /// handler.
    static void setForgetHook(void (*forget)(EventHandler const&));

protected:
    /// From now on the handler counts as dead, before its destructor runs.
    void retireStamp();

private:
    IdStamp stamp_;
};

} // namespace wainscot
