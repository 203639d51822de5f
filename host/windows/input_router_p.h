#pragma once

#include "host/windows/key_routing_p.h"
#include "host/windows/wheel_gesture_p.h"
#include "host/windows/window_reports_p.h"

namespace wainscot {

/// Sorts platform input and hands it to those who turn it into events and bring each to the object that it
/// belongs to.
class InputRouter {
public:
    InputRouter(Backend& backend, EventSystem& events, GlobManager& windows);

    void route(InputEvent const& reported);
    /// Brings containment up to date after the tree has changed under a resting pointer.
    void refreshContainment() { moves_.refresh(); }
    /// Something has been moved, added, removed, shown or hidden since then.
    bool containmentIsStale() const { return hover_.isStale(); }
    /// Somebody holds the pointer and repeats, by the processor clock.
    bool isRepeating() const { return presses_.isRepeating(); }
    /// To be called when the text caret may have moved.
    void followTextCaret() { keys_.followTextCaret(); }

private:
    void routePress(InputEvent const& input);
    void dragFiles(InputEvent const& input);
    /// Tells those who hear of everything that the pointer does.
    void tellMouseListeners(InputEvent const& input);

    EventSystem& events_;
    GlobManager& windows_;
    InputTargets targets_;
    DragDropManager drags_;
    PressHandOver handOver_;
    PointerHover hover_;
    PointerMoves moves_;
    PointerPresses presses_;
    WheelGesture wheel_;
    KeyRouting keys_;
    WindowReports reports_;
};

} // namespace wainscot
