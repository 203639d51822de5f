#include "driver/windows/window_bench.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <deque>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace wainscot {

namespace {

namespace fs = std::filesystem;

/// Windows vanish while they are looked at; that is no reason to end the test program.
int ignoreError(Display*, XErrorEvent*) {
    return 0;
}

/// Nor is a server that dies: then all that is asked of it fails.
int ignoreEnd(Display*) {
    return 0;
}

void goOn(Display*, void*) {}

/// The value of a window's property as bytes (items of 32 bits are longs); empty when it has none.
std::string property(Display* display, Window window, char const* name) {
    Atom type = None;
    int format = 0;
    unsigned long count = 0, rest = 0;
    unsigned char* value = nullptr;
    constexpr long mostItems = 1024;
    int const status = XGetWindowProperty(display, window, XInternAtom(display, name, False), 0, mostItems,
                                          False, AnyPropertyType, &type, &format, &count, &rest, &value);
    if (status != Success || !value) return {};
    std::size_t const itemSize = format == 32 ? sizeof(long) : static_cast<std::size_t>(format) / 8;
    std::string const bytes(reinterpret_cast<char const*>(value), count * itemSize);
    XFree(value);
    return bytes;
}

Window windowProperty(Display* display, Window window, char const* name) {
    std::string const bytes = property(display, window, name);
    unsigned long value = 0;
    if (bytes.size() >= sizeof value) bytes.copy(reinterpret_cast<char*>(&value), sizeof value);
    return value;
}

std::vector<Window> childrenOf(Display* display, Window window) {
    Window root = None, parent = None;
    Window* children = nullptr;
    unsigned int count = 0;
    if (!XQueryTree(display, window, &root, &parent, &children, &count)) return {};
    std::vector<Window> const found(children, children + count);
    if (children) XFree(children);
    return found;
}

std::string windowTitle(Display* display, Window window) {
    std::string const title = property(display, window, "_NET_WM_NAME");
    return title.empty() ? property(display, window, "WM_NAME") : title;
}

Window searchTitle(Display* display, std::string const& title) {
    std::deque<Window> open{DefaultRootWindow(display)};
    for (; !open.empty(); open.pop_front()) {
        if (windowTitle(display, open.front()) == title) return open.front();
        for (Window const child : childrenOf(display, open.front())) open.push_back(child);
    }
    return None;
}

/// The client message of a window manager, or of a program that drags something.
XEvent clientMessage(Display* display, Window window, char const* name, std::array<long, 4> const& values) {
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = XInternAtom(display, name, False);
    event.xclient.format = 32;
    std::copy(values.begin(), values.end(), event.xclient.data.l);
    return event;
}

void passOn(ChildProcess::Environment& environment, char const* name) {
    if (char const* const value = std::getenv(name)) environment[name] = value;
}

} // namespace

WindowBench::WindowBench(WindowManager windowManager, int bitsPerPixel) {
    if (!makeHome() || !startServer(bitsPerPixel)) return;
    if (windowManager == WindowManager::openbox && !startWindowManager()) return;
    auto const trial = launch({"xdotool", "version"});
    if (trial->waitForExit() != 0) problem_ = whyNot(*trial, "xdotool");
}

WindowBench::~WindowBench() {
    if (display_) XCloseDisplay(display_);
    windowManager_.reset();
    server_.reset();
    std::error_code problem;
    if (!folder_.empty()) fs::remove_all(folder_, problem);
}

bool WindowBench::makeHome() {
    std::string name = (fs::temp_directory_path() / "wainscot-bench-XXXXXX").string();
    if (!mkdtemp(name.data())) {
        problem_ = "no temporary folder";
        return false;
    }
    folder_ = name;
    environment_ = {{"HOME", folder_}, {"TZ", "UTC"}, {"LC_ALL", "C.UTF-8"}, {"LANG", "C.UTF-8"}};
    for (auto const& [variable, place] : {std::pair{"XDG_CONFIG_HOME", "config"},
                                          {"XDG_DATA_HOME", "data"},
                                          {"XDG_CACHE_HOME", "cache"},
                                          {"XDG_STATE_HOME", "state"},
                                          {"XDG_RUNTIME_DIR", "run"}}) {
        std::string const path = folder_ + "/" + place;
        fs::create_directory(path);
        fs::permissions(path, fs::perms::owner_all);
        environment_[variable] = path;
    }
    // A program of a test must not reach the user's services, nor start its own.
    environment_["DBUS_SESSION_BUS_ADDRESS"] = "disabled:";
    for (char const* const variable : {"PATH", "LD_LIBRARY_PATH", "ASAN_OPTIONS", "LSAN_OPTIONS",
                                       "UBSAN_OPTIONS", "TSAN_OPTIONS", "WAINSCOT_DATA_DIR"})
        passOn(environment_, variable);
    return true;
}

