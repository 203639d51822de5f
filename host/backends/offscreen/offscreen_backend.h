#pragma once

#include "host/drawing/pixel_memory.h"
#include "host/windows/backend.h"

#include <cstdint>
#include <map>

namespace wainscot {

class OffscreenWindow;

/// A window system in memory: windows, virtual clocks, pixels that can be read back. A shown window becomes
/// the active window, as with a window manager. Input is injected.
class WAINSCOT_API OffscreenBackend final : public Backend {
public:
    explicit OffscreenBackend(double deviceScale = 1.0);
    ~OffscreenBackend() override;

    // Backend
    iClock const& clock() const override { return clock_; }
    std::unique_ptr<NativeWindow> createWindow(NativeWindowSettings const& settings) override;
    void poll(std::vector<InputEvent>& input) override;
    /// Moves the clocks to `until`.
    void wait(std::optional<double> until) override;
    bool hasInput() const override { return !input_.empty(); }
    void wake() override {}
    std::vector<IntBox> monitors() const override { return monitors_; }
    double deviceScale() const override { return deviceScale_; }
    void setDeviceScale(double scale) override { deviceScale_ = scale; }
    bool isComposited() const override { return composited_; }
    bool isInteractive() const override { return false; }
    void setCursor(MouseCursorID cursor) override { cursor_ = cursor; }
    void setOutsidePresses(bool wanted) override { outsidePresses_ = wanted; }
    void setFullMotion(bool wanted) override { fullMotion_ = wanted; }
    void setUnboundedMotion(bool wanted) override { unboundedMotion_ = wanted; }
    iClipboard& clipboard() override { return clipboard_; }
    void setTextCaret(std::optional<IntBox> caret) override { textCaret_ = caret; }

    VirtualClock& virtualClock() { return clock_; }
    // What was asked for last.
    MouseCursorID cursor() const { return cursor_; }
    bool outsidePresses() const { return outsidePresses_; }
    bool fullMotion() const { return fullMotion_; }
    bool unboundedMotion() const { return unboundedMotion_; }
    std::optional<IntBox> const& textCaret() const { return textCaret_; }

    /// Replaces the monitors; an empty list is ignored. They are moved so that the lower-left corner of the
    /// box round all of them is (0, 0). Reported as a change of the screen.
    void setMonitors(std::vector<IntBox> monitors);
    /// For windows that are made from now on.
    void setComposited(bool composited) { composited_ = composited; }
    /// Makes a window the active one, as a person does with a window manager.
    void activate(NativeWindowId id);
    void deactivateAll();
    /// Adds input behind the input that is waiting, as if the window system had reported it.
    void inject(InputEvent input);
    /// Whether to refuse new windows, like a window system that fails.
    void refuseWindows(bool refuse) { refuses_ = refuse; }

    OffscreenWindow* window(NativeWindowId id) const;
    std::size_t numWindows() const { return windows_.size(); }

private:
    friend class OffscreenWindow;
    void closed(OffscreenWindow& window);

    VirtualClock clock_;
    double deviceScale_;
    std::vector<IntBox> monitors_;
    std::vector<InputEvent> input_;
    /// In the order of opening. Their makers own them.
    std::map<NativeWindowId, OffscreenWindow*> windows_;
    NativeWindowId lastId_ = 0;
    NativeWindowId active_ = 0;
    /// The last active one last.
    std::map<std::uint64_t, NativeWindowId> byActivation_;
    std::uint64_t lastActivation_ = 0;
    bool refuses_ = false;
    bool composited_ = true;
    MouseCursorID cursor_ = arrowCursor;
    bool outsidePresses_ = false;
    bool fullMotion_ = false;
    bool unboundedMotion_ = false;
    MemoryClipboard clipboard_;
    std::optional<IntBox> textCaret_;
};

/// A window in memory: it shows what was presented.
class WAINSCOT_API OffscreenWindow final : public NativeWindow {
public:
    OffscreenWindow(OffscreenBackend& backend, NativeWindowId id, NativeWindowSettings const& settings,
                    XY<int> place);
    ~OffscreenWindow() override;

    // NativeWindow
    NativeWindowId id() const override { return id_; }
    void show() override;
    void hide() override;
    void setTitle(LightweightString<wchar_t> const& title) override { title_ = title; }
    void resize(XY<int> size) override;
    void setMinSize(XY<int> size) override { minSize_ = size; }
    void moveTo(XY<int> place) override;
    void raise() override;
    void toFront() override {}
    void setKeepAbove(bool keep) override { keepsAbove_ = keep; }
    void setModal(bool modal, NativeWindowId owner) override;
    XY<int> size() const override { return size_; }
    XY<int> place() const override { return place_; }
    void present(Surface const& surface, std::vector<IntBox> const& boxes) override;

    LightweightString<wchar_t> const& title() const { return title_; }
    XY<int> minSize() const { return minSize_; }
    bool isShown() const { return shown_; }
    NativeWindowSettings::Kind kind() const { return kind_; }
    bool keepsAbove() const { return keepsAbove_; }
    NativeWindowId owner() const { return owner_; }
    bool isModal() const { return modal_; }
    bool isTranslucent() const { return translucent_; }
    /// Boxes brought to the screen by the last call, and by all.
    std::vector<IntBox> const& lastPresented() const { return lastPresented_; }
    std::uint64_t numPresented() const { return numPresented_; }
    /// The pixel shown at a logical place (from the lower-left corner); 0 where nothing was ever presented.
    std::uint32_t pixelAt(XY<int> place) const;

private:
    friend class OffscreenBackend;
    OffscreenBackend& backend_;
    NativeWindowId id_;
    LightweightString<wchar_t> title_;
    XY<int> size_;
    XY<int> minSize_;
    XY<int> place_;
    NativeWindowSettings::Kind kind_;
    bool keepsAbove_;
    NativeWindowId owner_;
    bool translucent_;
    bool modal_ = false;
    /// When it became the active window last; 0 before that.
    std::uint64_t activation_ = 0;
    bool shown_ = false;
    std::vector<IntBox> lastPresented_;
    std::uint64_t numPresented_ = 0;
    double scale_ = 1.0;
    XY<int> deviceSize_;
    PixelMemory pixels_;
};

} // namespace wainscot
