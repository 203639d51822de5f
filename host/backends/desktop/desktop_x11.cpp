#include "host/backends/desktop/desktop_x11_p.h"

#include "host/base/convert.h"
#include "host/base/diagnostics.h"

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/keysym.h>

#include <cstring>
#include <memory>

namespace wainscot {

namespace {

using KeyboardPtr = std::unique_ptr<XkbDescRec, void (*)(XkbDescPtr)>;

KeyboardPtr readKeyboard(Display* display) {
    XkbDescPtr keyboard = XkbGetMap(display, XkbKeySymsMask | XkbKeyTypesMask, XkbUseCoreKbd);
    if (keyboard) XkbGetNames(display, XkbKeyNamesMask, keyboard);
    return {keyboard, [](XkbDescPtr description) {
                if (description) XkbFreeKeyboard(description, XkbAllComponentsMask, True);
            }};
}

/// The code of a key by its name in the keyboard description, at most four characters; 0 when there is no
/// such key.
int findKey(XkbDescRec const& keyboard, char const* name) {
    if (!keyboard.names || !keyboard.names->keys) return 0;
    for (int code = keyboard.min_key_code; code <= keyboard.max_key_code; ++code)
        if (std::strncmp(keyboard.names->keys[code].name, name, XkbKeyNameLength) == 0) return code;
    return 0;
}

int countError(Display* display, XErrorEvent* error) {
    char text[256] = "";
    XGetErrorText(display, error->error_code, text, sizeof text);
    Diagnostics::count("window system error", text);
    return 0;
}

} // namespace

bool probeDisplay(std::string& resources, LightweightString<char>& problem) {
    XInitThreads();
    char const* const name = XDisplayName(nullptr);
    if (!name || !*name) {
        problem = "There is no display: the environment variable DISPLAY is not set.";
        return false;
    }
    Display* const display = XOpenDisplay(nullptr);
    if (!display) {
        problem = LightweightString<char>("No window system answers on the display \"") + name + "\".";
        return false;
    }
    if (char const* const text = XResourceManagerString(display)) resources = text;
    int const depth = DefaultDepth(display, DefaultScreen(display));
    XCloseDisplay(display);
    constexpr int leastDepth = 15;
    if (depth >= leastDepth) return true;
    problem = LightweightString<char>("The display \"") + name + "\" has " + StringFromInteger(depth) +
              " bits for a pixel, which is too few for colours: 16 are needed.";
    return false;
}

int connectionFile(Display* display) {
    return display ? ConnectionNumber(display) : -1;
}

bool hasUnreadEvents(Display* display) {
    return display && XEventsQueued(display, QueuedAfterFlush) > 0;
}

void finishRequests(_XDisplay* display) {
    if (display) XSync(display, False);
}

bool hasCompositor(Display* display) {
    if (!display) return false;
    Atom const manager = XInternAtom(display, "_NET_WM_CM_S0", False);
    return XGetSelectionOwner(display, manager) != None;
}

unsigned long translucentVisual(Display* display) {
    XVisualInfo info;
    constexpr int depthWithAlpha = 32;
    if (!display || !XMatchVisualInfo(display, DefaultScreen(display), depthWithAlpha, TrueColor, &info))
        return 0;
    return info.visualid;
}

unsigned long childAt(Display* display, unsigned long window, XY<int> place) {
    if (!display) return 0;
    Window const root = DefaultRootWindow(display);
    Window child = None;
    int x = 0, y = 0;
    bool const isThere =
        XTranslateCoordinates(display, root, window ? window : root, place.x, place.y, &x, &y, &child);
    return isThere ? child : None;
}

bool isRightAltAltGr(Display* display) {
    if (!display) return false;
    KeyboardPtr const keyboard = readKeyboard(display);
    XkbStateRec state{};
    if (!keyboard || XkbGetState(display, XkbUseCoreKbd, &state) != Success) return false;
    int const code = findKey(*keyboard, "RALT");
    if (code == 0 || XkbKeyNumGroups(keyboard.get(), code) == 0) return false;
    int const group = state.group % XkbKeyNumGroups(keyboard.get(), code);
    KeySym const symbol = XkbKeySymEntry(keyboard.get(), code, 0, group);
    return symbol == XK_ISO_Level3_Shift || symbol == XK_Mode_switch;
}

void countDisplayErrors() {
    XSetErrorHandler(countError);
}

void restoreDisplayErrors() {
    XSetErrorHandler(nullptr);
}

} // namespace wainscot
