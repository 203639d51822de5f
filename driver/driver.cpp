#include "driver/driver.h"

#include "host/base/convert.h"
#include "host/drawing/png.h"
#include "host/events/event_system.h"
#include "host/events/key_codes.h"
#include "host/objects/description.h"
#include "host/objects/tree.h"
#include "host/windows/event_loop.h"
#include "host/windows/glob_manager.h"
#include "host/windows/top_level_window.h"

#include <algorithm>

namespace wainscot {

namespace {

/// A stretch of keys that is longer than any program of a person's needs.
constexpr double endOfTime = 1e12;

bool hasKeyCode(wchar_t character) {
    return character >= L' ' && static_cast<std::uint32_t>(character) < Key::meta;
}

bool fits(GlobDescription const& description, LightweightString<char> const& role,
          LightweightString<wchar_t> const& name) {
    return (role.empty() || description.role == role) && (name.empty() || description.name == name);
}

} // namespace

bool Driver::refuse(LightweightString<char> const& why) {
    problem_ = why;
    return false;
}

// Finding

std::vector<Glob*> Driver::findAll(LightweightString<char> const& role,
                                   LightweightString<wchar_t> const& name) {
    std::vector<Glob*> found;
    for (Glob* root : host_.globManager().roots()) {
        for (Glob* glob : Tree::subtree(*root))
            if (glob->isShown() && fits(describe(*glob), role, name)) found.push_back(glob);
    }
    return found;
}

Glob* Driver::find(LightweightString<char> const& role, LightweightString<wchar_t> const& name) {
    std::vector<Glob*> const found = findAll(role, name);
    if (!found.empty()) return found.front();
    refuse(LightweightString<char>("there is no ") +
           (role.empty() ? LightweightString<char>("widget") : role) + " \"" + toUTF8(name) + "\"");
    return nullptr;
}

Glob* Driver::named(char const* name) {
    Glob* const found = host_.globManager().find(name);
    if (!found) refuse(LightweightString<char>("there is nothing named \"") + (name ? name : "") + "\"");
    return found;
}

GlobDescription Driver::describe(Glob const& glob) {
    GlobDescription description;
    glob.describe(description);
    return description;
}

// Pointer

bool Driver::inject(InputEvent input) {
    if (!EventSystem::current()) return refuse("the program has ended");
    input.time = service_get_msecs();
    host_.loop().inject(std::move(input));
    return settle();
}

bool Driver::injectPointer(InputEvent::Kind kind, Button button, int clicks) {
    InputEvent input;
    input.kind = kind;
    input.button = button;
    input.clicks = clicks;
    input.place = place_;
    input.modifiers = modifiers_;
    TopLevelWindow const* const window = host_.globManager().windowAt(place_);
    input.window = window ? window->native().id() : 0;
    return inject(input);
}

bool Driver::moveTo(XY<int> place) {
    place_ = place;
    return injectPointer(InputEvent::Kind::pointerMoved);
}

bool Driver::aimAt(Glob* glob) {
    if (!is_good_glob_ptr(glob)) return refuse("there is no such widget");
    TopLevelWindow* const window = windowOf(glob);
    if (!window || !glob->isShown()) return refuse("the widget is not shown");
    place_ = glob->screenBox().centre();
    Glob& root = window->root();
    Glob* const hit = Tree::globAt(root, root.screenXYToGlobXY(place_));
    bool const reachable = hit && (hit == glob || Glob::isParentedTo(hit, glob));
    return reachable || refuse("something else lies over the widget");
}

bool Driver::moveTo(Glob* glob) {
    return aimAt(glob) && injectPointer(InputEvent::Kind::pointerMoved);
}

bool Driver::press(Button button, int clicks) {
    return injectPointer(InputEvent::Kind::pointerPressed, button, clicks);
}

bool Driver::press(Glob* glob, Button button) {
    return moveTo(glob) && press(button);
}

bool Driver::release(Button button) {
    return injectPointer(InputEvent::Kind::pointerReleased, button);
}

bool Driver::click(Glob* glob, Button button) {
    return press(glob, button) && release(button);
}

bool Driver::clickAt(XY<int> place, Button button) {
    return moveTo(place) && press(button) && release(button);
}

bool Driver::doubleClick(Glob* glob) {
    return click(glob) && press(Button::left, 2) && release();
}

bool Driver::drag(Glob* glob, XY<int> way, int steps) {
    if (!press(glob)) return false;
    XY<int> const start = place_;
    steps = std::max(steps, 1);
    for (int step = 1; step <= steps; ++step)
        moveTo({start.x + way.x * step / steps, start.y + way.y * step / steps});
    return release();
}

bool Driver::chord(Glob* glob, Button first, Button second) {
    return press(glob, first) && press(second) && release(second) && release(first);
}

bool Driver::injectAmount(InputEvent::Kind kind, int amount) {
    InputEvent input;
    input.kind = kind;
    input.place = place_;
    input.amount = amount;
    input.modifiers = modifiers_;
    return inject(input);
}

bool Driver::wheel(Glob* glob, int notches) {
    return aimAt(glob) && injectAmount(InputEvent::Kind::wheel, notches);
}

bool Driver::wheelAt(XY<int> place, int notches) {
    place_ = place;
    return injectAmount(InputEvent::Kind::wheel, notches);
}

bool Driver::sideWheel(Glob* glob, int notches) {
    return aimAt(glob) && injectAmount(InputEvent::Kind::sideWheel, notches);
}

bool Driver::zoom(Glob* glob, int steps) {
    return aimAt(glob) && injectAmount(InputEvent::Kind::zoom, steps);
}

// Keys

bool Driver::key(std::uint32_t code) {
    return keyDown(code) && keyUp(code);
}

bool Driver::keyDown(std::uint32_t code, bool repeat) {
    InputEvent input;
    input.kind = InputEvent::Kind::keyPressed;
    input.keyCode = code | modifiers_;
    input.modifiers = input.keyCode & Key::modifierMask;
    input.repeat = repeat;
    return inject(input);
}

bool Driver::keyUp(std::uint32_t code) {
    InputEvent input;
    input.kind = InputEvent::Kind::keyReleased;
    input.keyCode = code | modifiers_;
    input.modifiers = input.keyCode & Key::modifierMask;
    return inject(input);
}

bool Driver::type(LightweightString<wchar_t> const& text) {
    for (wchar_t const character : text) {
        if (hasKeyCode(character)) {
            if (!key(static_cast<std::uint32_t>(character))) return false;
            continue;
        }
        InputEvent input;
        input.kind = InputEvent::Kind::composedText;
        input.text = LightweightString<wchar_t>(1, character);
        if (!inject(input)) return false;
    }
    return true;
}

// Windows

bool Driver::activate(Glob* glob) {
    TopLevelWindow const* const window = windowOf(glob);
    if (!window || window->isPopUp() || !glob->isShown()) return refuse("there is no such window");
    window->native().raise();
    return settle();
}

TopLevelWindow* Driver::windowOf(Glob const* glob) {
    if (!is_good_glob_ptr(glob)) return nullptr;
    return host_.globManager().windowOf(Glob::getRootParent(const_cast<Glob*>(glob)));
}

bool Driver::closeWindow(Glob* root) {
    TopLevelWindow const* const window = windowOf(root);
    if (!window) return refuse("there is no such window");
    InputEvent input;
    input.kind = InputEvent::Kind::windowCloseRequested;
    input.window = window->native().id();
    return inject(input);
}

bool Driver::resizeWindow(Glob* root, XY<int> size) {
    TopLevelWindow const* const window = windowOf(root);
    if (!window) return refuse("there is no such window");
    InputEvent input;
    input.kind = InputEvent::Kind::windowResized;
    input.window = window->native().id();
    input.size = size;
    return inject(input);
}

// Time

bool Driver::advance(double ms) {
    VirtualClock* const clock = host_.virtualClock();
    if (!clock) return refuse("time can only be moved without a screen");
    double const end = clock->msecs() + std::clamp(ms, 0.0, endOfTime);
    settle();
    EventTimeServer const* const timers = EventTimeServer::theEventTimeServer();
    for (std::optional<double> due = timers->nextDue(); due && *due <= end; due = timers->nextDue()) {
        clock->advanceTo(*due);
        host_.loop().turn();
    }
    clock->advanceTo(end);
    return settle();
}

bool Driver::settle() {
    return host_.loop().settle() || refuse("the program does not come to rest");
}

// Looking

std::uint32_t Driver::pixel(Glob const* glob, XY<int> place) {
    TopLevelWindow* const window = windowOf(glob);
    if (!window) return 0;
    XY<int> const onSurface = glob->globXYToScreenXY(place) - window->root().screenBox().bottomLeft() +
                              window->surface().contentPlace();
    return window->surface().pixelAt(onSurface) & 0xFFFFFF;
}

bool Driver::painted(Glob const* glob) {
    TopLevelWindow* const window = windowOf(glob);
    if (!window) return false;
    std::uint32_t const first = pixel(glob, {0, 0});
    for (int y = 0; y < glob->height(); ++y)
        for (int x = 0; x < glob->width(); ++x)
            if (pixel(glob, {x, y}) != first) return true;
    return false;
}

LightweightString<char> Driver::snapshot(Glob* glob, LightweightString<char> const& path) {
    TopLevelWindow* const window = windowOf(glob);
    if (!window) return "there is no such window";
    settle();
    return writePng(window->surface(), path);
}

LightweightString<char> Driver::tree() {
    LightweightString<char> text;
    for (Glob* root : host_.globManager().roots()) {
        for (Glob* glob : Tree::subtree(*root)) {
            if (!glob->isShown()) continue;
            for (Glob* above = glob; above != root; above = above->parent()) text += "  ";
            GlobDescription const description = describe(*glob);
            text += description.role + " \"" + toUTF8(description.name) + "\"";
            if (!description.value.empty()) text += " = \"" + toUTF8(description.value) + "\"";
            if ((description.states & GlobDescription::enabled) == 0) text += " disabled";
            if ((description.states & GlobDescription::focused) != 0) text += " focused";
            if ((description.states & GlobDescription::pressed) != 0) text += " pressed";
            text += "\n";
        }
    }
    return text;
}

} // namespace wainscot
