#include "host/backends/desktop/desktop_backend_p.h"

#include "host/backends/desktop/desktop_raw_events_p.h"
#include "host/backends/desktop/desktop_window_p.h"
#include "host/backends/desktop/desktop_x11_p.h"
#include "host/base/convert.h"
#include "host/base/diagnostics.h"

#include <SDL.h>

#include <algorithm>
#include <cstdlib>
#include <string>

namespace wainscot {

namespace {

/// How often the library is asked for composed text while text is expected, in milliseconds.
constexpr double compositionPoll = 20.0;

struct Hint {
    char const* name;
    char const* value;
};

/// The library is made for games; these turn off what a desktop application must not do, and what the
/// environment must not change.
constexpr Hint hints[] = {
    // Only X11 lets a program place its pop-ups.
    {SDL_HINT_VIDEODRIVER, "x11"},
    {SDL_HINT_NO_SIGNAL_HANDLERS, "1"},
    // Pixels go to the server directly: less memory, a faster first frame.
    {SDL_HINT_FRAMEBUFFER_ACCELERATION, "0"},
    {SDL_HINT_VIDEO_ALLOW_SCREENSAVER, "1"},
    {SDL_HINT_VIDEO_X11_NET_WM_BYPASS_COMPOSITOR, "0"},
    // The press that activates a window also reaches the object under it.
    {SDL_HINT_MOUSE_FOCUS_CLICKTHROUGH, "1"},
    {SDL_HINT_MOUSE_AUTO_CAPTURE, "1"},
    {SDL_HINT_QUIT_ON_LAST_WINDOW_CLOSE, "0"},
    {SDL_HINT_IME_SHOW_UI, "1"},
};

void setHints() {
    for (Hint const& hint : hints) SDL_SetHintWithPriority(hint.name, hint.value, SDL_HINT_OVERRIDE);
}

bool startLibrary(LightweightString<char>& problem) {
    setHints();
    SDL_SetMainReady();
    if (SDL_Init(SDL_INIT_VIDEO) == 0) return true;
    problem = LightweightString<char>("The window library cannot start: ") + SDL_GetError() + ".";
    return false;
}

std::uint32_t windowFlags(NativeWindowSettings const& settings) {
    std::uint32_t flags = SDL_WINDOW_HIDDEN;
    std::uint32_t const kind =
        settings.kind == NativeWindowSettings::Kind::toolTip ? SDL_WINDOW_TOOLTIP : SDL_WINDOW_POPUP_MENU;
    if (settings.isPopUp()) return flags | kind | SDL_WINDOW_BORDERLESS | SDL_WINDOW_SKIP_TASKBAR;
    if (settings.resizable) flags |= SDL_WINDOW_RESIZABLE;
    return flags;
}

/// The visual of the next window; 0 = that of the screen.
void chooseVisual(unsigned long visual) {
    SDL_SetHint(SDL_HINT_VIDEO_X11_WINDOW_VISUALID, visual ? std::to_string(visual).c_str() : "");
}

} // namespace

DesktopBackend::DesktopBackend(double scale) : space_({}, scale), input_(*this), clipboard_(*this) {
    updateMonitors();
    SDL_StartTextInput();
    RawEvents::watch();
}

std::unique_ptr<DesktopBackend> DesktopBackend::open(LightweightString<char>& problem) {
    if (SDL_WasInit(SDL_INIT_VIDEO)) {
        problem = "The window system is in use already.";
        return nullptr;
    }
    std::string resources;
    if (!probeDisplay(resources, problem)) return nullptr;
    countDisplayErrors();
    if (!startLibrary(problem)) return nullptr;
    double const scale = chooseDeviceScale(std::getenv("WAINSCOT_DEVICE_SCALE"), resources.c_str());
    std::unique_ptr<DesktopBackend> backend(new DesktopBackend(scale));
    if (backend->wakeup_.isGood()) return backend;
    problem = "The system has no event descriptors left.";
    return nullptr;
}

DesktopBackend::~DesktopBackend() {
    for (DesktopWindow* const window : windows_) window->abandon();
    cursors_.close();
    SDL_Quit();
    restoreDisplayErrors();
}

std::unique_ptr<NativeWindow> DesktopBackend::createWindow(NativeWindowSettings const& settings) {
    int const width = std::max(1, toDevice(settings.size.x, space_.scale()));
    int const height = std::max(1, toDevice(settings.size.y, space_.scale()));
    XY<int> corner{static_cast<int>(SDL_WINDOWPOS_UNDEFINED), static_cast<int>(SDL_WINDOWPOS_UNDEFINED)};
    if (settings.place) corner = space_.toDeviceCorner(*settings.place, height);
    chooseVisual(settings.translucent ? translucentVisual(display_) : 0);
    SDL_Window* const handle = SDL_CreateWindow(toUTF8(settings.title).c_str(), corner.x, corner.y, width,
                                                height, windowFlags(settings));
    chooseVisual(0);
    if (!handle) {
        Diagnostics::count("no window", SDL_GetError());
        return nullptr;
    }
    auto window = std::make_unique<DesktopWindow>(*this, handle, settings);
    if (DesktopWindow const* owner = findWindow(settings.owner)) window->belongTo(*owner);
    windows_.push_back(window.get());
    if (!display_) display_ = window->display();
    return window;
}

void DesktopBackend::poll(std::vector<InputEvent>& input) {
    SDL_PumpEvents();
    SDL_Event event;
    while (SDL_PeepEvents(&event, 1, SDL_GETEVENT, SDL_FIRSTEVENT, SDL_LASTEVENT) > 0)
        input_.translate(event, input);
    input_.endOfInput(input);
}

void DesktopBackend::wait(std::optional<double> until) {
    if (SDL_HasEvents(SDL_FIRSTEVENT, SDL_LASTEVENT) || hasUnreadEvents(display_)) return;
    std::optional<double> milliseconds;
    if (until) milliseconds = *until - clock_.msecs();
    if (input_.awaitsComposition())
        milliseconds = std::min(milliseconds.value_or(compositionPoll), compositionPoll);
    wakeup_.sleep(connectionFile(display_), milliseconds);
}

void DesktopBackend::setTextCaret(std::optional<IntBox> caret) {
    if (!caret) return SDL_ClearComposition();
    SDL_Window* const focus = SDL_GetKeyboardFocus();
    DesktopWindow const* const window = focus ? findWindow(SDL_GetWindowID(focus)) : nullptr;
    if (!window) return;
    // The library wants it in the window's own pixels, y downwards.
    SDL_Rect const box{toDevice(caret->x1 - window->box().x1, space_.scale()),
                       toDevice(window->box().y2 - caret->y2, space_.scale()),
                       toDevice(caret->width(), space_.scale()), toDevice(caret->height(), space_.scale())};
    SDL_SetTextInputRect(&box);
}

void DesktopBackend::updateMonitors() {
    monitors_.clear();
    for (int i = 0; i < SDL_GetNumVideoDisplays(); ++i) {
        SDL_Rect bounds;
        if (SDL_GetDisplayBounds(i, &bounds) == 0)
            monitors_.push_back({bounds.x, bounds.y, bounds.w, bounds.h});
    }
    if (monitors_.empty()) monitors_.push_back({0, 0, 1024, 768});
    DeviceRect desktop = monitors_.front();
    for (DeviceRect const& monitor : monitors_) desktop = desktop.unitedWith(monitor);
    desktop_ = desktop;
    space_ = RootSpace(desktop, space_.scale());
}

void DesktopBackend::setDeviceScale(double scale) {
    if (!(scale > 0.0) || scale == space_.scale()) return;
    double const factor = scale / space_.scale();
    space_ = RootSpace(desktop_, scale);
    for (DesktopWindow* const window : windows_) window->rescale(factor);
}

DesktopWindow* DesktopBackend::windowShownAt(XY<int> place) const {
    XY<int> const pixel = space_.toDeviceCorner(place, 1);
    unsigned long shown = 0;
    while ((shown = childAt(display_, shown, pixel)) != 0)
        for (DesktopWindow* const window : windows_)
            if (window->isNative(shown)) return window;
    return nullptr;
}

XY<int> DesktopBackend::largestDeviceSize() const {
    XY<int> most{1, 1};
    for (DeviceRect const& monitor : monitors_)
        most = {std::max(most.x, monitor.width), std::max(most.y, monitor.height)};
    return most;
}

std::vector<IntBox> DesktopBackend::monitors() const {
    std::vector<IntBox> boxes;
    for (DeviceRect const& monitor : monitors_) boxes.push_back(space_.toRoot(monitor));
    return boxes;
}

DesktopWindow* DesktopBackend::findWindow(NativeWindowId id) const {
    auto const found = std::find_if(windows_.begin(), windows_.end(),
                                    [id](DesktopWindow const* window) { return window->id() == id; });
    return found == windows_.end() ? nullptr : *found;
}

void DesktopBackend::forget(DesktopWindow const& window) {
    std::erase(windows_, &window);
    input_.forget(window.id());
}

} // namespace wainscot
