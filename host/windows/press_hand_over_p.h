#pragma once

#include "host/objects/glob.h"
#include "host/windows/glob_manager.h"

namespace wainscot {

/// A press on the opener of a pop-up chain, or on one of its pop-ups, may be dragged onto another pop-up and
/// released there. While the pointer is over that pop-up, its root hears the moves and the release, instead
/// of the holder of the pointer and of the objects in the pop-up. The holder then hears `handleCaptureLost`.
/// Small moves at the place of the press are not a drag.
class WAINSCOT_API PressHandOver {
public:
    explicit PressHandOver(GlobManager const& windows) : windows_(windows) {}

    /// The root of the pop-up that hears this move or release; null when the holder hears it. A pop-up that
    /// the pointer has left hears this event as its last one.
    Glob* receiver(Glob* holder, Event const& event);
    /// The pop-up onto which the pointer was dragged; null when there is none.
    Glob* present() const { return popUp_.get(); }
    void end() { popUp_ = HandlerRef<Glob>(); }

private:
    Glob* popUpUnder(Glob* holder, Event const& event) const;

    GlobManager const& windows_;
    HandlerRef<Glob> popUp_;
};

} // namespace wainscot
