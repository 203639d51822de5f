#include "host/services/folder_watch.h"

#include "host/base/convert.h"
#include "host/base/ui_thread.h"
#include "host/services/folder_changes_p.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <mutex>
#include <poll.h>
#include <signal.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>

namespace wainscot {

namespace {

constinit FolderWatchService* liveService = nullptr;

constexpr std::uint32_t addedMask = IN_CREATE | IN_MOVED_TO;
constexpr std::uint32_t removedMask = IN_DELETE | IN_MOVED_FROM;
constexpr std::uint32_t alteredMask = IN_MODIFY | IN_CLOSE_WRITE | IN_ATTRIB;
constexpr std::uint32_t goneMask = IN_DELETE_SELF | IN_MOVE_SELF | IN_UNMOUNT | IN_IGNORED;
constexpr std::uint32_t wantedMask =
    addedMask | removedMask | alteredMask | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;
/// The limit lets delivery begin although events come faster than they are read.
constexpr int mostReads = 64;

LightweightString<wchar_t> systemReason(int reason) {
    return fromUTF8(LightweightString<char>(std::strerror(reason)));
}

/// A thread that is started in this scope handles no signals; the program's own threads do.
class SignalsBlocked {
public:
    SignalsBlocked() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &before_);
    }
    ~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
    SignalsBlocked(SignalsBlocked const&) = delete;
    SignalsBlocked& operator=(SignalsBlocked const&) = delete;

private:
    sigset_t before_{};
};

} // namespace

struct FolderWatch::Listener {
    LightweightString<wchar_t> folder;
    Handler handler;
    std::weak_ptr<FolderWatchService::Core> core;
    /// The system's number of the watch; negative when there is none.
    int number = -1;
};

/// What the thread and the watches share. The thread only reads events and notes them in `pending_`.
class FolderWatchService::Core : public std::enable_shared_from_this<Core> {
public:
    using ListenerPtr = std::shared_ptr<FolderWatch::Listener>;

    explicit Core(Deliver deliver) : deliver_(std::move(deliver)) {}
    ~Core() {
        stop();
        for (int const descriptor : {events_, end_})
            if (descriptor >= 0) close(descriptor);
    }
    Core(Core const&) = delete;
    Core& operator=(Core const&) = delete;

    /// 0, or the system's reason.
    int add(ListenerPtr const& listener);
    void remove(FolderWatch::Listener const& listener);
    void stop();
    std::size_t numFolders() const { return watched_.size(); }

private:
    int start();
    void run();
    bool hasEnded(int timeout) const;
    void readEvents();
    void note(inotify_event const& event);
    void askForCollection();
    void collect();
    void tell(int number, FolderChanges const& changes);

    Deliver deliver_;
    int events_ = -1;
    int end_ = -1;
    std::thread thread_;
    std::unordered_map<int, std::vector<ListenerPtr>> watched_;

    std::mutex mutex_;
    std::unordered_map<int, FolderChanges> pending_;
    bool eventsWereLost_ = false;
    bool collectionIsUnderWay_ = false;
};

int FolderWatchService::Core::start() {
    if (thread_.joinable()) return 0;
    if (events_ < 0) events_ = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    if (end_ < 0) end_ = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (events_ < 0 || end_ < 0) return errno;
    SignalsBlocked const blocked;
    try {
        thread_ = std::thread([this] { run(); });
    } catch (std::system_error const& problem) {
        return problem.code().value();
    }
    return 0;
}

void FolderWatchService::Core::stop() {
    if (!thread_.joinable()) return;
    std::uint64_t const one = 1;
    [[maybe_unused]] ssize_t const written = write(end_, &one, sizeof one);
    thread_.join();
}

int FolderWatchService::Core::add(ListenerPtr const& listener) {
    LightweightString<char> const path = fileNameToBytes(listener->folder);
    if (path.view().find('\0') != std::string_view::npos) return EINVAL;
    if (int const problem = start()) return problem;
    int const number = inotify_add_watch(events_, path.c_str(), wantedMask);
    if (number < 0) return errno;
    listener->number = number;
    watched_[number].push_back(listener);
    return 0;
}

void FolderWatchService::Core::remove(FolderWatch::Listener const& listener) {
    auto const place = watched_.find(listener.number);
    if (place == watched_.end()) return;
    std::erase_if(place->second, [&](ListenerPtr const& known) { return known.get() == &listener; });
    if (!place->second.empty()) return;
    inotify_rm_watch(events_, place->first);
    watched_.erase(place);
}

/// Waits up to `timeout` milliseconds; true when the service is ending.
bool FolderWatchService::Core::hasEnded(int timeout) const {
    pollfd waiting{end_, POLLIN, 0};
    return poll(&waiting, 1, timeout) > 0;
}

