#include "driver/consistency.h"

#include "host/base/convert.h"
#include "host/events/event_system.h"
#include "host/objects/kbd_focus.h"
#include "host/services/clock.h"
#include "host/windows/event_loop.h"
#include "host/windows/glob_manager.h"
#include "host/windows/top_level_window.h"

#include <algorithm>
#include <vector>

namespace wainscot {

namespace {

using Text = LightweightString<char>;
using Pixels = std::vector<std::uint32_t>;

Text number(int value) {
    return StringFromInteger(value);
}

Text named(Glob const& glob) {
    GlobDescription const description = Driver::describe(glob);
    return Text(roleName(description.role)) + " \"" + toUTF8(description.name) + "\"";
}

Pixels pixelsOf(Surface const& surface) {
    XY<int> const size = surface.deviceSize();
    return {surface.pixels(), surface.pixels() + static_cast<std::ptrdiff_t>(size.y) * surface.stride()};
}

/// A button may be down for good; these are only while they are held.
bool isHeld(Glob const& glob) {
    if (!glob.isShown()) return false;
    GlobDescription const description = Driver::describe(glob);
    bool const isDragged = description.role == Role::slider || description.role == Role::scrollBar;
    return isDragged && (description.states & GlobDescription::pressed) != 0;
}

/// To describe an object costs as much as it lies deep, so that the walk ends at a depth that no user sees.
Glob const* heldIn(Glob const& root) {
    constexpr int deepest = 200;
    Glob const* glob = &root;
    for (int depth = 0; glob;) {
        if (isHeld(*glob)) return glob;
        Glob const* next = depth < deepest ? glob->firstChild() : nullptr;
        depth += next ? 1 : 0;
        for (; !next && glob != &root; --depth) {
            next = glob->nextSibling();
            if (next) break;
            glob = glob->parent();
        }
        glob = next;
    }
    return nullptr;
}

} // namespace

Text Consistency::fault() {
    driver_.settle();
    if (!EventSystem::current()) return {};
    for (auto const part : {&Consistency::faultOfFocus, &Consistency::faultOfPointer,
                            &Consistency::faultOfTimers, &Consistency::faultOfPictures}) {
        Text fault = (this->*part)();
        if (!fault.empty()) return fault;
    }
    return {};
}

Text Consistency::faultOfFocus() {
    Glob const* const holder = get_kbd_focus();
    if (!holder || !holder->isChildGlob()) return {};
    if (!holder->isShown()) return named(*holder) + " is not shown, but has the keyboard focus";
    return holder->isActive() ? Text() : named(*holder) + " is inactive, but has the keyboard focus";
}

/// An inactive widget may hold a press, so that nothing else hears of it.
Text Consistency::faultOfPointer() {
    PointerState const& pointer = EventSystem::live().pointer;
    auto const* const captor = dynamic_cast<Glob const*>(pointer.captureHolder());
    Glob const* const holder = captor && captor->isChildGlob() ? captor : nullptr;
    if (holder && !holder->isShown()) return named(*holder) + " is not shown, but has the pointer";
    if (pointer.heldButtons != 0) return {};
    if (holder) return named(*holder) + " has the pointer, but no button is held";
    for (Glob const* root : driver_.host().globManager().roots())
        if (Glob const* const held = heldIn(*root)) return named(*held) + " is held, but no button is";
    return {};
}

Text Consistency::faultOfTimers() {
    std::optional<double> const due = EventSystem::live().timers.nextDue();
    return due && *due < service_get_msecs() ? Text("a timer should have gone off") : Text();
}

Text Consistency::faultOfPictures() {
    for (Glob* root : driver_.host().globManager().roots()) {
        TopLevelWindow* const window = driver_.host().globManager().windowOf(root);
        if (!window || window->isHidden()) continue;
        Surface& surface = window->surface();
        Pixels const before = pixelsOf(surface);
        HandlerRef<Glob> const life(root);
        surface.toPaint().add(surface.bounds());
        driver_.settle();
        // Painting may have closed the window, and its surface with it.
        if (!life.get() || driver_.host().globManager().windowOf(root) != window) continue;
        Pixels const after = pixelsOf(surface);
        // The usual case, in one comparison of memory.
        if (before == after) continue;
        auto const shown = std::mismatch(before.begin(), before.end(), after.begin(), after.end()).first;
        auto const at = static_cast<int>(shown - before.begin());
        return named(*root) + " shows another picture than when it is painted anew, at device pixel " +
               number(at % surface.stride()) + ", " + number(at / surface.stride()) + " from the top";
    }
    return {};
}

} // namespace wainscot