bool WindowBench::startServer(int bitsPerPixel) {
    std::ostringstream screen;
    screen << screenSize().x << "x" << screenSize().y << "x" << bitsPerPixel;
    // The server chooses a free number and writes it to its standard output.
    server_ =
        launch({"Xvfb", "-displayfd", "1", "-noreset", "-nolisten", "tcp", "-screen", "0", screen.str()});
    std::string const number = server_->waitForLine("");
    if (number.empty()) {
        problem_ = whyNot(*server_, "Xvfb");
        return false;
    }
    environment_["DISPLAY"] = ":" + number;
    XSetErrorHandler(ignoreError);
    XSetIOErrorHandler(ignoreEnd);
    display_ = XOpenDisplay(environment_["DISPLAY"].c_str());
    if (!display_) {
        problem_ = "Xvfb does not answer";
        return false;
    }
    XSetIOErrorExitHandler(display_, goOn, nullptr);
    return true;
}

/// Asks for the exit code of a program only when it has ended.
std::string WindowBench::whyNot(ChildProcess& program, std::string const& name) const {
    if (!program.isRunning() && program.waitForExit() == ChildProcess::notStarted)
        return name + " is not installed";
    return name + " does not start: " + errors();
}

bool WindowBench::startWindowManager() {
    // Nothing moves in its own time; all else is as the program has it without a configuration.
    std::string const configuration = folder_ + "/rc.xml";
    std::ofstream(configuration) << R"(<openbox_config xmlns="http://openbox.org/3.4/rc"><theme>
<animateIconify>no</animateIconify></theme></openbox_config>)";
    windowManager_ = launch({"openbox", "--sm-disable", "--config-file", configuration});
    Window const root = DefaultRootWindow(display_);
    auto const isDeclared = [this, root] {
        return windowProperty(display_, root, "_NET_SUPPORTING_WM_CHECK") != None ||
               !windowManager_->isRunning();
    };
    bool isReady = false;
    waitUntil(isDeclared);
    for (std::chrono::milliseconds enough{20}; !isReady && windowManager_->isRunning() && enough < patience;
         enough *= 2)
        isReady = managesNewWindows(enough);
    if (!isReady) problem_ = whyNot(*windowManager_, "openbox");
    return isReady;
}

/// A window manager that is still starting up loses windows that are opened meanwhile, even when it has
/// declared itself present. Whether it works shows only in a window that it shows.
bool WindowBench::managesNewWindows(std::chrono::milliseconds enough) {
    Window const root = DefaultRootWindow(display_);
    Window const trial = XCreateSimpleWindow(display_, root, 0, 0, 10, 10, 0, 0, 0);
    XMapWindow(display_, trial);
    bool const shown = waitUntil([this, trial] { return isViewable(trial); }, enough);
    XDestroyWindow(display_, trial);
    auto const gone = [this, root] { return windowProperty(display_, root, "_NET_CLIENT_LIST") == None; };
    return shown && waitUntil(gone);
}

std::unique_ptr<ChildProcess> WindowBench::launch(std::vector<std::string> const& words) {
    return std::make_unique<ChildProcess>(words, environment_, folder_ + "/errors");
}

bool WindowBench::run(std::vector<std::string> const& words) {
    return works() && launch(words)->waitForExit() == 0;
}

std::unique_ptr<ChildProcess> WindowBench::start(std::vector<std::string> words) {
    if (!works()) words.clear();
    if (!words.empty() && words.front().find('/') == std::string::npos)
        words.front() = besideTests(words.front());
    return launch(words);
}

std::string WindowBench::besideTests(std::string const& name) {
    return (fs::read_symlink("/proc/self/exe").parent_path() / name).lexically_normal().string();
}

std::string WindowBench::errors() const {
    std::ostringstream text;
    text << std::ifstream(folder_ + "/errors").rdbuf();
    return text.str();
}

