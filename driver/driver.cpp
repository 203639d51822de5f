#include "driver/driver.h"

#include "driver/item_walk_p.h"
#include "host/base/convert.h"
#include "host/drawing/png.h"
#include "host/events/dispatch_scope.h"
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

/// Longer than any program runs, in milliseconds.
constexpr double endOfTime = 1e12;

bool hasKeyCode(wchar_t character) {
    return character >= L' ' && static_cast<std::uint32_t>(character) < Key::meta;
}

bool isSeen(Glob const& glob) {
    return is_good_glob_ptr(&glob) && glob.isShown() && !glob.isLightweight();
}

bool fits(GlobDescription const& description, std::optional<Role> role,
          LightweightString<wchar_t> const& name) {
    return (!role || description.role == *role) && (name.empty() || description.name == name);
}

ItemWalk::Reach reachOf(Driver::Reach reach) {
    return reach == Driver::Reach::all ? ItemWalk::Reach::all : ItemWalk::Reach::inSight;
}

/// The first item that fits; the empty key when there is none.
ItemKey findItemOf(Glob& glob, ItemKey in, Driver::Reach reach, std::optional<Role> role,
                   LightweightString<wchar_t> const& name) {
    bool const isAsked = is_good_glob_ptr(&glob) && glob.isShown();
    DescribedItems const* const items = isAsked ? glob.describedItems() : nullptr;
    if (!items) return {};
    LifeGuard const life = glob.guard();
    for (ItemWalk walk(*items, in, reachOf(reach)); life.alive() && walk.next();) {
        GlobDescription description;
        if (life.alive() && walk.describe(description) && life.alive() && fits(description, role, name))
            return walk.key();
    }
    return {};
}

using Text = LightweightString<char>;

Text number(double value) {
    return toUTF8(Qv::WStringFromFloat(value));
}

Text countOf(std::size_t value) {
    return toUTF8(Qv::WStringFromInteger(static_cast<int>(value)));
}

Text rangeOf(NumberValue const& range) {
    Text text = " from " + number(range.minimum) + " to " + number(range.maximum);
    if (range.step > 0) text += " step " + number(range.step);
    if (range.page > 0) text += " page " + number(range.page);
    return text;
}

Text statesOf(std::uint32_t states) {
    Text text = (states & GlobDescription::enabled) == 0 ? " disabled" : "";
    constexpr std::pair<std::uint32_t, char const*> words[] = {
        {GlobDescription::focused, " focused"},   {GlobDescription::pressed, " pressed"},
        {GlobDescription::checked, " checked"},   {GlobDescription::mixed, " mixed"},
        {GlobDescription::selected, " selected"}, {GlobDescription::expanded, " expanded"}};
    for (auto const& [state, word] : words)
        if ((states & state) != 0) text += word;
    return text;
}

void appendLine(Text& text, std::size_t depth, GlobDescription const& description) {
    for (std::size_t i = 0; i < depth; ++i) text += "  ";
    text += roleName(description.role) + " \"" + toUTF8(description.name) + "\"";
    if (!description.value.empty()) text += " = \"" + toUTF8(description.value) + "\"";
    if (description.number) text += rangeOf(*description.number);
    if (description.position > 0)
        text += " " + countOf(description.position) + " of " + countOf(description.setSize);
    text += statesOf(description.states) + "\n";
}

/// Appends the items in sight.
void appendItems(Text& text, std::size_t depth, Glob& glob) {
    DescribedItems const* const items = glob.describedItems();
    if (!items) return;
    LifeGuard const life = glob.guard();
    for (ItemWalk walk(*items, {}, ItemWalk::Reach::inSight); life.alive() && walk.next();) {
        GlobDescription description;
        description.parts = GlobDescription::relations;
        if (life.alive() && walk.describe(description))
            appendLine(text, depth + 1 + walk.depth(), description);
    }
}

} // namespace

bool Driver::refuse(LightweightString<char> const& why) {
    problem_ = why;
    return false;
}

// Finding. What describes itself may ask the program's code, which may destroy widgets: they are kept in
// memory meanwhile.

Driver::Target::Target(Glob* glob) : glob_(is_good_glob_ptr(glob) ? glob : nullptr) {}

std::vector<Glob*> Driver::findAll(std::optional<Role> role, LightweightString<wchar_t> const& name) {
    DispatchScope const scope;
    std::vector<Glob*> found;
    for (Glob* root : host_.globManager().roots()) {
        if (!is_good_glob_ptr(root)) continue;
        for (Glob* glob : Tree::subtree(*root))
            if (isSeen(*glob) && fits(describe(*glob), role, name)) found.push_back(glob);
    }
    std::erase_if(found, [](Glob const* glob) { return !is_good_glob_ptr(glob); });
    return found;
}

Glob* Driver::find(std::optional<Role> role, LightweightString<wchar_t> const& name) {
    std::vector<Glob*> const found = findAll(role, name);
    if (!found.empty()) return found.front();
    refuseToFind(role, name);
    return nullptr;
}

bool Driver::refuseToFind(std::optional<Role> role, LightweightString<wchar_t> const& name) {
    return refuse(LightweightString<char>("there is no ") +
                  (role ? roleName(*role) : LightweightString<char>("widget")) + " \"" + toUTF8(name) + "\"");
}

Driver::Target Driver::findItem(std::optional<Role> role, LightweightString<wchar_t> const& name,
                                Reach reach) {
    DispatchScope const scope;
    for (Glob* root : host_.globManager().roots()) {
        if (!is_good_glob_ptr(root)) continue;
        for (Glob* glob : Tree::subtree(*root)) {
            ItemKey const item = findItemOf(*glob, {}, reach, role, name);
            if (!item.isEmpty()) return {glob, item};
        }
    }
    refuseToFind(role, name);
    return nullptr;
}

