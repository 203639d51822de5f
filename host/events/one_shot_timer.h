#pragma once

#include "host/base/export.h"

#include <functional>
#include <memory>

namespace wainscot {

/// Calls a function once, some time after it was started: for a blinking caret, for hovering, for scrolling
/// at an edge. It is a member of the object that waits, and stops with it. User-interface thread only.
class WAINSCOT_API OneShotTimer {
public:
    /// `due` may start the timer again, and may destroy the timer and its owner.
    explicit OneShotTimer(std::function<void()> due);
    ~OneShotTimer();
    OneShotTimer(OneShotTimer const&) = delete;
    OneShotTimer& operator=(OneShotTimer const&) = delete;

    /// Has `due` called in `ms` milliseconds; an earlier start is forgotten. Does nothing without a host.
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
