// A window without a toolkit: opens the desktop module, shows one window and prints each piece of input as a
// line. The window tests drive it, and it shows a developer what the window system reports.
//
//   desktop-probe MODULE [--size W H] [--place X Y] [--min W H]
//
// Commands come on standard input, one a line; see `runCommand`. The program ends when its window is asked to
// close, and when standard input ends.

#include "host/backends/desktop/desktop_module.h"
#include "host/drawing/surface.h"
#include "host/windows/backend.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <iostream>
#include <mutex>
#include <sstream>
#include <string>
#include <thread>

/// There only in a build with the leak sanitizer.
extern "C" int __lsan_do_recoverable_leak_check() __attribute__((weak));

using namespace wainscot;

namespace {

constexpr std::uint32_t contentColour = 0xFF336699;
constexpr std::uint32_t markColour = 0xFFFFCC00;
constexpr int markSize = 8;

char const* nameOf(InputEvent::Kind kind) {
    using Kind = InputEvent::Kind;
    switch (kind) {
    case Kind::pointerMoved:
        return "moved";
    case Kind::pointerPressed:
        return "pressed";
    case Kind::pointerReleased:
        return "released";
    case Kind::pointerLeft:
        return "left";
    case Kind::wheel:
        return "wheel";
    case Kind::sideWheel:
        return "sidewheel";
    case Kind::pressLost:
        return "lost";
    case Kind::filesDragged:
        return "filesover";
    case Kind::zoom:
        return "zoom";
    case Kind::keyPressed:
        return "key";
    case Kind::keyReleased:
        return "keyup";
    case Kind::composedText:
        return "text";
    case Kind::composing:
        return "composing";
    case Kind::filesDropped:
        return "files";
    case Kind::screenChanged:
        return "screen";
    case Kind::windowResized:
        return "resized";
    case Kind::windowMoved:
        return "windowmoved";
    case Kind::windowExposed:
        return "exposed";
    case Kind::windowCloseRequested:
        return "close";
    case Kind::windowActivated:
        return "activated";
    case Kind::windowDeactivated:
        return "deactivated";
    case Kind::windowHidden:
        return "hidden";
    case Kind::windowShown:
        return "shown";
    }
    return "unknown";
}

void say(std::string const& line) {
    std::puts(line.c_str());
    std::fflush(stdout);
}

/// A long text only by its length.
void sayText(LightweightString<char> const& text) {
    say("text " + (text.size() > 1000 ? std::to_string(text.size()) : std::string(text.c_str())));
}

std::string describe(InputEvent const& event, XY<int> windowPlace) {
    char line[256];
    XY<int> const place = event.place - windowPlace;
    std::snprintf(
        line, sizeof line,
        "%s place=%d,%d root=%d,%d size=%dx%d button=%d clicks=%d amount=%d code=%x mods=%x repeat=%d",
        nameOf(event.kind), place.x, place.y, event.place.x, event.place.y, event.size.x, event.size.y,
        static_cast<int>(event.button), event.clicks, event.amount, event.keyCode, event.modifiers,
        event.repeat ? 1 : 0);
    std::string text = line;
    for (wchar_t const character : event.text) text += " U+" + std::to_string(static_cast<long>(character));
    return text;
}

class Probe {
public:
    Probe(std::unique_ptr<Backend> backend, NativeWindowSettings const& settings)
        : backend_(std::move(backend)), window_(backend_->createWindow(settings)),
          surface_(settings.size, backend_->deviceScale()), popUpSurface_({80, 40}, backend_->deviceScale()) {
    }

    int run();

private:
    void readCommands();
    void takeCommands();
    void runCommand(std::string const& line);
    void handle(InputEvent const& event);
    void openPopUp(XY<int> place);
    void paint(NativeWindow& window, Surface& surface) const;

    std::unique_ptr<Backend> backend_;
    std::unique_ptr<NativeWindow> window_;
    Surface surface_;
    std::unique_ptr<NativeWindow> popUp_;
    Surface popUpSurface_;
    std::mutex mutex_;
    std::string commands_;
    std::atomic<bool> ended_ = false;
    int waits_ = 0;
};

/// Fills the window and marks its lower-left and upper-right corners.
void Probe::paint(NativeWindow& window, Surface& surface) const {
    surface.resize(window.size(), backend_->deviceScale());
    int const width = surface.deviceSize().x;
    int const height = surface.deviceSize().y;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            bool const lowerLeft = x < markSize && y >= height - markSize;
            bool const upperRight = x >= width - markSize && y < markSize;
            surface.pixels()[y * surface.stride() + x] = lowerLeft || upperRight ? markColour : contentColour;
        }
    }
    window.present(surface, {surface.bounds()});
}

void Probe::openPopUp(XY<int> place) {
    NativeWindowSettings settings;
    settings.size = popUpSurface_.size();
    settings.place = place;
    settings.kind = NativeWindowSettings::Kind::popUp;
    popUp_ = backend_->createWindow(settings);
    popUp_->show();
}

void Probe::handle(InputEvent const& event) {
    say(describe(event, window_ ? window_->place() : XY<int>{}));
    if (event.kind == InputEvent::Kind::windowResized || event.kind == InputEvent::Kind::windowExposed) {
        if (window_ && event.window == window_->id()) paint(*window_, surface_);
        if (popUp_ && event.window == popUp_->id()) paint(*popUp_, popUpSurface_);
    }
    if (event.kind == InputEvent::Kind::windowCloseRequested) ended_ = true;
}

