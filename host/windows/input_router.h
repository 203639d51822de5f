#pragma once

#include "host/events/event_system.h"
#include "host/windows/containment.h"
#include "host/windows/glob_manager.h"
#include "host/windows/input_event.h"

namespace wainscot {

/// Turns platform input into events and brings each to the object that it belongs to.
class WAINSCOT_API InputRouter {
public:
    InputRouter(EventSystem& events, GlobManager& windows) : events_(events), windows_(windows) {}

    void route(InputEvent const& input);
    /// Brings containment up to date after the tree has changed under a resting pointer.
    void refreshContainment();
    /// Something has been moved, added, removed, shown or hidden since then.
    bool containmentIsStale() const;

private:
    void routePress(InputEvent const& input);
    void routeRelease(InputEvent const& input);
    void routeMove(InputEvent const& input);
    void routeWheel(InputEvent const& input);
    void routeZoom(InputEvent const& input);
    void routeKey(InputEvent const& input);
    void routeComposedText(InputEvent const& input);
    void routeWindow(InputEvent const& input, TopLevelWindow& window);
    void activated(TopLevelWindow& window);
    void deactivated(TopLevelWindow& window);
    void redrawFocusMark(TopLevelWindow& window);

    Event pointerEvent(int kind, InputEvent const& input) const;
    /// Offers a key to the intercept stack, then dispatches it from the focus holder upwards.
    void dispatchKey(Event& event);
    Glob* globUnder(InputEvent const& input) const;
    Glob* globUnderPointer() const;
    Glob* captureHolder() const;
    /// Whom the pointer's input goes to: the capture holder, else what lies under it.
    Glob* pointerTarget(InputEvent const& input) const;
    Glob* wheelTarget(InputEvent const& input);
    void updateContainment(Glob* under);
    void endWheelGesture() { wheelStamp_.invalidate(); }

    EventSystem& events_;
    GlobManager& windows_;
    ContainmentPath containment_;
    bool pointerIsInside_ = false;
    NativeWindowId pointerWindow_ = 0;
    std::uint64_t seenChanges_ = 0;

    // The wheel gesture under way.
    Glob* wheelGlob_ = nullptr;
    IdStamp wheelStamp_;
    double wheelTime_ = 0.0;
    XY<int> wheelPlace_;
};

} // namespace wainscot
