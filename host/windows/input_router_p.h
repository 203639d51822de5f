#pragma once

#include "host/windows/key_routing_p.h"
#include "host/windows/wheel_gesture_p.h"
#include "host/windows/window_reports_p.h"

namespace wainscot {

/// Sorts platform input by kind and hands it to the parts that make events of it and find their receivers.
class InputRouter {
public:
    InputRouter(Backend& backend, EventSystem& events, GlobManager& windows);

    void route(InputEvent const& reported);
    /// Brings containment up to date after the tree has changed under a resting pointer.
    void refreshContainment() { moves_.refresh(); }
    /// Whether an object has been moved, added, removed, shown or hidden since then.
    bool containmentIsStale() const { return hover_.isStale(); }
    /// Whether the holder of the pointer repeats by the processor clock.
    bool isRepeating() const { return presses_.isRepeating(); }
    /// To be called when the text caret may have moved.
    void followTextCaret() { keys_.followTextCaret(); }

private:
    void routePress(InputEvent const& input);
    void dragFiles(InputEvent const& input);
    /// Tells the listeners that hear of all pointer events.
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