bool WindowBench::xdotool(std::vector<std::string> const& words) {
    std::vector<std::string> all{"xdotool"};
    all.insert(all.end(), words.begin(), words.end());
    return run(all);
}

bool WindowBench::key(std::vector<std::string> const& names) {
    // In one run xdotool may take the modifiers of one key for held when it sends the next.
    return std::all_of(names.begin(), names.end(), [this](std::string const& name) {
        return xdotool({"key", "--delay", "0", name});
    });
}

bool WindowBench::movePointer(XY<int> place) {
    return xdotool({"mousemove", std::to_string(place.x), std::to_string(place.y)});
}

bool WindowBench::glidePointer(XY<int> from, XY<int> to) {
    constexpr int steps = 10;
    std::vector<std::string> words;
    for (int i = 1; i <= steps; ++i) {
        words.emplace_back("mousemove");
        words.push_back(std::to_string(from.x + (to.x - from.x) * i / steps));
        words.push_back(std::to_string(from.y + (to.y - from.y) * i / steps));
    }
    return xdotool(words);
}

std::optional<XY<int>> WindowBench::grabCorner(WindowId window) {
    constexpr int pull = 8;
    if (!settle()) return {};
    XY<int> const size = sizeOf(window);
    // Just outside the contents.
    XY<int> const corner = placeOf(window) + size + XY<int>{0, 3};
    XY<int> pulled = corner + XY<int>{pull, pull};
    if (!movePointer(corner) || !pressButton()) return {};
    glidePointer(corner, pulled);
    // Only what comes after it has seen that the pointer was dragged moves the corner.
    auto const follows = [&] {
        pulled = pulled + XY<int>{1, 1};
        return movePointer(pulled) && sizeOf(window).x > size.x;
    };
    if (waitUntil(follows)) return pulled;
    releaseButton();
    return {};
}

/// The server holds all input back until the window manager lets a press pass, and meanwhile loses a release
/// that is followed by another press of the same button.
bool WindowBench::pressButton(int button) {
    return xdotool({"mousedown", std::to_string(button)}) && settle();
}

bool WindowBench::releaseButton(int button) {
    return xdotool({"mouseup", std::to_string(button)});
}

bool WindowBench::click(int button) {
    return pressButton(button) && releaseButton(button);
}

bool WindowBench::wheel(int notches) {
    constexpr char const* up = "4";
    constexpr char const* down = "5";
    return xdotool(
        {"click", "--delay", "0", "--repeat", std::to_string(std::abs(notches)), notches > 0 ? up : down});
}

bool WindowBench::setLayout(std::string const& layout) {
    return run({"setxkbmap", "-layout", layout});
}

void WindowBench::setResources(std::string const& text) {
    if (!works()) return;
    XChangeProperty(display_, DefaultRootWindow(display_), XA_RESOURCE_MANAGER, XA_STRING, 8, PropModeReplace,
                    reinterpret_cast<unsigned char const*>(text.data()), static_cast<int>(text.size()));
    XSync(display_, False);
}

WindowBench::WindowId WindowBench::findWindow(std::string const& title) {
    Window found = None;
    if (!works()) return found;
    bool const isShown = waitUntil([&] {
        found = searchTitle(display_, title);
        return found != None && isViewable(found);
    });
    return isShown && settle() ? found : None;
}

/// It tells a window how wide its frame would be, and does one thing after the other.
bool WindowBench::settle() {
    if (!works() || !windowManager_) return works();
    Window const asking = XCreateSimpleWindow(display_, DefaultRootWindow(display_), 0, 0, 1, 1, 0, 0, 0);
    tellWindowManager(asking, "_NET_REQUEST_FRAME_EXTENTS", 0, 0);
    bool const isAnswered =
        waitUntil([&] { return !property(display_, asking, "_NET_FRAME_EXTENTS").empty(); });
    XDestroyWindow(display_, asking);
    return isAnswered;
}

/// Nobody but the holder could take it.
bool WindowBench::waitForFreePointer() {
    return works() && waitUntil([&] {
               int const answer = XGrabPointer(display_, DefaultRootWindow(display_), False, 0, GrabModeAsync,
                                               GrabModeAsync, None, None, CurrentTime);
               if (answer == GrabSuccess) XUngrabPointer(display_, CurrentTime);
               XSync(display_, False);
               return answer == GrabSuccess;
           });
}

