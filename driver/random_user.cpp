#include "driver/random_user.h"

#include "host/events/key_codes.h"
#include "host/events/pointer_state.h"
#include "host/objects/description.h"
#include "host/objects/tree.h"
#include "host/windows/glob_manager.h"
#include "host/windows/top_level_window.h"

#include <algorithm>

namespace wainscot {

namespace {

constexpr std::uint32_t keys[] = {
    Key::tab,
    Key::shiftTab,
    Key::enter,
    Key::space,
    Key::escape,
    Key::left,
    Key::right,
    Key::up,
    Key::down,
    Key::home,
    Key::end,
    Key::pageUp,
    Key::pageDown,
    Key::del,
    Key::backspace,
    Key::insert,
    Key::menu,
    Key::function(6),
    'a',
    'Z',
    '0',
    Key::ctrl | 'C',
    Key::ctrl | 'V',
    Key::ctrl | 'X',
    Key::ctrl | 'Z',
    Key::ctrl | Key::shift | Key::right,
    Key::alt | 'F',
    Key::shift | Key::f10,
};
constexpr std::uint32_t modifierSets[] = {0,          0,         0,        0,
                                          Key::shift, Key::ctrl, Key::alt, Key::shift | Key::ctrl};
constexpr int longestWait = 400;
constexpr int mostNotches = 3;

} // namespace

RandomUser::RandomUser(Driver& driver, std::uint32_t seed) : driver_(driver), random_(seed) {}

/// Not by a distribution of the standard library: these differ between libraries.
int RandomUser::below(int bound) {
    return static_cast<int>(random_() % static_cast<std::uint32_t>(std::max(bound, 1)));
}

/// Half of the places are in an object, picked from all shown objects.
XY<int> RandomUser::somePlace() {
    std::vector<Glob*> const roots = driver_.host().globManager().roots();
    if (roots.empty()) return {};
    Glob* const root = roots[static_cast<std::size_t>(below(static_cast<int>(roots.size())))];
    IntBox box = root->screenBox();
    if (chance(50)) {
        std::vector<Glob*> all;
        root->visitSubtree([&](Glob& glob) {
            if (glob.isShown()) all.push_back(&glob);
            return true;
        });
        if (!all.empty())
            box = all[static_cast<std::size_t>(below(static_cast<int>(all.size())))]->screenBox();
    }
    constexpr int beyond = 3;
    return {box.x1 - beyond + below(box.width() + 2 * beyond),
            box.y1 - beyond + below(box.height() + 2 * beyond)};
}

UserAct RandomUser::pressOrRelease() {
    constexpr InputEvent::Button buttons[] = {InputEvent::Button::left, InputEvent::Button::left,
                                              InputEvent::Button::left, InputEvent::Button::right,
                                              InputEvent::Button::middle};
    InputEvent::Button const button = buttons[below(5)];
    unsigned const bit = 1U << static_cast<unsigned>(button);
    held_ ^= bit;
    if ((held_ & bit) == 0) return {.kind = UserAct::Kind::release, .button = button};
    countPress();
    return {.kind = UserAct::Kind::press, .button = button, .amount = 1 + (chance(10) ? 1 : 0)};
}

void RandomUser::countPress() {
    ++counts_.presses;
    TopLevelWindow* const window = driver_.host().globManager().windowAt(glib_getMousePos());
    if (!window) return;
    Glob* const under = Tree::globAt(window->root(), window->root().screenXYToGlobXY(glib_getMousePos()));
    if (!under || !under->isChildGlob()) return;
    ++counts_.hits;
    ++counts_.pressedRoles[roleName(Driver::describe(*under).role).c_str()];
}

UserAct RandomUser::someKey() {
    auto const code = static_cast<int>(keys[below(static_cast<int>(std::size(keys)))]);
    return {.kind = chance(90) ? UserAct::Kind::key : UserAct::Kind::repeat, .amount = code};
}

UserAct RandomUser::choose() {
    using Kind = UserAct::Kind;
    int const what = below(100);
    if (what < 40) return {.kind = Kind::move, .place = somePlace()};
    if (what < 70) return pressOrRelease();
    if (what < 85) return someKey();
    if (what < 92)
        return {.kind = Kind::wheel, .amount = chance(50) ? 1 + below(mostNotches) : -1 - below(mostNotches)};
    if (what < 97) return {.kind = Kind::wait, .amount = below(longestWait)};
    auto const modifiers = modifierSets[below(static_cast<int>(std::size(modifierSets)))];
    return {.kind = Kind::hold, .amount = static_cast<int>(modifiers)};
}

void RandomUser::watchWindows() {
    std::size_t const now = driver_.host().globManager().numWindows();
    if (now > windowsBefore_) counts_.windowsOpened += now - windowsBefore_;
    windowsBefore_ = now;
}

bool RandomUser::perform(UserAct const& act) {
    if (before_) before_(act);
    act.perform(driver_);
    watchWindows();
    return !after_ || after_();
}

void RandomUser::releaseAll() {
    for (auto const button :
         {InputEvent::Button::left, InputEvent::Button::right, InputEvent::Button::middle})
        if ((held_ & (1U << static_cast<unsigned>(button))) != 0)
            perform({.kind = UserAct::Kind::release, .button = button});
    held_ = 0;
    perform({.kind = UserAct::Kind::hold});
}

bool RandomUser::run(std::uint64_t events) {
    windowsBefore_ = driver_.host().globManager().numWindows();
    bool goesOn = true;
    for (std::uint64_t i = 0; i < events && goesOn; ++i) {
        ++counts_.events;
        goesOn = perform(choose()) && driver_.host().globManager().numWindows() > 0;
    }
    releaseAll();
    return goesOn;
}

} // namespace wainscot
