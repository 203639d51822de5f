#pragma once

#include "host/objects/glob.h"
#include "host/windows/glob_manager.h"

namespace wainscot {

/// A press on the opener of a pop-up chain, or on one of its pop-ups, may be dragged onto another pop-up and
/// let go there. While the pointer is over that pop-up, its root hears the moves and the release instead of
/// whatever lies in it, and instead of the one that holds the pointer; the latter hears the release too, so
/// that it can let go. A pointer that trembles on its place of press is not dragged.
class WAINSCOT_API PressHandOver {
public:
    explicit PressHandOver(GlobManager const& windows) : windows_(windows) {}

    /// The root of the pop-up that hears this move or release; null when it is the holder's. A pop-up that
    /// the pointer has left hears this event as its last.
    Glob* receiver(Glob* holder, Event const& event);
    /// The pop-up that the pointer was dragged onto; null when it is over none.
    Glob* present() const { return popUp_.get(); }
    void end() { popUp_ = HandlerRef<Glob>(); }

private:
    Glob* popUpUnder(Glob* holder, Event const& event) const;

    GlobManager const& windows_;
    HandlerRef<Glob> popUp_;
};

} // namespace wainscot