std::string WindowBench::titleOf(WindowId window) {
    return works() ? windowTitle(display_, window) : std::string();
}

XY<int> WindowBench::placeOf(WindowId window) {
    XY<int> place;
    Window child = None;
    if (!works()) return place;
    XTranslateCoordinates(display_, window, DefaultRootWindow(display_), 0, 0, &place.x, &place.y, &child);
    return place;
}

XY<int> WindowBench::sizeOf(WindowId window) {
    XWindowAttributes attributes{};
    if (works()) XGetWindowAttributes(display_, window, &attributes);
    return {attributes.width, attributes.height};
}

int WindowBench::depthOf(WindowId window) {
    XWindowAttributes attributes{};
    if (works()) XGetWindowAttributes(display_, window, &attributes);
    return attributes.depth;
}

void WindowBench::pretendCompositor() {
    if (!works()) return;
    Window const owner = XCreateSimpleWindow(display_, DefaultRootWindow(display_), 0, 0, 1, 1, 0, 0, 0);
    XSetSelectionOwner(display_, XInternAtom(display_, "_NET_WM_CM_S0", False), owner, CurrentTime);
    XSync(display_, False);
}

bool WindowBench::isViewable(WindowId window) {
    XWindowAttributes attributes{};
    if (works()) XGetWindowAttributes(display_, window, &attributes);
    return attributes.map_state == IsViewable;
}

bool WindowBench::isActive(WindowId window) {
    Window focus = None;
    int revert = 0;
    if (!works()) return false;
    XGetInputFocus(display_, &focus, &revert);
    return focus == window;
}

void WindowBench::tellWindowManager(WindowId window, char const* message, long first, long second) {
    if (!works()) return;
    XEvent event = clientMessage(display_, window, message, {first, second});
    XSendEvent(display_, DefaultRootWindow(display_), False,
               SubstructureRedirectMask | SubstructureNotifyMask, &event);
    XSync(display_, False);
}

void WindowBench::requestClose(WindowId window) {
    constexpr long fromPager = 2;
    tellWindowManager(window, "_NET_CLOSE_WINDOW", CurrentTime, fromPager);
}

void WindowBench::activate(WindowId window) {
    constexpr long fromPager = 2;
    tellWindowManager(window, "_NET_ACTIVE_WINDOW", fromPager, CurrentTime);
}

void WindowBench::tellDragged(WindowId window, char const* message, long second, long third, long fourth) {
    auto const source = static_cast<long>(DefaultRootWindow(display_));
    XEvent event = clientMessage(display_, window, message, {source, second, third, fourth});
    XSendEvent(display_, window, False, NoEventMask, &event);
    XSync(display_, False);
}

void WindowBench::dragFilesOver(WindowId window, XY<int> place) {
    if (!works()) return;
    constexpr long version = 5L << 24;
    auto const files = static_cast<long>(XInternAtom(display_, "text/uri-list", False));
    tellDragged(window, "XdndEnter", version, files, 0);
    tellDragged(window, "XdndPosition", 0, (static_cast<long>(place.x) << 16) | place.y, CurrentTime);
}

void WindowBench::dragFilesAway(WindowId window) {
    if (!works()) return;
    tellDragged(window, "XdndLeave", 0, 0, 0);
}

void WindowBench::minimise(WindowId window) {
    if (!works()) return;
    XIconifyWindow(display_, window, DefaultScreen(display_));
    XSync(display_, False);
}

std::uint32_t WindowBench::colourAt(XY<int> place) {
    if (!works()) return 0;
    XImage* const image =
        XGetImage(display_, DefaultRootWindow(display_), place.x, place.y, 1, 1, AllPlanes, ZPixmap);
    if (!image) return 0;
    auto const colour = static_cast<std::uint32_t>(XGetPixel(image, 0, 0) & 0xFFFFFF);
    XDestroyImage(image);
    return colour;
}

bool WindowBench::waitForColour(XY<int> place, std::uint32_t colour) {
    return waitUntil([this, place, colour] { return colourAt(place) == colour; });
}

bool WindowBench::waitForColour(WindowId window, XY<int> place, std::uint32_t colour) {
    return waitUntil([=, this] { return colourAt(placeOf(window) + place) == colour; });
}

} // namespace wainscot
