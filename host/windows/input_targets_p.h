#pragma once

#include "host/events/event_system.h"
#include "host/objects/glob.h"
#include "host/windows/glob_manager.h"
#include "host/windows/input_event.h"

namespace wainscot {

/// Whom input is for: what lies under the pointer, who holds it, who has the keyboard focus, and what
/// modality leaves of that. It keeps where the pointer is.
class InputTargets {
public:
    InputTargets(EventSystem& events, GlobManager& windows) : events_(events), windows_(windows) {}

    /// The pointer is there, over a window of the program.
    void pointerIsAt(InputEvent const& input);
    void pointerHasLeft() { pointerIsInside_ = false; }
    bool isPointerInside() const { return pointerIsInside_; }
    NativeWindowId pointerWindow() const { return pointerWindow_; }

    Glob* under(InputEvent const& input) const;
    /// The same where modality counts for nothing.
    Glob* anyUnder(InputEvent const& input) const;
    /// What lies under the pointer at its last place; null when it has left.
    Glob* underPointer() const;
    Glob* captureHolder() const;
    /// Whom the pointer's input goes to: the capture holder, else what lies under it.
    Glob* ofPointer(InputEvent const& input) const;
    /// Whom keys go to: the focus holder, or the modal object that keeps them from it.
    Glob* ofKeys() const;
    /// The modal object that keeps input from `target`; null when it is free.
    Glob* blockerOf(Glob const* target) const;
    /// What is not shown gets no input: null then.
    static Glob* shownOrNull(Glob* glob) { return glob && glob->isShown() ? glob : nullptr; }

    /// A pointer event with all that is known of the press under way.
    Event pointerEvent(int kind, InputEvent const& input) const;
    /// The button as `EventKind::left` and so on; 0 for none.
    static int buttonBit(InputEvent::Button button);

private:
    EventSystem& events_;
    GlobManager& windows_;
    bool pointerIsInside_ = false;
    NativeWindowId pointerWindow_ = 0;
};

} // namespace wainscot
