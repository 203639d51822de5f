#include "host/backends/desktop/desktop_window_p.h"

#include "host/backends/desktop/desktop_backend_p.h"
#include "host/backends/desktop/desktop_icon_p.h"
#include "host/backends/desktop/desktop_pixels_p.h"
#include "host/base/convert.h"
#include "host/base/diagnostics.h"

#include <SDL_error.h>
#include <SDL_events.h>
#include <SDL_mouse.h>

#include <algorithm>
#include <cmath>

namespace wainscot {

DesktopWindow::DesktopWindow(DesktopBackend& backend, SDL_Window* window,
                             NativeWindowSettings const& settings)
    : backend_(&backend), window_(window), native_(window), id_(SDL_GetWindowID(window)),
      popUp_(settings.isPopUp()) {
    wishes_.leastSize = deviceSize(settings.minSize);
    if (!settings.resizable) wishes_.fixedSize = deviceSize(settings.size);
    wishes_.isPlaced = settings.place.has_value();
    wish();
    if (settings.keepAbove) setKeepAbove(true);
    if (!popUp_) setWindowIcon(window);
    updateBox(backend.rootSpace());
}

XY<int> DesktopWindow::deviceSize(XY<int> size) const {
    double const scale = backend_->rootSpace().scale();
    return {std::max(1, toDevice(size.x, scale)), std::max(1, toDevice(size.y, scale))};
}

DesktopWindow::~DesktopWindow() {
    if (backend_) backend_->forget(*this);
    close();
}

void DesktopWindow::close() {
    if (!window_) return;
    // The release of a button that is held over a closing window never arrives.
    if (SDL_GetMouseFocus() == window_) releaseButtons();
    SDL_DestroyWindow(window_);
    window_ = nullptr;
    native_ = X11Window();
}

void DesktopWindow::releaseButtons() {
    if (!window_) return;
    std::uint32_t const held = SDL_GetMouseState(nullptr, nullptr);
    if (held == 0) return;
    for (unsigned button = SDL_BUTTON_LEFT; button <= SDL_BUTTON_RIGHT; ++button)
        if (held & SDL_BUTTON(button)) native_.pretendRelease(button);
    SDL_PumpEvents();
}

void DesktopWindow::abandon() {
    close();
    backend_ = nullptr;
}

void DesktopWindow::show() {
    if (!window_) return;
    wantedOnScreen_ = true;
    native_.show();
}

void DesktopWindow::hide() {
    if (!window_) return;
    wantedOnScreen_ = false;
    if (backend_) backend_->endPressIn(*this);
    native_.hide();
}

void DesktopWindow::wasShown() {
    if (!popUp_) native_.focusUnmanaged();
}

void DesktopWindow::wasPressed() {
    if (!popUp_ && SDL_GetKeyboardFocus() != window_) native_.focusUnmanaged();
}

XY<int> DesktopWindow::largestSize() const {
    XY<int> const screen = backend_->largestDeviceSize();
    int top = 0, left = 0, bottom = 0, right = 0;
    if (popUp_ || SDL_GetWindowBordersSize(window_, &top, &left, &bottom, &right) != 0) return screen;
    return {std::max(1, screen.x - left - right), std::max(1, screen.y - top - bottom)};
}

void DesktopWindow::wish() {
    X11Window::Wishes bounded = wishes_;
    XY<int> const most = largestSize();
    bounded.leastSize = {std::min(most.x, wishes_.leastSize.x), std::min(most.y, wishes_.leastSize.y)};
    native_.wish(bounded);
}

void DesktopWindow::setModal(bool modal, NativeWindowId owner) {
    if (!window_) return;
    if (DesktopWindow const* above = backend_->findWindow(owner)) belongTo(*above);
    native_.setModal(modal, wishes_.fixedSize.has_value());
}

WindowMargins DesktopWindow::frame() const {
    int top = 0, left = 0, bottom = 0, right = 0;
    if (!window_ || popUp_ || SDL_GetWindowBordersSize(window_, &top, &left, &bottom, &right) != 0) return {};
    auto const logical = [this](int device) {
        return static_cast<int>(std::ceil(device / backend_->rootSpace().scale()));
    };
    return {logical(left), logical(bottom), logical(right), logical(top)};
}

void DesktopWindow::setTitle(LightweightString<wchar_t> const& title) {
    if (window_) SDL_SetWindowTitle(window_, toUTF8(title).c_str());
}

void DesktopWindow::resize(XY<int> size) {
    if (!window_) return;
    XY<int> wanted = deviceSize(size);
    XY<int> const most = largestSize();
    wanted = {std::max(wanted.x, std::min(most.x, wishes_.leastSize.x)),
              std::max(wanted.y, std::min(most.y, wishes_.leastSize.y))};
    if (wishes_.fixedSize) {
        wishes_.fixedSize = wanted;
        wish();
    }
    askFor(wanted);
}

void DesktopWindow::askFor(XY<int> size) {
    asked_ = size;
    native_.resize(size);
}

void DesktopWindow::setMinSize(XY<int> size) {
    if (!window_) return;
    wishes_.leastSize = deviceSize(size);
    wish();
}

void DesktopWindow::rescale(double factor) {
    if (!window_) return;
    auto const scaled = [factor](XY<int> size) {
        return XY<int>{std::max(1, static_cast<int>(std::lround(size.x * factor))),
                       std::max(1, static_cast<int>(std::lround(size.y * factor)))};
    };
    XY<int> device;
    SDL_GetWindowSize(window_, &device.x, &device.y);
    wishes_.leastSize = scaled(wishes_.leastSize);
    if (wishes_.fixedSize) wishes_.fixedSize = scaled(*wishes_.fixedSize);
    wish();
    askFor(scaled(device));
    updateBox(backend_->rootSpace());
}

void DesktopWindow::moveTo(XY<int> place) {
    if (!window_) return;
    int height = 0;
    SDL_GetWindowSize(window_, nullptr, &height);
    if (asked_) height = asked_->y;
    if (!wishes_.isPlaced) {
        wishes_.isPlaced = true;
        wish();
    }
    native_.move(backend_->rootSpace().toDeviceCorner(place, height));
}

void DesktopWindow::raise() {
    if (window_) SDL_RaiseWindow(window_);
}

void DesktopWindow::toFront() {
    if (window_) native_.toFront();
}

void DesktopWindow::setKeepAbove(bool keep) {
    if (window_) SDL_SetWindowAlwaysOnTop(window_, keep ? SDL_TRUE : SDL_FALSE);
}

void DesktopWindow::warpPointer(XY<int> devicePixel) {
    if (window_) SDL_WarpMouseInWindow(window_, devicePixel.x, devicePixel.y);
}

bool DesktopWindow::updateBox(RootSpace const& space) {
    if (!window_) return false;
    DeviceRect rect;
    SDL_GetWindowPosition(window_, &rect.x, &rect.y);
    SDL_GetWindowSize(window_, &rect.width, &rect.height);
    IntBox const before = box_;
    box_ = space.toRoot(rect);
    return box_ != before;
}

bool DesktopWindow::isOnScreen() const {
    return window_ && (SDL_GetWindowFlags(window_) & (SDL_WINDOW_HIDDEN | SDL_WINDOW_MINIMIZED)) == 0;
}

bool DesktopWindow::updateOnScreen() {
    bool const onScreen = isOnScreen();
    if (!wantedOnScreen_ || onScreen == reportedOnScreen_) return false;
    reportedOnScreen_ = onScreen;
    return true;
}

void DesktopWindow::present(Surface const& surface, std::vector<IntBox> const& boxes) {
    if (!isOnScreen()) return;
    SDL_Surface* const target = SDL_GetWindowSurface(window_);
    if (!target) {
        Diagnostics::count("present failed", SDL_GetError());
        return;
    }
    rects_.clear();
    copyBoxes(surface, boxes, *target, rects_);
    if (rects_.empty()) return;
    if (SDL_UpdateWindowSurfaceRects(window_, rects_.data(), static_cast<int>(rects_.size())) != 0)
        Diagnostics::count("present failed", SDL_GetError());
}

} // namespace wainscot
