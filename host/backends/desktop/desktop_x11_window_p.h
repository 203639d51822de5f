#pragma once

#include "host/base/xy.h"

#include <optional>

struct SDL_Window;
struct _XDisplay;

namespace wainscot {

/// Requests of a window to the X server and the window manager. The library's own requests wait for the
/// answer and ignore the frame that the window manager puts round the contents. All sizes and places are
/// those of the contents, in device pixels, y downwards.
class X11Window {
public:
    /// What the window manager has to know before the window is shown.
    struct Wishes {
        XY<int> leastSize{1, 1};
        /// The only size that the window may have.
        std::optional<XY<int>> fixedSize;
        /// The program has chosen the place. Otherwise the window manager chooses it.
        bool isPlaced = false;
    };

    X11Window() = default;
    /// With null all calls do nothing.
    explicit X11Window(SDL_Window* window);

    _XDisplay* display() const { return display_; }
    bool is(unsigned long window) const { return window_ == window; }
    void wish(Wishes const& wishes);
    /// Asks the window manager to keep it above its owner.
    void belongTo(X11Window const& owner);
    /// Asks for the window to be shown on top, or to be taken off the screen; returns before that is done.
    void show();
    void hide();
    void toFront();
    void resize(XY<int> size);
    /// `corner` is the upper-left one.
    void move(XY<int> corner);
    /// Marks it as a dialogue that keeps input from other windows. It cannot be minimised or maximised, nor
    /// resized with `isFixed`.
    void setModal(bool modal, bool isFixed);
    /// Gives the window the keyboard when there is no window manager to do it.
    void focusUnmanaged();
    /// Sends the library a release of a button, as if it came from the pointer.
    void pretendRelease(unsigned button);

private:
    void setState(unsigned long state, bool on);

    _XDisplay* display_ = nullptr;
    unsigned long window_ = 0;
};

} // namespace wainscot
