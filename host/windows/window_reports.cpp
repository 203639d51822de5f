#include "host/windows/window_reports_p.h"

#include "host/objects/kbd_focus.h"
#include "host/windows/popup_chain.h"
#include "host/windows/top_level_window.h"

namespace wainscot {

WindowReports::WindowReports(EventSystem& events, GlobManager& windows, InputTargets& targets,
                             PointerHover& hover, PointerPresses& presses, KeyRouting& keys)
    : events_(events), windows_(windows), targets_(targets), hover_(hover), presses_(presses), keys_(keys) {}

void WindowReports::report(InputEvent const& input) {
    if (TopLevelWindow* window = windows_.windowOf(input.window)) reportOf(*window, input);
}

void WindowReports::reportOf(TopLevelWindow& window, InputEvent const& input) {
    using Kind = InputEvent::Kind;
    switch (input.kind) {
    case Kind::windowResized:
        return window.nativeResized(input.size);
    case Kind::windowMoved:
        return window.nativeMoved(input.place);
    case Kind::windowExposed:
        return window.surface().toPresent().add(window.surface().bounds());
    case Kind::windowCloseRequested:
        return closeRequested(window);
    case Kind::windowActivated:
        return activated(window);
    case Kind::windowDeactivated:
        return deactivated(window);
    case Kind::windowHidden:
        return hidden(window);
    case Kind::windowShown:
        return window.setHidden(false);
    default:
        break;
    }
}

void WindowReports::closeRequested(TopLevelWindow& window) {
    if (Glob* blocker = targets_.blockerOf(&window.root())) return windows_.showModal(*blocker);
    windows_.closeRequested(window.root());
}

void WindowReports::activated(TopLevelWindow& window) {
    if (window.isPopUp()) return;
    bool const isOther = events_.focus.activeWindow() != window.rootStamp();
    events_.focus.setApplicationHasFocus(true);
    if (window.root().canBeIt()) windows_.activated(window);
    redrawFocusMark(window);
    if (Glob* blocker = targets_.blockerOf(&window.root())) windows_.showModal(*blocker);
    if (isOther) windows_.popUps().closeAll();
}

void WindowReports::hidden(TopLevelWindow& window) {
    window.setHidden(true);
    IdStamp const root = window.rootStamp();
    if (presses_.isHeldIn(window)) presses_.lose();
    if (TopLevelWindow const* known = windows_.windowOfStamp(root))
        windows_.popUps().windowChanged(known->root());
}

/// Widgets show the mark of the focus only while a window of the program is active.
void WindowReports::redrawFocusMark(TopLevelWindow& window) {
    if (Glob* holder = KbdFocus::holderIn(window.root())) holder->makeDirty();
}

void WindowReports::deactivated(TopLevelWindow& window) {
    bool const wasActive = events_.focus.activeWindow() == window.rootStamp();
    if (wasActive) {
        events_.focus.setApplicationHasFocus(false);
        events_.focus.keysReleased();
        keys_.endComposition();
        hover_.update();
    }
    redrawFocusMark(window);
    if (presses_.isHeldIn(window)) presses_.lose();
    if (wasActive) windows_.popUps().closeAll();
}

} // namespace wainscot
