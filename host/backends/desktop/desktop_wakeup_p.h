#pragma once

#include <optional>

namespace wainscot {

/// Sleeps until a file has something to read or until it is woken from another thread.
class DesktopWakeup {
public:
    DesktopWakeup();
    ~DesktopWakeup();
    DesktopWakeup(DesktopWakeup const&) = delete;
    DesktopWakeup& operator=(DesktopWakeup const&) = delete;

    /// False when the system has refused the means of waking; then nothing else may be called.
    bool isGood() const { return event_ >= 0; }
    /// Sleeps until `file` can be read, `wake()` is called or the time has passed; for ever without one. A
    /// negative `file` is ignored.
    void sleep(int file, std::optional<double> milliseconds);
    /// Ends the present or the next `sleep()`; safe from any thread and from signal handlers.
    void wake();

private:
    int event_;
};

} // namespace wainscot
