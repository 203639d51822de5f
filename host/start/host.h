#pragma once

#include "host/base/lightweight_string.h"

#include <memory>

namespace wainscot {

class Backend;
class EventLoop;
class GlobManager;
class OffscreenBackend;
class VirtualClock;

/// How a program wants to start.
struct HostSettings {
    /// The name of the program: it names the folder of its preferences and stands before its messages.
    LightweightString<char> name;
    enum class Screen : unsigned char {
        /// Real windows.
        desktop,
        /// Windows in memory, with clocks that only move when they are moved.
        offscreen,
    };
    Screen screen = Screen::desktop;
    /// Device pixels in a logical pixel, for the offscreen kind only.
    double deviceScale = 1.0;
    /// The folder of the preferences (UTF-8 path) instead of the folder of the name. Without it the offscreen
    /// kind keeps them in memory only.
    LightweightString<char> preferenceFolder;
};

/// The host of a program: made first in `main`, destroyed last. One lives at a time.
class WAINSCOT_API Host {
public:
    /// Without a usable display the host is offscreen, `hasScreen()` is false, and `problem()` says why.
    /// Throws when another host lives.
    Host(int argc, char** argv, HostSettings const& settings);
    /// Must not be destroyed by one of its own handlers. If that happens it is counted, and the host ends
    /// when the handler and the loop round it have returned; until then no other host can be made.
    ~Host();
    Host(Host const&) = delete;
    Host& operator=(Host const&) = delete;

    /// Runs until the last window has closed or `quit()` is called. When a screen was wanted and there is
    /// none, it prints that and answers 1 at once.
    int run();
    void quit(int code = 0);

    /// Whether real windows are shown.
    bool hasScreen() const;
    /// Why there is no screen although one was wanted; empty else.
    LightweightString<char> const& problem() const { return problem_; }
    LightweightString<char> const& name() const { return settings_.name; }

    /// The parts of the host.
    EventLoop& loop();
    GlobManager& globManager();
    Backend& backend();
    /// The clocks of a host without a screen, which move only when they are moved; null with real windows.
    VirtualClock* virtualClock() const;
    /// Null with real windows.
    OffscreenBackend* offscreen() const { return offscreen_; }

private:
    struct Parts;
    void openBackend();
    void openPreferences();

    HostSettings settings_;
    LightweightString<char> problem_;
    OffscreenBackend* offscreen_ = nullptr;
    /// Outlives the host when it is destroyed inside a handler.
    std::shared_ptr<Parts> parts_;
};

} // namespace wainscot
