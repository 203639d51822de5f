#pragma once

#include "host/backends/desktop/desktop_clipboard_p.h"
#include "host/backends/desktop/desktop_cursors_p.h"
#include "host/backends/desktop/desktop_input_p.h"
#include "host/backends/desktop/desktop_scale_p.h"
#include "host/backends/desktop/desktop_wakeup_p.h"
#include "host/backends/desktop/desktop_x11_p.h"
#include "host/services/clock.h"
#include "host/windows/backend.h"

struct _XDisplay;

namespace wainscot {

class DesktopWindow;

/// The window system of the desktop, through the window library. The library has one state for the whole
/// program, so that at most one such backend lives at a time.
class DesktopBackend final : public Backend {
public:
    /// Null with the reason in `problem` when there is no display, or when another backend lives.
    static std::unique_ptr<DesktopBackend> open(LightweightString<char>& problem);
    ~DesktopBackend() override;
    DesktopBackend(DesktopBackend const&) = delete;
    DesktopBackend& operator=(DesktopBackend const&) = delete;

    iClock const& clock() const override { return clock_; }
    std::unique_ptr<NativeWindow> createWindow(NativeWindowSettings const& settings) override;
    void poll(std::vector<InputEvent>& input) override;
    void wait(std::optional<double> until) override;
    void wake() override { wakeup_.wake(); }
    std::vector<IntBox> monitors() const override;
    double deviceScale() const override { return space_.scale(); }
    void setDeviceScale(double scale) override;
    bool isComposited() const override { return hasCompositor(display_); }
    bool isInteractive() const override { return true; }
    void setCursor(MouseCursorID cursor) override { cursors_.show(cursor); }
    void setOutsidePresses(bool wanted) override { input_.setOutsidePresses(wanted); }
    void setFullMotion(bool wanted) override { input_.setFullMotion(wanted); }
    void setUnboundedMotion(bool wanted) override { input_.setUnboundedMotion(wanted); }
    void setRepeating(bool repeats) override { clock_.runProcessorWithWallTime(repeats); }
    iClipboard& clipboard() override { return clipboard_; }
    void setTextCaret(std::optional<IntBox> caret) override;

    RootSpace const& rootSpace() const { return space_; }
    /// Reads places and sizes of the monitors again.
    void updateMonitors();
    std::vector<DesktopWindow*> const& windows() const { return windows_; }
    /// Null when the window is closed.
    DesktopWindow* findWindow(NativeWindowId id) const;
    /// The window that the window system shows at a place; null when it belongs to another program.
    DesktopWindow* windowShownAt(XY<int> place) const;
    /// The largest monitor, in device pixels.
    XY<int> largestDeviceSize() const;
    /// Called by a window that is about to leave the screen.
    void endPressIn(DesktopWindow& window) { input_.endPressIn(window); }
    /// Called by a window that is about to close.
    void forget(DesktopWindow const& window);
    /// The connection to the X server; null until the first window.
    _XDisplay* display() const { return display_; }

private:
    explicit DesktopBackend(double scale);

    SystemClock clock_;
    DesktopWakeup wakeup_;
    std::vector<DeviceRect> monitors_;
    RootSpace space_;
    std::vector<DesktopWindow*> windows_;
    _XDisplay* display_ = nullptr;
    DesktopInput input_;
    DesktopCursors cursors_;
    DesktopClipboard clipboard_;
    DeviceRect desktop_;
};

} // namespace wainscot
