#pragma once

#include "host/base/xy.h"

#include <optional>

struct SDL_Window;
struct _XDisplay;

namespace wainscot {

/// What a window asks of the X server and the window manager directly. The library asks too, but waits for
/// the answer, and takes no account of the frame that the window manager puts round the contents. All sizes
/// and places are those of the contents, in device pixels, y downwards.
class X11Window {
public:
    /// What the window manager shall know before the window is shown.
    struct Wishes {
        XY<int> leastSize{1, 1};
        /// The only size that the window may have.
        std::optional<XY<int>> fixedSize;
        /// The program has chosen the place; else the window manager does.
        bool isPlaced = false;
    };

    X11Window() = default;
    /// Null gives a window that is not there; nothing happens with it.
    explicit X11Window(SDL_Window* window);

    _XDisplay* display() const { return display_; }
    bool is(unsigned long window) const { return window_ == window; }
    void wish(Wishes const& wishes);
    /// Asks the window manager to keep it above its owner.
    void belongTo(X11Window const& owner);
    /// Asks for the window to be shown on top, or to be taken off the screen; returns before it is.
    void show();
    void hide();
    void toFront();
    void resize(XY<int> size);
    /// `corner` is the upper-left one.
    void move(XY<int> corner);
    /// Marks it as a dialogue that keeps input from others; without minimising, maximising and, with
    /// `isFixed`, other sizes.
    void setModal(bool modal, bool isFixed);
    /// Gives the window the keyboard where no window manager does.
    void focusUnmanaged();
    /// Tells the library, which takes it for the pointer's own, that a button has been released.
    void pretendRelease(unsigned button);

private:
    void setState(unsigned long state, bool on);

    _XDisplay* display_ = nullptr;
    unsigned long window_ = 0;
};

} // namespace wainscot
