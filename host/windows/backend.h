#pragma once

#include "host/base/box.h"
#include "host/base/export.h"
#include "host/base/lightweight_string.h"
#include "host/events/mouse_cursor.h"
#include "host/services/clipboard.h"
#include "host/services/clock.h"
#include "host/windows/input_event.h"
#include "host/windows/window_margins.h"

#include <memory>
#include <optional>
#include <vector>

namespace wainscot {

class Surface;

/// What a backend needs to know to make a window.
struct NativeWindowSettings {
    LightweightString<wchar_t> title;
    /// Size of the contents, logical.
    XY<int> size;
    XY<int> minSize{1, 1};
    /// Lower-left corner of the contents in root coordinates; without it the system chooses.
    std::optional<XY<int>> place;
    bool resizable = true;
    enum class Kind : std::uint8_t {
        ordinary,
        /// Without decoration, never the active one, above all others.
        popUp,
        /// The same; the pointer passes through it if the system can do that.
        toolTip,
    };
    Kind kind = Kind::ordinary;
    /// The window that it belongs to, and stays above; 0 for none.
    NativeWindowId owner = 0;
    bool keepAbove = false;
    /// Pixels may be transparent. Only when `isComposited()`.
    bool translucent = false;

    bool isPopUp() const { return kind != Kind::ordinary; }
};

/// One window of the window system. All sizes and places are logical root coordinates, y upwards.
/// The destructor closes it; input of a closed window is no longer reported.
class WAINSCOT_API NativeWindow {
public:
    virtual ~NativeWindow();
    virtual NativeWindowId id() const = 0;
    virtual void show() = 0;
    virtual void hide() = 0;
    virtual void setTitle(LightweightString<wchar_t> const& title) = 0;
    virtual void resize(XY<int> size) = 0;
    virtual void setMinSize(XY<int> size) = 0;
    virtual void moveTo(XY<int> place) = 0;
    /// Brings it to the front and makes it the active window.
    virtual void raise() = 0;
    /// Brings it to the front only.
    virtual void toFront() = 0;
    /// Keeps it above all windows without this setting.
    virtual void setKeepAbove(bool keep) = 0;
    /// Marks it for the window manager as modal: it cannot be minimised or maximised, and stays above `owner`
    /// (0 = no change).
    virtual void setModal(bool modal, NativeWindowId owner) = 0;
    /// The room that the window manager's frame takes round the contents, as far as it is known.
    virtual WindowMargins frame() const { return {}; }
    /// Size and place as last reported by the window system.
    virtual XY<int> size() const = 0;
    virtual XY<int> place() const = 0;
    /// Brings the boxes (logical, on the surface) to the screen. A surface of another size is shown as far as
    /// it fits. Errors of the window system are counted.
    virtual void present(Surface const& surface, std::vector<IntBox> const& boxes) = 0;
};

/// The door to a window system, or to memory only. Used on the user-interface thread, except `wake()`.
class WAINSCOT_API Backend {
public:
    virtual ~Backend();
    /// The clock that the host is to install while this backend lives.
    virtual iClock const& clock() const = 0;
    /// Null when the window system refuses.
    virtual std::unique_ptr<NativeWindow> createWindow(NativeWindowSettings const& settings) = 0;
    /// Appends the input that has arrived, oldest first, without waiting.
    virtual void poll(std::vector<InputEvent>& input) = 0;
    /// Whether the program has caused input that `poll()` would give at once. Always false for a real window
    /// system.
    virtual bool hasInput() const { return false; }
    /// Sleeps until input arrives, `wake()` is called or the millisecond clock reaches `until`; without
    /// `until` there is no limit. May return early. A backend whose clock is virtual returns at once.
    virtual void wait(std::optional<double> until) = 0;
    /// Ends the present or next `wait()`; safe from any thread.
    virtual void wake() = 0;
    /// Boxes of the monitors in root coordinates; never empty, the first is the main one. The lower-left
    /// corner of the box round all of them is (0, 0).
    virtual std::vector<IntBox> monitors() const = 0;
    virtual double deviceScale() const = 0;
    /// Device pixels in a logical pixel from now on. Windows keep their logical sizes.
    virtual void setDeviceScale(double scale) = 0;
    /// Whether transparent pixels of a window show what lies below it.
    virtual bool isComposited() const = 0;

    // --- Pointer
    virtual void setCursor(MouseCursorID cursor) = 0;
    /// While on, presses and moves on the whole screen are reported. A press outside all windows of the
    /// program comes with window 0; if the system can do that, nobody else gets it.
    virtual void setOutsidePresses(bool wanted) = 0;
    /// While on, the way of the pointer is reported in steps of at most 3 logical pixels, none merged.
    virtual void setFullMotion(bool wanted) = 0;
    /// While on, the pointer is hidden and locked, and its reported place goes on past the screen's edges. At
    /// the end the pointer is where it was.
    virtual void setUnboundedMotion(bool wanted) = 0;

    /// While on, a held widget repeats: a real processor clock runs with wall time.
    virtual void setRepeating(bool) {}

    // --- Text
    virtual iClipboard& clipboard() = 0;
    /// The caret's box in root coordinates, so that an input method can show its choices there. Nothing ends
    /// the present composition.
    virtual void setTextCaret(std::optional<IntBox> caret) = 0;

    /// False in a backend without a screen, whose loop ends when nothing can happen any more.
    virtual bool isInteractive() const = 0;
};

} // namespace wainscot
