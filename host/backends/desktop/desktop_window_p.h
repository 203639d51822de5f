#pragma once

#include "host/backends/desktop/desktop_scale_p.h"
#include "host/backends/desktop/desktop_x11_window_p.h"
#include "host/windows/backend.h"

#include <SDL_video.h>

#include <vector>

namespace wainscot {

class DesktopBackend;

/// A window of the window library. Its size and place are those that the window system reported last.
class DesktopWindow final : public NativeWindow {
public:
    /// Takes over the library's window. `backend` outlives the window or calls `abandon()`.
    DesktopWindow(DesktopBackend& backend, SDL_Window* window, NativeWindowSettings const& settings);
    ~DesktopWindow() override;
    DesktopWindow(DesktopWindow const&) = delete;
    DesktopWindow& operator=(DesktopWindow const&) = delete;

    NativeWindowId id() const override { return id_; }
    void show() override;
    void hide() override;
    void setTitle(LightweightString<wchar_t> const& title) override;
    void resize(XY<int> size) override;
    void setMinSize(XY<int> size) override;
    void moveTo(XY<int> place) override;
    void raise() override;
    void toFront() override;
    void setKeepAbove(bool keep) override;
    void setModal(bool modal, NativeWindowId owner) override;
    WindowMargins frame() const override;
    XY<int> size() const override { return box_.size(); }
    XY<int> place() const override { return box_.bottomLeft(); }
    void present(Surface const& surface, std::vector<IntBox> const& boxes) override;

    IntBox const& box() const { return box_; }
    /// Puts the pointer at a device pixel of the contents, y downwards.
    void warpPointer(XY<int> devicePixel);
    /// Tells the library that no button is held; without that it would swallow the next press.
    void releaseButtons();
    bool isPopUp() const { return popUp_; }
    /// It was pressed: it takes the keyboard when no window manager gives it the keyboard.
    void wasPressed();
    void belongTo(DesktopWindow const& owner) { native_.belongTo(owner.native_); }
    bool isNative(unsigned long window) const { return native_.is(window); }
    /// The scale has changed by that factor: the logical size stays as it is.
    void rescale(double factor);
    _XDisplay* display() const { return native_.display(); }
    /// Takes over size and place from the window system; true when either has changed.
    bool updateBox(RootSpace const& space);
    /// Whether the window is shown and not minimised, so that its pixels can be seen.
    bool isOnScreen() const;
    /// Takes note of `isOnScreen()`; true when it has changed while the program wants the window shown.
    bool updateOnScreen();
    /// The window system has given it a size.
    void wasSized() { asked_.reset(); }
    /// The window system has put the window on the screen.
    void wasShown();
    /// The backend goes: the library's window is closed, all operations do nothing from now on.
    void abandon();

private:
    void close();
    /// Tells the window manager, with a least size that fits on the screen.
    void wish();
    /// The device size of a logical one.
    XY<int> deviceSize(XY<int> size) const;
    /// The largest contents that fit on a monitor with their frame.
    XY<int> largestSize() const;
    void askFor(XY<int> size);

    DesktopBackend* backend_;
    SDL_Window* window_;
    X11Window native_;
    X11Window::Wishes wishes_;
    NativeWindowId id_;
    IntBox box_;
    /// A device size that was asked for and has not been answered.
    std::optional<XY<int>> asked_;
    bool popUp_;
    bool wantedOnScreen_ = false;
    bool reportedOnScreen_ = true;
    /// A member only to reuse its memory.
    std::vector<SDL_Rect> rects_;
};

} // namespace wainscot
