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
    /// Lower-left corner of the contents in root coordinates; the system chooses when it is not given.
    std::optional<XY<int>> place;
    bool resizable = true;
    enum class Kind : std::uint8_t {
        ordinary,
        /// Without decoration, never the active one, above all others.
        popUp,
        /// The same, and the pointer passes through it where the system can do that.
        toolTip,
    };
    Kind kind = Kind::ordinary;
    /// The window that it belongs to and stays above of; 0 for none.
    NativeWindowId owner = 0;
    bool keepAbove = false;
    /// Pixels may be transparent; only where `isComposited()`.
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
    /// To the front, and it becomes the active one.
    virtual void raise() = 0;
    /// To the front only.
    virtual void toFront() = 0;
    /// Above all windows that do not want this themselves.
    virtual void setKeepAbove(bool keep) = 0;
    /// Marks it for the window manager as one that keeps input from others: without minimising and
    /// maximising, and above `owner` (0 leaves that as it is).
    virtual void setModal(bool modal, NativeWindowId owner) = 0;
    /// The room that the window manager's frame takes round the contents, as far as it is known.
    virtual WindowMargins frame() const { return {}; }
    /// Size and place as last reported by the window system.
    virtual XY<int> size() const = 0;
    virtual XY<int> place() const = 0;
    /// Brings the boxes (logical, on the surface) to the screen. A surface that does not fit the window any
    /// more is shown as far as it fits; a failing window system is survived.
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
    /// What the program did has caused input that `poll()` would give at once. A real window system takes its
    /// time: false.
    virtual bool hasInput() const { return false; }
    /// Sleeps until input arrives, `wake()` is called or the millisecond clock reaches `until`; for ever
    /// without one. May return early. A backend whose clock is virtual returns at once.
    virtual void wait(std::optional<double> until) = 0;
    /// Ends the present or next `wait()`; safe from any thread.
    virtual void wake() = 0;
    /// Boxes of the monitors in root coordinates; never empty, the first is the main one. The lower-left
    /// corner of the box round all of them is (0, 0).
    virtual std::vector<IntBox> monitors() const = 0;
    virtual double deviceScale() const = 0;
    /// Device pixels in a logical pixel from now on. Windows keep their logical sizes.
    virtual void setDeviceScale(double scale) = 0;
    /// Windows with transparent pixels show what lies below them.
    virtual bool isComposited() const = 0;

    // --- Pointer
    virtual void setCursor(MouseCursorID cursor) = 0;
    /// While on, presses and moves on the whole screen are reported; a press outside of all windows of the
    /// program comes with window 0 and is not given to whoever lies there, where the system can do that.
    virtual void setOutsidePresses(bool wanted) = 0;
    /// While on, the way of the pointer is reported in steps of at most 3 logical pixels, none merged.
    virtual void setFullMotion(bool wanted) = 0;
    /// While on, the pointer is hidden and locked, and its reported place goes on past the screen's edges. It
    /// is where it was when this ends.
    virtual void setUnboundedMotion(bool wanted) = 0;

    /// While on, a held widget repeats: the processor clock runs with wall time, where there is a real one.
    virtual void setRepeating(bool) {}

    // --- Text
    virtual iClipboard& clipboard() = 0;
    /// Where text is being entered (the caret's box, root coordinates), so that an input method can show its
    /// choices there; nothing ends a composition that is under way.
    virtual void setTextCaret(std::optional<IntBox> caret) = 0;

    /// False in a backend without a screen, whose loop ends when nothing can happen any more.
    virtual bool isInteractive() const = 0;
};

} // namespace wainscot