/// Runs on a thread of its own, so that each command also is a wake-up from another thread.
void Probe::readCommands() {
    std::string line;
    while (std::getline(std::cin, line)) {
        {
            std::lock_guard const lock(mutex_);
            commands_ += line + "\n";
        }
        backend_->wake();
    }
    ended_ = true;
    backend_->wake();
}

void Probe::takeCommands() {
    std::string commands;
    {
        std::lock_guard const lock(mutex_);
        commands.swap(commands_);
    }
    std::istringstream lines(commands);
    for (std::string line; std::getline(lines, line);) runCommand(line);
}

void Probe::runCommand(std::string const& line) {
    std::istringstream words(line);
    std::string name;
    int x = 0, y = 0;
    words >> name >> x >> y;
    if (name == "move") window_->moveTo({x, y});
    if (name == "resize") window_->resize({x, y});
    if (name == "title") window_->setTitle(L"caf\u00e9 \u65e5");
    if (name == "hide") window_->hide();
    if (name == "show") window_->show();
    if (name == "raise") window_->raise();
    if (name == "destroy") window_.reset();
    if (name == "popup") openPopUp({x, y});
    if (name == "popdown") popUp_.reset();
    if (name == "fresh") {
        NativeWindowSettings settings;
        settings.title = L"probe";
        settings.size = surface_.size();
        window_ = backend_->createWindow(settings);
        window_->show();
    }
    // A surface that no longer fits the window, with a box beyond both.
    if (name == "misfit") {
        Surface const other({x, y}, backend_->deviceScale());
        window_->present(other, {IntBox(-50, -50, 5000, 5000)});
    }
    std::string const rest = words.eof() || line.size() <= name.size() ? "" : line.substr(name.size() + 1);
    if (name == "copy") backend_->clipboard().setText(iClipboard::Kind::clipboard, rest.c_str());
    if (name == "copymuch")
        backend_->clipboard().setText(iClipboard::Kind::clipboard, std::string(1000000, 'x').c_str());
    if (name == "select") backend_->clipboard().setText(iClipboard::Kind::selection, rest.c_str());
    if (name == "paste") sayText(backend_->clipboard().text(iClipboard::Kind::clipboard));
    if (name == "insert") sayText(backend_->clipboard().text(iClipboard::Kind::selection));
    if (name == "cursor") backend_->setCursor(static_cast<MouseCursorID>(x));
    if (name == "steps") backend_->setFullMotion(x != 0);
    if (name == "unbounded") backend_->setUnboundedMotion(x != 0);
    if (name == "outside") backend_->setOutsidePresses(x != 0);
    if (name == "above") window_->setKeepAbove(x != 0);
    if (name == "quit") ended_ = true;
    say("done " + name + " waits=" + std::to_string(waits_));
}

int Probe::run() {
    if (!window_) {
        say("no window");
        return 1;
    }
    window_->show();
    IntBox const monitor = backend_->monitors().front();
    char line[128];
    std::snprintf(line, sizeof line, "ready scale=%.2f monitor=%dx%d", backend_->deviceScale(),
                  monitor.width(), monitor.height());
    say(line);
    std::thread reader([this] { readCommands(); });
    std::vector<InputEvent> input;
    while (!ended_) {
        backend_->wait(std::nullopt);
        ++waits_;
        takeCommands();
        input.clear();
        backend_->poll(input);
        for (InputEvent const& event : input) handle(event);
    }
    say("ended");
    // The reader may still be blocked on standard input, so the program cannot end in the usual way.
    reader.detach();
    popUp_.reset();
    window_.reset();
    backend_.reset();
    bool const leaks = __lsan_do_recoverable_leak_check && __lsan_do_recoverable_leak_check() != 0;
    std::_Exit(leaks ? 23 : 0);
}

std::unique_ptr<Backend> openModule(char const* file) {
    void* const module = dlopen(file, RTLD_NOW | RTLD_LOCAL);
    if (!module) {
        say(std::string("cannot open: ") + dlerror());
        return nullptr;
    }
    auto const create = reinterpret_cast<CreateDesktopBackend>(dlsym(module, createDesktopBackendName));
    LightweightString<char> problem;
    std::unique_ptr<Backend> backend(create ? create(problem) : nullptr);
    if (!backend) say(std::string("refused: ") + problem.c_str());
    return backend;
}

NativeWindowSettings readSettings(int count, char** words) {
    NativeWindowSettings settings;
    settings.title = L"probe";
    settings.size = {300, 200};
    auto const pair = [&](int i) { return XY<int>{std::atoi(words[i + 1]), std::atoi(words[i + 2])}; };
    for (int i = 2; i < count; ++i) {
        bool const hasPair = i + 2 < count;
        if (!std::strcmp(words[i], "--size") && hasPair) settings.size = pair(i);
        if (!std::strcmp(words[i], "--place") && hasPair) settings.place = pair(i);
        if (!std::strcmp(words[i], "--min") && hasPair) settings.minSize = pair(i);
    }
    return settings;
}

} // namespace

int main(int count, char** words) {
    if (count < 2) {
        std::fputs("usage: desktop-probe MODULE [--size W H] [--place X Y] [--min W H]\n", stderr);
        return 2;
    }
    std::unique_ptr<Backend> backend = openModule(words[1]);
    if (!backend) return 1;
    return Probe(std::move(backend), readSettings(count, words)).run();
}
