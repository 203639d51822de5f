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

void RandomUser::pressOrRelease() {
    constexpr InputEvent::Button buttons[] = {InputEvent::Button::left, InputEvent::Button::left,
                                              InputEvent::Button::left, InputEvent::Button::right,
                                              InputEvent::Button::middle};
    InputEvent::Button const button = buttons[below(5)];
    unsigned const bit = 1U << static_cast<unsigned>(button);
    if ((held_ & bit) != 0) {
        driver_.release(button);
        held_ &= ~bit;
        return;
    }
    TopLevelWindow* const window = driver_.host().globManager().windowAt(glib_getMousePos());
    if (window) {
        Glob* const under = Tree::globAt(window->root(), window->root().screenXYToGlobXY(glib_getMousePos()));
        if (under && under->isChildGlob()) {
            ++counts_.hits;
            ++counts_.pressedRoles[roleName(Driver::describe(*under).role).c_str()];
        }
    }
    ++counts_.presses;
    driver_.press(button, 1 + (chance(10) ? 1 : 0));
    held_ |= bit;
}

void RandomUser::pressKey() {
    std::uint32_t const code = keys[below(static_cast<int>(std::size(keys)))];
    if (chance(90)) {
        driver_.key(code);
        return;
    }
    driver_.keyDown(code);
    driver_.keyDown(code, true);
    driver_.keyUp(code);
}

void RandomUser::watchWindows() {
    std::size_t const now = driver_.host().globManager().numWindows();
    if (now > windowsBefore_) counts_.windowsOpened += now - windowsBefore_;
    windowsBefore_ = now;
}

void RandomUser::releaseAll() {
    for (auto const button :
         {InputEvent::Button::left, InputEvent::Button::right, InputEvent::Button::middle})
        if ((held_ & (1U << static_cast<unsigned>(button))) != 0) driver_.release(button);
    held_ = 0;
    driver_.holdModifiers(0);
}

bool RandomUser::run(std::uint64_t events) {
    windowsBefore_ = driver_.host().globManager().numWindows();
    bool opened = true;
    for (std::uint64_t i = 0; i < events && opened; ++i) {
        ++counts_.events;
        int const what = below(100);
        if (what < 40)
            driver_.moveTo(somePlace());
        else if (what < 70)
            pressOrRelease();
        else if (what < 85)
            pressKey();
        else if (what < 92)
            driver_.wheelAt(glib_getMousePos(),
                            chance(50) ? 1 + below(mostNotches) : -1 - below(mostNotches));
        else if (what < 97)
            driver_.advance(below(longestWait));
        else
            driver_.holdModifiers(modifierSets[below(static_cast<int>(std::size(modifierSets)))]);
        watchWindows();
        opened = driver_.host().globManager().numWindows() > 0;
    }
    releaseAll();
    return opened;
}

} // namespace wainscot
