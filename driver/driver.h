#pragma once

#include "host/objects/described_items.h"
#include "host/objects/description.h"
#include "host/objects/glob.h"
#include "host/start/host.h"
#include "host/windows/input_event.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace wainscot {

class TopLevelWindow;

/// Uses a program's interface as a person would: finds widgets by role and name, moves, presses, types,
/// waits, and looks at pixels. Input enters where the window system's input enters, and all its effects are
/// done when a call returns. A call that cannot be carried out answers false or null, with the reason in
/// `problem()`.
class WAINSCOT_API Driver {
public:
    using Button = InputEvent::Button;

    explicit Driver(Host& host) : host_(host) {}

    /// A widget, or an item in a widget, for the pointer. It may die, or become unknown.
    class WAINSCOT_API Target {
    public:
        /// Null or dead = nothing.
        Target(Glob* glob);
        Target(Glob* glob, ItemKey item) : Target(glob) { item_ = item; }

        Glob* glob() const { return glob_.get(); }
        ItemKey item() const { return item_; }
        explicit operator bool() const { return glob() != nullptr; }

    private:
        HandlerRef<Glob> glob_;
        ItemKey item_;
    };
    /// Which items are looked for: visible items, or all.
    enum class Reach { inSight, all };

    // --- Finding. Only shown widgets count. Without a role, or with an empty name, all of them fit.
    /// The first widget with that role and name, in the order of windows and children.
    Glob* find(std::optional<Role> role, LightweightString<wchar_t> const& name);
    std::vector<Glob*> findAll(std::optional<Role> role, LightweightString<wchar_t> const& name);
    Glob* button(LightweightString<wchar_t> const& name) { return find(Role::button, name); }
    /// The first item with that role and name: a row, a cell, a node. An item comes before the items in it.
    Target findItem(std::optional<Role> role, LightweightString<wchar_t> const& name,
                    Reach reach = Reach::inSight);
    /// The same in one widget, or in one item.
    Target findItemIn(Target const& in, std::optional<Role> role, LightweightString<wchar_t> const& name,
                      Reach reach = Reach::inSight);
    /// By the word for a role: a widget, else an item in sight. An empty word stands for all roles.
    Target findByWord(LightweightString<char> const& role, LightweightString<wchar_t> const& name);
    /// By the name that the program gave the object.
    Glob* named(char const* name);
    static GlobDescription describe(Glob const& glob, std::uint32_t parts = 0);
    /// Nothing when the target has gone.
    static std::optional<GlobDescription> describe(Target const& target, std::uint32_t parts = 0);
    /// Scrolls an item into sight.
    bool reveal(Target const& item);

    // --- Pointer. Places are root coordinates; a widget stands for its centre, an
    // item for the centre of its visible part.
    bool moveTo(XY<int> place);
    bool moveTo(Target const& target);
    bool press(Button button = Button::left, int clicks = 1);
    bool press(Target const& target, Button button = Button::left);
    bool release(Button button = Button::left);
    bool click(Target const& target, Button button = Button::left);
    bool clickAt(XY<int> place, Button button = Button::left);
    bool doubleClick(Target const& target);
    /// Presses on it, moves by `way` in `steps` steps, and releases.
    bool drag(Target const& target, XY<int> way, int steps = 4);
    /// Holds one button on it, clicks another meanwhile, and releases the first.
    bool chord(Target const& target, Button first = Button::left, Button second = Button::right);
    bool wheel(Target const& target, int notches);
    bool wheelAt(XY<int> place, int notches);
    /// Sideways; positive = to the right.
    bool sideWheel(Target const& target, int notches);
    /// A zoom gesture over it; positive = in.
    bool zoom(Target const& target, int steps);
    /// Holds modifiers during all further calls: `Key::shift` and so on.
    void holdModifiers(std::uint32_t modifiers) { modifiers_ = modifiers; }

    // --- Keys
    /// Presses and releases a key, with its modifiers.
    bool key(std::uint32_t code);
    bool keyDown(std::uint32_t code, bool repeat = false);
    bool keyUp(std::uint32_t code);
    /// One key for each character; characters without a key code come as composed text.
    bool type(LightweightString<wchar_t> const& text);

    // --- Windows
    /// The window of an object becomes the active one.
    bool activate(Glob* glob);
    bool closeWindow(Glob* root);
    bool resizeWindow(Glob* root, XY<int> size);

    // --- Time
    /// Moves virtual time from due time to due time, one turn of the loop at each, and ends exactly. False
    /// with real clocks.
    bool advance(double ms);
    /// Turns of the loop without moving time, until nothing is left to do.
    bool settle();

    // --- Looking
    /// The colour (0xRRGGBB) on the screen at a place of a widget, from its lower-left corner.
    std::uint32_t pixel(Glob const* glob, XY<int> place);
    /// Whether the widget shows more than one colour.
    bool painted(Glob const* glob);
    /// Writes the window of a widget as PNG. Gives the reason on failure, else the empty text.
    LightweightString<char> snapshot(Glob* glob, LightweightString<char> const& path);
    /// All that is shown, one widget a line, indented by depth.
    LightweightString<char> tree();

    LightweightString<char> const& problem() const { return problem_; }
    Host& host() { return host_; }

private:
    bool refuse(LightweightString<char> const& why);
    bool inject(InputEvent input);
    bool injectAmount(InputEvent::Kind kind, int amount);
    bool injectPointer(InputEvent::Kind kind, Button button = Button::none, int clicks = 1);
    TopLevelWindow* windowOf(Glob const* glob);
    bool refuseToFind(std::optional<Role> role, LightweightString<wchar_t> const& name);
    /// Puts the pointer on it; false when something else lies over its centre.
    bool aimAt(Target const& target);

    Host& host_;
    XY<int> place_;
    std::uint32_t modifiers_ = 0;
    LightweightString<char> problem_;
};

} // namespace wainscot
