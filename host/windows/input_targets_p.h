#pragma once

#include "host/events/event_system.h"
#include "host/objects/glob.h"
#include "host/windows/glob_manager.h"
#include "host/windows/input_event.h"

namespace wainscot {

/// Finds the receiver of input: the object under the pointer, the holder of the pointer, the holder of the
/// keyboard focus. Modality may keep input from them. It remembers where the pointer is.
class InputTargets {
public:
    InputTargets(EventSystem& events, GlobManager& windows) : events_(events), windows_(windows) {}

    /// The pointer is at the place of `input`, over a window of the program.
    void pointerIsAt(InputEvent const& input);
    void pointerHasLeft() { pointerIsInside_ = false; }
    bool isPointerInside() const { return pointerIsInside_; }
    NativeWindowId pointerWindow() const { return pointerWindow_; }

    Glob* under(InputEvent const& input) const;
    /// The same, ignoring modality.
    Glob* anyUnder(InputEvent const& input) const;
    /// Whether open pop-ups keep the wheel from an object that is neither in one of them nor their opener.
    bool isOutsidePopUps(Glob const* target) const;
    /// The object under the pointer at its last place; null when the pointer has left.
    Glob* underPointer() const;
    Glob* captureHolder() const;
    /// The receiver of pointer input: the capture holder, else the object under the pointer.
    Glob* ofPointer(InputEvent const& input) const;
    /// The receiver of keys: the focus holder, or the modal object that keeps keys from it.
    Glob* ofKeys() const;
    /// The modal object that keeps input from `target`; null when there is none.
    Glob* blockerOf(Glob const* target) const;
    /// Null for an object that is not shown, since it gets no input.
    static Glob* shownOrNull(Glob* glob) { return glob && glob->isShown() ? glob : nullptr; }

    /// A pointer event with the data of the present press.
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
