#include "host/backends/desktop/desktop_raw_events_p.h"

#include <SDL_mouse.h>
#include <SDL_syswm.h>
#include <X11/Xatom.h>
#include <X11/Xlib.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <vector>

namespace wainscot {

namespace {

XEvent const* xEvent(SDL_SysWMEvent const& event) {
    return event.msg && event.msg->subsystem == SDL_SYSWM_X11 ? &event.msg->msg.x11.event : nullptr;
}

bool movesWithoutButton(XEvent const& event) {
    constexpr unsigned buttons = Button1Mask | Button2Mask | Button3Mask;
    if (event.type == MotionNotify) return (event.xmotion.state & buttons) == 0;
    return event.type == EnterNotify && (event.xcrossing.state & buttons) == 0;
}

std::uint32_t seeminglyHeld() {
    return SDL_GetMouseState(nullptr, nullptr) & (SDL_BUTTON_LMASK | SDL_BUTTON_MMASK | SDL_BUTTON_RMASK);
}

/// The library hears no press of a button that it believes held, and the next press may already wait behind
/// this event. So it has to hear of the release now.
void putBackReleases(XEvent const& seen, std::uint32_t held) {
    for (unsigned button = SDL_BUTTON_LEFT; button <= SDL_BUTTON_RIGHT; ++button) {
        if (!(held & SDL_BUTTON(button))) continue;
        XEvent release{};
        release.xbutton.type = ButtonRelease;
        release.xbutton.display = seen.xany.display;
        release.xbutton.window = seen.xany.window;
        release.xbutton.root = DefaultRootWindow(seen.xany.display);
        release.xbutton.button = button;
        release.xbutton.same_screen = True;
        XPutBackEvent(seen.xany.display, &release);
    }
}

/// Called for every event; only useful events are kept.
int SDLCALL isOfUse(void*, SDL_Event* event) {
    if (event->type != SDL_SYSWMEVENT) return 1;
    XEvent const* const x = xEvent(event->syswm);
    if (!x) return 0;
    std::uint32_t const held = seeminglyHeld();
    if (held == 0 || !movesWithoutButton(*x)) return x->type == ClientMessage;
    putBackReleases(*x, held);
    return 1;
}

/// More than three kinds of data are listed in a property of their source.
std::vector<Atom> listedKinds(Display* display, Window source) {
    Atom type = None;
    int format = 0;
    unsigned long count = 0, rest = 0;
    unsigned char* value = nullptr;
    constexpr long most = 256;
    XGetWindowProperty(display, source, XInternAtom(display, "XdndTypeList", False), 0, most, False, XA_ATOM,
                       &type, &format, &count, &rest, &value);
    std::vector<Atom> kinds(format == 32 ? count : 0);
    if (!kinds.empty()) std::memcpy(kinds.data(), value, count * sizeof(Atom));
    if (value) XFree(value);
    return kinds;
}

bool offersFiles(XClientMessageEvent const& enter) {
    Atom const files = XInternAtom(enter.display, "text/uri-list", False);
    bool const isListed = (enter.data.l[1] & 1) != 0;
    std::vector<Atom> kinds;
    if (isListed)
        kinds = listedKinds(enter.display, static_cast<Window>(enter.data.l[0]));
    else
        for (int i = 2; i < 5; ++i) kinds.push_back(static_cast<Atom>(enter.data.l[i]));
    return std::find(kinds.begin(), kinds.end(), files) != kinds.end();
}

} // namespace

void RawEvents::watch() {
    SDL_SetEventFilter(isOfUse, nullptr);
    SDL_EventState(SDL_SYSWMEVENT, SDL_ENABLE);
}

bool RawEvents::hasNoButton(SDL_SysWMEvent const& event) {
    XEvent const* const x = xEvent(event);
    return x && movesWithoutButton(*x);
}

std::optional<RawEvents::FilesOver> RawEvents::filesOver(SDL_SysWMEvent const& event) {
    XEvent const* const x = xEvent(event);
    if (!x || x->type != ClientMessage) return {};
    XClientMessageEvent const& message = x->xclient;
    auto const is = [&](char const* name) {
        return message.message_type == XInternAtom(message.display, name, False);
    };
    if (is("XdndEnter")) hasFiles_ = offersFiles(message);
    if (!hasFiles_) return {};
    if (is("XdndLeave")) return FilesOver{};
    if (!is("XdndPosition")) return {};
    constexpr int half = 16, mask = 0xFFFF;
    int const packed = static_cast<int>(message.data.l[2]);
    return FilesOver{message.window, XY<int>{(packed >> half) & mask, packed & mask}};
}

} // namespace wainscot
