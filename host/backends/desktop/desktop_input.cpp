#include "host/backends/desktop/desktop_input_p.h"

#include "host/backends/desktop/desktop_backend_p.h"
#include "host/backends/desktop/desktop_window_p.h"
#include "host/backends/desktop/desktop_x11_p.h"
#include "host/base/convert.h"
#include "host/base/diagnostics.h"
#include "host/services/file_names.h"
#include "host/services/preferences.h"

#include <SDL_error.h>
#include <SDL_mouse.h>
#include <SDL_stdinc.h>
#include <SDL_timer.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace wainscot {

namespace {

using Kind = InputEvent::Kind;

/// The share of a touch screen by which two fingers part for one step of a zoom.
constexpr double pinchStep = 0.05;

/// An input method answers a key within this time, in milliseconds.
constexpr double compositionDelay = 500.0;

/// The pointer's full way is reported in steps of this length, and with this many steps at most, even for a
/// jump over the whole desktop.
constexpr int stepLength = 3;
constexpr int mostSteps = 4000;

/// Whether a setting names an input method that the library talks to without the X server.
bool names(char const* setting) {
    return setting && (std::strstr(setting, "ibus") || std::strstr(setting, "fcitx"));
}

InputEvent windowInput(Kind kind, DesktopWindow const& window, double time) {
    InputEvent event;
    event.kind = kind;
    event.window = window.id();
    event.place = window.place();
    event.size = window.size();
    event.time = time;
    return event;
}

bool isBoxEvent(InputEvent const& event) {
    return event.kind == Kind::windowMoved || event.kind == Kind::windowResized;
}

/// Of sizes and places that follow each other only the last ones count, as long as no other input lies
/// between them.
void appendBoxEvent(InputEvent const& event, std::vector<InputEvent>& input) {
    for (std::size_t i = input.size(); i > 0 && isBoxEvent(input[i - 1]); --i) {
        if (input[i - 1].window == event.window && input[i - 1].kind == event.kind) {
            input[i - 1] = event;
            return;
        }
    }
    input.push_back(event);
}

InputEvent::Button buttonOf(std::uint8_t number) {
    switch (number) {
    case SDL_BUTTON_LEFT:
        return InputEvent::Button::left;
    case SDL_BUTTON_MIDDLE:
        return InputEvent::Button::middle;
    case SDL_BUTTON_RIGHT:
        return InputEvent::Button::right;
    default:
        return InputEvent::Button::none;
    }
}

} // namespace

DesktopInput::DesktopInput(DesktopBackend& backend)
    : backend_(backend),
      usesInputMethod_(names(std::getenv("SDL_IM_MODULE")) || names(std::getenv("XMODIFIERS"))) {}

bool DesktopInput::awaitsComposition() const {
    return usesInputMethod_ && (isComposing_ || backend_.clock().msecs() - lastKeyTime_ < compositionDelay);
}

double DesktopInput::timeOf(std::uint32_t libraryTime) const {
    // The library's clock wraps around; the difference does not.
    return backend_.clock().msecs() - static_cast<double>(SDL_GetTicks() - libraryTime);
}

InputEvent DesktopInput::pointerEvent(Kind kind, DesktopWindow const& window, double time) const {
    InputEvent event;
    event.kind = kind;
    event.window = window.id();
    event.place = pointer_;
    event.modifiers = keys_.modifiers();
    event.time = time;
    return event;
}

void DesktopInput::translate(SDL_Event const& event, std::vector<InputEvent>& input) {
    switch (event.type) {
    case SDL_MOUSEMOTION:
        return pointerMotion(event.motion, input);
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP:
        return pointerButton(event.button, input);
    case SDL_MOUSEWHEEL:
        return pointerWheel(event.wheel, input);
    case SDL_MULTIGESTURE:
        return pinch(event.mgesture, input);
    case SDL_SYSWMEVENT:
        return rawEvent(event.syswm, input);
    case SDL_KEYDOWN:
    case SDL_KEYUP:
        return key(event.key, input);
    case SDL_TEXTEDITING:
        return composing(event.edit, input);
    case SDL_TEXTINPUT:
        isComposing_ = false;
        if (backend_.findWindow(event.text.windowID))
            keys_.text(event.text.text, {event.text.windowID, timeOf(event.text.timestamp)}, input);
        return;
    case SDL_DROPFILE:
    case SDL_DROPTEXT:
    case SDL_DROPCOMPLETE:
        return drop(event.drop, input);
    case SDL_WINDOWEVENT:
        return windowEvent(event.window, input);
    case SDL_DISPLAYEVENT:
        backend_.updateMonitors();
        allWindowBoxes(timeOf(event.display.timestamp), input);
        return screenChanged(timeOf(event.display.timestamp), input);
    default:
        return;
    }
}

