#pragma once

#include "host/backends/desktop/desktop_keys_p.h"
#include "host/backends/desktop/desktop_pointer_p.h"
#include "host/backends/desktop/desktop_raw_events_p.h"

#include <SDL_events.h>

#include <vector>

namespace wainscot {

class DesktopBackend;
class DesktopWindow;

/// Makes input events from the window library's events; it remembers what it needs of earlier events.
class DesktopInput {
public:
    explicit DesktopInput(DesktopBackend& backend);

    /// Appends what one event of the library means, which may be nothing.
    void translate(SDL_Event const& event, std::vector<InputEvent>& input);
    /// Appends what is known only after all events that have arrived were translated.
    void endOfInput(std::vector<InputEvent>& input);
    /// Whether an input method may be about to deliver text. It speaks over a connection of the library's
    /// own, on which nobody can wait.
    bool awaitsComposition() const;
    /// A window was closed: nothing that follows belongs to it.
    void forget(NativeWindowId window);

    /// The window leaves the screen, or the keyboard leaves it: no release of what is held in it is awaited.
    void endPressIn(DesktopWindow& window);

    void setOutsidePresses(bool wanted);
    void setFullMotion(bool wanted);
    void setUnboundedMotion(bool wanted);

private:
    using Kind = InputEvent::Kind;

    void pointerMotion(SDL_MouseMotionEvent const& event, std::vector<InputEvent>& input);
    void pointerButton(SDL_MouseButtonEvent const& event, std::vector<InputEvent>& input);
    void pointerWheel(SDL_MouseWheelEvent const& event, std::vector<InputEvent>& input);
    void pinch(SDL_MultiGestureEvent const& event, std::vector<InputEvent>& input);
    void rawEvent(SDL_SysWMEvent const& event, std::vector<InputEvent>& input);
    void forgetPress();
    void dropPress();
    /// Input about the pointer at its present place, without an event of the library.
    InputEvent restingPointer(Kind kind, NativeWindowId window) const;
    void loseRelease(std::vector<InputEvent>& input);
    void filesOver(RawEvents::FilesOver const& files, std::vector<InputEvent>& input);
    void reportWheel(Kind kind, int amount, DesktopWindow const& window, double time,
                     std::vector<InputEvent>& input) const;
    /// Reports a move to `pointer_`, from `from`.
    void reportMove(XY<int> from, InputEvent const& moved, std::vector<InputEvent>& input) const;
    void updateCapture() const;
    void putPointerBack();
    NativeWindowId windowShown(XY<int> place) const;
    void composing(SDL_TextEditingEvent const& event, std::vector<InputEvent>& input);
    void key(SDL_KeyboardEvent const& event, std::vector<InputEvent>& input);
    void windowEvent(SDL_WindowEvent const& event, std::vector<InputEvent>& input);
    void windowBox(DesktopWindow& window, double time, std::vector<InputEvent>& input);
    void windowExposed(DesktopWindow const& window, double time, std::vector<InputEvent>& input);
    void windowDeactivated(DesktopWindow& window, double time, std::vector<InputEvent>& input);
    void drop(SDL_DropEvent const& event, std::vector<InputEvent>& input);
    static void screenChanged(double time, std::vector<InputEvent>& input);
    void allWindowBoxes(double time, std::vector<InputEvent>& input);
    InputEvent pointerEvent(InputEvent::Kind kind, DesktopWindow const& window, double time) const;
    double timeOf(std::uint32_t libraryTime) const;

    DesktopBackend& backend_;
    KeyTranslator keys_;
    ClickCounter clicks_;
    WheelSum wheel_;
    WheelSum sideWheel_;
    WheelSum pinch_;
    RawEvents rawEvents_;
    HeldButtons held_;
    XY<int> pointer_;
    NativeWindowId pointerWindow_ = 0;
    /// Where the first of the held buttons was pressed.
    NativeWindowId pressedWindow_ = 0;
    bool filesAreOver_ = false;
    bool pointerMayHaveLeft_ = false;
    bool rightAltIsAltGr_ = false;
    bool usesInputMethod_;
    bool isComposing_ = false;
    NativeWindowId composingWindow_ = 0;
    double lastKeyTime_ = 0.0;
    bool outsidePresses_ = false;
    std::vector<LightweightString<wchar_t>> dropped_;
    bool fullMotion_ = false;
    bool unboundedMotion_ = false;
    /// Where the pointer was when its motion became unbounded.
    XY<int> lockedAt_;
};

} // namespace wainscot