void FolderWatchService::Core::run() {
    std::array<pollfd, 2> waiting{pollfd{events_, POLLIN, 0}, pollfd{end_, POLLIN, 0}};
    while (true) {
        int const ready = poll(waiting.data(), waiting.size(), -1);
        if (ready < 0 && errno != EINTR) return;
        if (ready <= 0) continue;
        // Events of this time are delivered together.
        if (waiting[1].revents != 0 || hasEnded(iWatchable::collectMs)) return;
        readEvents();
        askForCollection();
    }
}

void FolderWatchService::Core::readEvents() {
    alignas(inotify_event) std::array<char, 65536> buffer;
    std::lock_guard const lock(mutex_);
    for (int i = 0; i < mostReads; ++i) {
        ssize_t const length = read(events_, buffer.data(), buffer.size());
        if (length <= 0) return;
        for (char const* at = buffer.data(); at < buffer.data() + length;) {
            auto const& event = *reinterpret_cast<inotify_event const*>(at);
            note(event);
            at += sizeof event + event.len;
        }
    }
}

void FolderWatchService::Core::note(inotify_event const& event) {
    if (event.mask & IN_Q_OVERFLOW) {
        eventsWereLost_ = true;
        return;
    }
    if (event.mask & goneMask) {
        pending_[event.wd].noteGone();
        return;
    }
    if (event.len == 0) return;
    iWatchable::Change const change = event.mask & addedMask     ? iWatchable::Change::added
                                      : event.mask & removedMask ? iWatchable::Change::removed
                                                                 : iWatchable::Change::altered;
    pending_[event.wd].note(event.name, change);
}

/// One call at most waits for the user-interface thread, however long that is busy.
void FolderWatchService::Core::askForCollection() {
    {
        std::lock_guard const lock(mutex_);
        if (collectionIsUnderWay_ || (pending_.empty() && !eventsWereLost_)) return;
        collectionIsUnderWay_ = true;
    }
    deliver_([weak = weak_from_this()] {
        if (std::shared_ptr<Core> const core = weak.lock()) core->collect();
    });
}

void FolderWatchService::Core::collect() {
    std::unordered_map<int, FolderChanges> changes;
    {
        std::lock_guard const lock(mutex_);
        changes = std::exchange(pending_, {});
        collectionIsUnderWay_ = false;
        if (std::exchange(eventsWereLost_, false))
            for (auto const& [number, listeners] : watched_) changes[number].noteLoss();
    }
    for (auto const& [number, folder] : changes) tell(number, folder);
}

/// Every listener gets a call of its own, so that an exception in one does not affect the others.
void FolderWatchService::Core::tell(int number, FolderChanges const& changes) {
    auto const place = watched_.find(number);
    if (place == watched_.end()) return;
    iWatchable::Result result = changes.result();
    for (ListenerPtr const& listener : place->second) {
        if (changes.isGone()) listener->number = -1;
        result.folder = listener->folder;
        deliver_([weak = std::weak_ptr(listener), result] {
            ListenerPtr const held = weak.lock();
            if (!held || !held->handler) return;
            // The watch may be destroyed in its own handler.
            FolderWatch::Handler const handler = held->handler;
            handler(result);
        });
    }
    if (!changes.isGone()) return;
    // Otherwise a moved folder would be watched on.
    inotify_rm_watch(events_, number);
    watched_.erase(place);
}

FolderWatch::FolderWatch(LightweightString<wchar_t> folder, Handler handler)
    : listener_(std::make_shared<Listener>()) {
    UiThread::check("a folder watched");
    listener_->folder = std::move(folder);
    listener_->handler = std::move(handler);
    FolderWatchService* const service = FolderWatchService::current();
    int const reason = service ? service->core_->add(listener_) : ENOSYS;
    if (reason != 0)
        problem_ = systemReason(reason);
    else
        listener_->core = service->core_;
}

FolderWatch::~FolderWatch() {
    if (std::shared_ptr<FolderWatchService::Core> const core = listener_->core.lock())
        core->remove(*listener_);
    listener_->handler = nullptr;
}

bool FolderWatch::isWatching() const {
    return listener_->number >= 0 && !listener_->core.expired();
}

LightweightString<wchar_t> const& FolderWatch::folder() const {
    return listener_->folder;
}

FolderWatchService::FolderWatchService(Deliver deliver) : core_(std::make_shared<Core>(std::move(deliver))) {
    liveService = this;
}

FolderWatchService::~FolderWatchService() {
    core_->stop();
    liveService = nullptr;
}

FolderWatchService* FolderWatchService::current() {
    return liveService;
}

std::size_t FolderWatchService::numFolders() const {
    return core_->numFolders();
}

} // namespace wainscot
