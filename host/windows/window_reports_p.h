#pragma once

#include "host/windows/key_routing_p.h"

namespace wainscot {

/// Handles what the window system reports of windows, with the effects on the press, the focus and the
/// pop-ups.
class WindowReports {
public:
    WindowReports(EventSystem& events, GlobManager& windows, InputTargets& targets, PointerHover& hover,
                  PointerPresses& presses, KeyRouting& keys);

    /// Ignores reports that are not of a window of the program.
    void report(InputEvent const& input);

private:
    void reportOf(TopLevelWindow& window, InputEvent const& input);
    void closeRequested(TopLevelWindow& window);
    void activated(TopLevelWindow& window);
    void deactivated(TopLevelWindow& window);
    void hidden(TopLevelWindow& window);
    static void redrawFocusMark(TopLevelWindow& window);

    EventSystem& events_;
    GlobManager& windows_;
    InputTargets& targets_;
    PointerHover& hover_;
    PointerPresses& presses_;
    KeyRouting& keys_;
};

} // namespace wainscot
