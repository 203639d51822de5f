#pragma once

#include "host/base/export.h"

#include <functional>
#include <memory>

namespace wainscot {

/// Calls a function once, some time after it was started: for a blinking caret, for hovering, for scrolling
/// at an edge, for forgetting what was typed. A member of whoever waits; its death stops it. User-interface
/// thread only.
class WAINSCOT_API OneShotTimer {
public:
    /// `due` may start it anew, and may destroy it and its owner.
    explicit OneShotTimer(std::function<void()> due);
    ~OneShotTimer();
    OneShotTimer(OneShotTimer const&) = delete;
    OneShotTimer& operator=(OneShotTimer const&) = delete;

    /// `due` is called in so many milliseconds from now; what was waited for before is not. Nothing without a
    /// host.
    void start(double ms);
    void stop();
    bool isRunning() const;

private:
    class Waiting;
    void fire();

    std::function<void()> due_;
    std::unique_ptr<Waiting> waiting_;
};

} // namespace wainscot
