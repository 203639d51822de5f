#pragma once

#include "host/base/export.h"
#include "host/base/id_stamp.h"
#include "host/events/one_shot_timer.h"

namespace wainscot {

class Glob;
class GlobManager;
class TopLevelWindow;

/// Flashes the frame of a modal window a few times, to show why a press was refused.
class WAINSCOT_API ModalFlash {
public:
    explicit ModalFlash(GlobManager& windows);
    ~ModalFlash();
    ModalFlash(ModalFlash const&) = delete;
    ModalFlash& operator=(ModalFlash const&) = delete;

    void start(TopLevelWindow const& window);
    /// The root's window goes.
    void forget(Glob const& root);

    /// Time between changes from plain to marked and back, in milliseconds.
    static constexpr double interval = 90.0;
    static constexpr int changes = 6;

private:
    void tick();
    void end();
    void show(bool marked);

    GlobManager& windows_;
    IdStamp root_;
    int left_ = 0;
    /// Runs while it flashes.
    OneShotTimer timer_;
};

} // namespace wainscot
