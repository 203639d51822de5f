#pragma once

#include "host/events/event_system.h"
#include "host/windows/composition.h"
#include "host/windows/containment.h"
#include "host/windows/drag_drop_manager.h"
#include "host/windows/glob_manager.h"
#include "host/windows/input_event.h"
#include "host/windows/pointer_wishes.h"
#include "host/windows/press_hand_over.h"
#include "host/windows/sub_menu_approach.h"
#include "host/windows/tool_tips.h"

namespace wainscot {

/// Turns platform input into events and brings each to the object that it belongs to.
class WAINSCOT_API InputRouter {
public:
    InputRouter(Backend& backend, EventSystem& events, GlobManager& windows);

    void route(InputEvent const& input);
    /// Brings containment up to date after the tree has changed under a resting pointer.
    void refreshContainment();
    /// Something has been moved, added, removed, shown or hidden since then.
    bool containmentIsStale() const;
    /// Somebody holds the pointer and repeats, by the processor clock.
    bool isRepeating() const;
    /// To be called when the text caret may have moved.
    void followTextCaret() { composition_.follow(keyTarget()); }

private:
    void routePress(InputEvent const& input);
    /// The first button goes down.
    void beginPress(InputEvent const& input);
    /// The press ends without a release: no button counts as held, nothing is chosen.
    void losePress();
    /// The press that is under way, as its holder hears of its end without a release.
    Event pressToTakeBack(std::uint32_t modifiers, double time) const;
    /// The press goes to what lies in the window, or in a pop-up of its.
    bool holdsPress(TopLevelWindow const& window) const;
    void routeRelease(InputEvent const& input);
    void routeMove(InputEvent const& input);
    void noteArrival(InputEvent const& input);
    void routeWheel(InputEvent const& input);
    void routeZoom(InputEvent const& input);
    void routeKey(InputEvent const& input);
    void routeComposedText(InputEvent const& input);
    void routeWindow(InputEvent const& input, TopLevelWindow& window);
    void activated(TopLevelWindow& window);
    void deactivated(TopLevelWindow& window);
    void hidden(TopLevelWindow& window);
    void redrawFocusMark(TopLevelWindow& window);

    Event pointerEvent(int kind, InputEvent const& input) const;
    /// Tells those who hear of everything that the pointer does.
    void tellMouseListeners(InputEvent const& input);
    /// The modal object that keeps input from `target`; null when it is free.
    Glob* blockerOf(Glob const* target) const;
    /// A press that somebody other than what lies under it has use for, or that is refused.
    bool isSpent(InputEvent const& input, PopUpChain::Press press, Glob* under);
    /// Whom keys go to: the focus holder, or the modal object that keeps them from it.
    Glob* keyTarget() const;
    /// Offers a key to the intercept stack, then dispatches it from the focus holder upwards.
    void dispatchKey(Event& event);
    /// Escape while a button is held takes back what the press began. True = it was that.
    bool cancelPress(Event const& key);
    bool runTransportCommand(Event const& key);
    bool runBoundCommand(std::uint32_t key);
    /// Leaves what would keep Tab for itself. Whether that went somewhere.
    bool leaveWithTab(Event const& key);
    /// Tells the focus holder and its ancestors to cut, copy or paste when that is what the key asks for.
    bool sendClipboardMessage(std::uint32_t key);
    Glob* globUnder(InputEvent const& input) const;
    /// The same where modality counts for nothing.
    Glob* anyGlobUnder(InputEvent const& input) const;
    Glob* globUnderPointer() const;
    Glob* captureHolder() const;
    /// Whom the pointer's input goes to: the capture holder, else what lies under it.
    Glob* pointerTarget(InputEvent const& input) const;
    Glob* wheelTarget(InputEvent const& input);
    void updateContainment(Glob* under);
    void updatePointerWishes();
    void dragFiles(InputEvent const& input);
    void dropFiles(InputEvent const& input);
    void endWheelGesture() { wheelGlob_ = HandlerRef<Glob>(); }

    EventSystem& events_;
    GlobManager& windows_;
    PointerWishes wishes_;
    DragDropManager drags_;
    ToolTips tips_;
    Composition composition_;
    ContainmentPath containment_;
    PressHandOver handOver_;
    SubMenuApproach approach_;
    bool pointerIsInside_ = false;
    NativeWindowId pointerWindow_ = 0;
    std::uint64_t seenChanges_ = 0;

    /// The last key press was an Escape that nobody used.
    bool escapeWasUnused_ = false;

    // The wheel gesture under way.
    HandlerRef<Glob> wheelGlob_;
    double wheelTime_ = 0.0;
    XY<int> wheelPlace_;
};

} // namespace wainscot
