#include "host/start/host.h"

#include "host/backends/offscreen/offscreen_backend.h"
#include "host/base/diagnostics.h"
#include "host/base/host_value.h"
#include "host/events/dispatch_scope.h"
#include "host/events/event_system.h"
#include "host/events/keybinding_manager.h"
#include "host/services/clipboard.h"
#include "host/services/clock.h"
#include "host/services/command_map.h"
#include "host/services/folder_watch.h"
#include "host/services/preferences.h"
#include "host/start/desktop_loader_p.h"
#include "host/windows/backend.h"
#include "host/windows/event_loop.h"
#include "host/windows/glob_manager.h"

#include <stdexcept>

namespace wainscot {

namespace {

/// A call of the services, which know no events.
class ServiceCall final : public EventQueue::Call {
public:
    explicit ServiceCall(FolderWatchService::Call call) : call_(std::move(call)) {}
    void run() override { call_(); }

private:
    FolderWatchService::Call call_;
};

FolderWatchService::Deliver through(std::shared_ptr<ThreadInbox> inbox) {
    return [inbox = std::move(inbox)](FolderWatchService::Call call) {
        inbox->post(Qv::Ptr<EventQueue::Call>(new ServiceCall(std::move(call))));
    };
}

} // namespace

/// What a host is made of, in the order in which it is made.
struct Host::Parts {
    ~Parts() {
        loop.reset();
        windows.reset();
        folders.reset();
        events.reset();
        keyBindings.reset();
        commands.reset();
        preferences.reset();
        iClipboard::install(nullptr);
        iClock::install(nullptr);
        HostValueBase::resetAll();
    }

    std::unique_ptr<Backend> backend;
    std::unique_ptr<EditorPreferences> preferences;
    std::unique_ptr<CommandMap> commands;
    std::unique_ptr<KeybindingManager> keyBindings;
    std::unique_ptr<EventSystem> events;
    std::unique_ptr<FolderWatchService> folders;
    std::unique_ptr<GlobManager> windows;
    std::unique_ptr<EventLoop> loop;
};

Host::Host(int, char**, HostSettings const& settings) : settings_(settings) {
    if (EventSystem::current()) throw std::logic_error("wainscot: only one host may live at a time");
    parts_ = std::make_shared<Parts>();
    openBackend();
    Backend& backend = *parts_->backend;
    iClock::install(&backend.clock());
    iClipboard::install(&backend.clipboard());
    openPreferences();
    parts_->commands = std::make_unique<CommandMap>();
    parts_->keyBindings = std::make_unique<KeybindingManager>();
    parts_->events = std::make_unique<EventSystem>([&backend] { backend.wake(); });
    parts_->folders = std::make_unique<FolderWatchService>(through(parts_->events->inbox));
    parts_->windows = std::make_unique<GlobManager>(backend);
    parts_->loop = std::make_unique<EventLoop>(backend, *parts_->events, *parts_->windows);
}

void Host::openBackend() {
    if (settings_.screen == HostSettings::Screen::desktop) parts_->backend = loadDesktopBackend(problem_);
    if (parts_->backend) return;
    auto offscreen = std::make_unique<OffscreenBackend>(settings_.deviceScale);
    offscreen_ = offscreen.get();
    parts_->backend = std::move(offscreen);
}

void Host::openPreferences() {
    bool const onScreen = settings_.screen == HostSettings::Screen::desktop;
    using Storage = EditorPreferences::Storage;
    parts_->preferences =
        std::make_unique<EditorPreferences>(settings_.name, onScreen ? Storage::file : Storage::memory);
    if (!settings_.preferenceFolder.empty()) parts_->preferences->setFolder(settings_.preferenceFolder);
}

Host::~Host() {
    EventLoop& ended = loop();
    if (!DispatchScope::isActive() && !ended.isTurning()) return;
    Diagnostics::count("host destroyed inside a handler", settings_.name.c_str());
    if (ended.isTurning()) {
        ended.endWith(std::move(parts_));
        return;
    }
    auto const end = [](void* last) { delete static_cast<std::shared_ptr<Parts>*>(last); };
    DispatchScope::freeWhenUnwound(end, new std::shared_ptr<Parts>(std::move(parts_)));
}

EventLoop& Host::loop() {
    return *parts_->loop;
}

GlobManager& Host::globManager() {
    return *parts_->windows;
}

Backend& Host::backend() {
    return *parts_->backend;
}

int Host::run() {
    if (problem_.empty()) return loop().run();
    vex_printf("%s: no display can be used (%s); start it in a desktop session, or set DISPLAY.",
               settings_.name.empty() ? "wainscot" : settings_.name.c_str(), problem_.c_str());
    return 1;
}

void Host::quit(int code) {
    loop().quit(code);
}

VirtualClock* Host::virtualClock() const {
    return offscreen_ ? &offscreen_->virtualClock() : nullptr;
}

bool Host::hasScreen() const {
    return offscreen_ == nullptr;
}

} // namespace wainscot
