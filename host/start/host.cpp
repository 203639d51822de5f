#include "host/start/host.h"

#include "host/backends/offscreen/offscreen_backend.h"
#include "host/base/diagnostics.h"
#include "host/events/dispatch_scope.h"
#include "host/start/desktop_loader_p.h"

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

Host::Host(int, char**, HostSettings const& settings) : settings_(settings) {
    if (EventSystem::current()) throw std::logic_error("wainscot: only one host may live at a time");
    openBackend();
    iClock::install(&backend_->clock());
    iClipboard::install(&backend_->clipboard());
    openPreferences();
    commands_ = std::make_unique<CommandMap>();
    keyBindings_ = std::make_unique<KeybindingManager>();
    events_ = std::make_unique<EventSystem>([backend = backend_.get()] { backend->wake(); });
    folders_ = std::make_unique<FolderWatchService>(through(events_->inbox));
    windows_ = std::make_unique<GlobManager>(*backend_);
    loop_ = std::make_unique<EventLoop>(*backend_, *events_, *windows_);
}

void Host::openBackend() {
    if (settings_.screen == HostSettings::Screen::desktop) backend_ = loadDesktopBackend(problem_);
    if (backend_) return;
    auto offscreen = std::make_unique<OffscreenBackend>(settings_.deviceScale);
    offscreen_ = offscreen.get();
    backend_ = std::move(offscreen);
}

void Host::openPreferences() {
    bool const onScreen = settings_.screen == HostSettings::Screen::desktop;
    using Storage = EditorPreferences::Storage;
    preferences_ =
        std::make_unique<EditorPreferences>(settings_.name, onScreen ? Storage::file : Storage::memory);
    if (!settings_.preferenceFolder.empty()) preferences_->setFolder(settings_.preferenceFolder);
}

/// What a host is made of, in the order in which it is made.
struct Host::Remains {
    std::unique_ptr<Backend> backend;
    std::unique_ptr<EditorPreferences> preferences;
    std::unique_ptr<CommandMap> commands;
    std::unique_ptr<KeybindingManager> keyBindings;
    std::unique_ptr<EventSystem> events;
    std::unique_ptr<FolderWatchService> folders;
    std::unique_ptr<GlobManager> windows;
    std::unique_ptr<EventLoop> loop;

    ~Remains() {
        loop.reset();
        windows.reset();
        folders.reset();
        events.reset();
        keyBindings.reset();
        commands.reset();
        preferences.reset();
        iClipboard::install(nullptr);
        iClock::install(nullptr);
    }
};

Host::~Host() {
    EventLoop& loop = *loop_;
    std::shared_ptr<Remains> remains(new Remains{
        std::move(backend_), std::move(preferences_), std::move(commands_), std::move(keyBindings_),
        std::move(events_), std::move(folders_), std::move(windows_), std::move(loop_)});
    if (!DispatchScope::isActive() && !loop.isTurning()) return;
    Diagnostics::count("host destroyed inside a handler", settings_.name.c_str());
    if (loop.isTurning()) {
        loop.endWith(std::move(remains));
        return;
    }
    auto const end = [](void* last) { delete static_cast<std::shared_ptr<Remains>*>(last); };
    DispatchScope::freeWhenUnwound(end, new std::shared_ptr<Remains>(std::move(remains)));
}

int Host::run() {
    if (problem_.empty()) return loop_->run();
    vex_printf("%s: no display can be used (%s); start it in a desktop session, or set DISPLAY.",
               settings_.name.empty() ? "wainscot" : settings_.name.c_str(), problem_.c_str());
    return 1;
}

void Host::quit(int code) {
    loop_->quit(code);
}

VirtualClock* Host::virtualClock() const {
    return offscreen_ ? &offscreen_->virtualClock() : nullptr;
}

bool Host::hasScreen() const {
    return offscreen_ == nullptr;
}

} // namespace wainscot
