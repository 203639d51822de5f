#include "host/windows/modal_flash_p.h"

#include "host/events/dispatch_scope.h"
#include "host/events/event.h"
#include "host/events/event_time_server.h"
#include "host/windows/glob_manager.h"
#include "host/windows/top_level_window.h"

namespace wainscot {

class ModalFlash::Ticker final : public EventHandler {
public:
    explicit Ticker(ModalFlash& flash) : flash_(flash) {
        if (EventTimeServer* timers = EventTimeServer::theEventTimeServer())
            timers->registerForTimeEvents(this);
        wait();
    }
    ~Ticker() override {
        if (EventTimeServer* timers = EventTimeServer::theEventTimeServer()) timers->unregister(this);
    }
    // Owned by the flash, never counted.
    void addRef() const noexcept override {}
    void release() const noexcept override {}

    void wait() {
        if (EventTimeServer* timers = EventTimeServer::theEventTimeServer())
            timers->setNextTimer(this, interval);
    }
    bool handleEvent(Event const& event) override {
        if (isTimerEvent(event)) flash_.tick();
        return true;
    }

private:
    ModalFlash& flash_;
};

ModalFlash::ModalFlash(GlobManager& windows) : windows_(windows) {}

ModalFlash::~ModalFlash() = default;

void ModalFlash::start(TopLevelWindow const& window) {
    end();
    root_ = window.rootStamp();
    left_ = changes;
    ticker_ = std::make_unique<Ticker>(*this);
    show(true);
}

void ModalFlash::show(bool marked) {
    if (TopLevelWindow* window = windows_.windowOfStamp(root_)) window->setMarked(marked);
}

/// The ticker may be the one who is just running.
void ModalFlash::end() {
    if (!ticker_) return;
    show(false);
    root_.invalidate();
    DispatchScope::freeWhenUnwound([](void* ticker) { delete static_cast<Ticker*>(ticker); },
                                   ticker_.release());
}

void ModalFlash::forget(Glob const& root) {
    if (root.idStamp() == root_) end();
}

void ModalFlash::tick() {
    if (!ticker_) return;
    if (--left_ <= 0) return end();
    show(left_ % 2 == 0);
    ticker_->wait();
}

} // namespace wainscot