void DesktopInput::endOfInput(std::vector<InputEvent>& input) {
    keys_.endOfInput();
    if (!pointerMayHaveLeft_ || held_.any()) return;
    pointerMayHaveLeft_ = false;
    if (SDL_GetMouseFocus()) return;
    input.push_back(restingPointer(Kind::pointerLeft, pointerWindow_));
}

InputEvent DesktopInput::restingPointer(Kind kind, NativeWindowId window) const {
    InputEvent made;
    made.kind = kind;
    made.window = window;
    made.place = pointer_;
    made.modifiers = keys_.modifiers();
    made.time = backend_.clock().msecs();
    return made;
}

void DesktopInput::endPressIn(DesktopWindow& window) {
    auto* const pressed = backend_.findWindow(pressedWindow_);
    if (held_.any() && pressed && (pressed == &window || pressed->isPopUp())) forgetPress();
}

void DesktopInput::forgetPress() {
    // Any window will do.
    if (!backend_.windows().empty()) backend_.windows().front()->releaseButtons();
    dropPress();
}

void DesktopInput::dropPress() {
    held_.clear();
    clicks_.reset();
    pointerMayHaveLeft_ = true;
    updateCapture();
}

/// The pointer moves without a button although no release has come: another program got it. The library has
/// heard of that before, and of what came after it.
void DesktopInput::loseRelease(std::vector<InputEvent>& input) {
    if (held_.any()) input.push_back(restingPointer(Kind::pressLost, pressedWindow_));
    dropPress();
}

void DesktopInput::rawEvent(SDL_SysWMEvent const& event, std::vector<InputEvent>& input) {
    if (RawEvents::hasNoButton(event)) return loseRelease(input);
    if (auto const files = rawEvents_.filesOver(event)) filesOver(*files, input);
}

void DesktopInput::filesOver(RawEvents::FilesOver const& files, std::vector<InputEvent>& input) {
    filesAreOver_ = files.place.has_value();
    InputEvent made;
    made.kind = Kind::filesDragged;
    made.time = backend_.clock().msecs();
    for (auto const* const window : backend_.windows())
        if (files.place && window->isNative(files.window)) made.window = window->id();
    if (files.place)
        made.place = backend_.rootSpace().toRoot({files.place->x, files.place->y, 1, 1}).bottomLeft();
    input.push_back(made);
}

void DesktopInput::forget(NativeWindowId window) {
    if (composingWindow_ == window) isComposing_ = false;
    if (pressedWindow_ == window) held_.clear();
    if (pointerWindow_ != window) return;
    pointerWindow_ = 0;
    pointerMayHaveLeft_ = true;
    held_.clear();
    clicks_.reset();
}

void DesktopInput::pointerMotion(SDL_MouseMotionEvent const& event, std::vector<InputEvent>& input) {
    auto const* const window = backend_.findWindow(event.windowID);
    if (!window) return;
    XY<int> const from = pointer_;
    pointer_ = unboundedMotion_ ? pointer_ + XY<int>{event.xrel, -event.yrel}
                                : backend_.rootSpace().pixelInWindow(window->box(), {event.x, event.y});
    pointerWindow_ = window->id();
    InputEvent moved = pointerEvent(Kind::pointerMoved, *window, timeOf(event.timestamp));
    // The library reports all events of the captured pointer in one window.
    if (outsidePresses_) moved.window = 0;
    reportMove(from, moved, input);
}

void DesktopInput::reportMove(XY<int> from, InputEvent const& moved, std::vector<InputEvent>& input) const {
    if (fullMotion_) {
        XY<int> const way = moved.place - from;
        int const steps = std::clamp(
            (std::max(std::abs(way.x), std::abs(way.y)) + stepLength - 1) / stepLength, 1, mostSteps);
        for (int i = 1; i <= steps; ++i) {
            InputEvent step = moved;
            step.place = {from.x + way.x * i / steps, from.y + way.y * i / steps};
            step.isStep = true;
            input.push_back(step);
        }
        return;
    }
    bool const continues = !input.empty() && input.back().kind == Kind::pointerMoved &&
                           input.back().window == moved.window && input.back().modifiers == moved.modifiers;
    if (continues && !input.back().isStep)
        input.back() = moved;
    else
        input.push_back(moved);
}

void DesktopInput::setOutsidePresses(bool wanted) {
    outsidePresses_ = wanted;
    updateCapture();
}

void DesktopInput::setFullMotion(bool wanted) {
    fullMotion_ = wanted;
}

