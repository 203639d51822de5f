#include "host/backends/desktop/desktop_x11_window_p.h"

#include <SDL_syswm.h>
#include <SDL_version.h>
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>

namespace wainscot {

namespace {

bool hasWindowManager(Display* display) {
    Atom type = None;
    int format = 0;
    unsigned long count = 0, rest = 0;
    unsigned char* value = nullptr;
    Atom const check = XInternAtom(display, "_NET_SUPPORTING_WM_CHECK", False);
    XGetWindowProperty(display, DefaultRootWindow(display), check, 0, 1, False, XA_WINDOW, &type, &format,
                       &count, &rest, &value);
    if (value) XFree(value);
    return count > 0;
}

} // namespace

X11Window::X11Window(SDL_Window* window) {
    SDL_SysWMinfo info;
    SDL_VERSION(&info.version);
    if (!window || !SDL_GetWindowWMInfo(window, &info) || info.subsystem != SDL_SYSWM_X11) return;
    display_ = info.info.x11.display;
    window_ = info.info.x11.window;
}

void X11Window::wish(Wishes const& wishes) {
    if (!display_) return;
    XSizeHints hints{};
    XY<int> const least = wishes.fixedSize.value_or(wishes.leastSize);
    // With static gravity all places are those of the contents, not of the frame.
    hints.flags = PMinSize | PWinGravity;
    hints.win_gravity = StaticGravity;
    hints.min_width = least.x;
    hints.min_height = least.y;
    if (wishes.fixedSize) {
        hints.flags |= PMaxSize;
        hints.max_width = least.x;
        hints.max_height = least.y;
    }
    if (wishes.isPlaced) hints.flags |= USPosition | PPosition;
    XSetWMNormalHints(display_, window_, &hints);
}

void X11Window::belongTo(X11Window const& owner) {
    if (display_ && owner.window_) XSetTransientForHint(display_, window_, owner.window_);
}

void X11Window::setModal(bool modal, bool isFixed) {
    if (!display_) return;
    auto const atom = [this](char const* name) { return XInternAtom(display_, name, False); };
    auto const put = [this](Atom property, Atom type, unsigned long const* values, int count) {
        XChangeProperty(display_, window_, property, type, 32, PropModeReplace,
                        reinterpret_cast<unsigned char const*>(values), count);
    };
    Atom const kind = atom(modal ? "_NET_WM_WINDOW_TYPE_DIALOG" : "_NET_WM_WINDOW_TYPE_NORMAL");
    put(atom("_NET_WM_WINDOW_TYPE"), XA_ATOM, &kind, 1);
    // What the user may do with it. In the common hints, flag 1 stands for functions and flag 2 for parts of
    // the frame.
    constexpr unsigned long all = 1, resize = 2, move = 4, close = 32;
    constexpr unsigned long border = 2, handles = 4, title = 8, menu = 16;
    unsigned long const sizing = isFixed ? 0 : resize;
    unsigned long const limited[] = {3, move | close | sizing,
                                     border | title | menu | (isFixed ? 0 : handles), 0, 0};
    unsigned long const free[] = {3, all, all, 0, 0};
    Atom const hints = atom("_MOTIF_WM_HINTS");
    put(hints, hints, modal ? limited : free, 5);
    setState(atom("_NET_WM_STATE_MODAL"), modal);
    XFlush(display_);
}

/// Before it is shown the property is read; later the window manager wants to be asked.
void X11Window::setState(unsigned long state, bool on) {
    Atom const property = XInternAtom(display_, "_NET_WM_STATE", False);
    XWindowAttributes attributes{};
    bool const isShown =
        XGetWindowAttributes(display_, window_, &attributes) && attributes.map_state != IsUnmapped;
    if (!isShown && on) {
        XChangeProperty(display_, window_, property, XA_ATOM, 32, PropModeAppend,
                        reinterpret_cast<unsigned char const*>(&state), 1);
        return;
    }
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = window_;
    event.xclient.message_type = property;
    event.xclient.format = 32;
    event.xclient.data.l[0] = on ? 1 : 0;
    event.xclient.data.l[1] = static_cast<long>(state);
    event.xclient.data.l[3] = 1;
    XSendEvent(display_, DefaultRootWindow(display_), False,
               SubstructureRedirectMask | SubstructureNotifyMask, &event);
}

void X11Window::show() {
    if (!display_) return;
    XMapRaised(display_, window_);
    XFlush(display_);
}

void X11Window::hide() {
    if (!display_) return;
    XWithdrawWindow(display_, window_, DefaultScreen(display_));
    XFlush(display_);
}

void X11Window::toFront() {
    if (!display_) return;
    XRaiseWindow(display_, window_);
    XFlush(display_);
}

void X11Window::resize(XY<int> size) {
    if (!display_) return;
    XResizeWindow(display_, window_, static_cast<unsigned>(size.x), static_cast<unsigned>(size.y));
    XFlush(display_);
}

void X11Window::move(XY<int> corner) {
    if (!display_) return;
    XMoveWindow(display_, window_, corner.x, corner.y);
    XFlush(display_);
}

void X11Window::focusUnmanaged() {
    if (!display_ || hasWindowManager(display_)) return;
    XSetInputFocus(display_, window_, RevertToPointerRoot, CurrentTime);
    XFlush(display_);
}

void X11Window::pretendRelease(unsigned button) {
    if (!display_) return;
    XEvent event{};
    event.xbutton.type = ButtonRelease;
    event.xbutton.window = window_;
    event.xbutton.root = DefaultRootWindow(display_);
    event.xbutton.button = button;
    event.xbutton.same_screen = True;
    XSendEvent(display_, window_, False, NoEventMask, &event);
    XSync(display_, False);
}

} // namespace wainscot