Driver::Target Driver::findItemIn(Target const& in, std::optional<Role> role,
                                  LightweightString<wchar_t> const& name, Reach reach) {
    DispatchScope const scope;
    ItemKey const item = in ? findItemOf(*in.glob(), in.item(), reach, role, name) : ItemKey();
    if (!item.isEmpty()) return {in.glob(), item};
    refuseToFind(role, name);
    return nullptr;
}

Driver::Target Driver::findByWord(LightweightString<char> const& word,
                                  LightweightString<wchar_t> const& name) {
    std::optional<Role> const role = roleOf(word);
    if (!role && !word.empty()) {
        refuse(LightweightString<char>("there is no role \"") + word + "\"; there are " + allRoleNames());
        return nullptr;
    }
    Glob* const widget = find(role, name);
    return widget ? Target(widget) : findItem(role, name);
}

Glob* Driver::named(char const* name) {
    Glob* const found = host_.globManager().find(name);
    if (!found) refuse(LightweightString<char>("there is nothing named \"") + (name ? name : "") + "\"");
    return found;
}

GlobDescription Driver::describe(Glob const& glob, std::uint32_t parts) {
    return GlobDescription::of(glob, parts);
}

std::optional<GlobDescription> Driver::describe(Target const& target, std::uint32_t parts) {
    Glob* const glob = target.glob();
    if (!glob) return {};
    if (target.item().isEmpty()) return describe(*glob, parts);
    DispatchScope const scope;
    GlobDescription description;
    description.parts = parts;
    DescribedItems const* const items = glob->describedItems();
    bool const isKnown = items && items->describeItem(target.item(), description);
    return isKnown ? std::optional(description) : std::nullopt;
}

bool Driver::reveal(Target const& item) {
    DescribedItems* const items = item ? item.glob()->describedItems() : nullptr;
    bool const done = items && items->performItemAction(item.item(), GlobDescription::reveal);
    return done ? settle() : refuse("it cannot be scrolled into sight");
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

bool Driver::aimAt(Target const& target) {
    Glob* const glob = target.glob();
    if (!glob) return refuse("there is no such widget");
    TopLevelWindow* const window = windowOf(glob);
    if (!window || !glob->isShown()) return refuse("the widget is not shown");
    std::optional<GlobDescription> const description = describe(target);
    if (!description) return refuse("the item has gone");
    if (!target.item().isEmpty() && description->box.isEmpty()) return refuse("the item is not in sight");
    place_ = description->box.centre();
    Glob& root = window->root();
    Glob* const hit = Tree::globAt(root, root.screenXYToGlobXY(place_));
    bool const reachable = hit && (hit == glob || Glob::isParentedTo(hit, glob));
    return reachable || refuse("something else lies over the widget");
}

bool Driver::moveTo(Target const& target) {
    return aimAt(target) && injectPointer(InputEvent::Kind::pointerMoved);
}

bool Driver::press(Button button, int clicks) {
    return injectPointer(InputEvent::Kind::pointerPressed, button, clicks);
}

bool Driver::press(Target const& target, Button button) {
    return moveTo(target) && press(button);
}

bool Driver::release(Button button) {
    return injectPointer(InputEvent::Kind::pointerReleased, button);
}

bool Driver::click(Target const& target, Button button) {
    return press(target, button) && release(button);
}

bool Driver::clickAt(XY<int> place, Button button) {
    return moveTo(place) && press(button) && release(button);
}

bool Driver::doubleClick(Target const& target) {
    return click(target) && press(Button::left, 2) && release();
}

bool Driver::drag(Target const& target, XY<int> way, int steps) {
    if (!press(target)) return false;
    XY<int> const start = place_;
    steps = std::max(steps, 1);
    for (int step = 1; step <= steps; ++step)
        moveTo({start.x + way.x * step / steps, start.y + way.y * step / steps});
    return release();
}

bool Driver::chord(Target const& target, Button first, Button second) {
    return press(target, first) && press(second) && release(second) && release(first);
}

bool Driver::injectAmount(InputEvent::Kind kind, int amount) {
    InputEvent input;
    input.kind = kind;
    input.place = place_;
    input.amount = amount;
    input.modifiers = modifiers_;
    return inject(input);
}

bool Driver::wheel(Target const& target, int notches) {
    return aimAt(target) && injectAmount(InputEvent::Kind::wheel, notches);
}

bool Driver::wheelAt(XY<int> place, int notches) {
    place_ = place;
    return injectAmount(InputEvent::Kind::wheel, notches);
}

bool Driver::sideWheel(Target const& target, int notches) {
    return aimAt(target) && injectAmount(InputEvent::Kind::sideWheel, notches);
}

bool Driver::zoom(Target const& target, int steps) {
    return aimAt(target) && injectAmount(InputEvent::Kind::zoom, steps);
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
    DispatchScope const scope;
    LightweightString<char> text;
    for (Glob* root : host_.globManager().roots()) {
        if (!is_good_glob_ptr(root)) continue;
        for (Glob* glob : Tree::subtree(*root)) {
            if (!isSeen(*glob)) continue;
            std::size_t depth = 0;
            for (Glob* above = glob; above && above != root; above = above->parent()) ++depth;
            appendLine(text, depth, describe(*glob, GlobDescription::relations));
            if (is_good_glob_ptr(glob)) appendItems(text, depth, *glob);
        }
    }
    return text;
}

} // namespace wainscot