void DesktopInput::setUnboundedMotion(bool wanted) {
    if (wanted == unboundedMotion_) return;
    unboundedMotion_ = wanted;
    if (wanted) lockedAt_ = pointer_;
    if (SDL_SetRelativeMouseMode(wanted ? SDL_TRUE : SDL_FALSE) != 0)
        Diagnostics::count("pointer not locked", SDL_GetError());
    if (!wanted) putPointerBack();
}

/// The library leaves the pointer at the end of its own, bounded motion.
void DesktopInput::putPointerBack() {
    pointer_ = lockedAt_;
    DesktopWindow* const window = backend_.findWindow(pointerWindow_);
    if (window) window->warpPointer(backend_.rootSpace().devicePixelInWindow(window->box(), pointer_));
}

void DesktopInput::updateCapture() const {
    SDL_CaptureMouse(held_.any() || outsidePresses_ ? SDL_TRUE : SDL_FALSE);
}

void DesktopInput::composing(SDL_TextEditingEvent const& event, std::vector<InputEvent>& input) {
    isComposing_ = event.text[0] != 0;
    composingWindow_ = event.windowID;
    InputEvent made;
    made.kind = Kind::composing;
    made.window = event.windowID;
    made.text = fromUTF8(event.text);
    made.amount = std::clamp(event.start, 0, static_cast<int>(made.text.size()));
    made.time = timeOf(event.timestamp);
    input.push_back(made);
}

void DesktopInput::pointerButton(SDL_MouseButtonEvent const& event, std::vector<InputEvent>& input) {
    auto* const window = backend_.findWindow(event.windowID);
    auto const button = buttonOf(event.button);
    if (!window || button == InputEvent::Button::none) return;
    bool const pressed = event.type == SDL_MOUSEBUTTONDOWN;
    // A release without its press is ignored.
    if (!pressed && !held_.holds(button)) return;
    pointer_ = backend_.rootSpace().pixelInWindow(window->box(), {event.x, event.y});
    pointerWindow_ = window->id();
    InputEvent made = pointerEvent(pressed ? Kind::pointerPressed : Kind::pointerReleased, *window,
                                   timeOf(event.timestamp));
    made.button = button;
    if (outsidePresses_) made.window = windowShown(pointer_);
    if (pressed) {
        if (!held_.any()) pressedWindow_ = window->id();
        window->wasPressed();
        clicks_.setInterval(config_int("double_click_ms", ClickCounter::usualInterval));
        made.clicks = clicks_.press(made.window, button, pointer_, made.time);
        held_.press(button);
    } else {
        held_.release(button);
    }
    updateCapture();
    if (!held_.any()) pointerMayHaveLeft_ = true;
    input.push_back(made);
}

NativeWindowId DesktopInput::windowShown(XY<int> place) const {
    DesktopWindow const* const window = backend_.windowShownAt(place);
    return window ? window->id() : 0;
}

void DesktopInput::pointerWheel(SDL_MouseWheelEvent const& event, std::vector<InputEvent>& input) {
    auto const* const window = backend_.findWindow(event.windowID);
    if (!window) return;
    double const sign = event.direction == SDL_MOUSEWHEEL_FLIPPED ? -1.0 : 1.0;
    double const time = timeOf(event.timestamp);
    reportWheel(Kind::wheel, wheel_.add(sign * static_cast<double>(event.preciseY)), *window, time, input);
    reportWheel(Kind::sideWheel, sideWheel_.add(sign * static_cast<double>(event.preciseX)), *window, time,
                input);
}

void DesktopInput::reportWheel(Kind kind, int amount, DesktopWindow const& window, double time,
                               std::vector<InputEvent>& input) const {
    if (amount == 0) return;
    InputEvent made = pointerEvent(kind, window, time);
    if (outsidePresses_) made.window = 0;
    made.amount = amount;
    input.push_back(made);
}

/// Two fingers on a touch screen; the library reports no pinches on touch pads.
void DesktopInput::pinch(SDL_MultiGestureEvent const& event, std::vector<InputEvent>& input) {
    auto const* const window = backend_.findWindow(pointerWindow_);
    if (!window || event.numFingers != 2) return;
    reportWheel(Kind::zoom, pinch_.add(static_cast<double>(event.dDist) / pinchStep), *window,
                timeOf(event.timestamp), input);
}

void DesktopInput::key(SDL_KeyboardEvent const& event, std::vector<InputEvent>& input) {
    bool const pressed = event.type == SDL_KEYDOWN;
    lastKeyTime_ = backend_.clock().msecs();
    if (pressed && event.keysym.scancode == SDL_SCANCODE_RALT && event.repeat == 0)
        rightAltIsAltGr_ = isRightAltAltGr(backend_.display());
    if (!backend_.findWindow(event.windowID)) return;
    KeyStroke const stroke{event.keysym.scancode, event.keysym.sym, event.keysym.mod, event.repeat != 0,
                           rightAltIsAltGr_};
    KeyTranslator::Origin const origin{event.windowID, timeOf(event.timestamp)};
    if (pressed)
        keys_.press(stroke, origin, input);
    else
        keys_.release(stroke, origin, input);
}

