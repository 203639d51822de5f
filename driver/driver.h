#pragma once

#include "host/objects/description.h"
#include "host/objects/glob.h"
#include "host/start/host.h"
#include "host/windows/input_event.h"

#include <cstdint>
#include <vector>

namespace wainscot {

class TopLevelWindow;

/// Uses a program's interface as a person would: finds widgets by role and name, moves, presses, types,
/// waits, and looks at the pixels. Input enters where platform input enters, and everything that it causes is
/// done when a call returns. A call that cannot be carried out answers false (or null), with the reason in
/// `problem()`.
class WAINSCOT_API Driver {
public:
    using Button = InputEvent::Button;

    explicit Driver(Host& host) : host_(host) {}

    // --- Finding. Only what is shown counts.
    /// The first widget with that role and name, in the order of windows and children; an empty role or name
    /// fits all.
    Glob* find(LightweightString<char> const& role, LightweightString<wchar_t> const& name);
    std::vector<Glob*> findAll(LightweightString<char> const& role, LightweightString<wchar_t> const& name);
    Glob* button(LightweightString<wchar_t> const& name) { return find("button", name); }
    /// By the name that the program gave the object.
    Glob* named(char const* name);
    static GlobDescription describe(Glob const& glob);

    // --- Pointer. Places are root coordinates; a widget stands for its centre.
    bool moveTo(XY<int> place);
    bool moveTo(Glob* glob);
    bool press(Button button = Button::left, int clicks = 1);
    bool press(Glob* glob, Button button = Button::left);
    bool release(Button button = Button::left);
    bool click(Glob* glob, Button button = Button::left);
    bool clickAt(XY<int> place, Button button = Button::left);
    bool doubleClick(Glob* glob);
    /// Presses on it, moves by the given way in so many steps, and releases.
    bool drag(Glob* glob, XY<int> way, int steps = 4);
    /// Holds one button on it, clicks another meanwhile, and releases the first.
    bool chord(Glob* glob, Button first = Button::left, Button second = Button::right);
    bool wheel(Glob* glob, int notches);
    bool wheelAt(XY<int> place, int notches);
    /// Sideways; positive = to the right.
    bool sideWheel(Glob* glob, int notches);
    /// A zoom gesture over it; positive = in.
    bool zoom(Glob* glob, int steps);
    /// Held with all that follows: `Key::shift` and so on.
    void holdModifiers(std::uint32_t modifiers) { modifiers_ = modifiers; }

    // --- Keys
    /// Presses and releases a key, with its modifiers.
    bool key(std::uint32_t code);
    bool keyDown(std::uint32_t code, bool repeat = false);
    bool keyUp(std::uint32_t code);
    /// One key for each character; what no key code can hold comes as composed text.
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
    /// Whether the box (of the widget, or a part of it) shows more than one colour.
    bool painted(Glob const* glob);
    /// Writes the window of a widget as PNG. The reason when it fails, else empty.
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
    /// Puts the pointer on it; false when something else lies over its centre.
    bool aimAt(Glob* glob);

    Host& host_;
    XY<int> place_;
    std::uint32_t modifiers_ = 0;
    LightweightString<char> problem_;
};

} // namespace wainscot
