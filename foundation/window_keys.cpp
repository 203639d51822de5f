#include "foundation/window_keys.h"

#include "foundation/focus_stop.h"
#include "foundation/standard_panel.h"
#include "host/events/event.h"
#include "host/events/messages.h"
#include "host/messages/handler_ref.h"
#include "host/objects/description.h"
#include "host/objects/kbd_focus.h"
#include "host/windows/glob_manager.h"

#include <algorithm>

namespace wainscot::WindowKeys {

namespace {

constexpr std::uint32_t nextPane = Key::function(6);
constexpr std::uint32_t previousPane = nextPane | Key::shift;

TabOrderManager* stopsOf(Glob* glob) {
    auto* const manager = dynamic_cast<TabOrderManager*>(glob);
    return manager && manager->numTabStops() > 0 ? manager : nullptr;
}

/// Shown, active panels with stops, in the order of the tree.
std::vector<HandlerRef<Glob>> panesIn(Glob& root) {
    std::vector<HandlerRef<Glob>> panes;
    root.visitSubtree([&](Glob& glob) {
        if (stopsOf(&glob) && glob.isActive() && glob.isShown()) panes.emplace_back(&glob);
        return true;
    });
    return panes;
}

Glob* paneOf(Glob* focused) {
    while (focused && !stopsOf(focused)) focused = focused->parent();
    return focused;
}

bool enterAtEnd(TabOrderManager& stops, bool forward) {
    LifeGuard const life(stops.tabOrderLife());
    unsigned int const index = forward ? stops.focusFirstTabStop() : stops.focusLastTabStop();
    return !life.alive() || index != TabOrderManager::noTabStop;
}

/// True when a stop of the pane has the focus now, or the pane has died. F6 goes back to the stop that was
/// the current one.
bool enter(HandlerRef<Glob> const& pane, std::uint32_t key) {
    TabOrderManager* const stops = stopsOf(pane.get());
    if (!stops) return false;
    unsigned int const current = stops->getCurrentTabStopIndex();
    bool const goesBack = Key::base(key) != Key::tab && current != TabOrderManager::noTabStop;
    bool const isIn = (goesBack && stops->setTabStopFocus(current)) || !pane.get() ||
                      enterAtEnd(*stops, (key & Key::shift) == 0);
    if (isIn) FocusStop::reveal();
    return isIn;
}

bool stepPanes(Glob& target, std::uint32_t key) {
    bool const forward = key == nextPane || key == Key::tab;
    std::vector<HandlerRef<Glob>> const panes = panesIn(*Glob::getRootParent(&target));
    auto const isHere = [here = paneOf(&target)](HandlerRef<Glob> const& pane) { return pane.get() == here; };
    auto const found = std::find_if(panes.begin(), panes.end(), isHere);
    std::size_t const count = panes.size();
    std::size_t const from = found != panes.end() ? static_cast<std::size_t>(found - panes.begin())
                             : forward            ? count - 1
                                                  : 0;
    for (std::size_t i = 1; i <= count; ++i)
        if (enter(panes[(forward ? from + i : from + count - i) % count], key)) return true;
    return false;
}

bool canBePressed(Glob const* glob) {
    return glob && glob->isActive() && glob->isShown();
}

Glob* doItButtonRound(Glob* focused) {
    for (Glob* glob = focused; glob; glob = glob->parent()) {
        auto* const panel = dynamic_cast<StandardPanel*>(glob);
        Glob* const button = panel ? panel->getStandardWidget(StandardWidget::doIt) : nullptr;
        if (canBePressed(button)) return button;
    }
    return nullptr;
}

Glob* defaultButtonIn(Glob& root) {
    Glob* found = nullptr;
    root.visitSubtree([&](Glob& glob) {
        if (!canBePressed(&glob)) return true;
        if ((GlobDescription::of(glob).states & GlobDescription::isDefault) != 0) found = &glob;
        return !found;
    });
    return found;
}

bool pressDefaultButton(Glob& target, Event const& key) {
    Glob* button = doItButtonRound(&target);
    if (!button) button = defaultButtonIn(*Glob::getRootParent(&target));
    // The holder of the focus has refused the key already.
    return button && button != &target && button->react(key);
}

bool closeModal(Glob& target) {
    GlobManager* const windows = GlobManager::current();
    Glob* const root = Glob::getRootParent(&target);
    if (!windows || !windows->isModal(*root)) return false;
    windows->closeRequested(*root);
    return true;
}

} // namespace

bool handle(Glob& target, Event const& key) {
    switch (key.keyCode()) {
    case Key::tab:
    case Key::shiftTab:
    case nextPane:
    case previousPane:
        return stepPanes(target, key.keyCode());
    case Key::enter:
    // For controls in which Return means something else.
    case Key::ctrl | Key::enter:
        return !key.isRepeat() && pressDefaultButton(target, key);
    case Key::escape:
        return closeModal(target);
    default:
        return false;
    }
}

} // namespace wainscot::WindowKeys