void DesktopInput::windowEvent(SDL_WindowEvent const& event, std::vector<InputEvent>& input) {
    auto* const window = backend_.findWindow(event.windowID);
    if (!window) return;
    double const time = timeOf(event.timestamp);
    switch (event.event) {
    case SDL_WINDOWEVENT_RESIZED:
    case SDL_WINDOWEVENT_SIZE_CHANGED:
        window->wasSized();
        [[fallthrough]];
    case SDL_WINDOWEVENT_MOVED:
        return windowBox(*window, time, input);
    case SDL_WINDOWEVENT_EXPOSED:
        return windowExposed(*window, time, input);
    case SDL_WINDOWEVENT_SHOWN:
        window->wasShown();
        [[fallthrough]];
    case SDL_WINDOWEVENT_HIDDEN:
    case SDL_WINDOWEVENT_MINIMIZED:
    case SDL_WINDOWEVENT_MAXIMIZED:
    case SDL_WINDOWEVENT_RESTORED:
        if (!window->updateOnScreen()) return;
        if (!window->isOnScreen()) endPressIn(*window);
        input.push_back(
            windowInput(window->isOnScreen() ? Kind::windowShown : Kind::windowHidden, *window, time));
        return;
    case SDL_WINDOWEVENT_FOCUS_GAINED:
        input.push_back(windowInput(Kind::windowActivated, *window, time));
        return;
    case SDL_WINDOWEVENT_FOCUS_LOST:
        return windowDeactivated(*window, time, input);
    case SDL_WINDOWEVENT_CLOSE:
        input.push_back(windowInput(Kind::windowCloseRequested, *window, time));
        return;
    case SDL_WINDOWEVENT_LEAVE:
        pointerMayHaveLeft_ = true;
        return;
    case SDL_WINDOWEVENT_ENTER:
        pointerMayHaveLeft_ = false;
        return;
    default:
        return;
    }
}

void DesktopInput::windowBox(DesktopWindow& window, double time, std::vector<InputEvent>& input) {
    IntBox const before = window.box();
    if (!window.updateBox(backend_.rootSpace())) return;
    if (window.size() != before.size()) appendBoxEvent(windowInput(Kind::windowResized, window, time), input);
    if (window.place() != before.bottomLeft())
        appendBoxEvent(windowInput(Kind::windowMoved, window, time), input);
}

void DesktopInput::windowExposed(DesktopWindow const& window, double time, std::vector<InputEvent>& input) {
    bool const known = std::any_of(input.begin(), input.end(), [&window](InputEvent const& event) {
        return event.kind == Kind::windowExposed && event.window == window.id();
    });
    if (!known) input.push_back(windowInput(Kind::windowExposed, window, time));
}

void DesktopInput::windowDeactivated(DesktopWindow& window, double time, std::vector<InputEvent>& input) {
    keys_.reset();
    isComposing_ = false;
    endPressIn(window);
    input.push_back(windowInput(Kind::windowDeactivated, window, time));
}

/// Files come one by one, then the end of the drop. The library does not say where; the pointer is there.
void DesktopInput::drop(SDL_DropEvent const& event, std::vector<InputEvent>& input) {
    if (event.type == SDL_DROPFILE && event.file) dropped_.push_back(fileNameFromBytes(event.file));
    SDL_free(event.file);
    if (event.type != SDL_DROPCOMPLETE) return;
    if (dropped_.empty() && filesAreOver_) return filesOver({}, input);
    if (dropped_.empty()) return;
    filesAreOver_ = false;
    InputEvent made;
    made.kind = Kind::filesDropped;
    made.window = event.windowID;
    XY<int> place;
    SDL_GetGlobalMouseState(&place.x, &place.y);
    made.place = backend_.rootSpace().toRoot({place.x, place.y, 1, 1}).bottomLeft();
    made.files = std::exchange(dropped_, {});
    made.time = timeOf(event.timestamp);
    input.push_back(made);
}

void DesktopInput::screenChanged(double time, std::vector<InputEvent>& input) {
    InputEvent made;
    made.kind = Kind::screenChanged;
    made.time = time;
    input.push_back(made);
}

void DesktopInput::allWindowBoxes(double time, std::vector<InputEvent>& input) {
    for (auto* const window : backend_.windows()) windowBox(*window, time, input);
}

} // namespace wainscot
