#include "host/backends/desktop/desktop_window_p.h"

#include "host/backends/desktop/desktop_backend_p.h"
#include "host/backends/desktop/desktop_pixels_p.h"
#include "host/backends/desktop/desktop_text_p.h"
#include "host/base/diagnostics.h"

#include <SDL_error.h>

#include <algorithm>

namespace wainscot {

DesktopWindow::DesktopWindow(DesktopBackend& backend, SDL_Window* window)
    : backend_(&backend), window_(window), id_(SDL_GetWindowID(window)) {
    updateBox(backend.rootSpace());
}

DesktopWindow::~DesktopWindow() {
    if (backend_) backend_->forget(*this);
    close();
}

void DesktopWindow::close() {
    if (window_) SDL_DestroyWindow(window_);
    window_ = nullptr;
}

void DesktopWindow::abandon() {
    close();
    backend_ = nullptr;
}

void DesktopWindow::show() {
    if (!window_) return;
    wantedOnScreen_ = true;
    SDL_ShowWindow(window_);
}

void DesktopWindow::hide() {
    if (!window_) return;
    wantedOnScreen_ = false;
    SDL_HideWindow(window_);
}

void DesktopWindow::setTitle(LightweightString<wchar_t> const& title) {
    if (window_) SDL_SetWindowTitle(window_, utf8FromWide(title).c_str());
}

void DesktopWindow::resize(XY<int> size) {
    if (!window_) return;
    double const scale = backend_->rootSpace().scale();
    SDL_SetWindowSize(window_, std::max(1, toDevice(size.x, scale)), std::max(1, toDevice(size.y, scale)));
}

void DesktopWindow::setMinSize(XY<int> size) {
    if (!window_) return;
    double const scale = backend_->rootSpace().scale();
    SDL_SetWindowMinimumSize(window_, std::max(1, toDevice(size.x, scale)),
                             std::max(1, toDevice(size.y, scale)));
}

void DesktopWindow::moveTo(XY<int> place) {
    if (!window_) return;
    int height = 0;
    SDL_GetWindowSize(window_, nullptr, &height);
    XY<int> const corner = backend_->rootSpace().toDeviceCorner(place, height);
    SDL_SetWindowPosition(window_, corner.x, corner.y);
}

void DesktopWindow::raise() {
    if (window_) SDL_RaiseWindow(window_);
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
    presentedSize_ = {target->w, target->h};
    if (rects_.empty()) return;
    if (SDL_UpdateWindowSurfaceRects(window_, rects_.data(), static_cast<int>(rects_.size())) != 0)
        Diagnostics::count("present failed", SDL_GetError());
}

void DesktopWindow::presentAgain() {
    XY<int> size;
    if (!isOnScreen()) return;
    SDL_GetWindowSize(window_, &size.x, &size.y);
    // With another size the library would show fresh, empty pixels; a resize event is on its way then.
    if (size == presentedSize_) SDL_UpdateWindowSurface(window_);
}

} // namespace wainscot
