#include "host/backends/offscreen/offscreen_backend.h"

#include "host/drawing/surface.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace wainscot {

namespace {

constexpr IntBox standardMonitor(0, 0, 1920, 1080);

InputEvent windowEvent(InputEvent::Kind kind, NativeWindowId window, double time) {
    InputEvent event;
    event.kind = kind;
    event.window = window;
    event.time = time;
    return event;
}

/// Windows without a stated place are staggered, so that no two lie exactly on each other.
XY<int> nextPlace(NativeWindowId id, XY<int> size, IntBox const& monitor) {
    int const step = static_cast<int>((id - 1) % 10) * 32;
    return {monitor.x1 + 32 + step, std::max(monitor.y2 - 32 - step - size.y, monitor.y1)};
}

} // namespace

OffscreenBackend::OffscreenBackend(double deviceScale)
    : deviceScale_(deviceScale > 0.0 ? deviceScale : 1.0), monitors_{standardMonitor} {}

OffscreenBackend::~OffscreenBackend() = default;

std::unique_ptr<NativeWindow> OffscreenBackend::createWindow(NativeWindowSettings const& settings) {
    if (refuses_) return nullptr;
    NativeWindowId const id = ++lastId_;
    XY<int> const place = settings.place ? *settings.place : nextPlace(id, settings.size, monitors_.front());
    auto window = std::make_unique<OffscreenWindow>(*this, id, settings, place);
    windows_.emplace(id, window.get());
    return window;
}

void OffscreenBackend::poll(std::vector<InputEvent>& input) {
    for (InputEvent& event : std::exchange(input_, {}))
        if (event.window == 0 || window(event.window)) input.push_back(std::move(event));
}

void OffscreenBackend::wait(std::optional<double> until) {
    if (until) clock_.advanceTo(*until);
}

void OffscreenBackend::setMonitors(std::vector<IntBox> monitors) {
    if (monitors.empty()) return;
    IntBox all = monitors.front();
    for (IntBox const& monitor : monitors) all = all.unitedWith(monitor);
    for (IntBox& monitor : monitors) monitor = monitor.translated(XY<int>() - all.bottomLeft());
    monitors_ = std::move(monitors);
    inject(windowEvent(InputEvent::Kind::screenChanged, 0, clock_.msecs()));
}

void OffscreenBackend::activate(NativeWindowId id) {
    OffscreenWindow* const wanted = window(id);
    bool const can = wanted && wanted->isShown() && wanted->kind() == NativeWindowSettings::Kind::ordinary;
    if (!can || active_ == id) return;
    deactivateAll();
    active_ = id;
    byActivation_.erase(wanted->activation_);
    wanted->activation_ = ++lastActivation_;
    byActivation_.emplace(wanted->activation_, id);
    inject(windowEvent(InputEvent::Kind::windowActivated, id, clock_.msecs()));
}

void OffscreenBackend::deactivateAll() {
    if (active_ != 0) inject(windowEvent(InputEvent::Kind::windowDeactivated, active_, clock_.msecs()));
    active_ = 0;
}

void OffscreenBackend::inject(InputEvent input) {
    input_.push_back(std::move(input));
}

OffscreenWindow* OffscreenBackend::window(NativeWindowId id) const {
    auto const found = windows_.find(id);
    return found == windows_.end() ? nullptr : found->second;
}

/// Its owner becomes the active window if it is shown, else the window that was active last.
void OffscreenBackend::closed(OffscreenWindow& window) {
    windows_.erase(window.id());
    byActivation_.erase(window.activation_);
    if (active_ != window.id()) return;
    active_ = 0;
    activate(window.owner());
    if (active_ != 0) return;
    for (auto other = byActivation_.rbegin(); other != byActivation_.rend(); ++other) {
        NativeWindowId const id = other->second;
        activate(id);
        // That has moved its place in the list.
        if (active_ != 0) return;
    }
}

OffscreenWindow::OffscreenWindow(OffscreenBackend& backend, NativeWindowId id,
                                 NativeWindowSettings const& settings, XY<int> place)
    : backend_(backend), id_(id), title_(settings.title), size_(settings.size), minSize_(settings.minSize),
      place_(place), kind_(settings.kind), keepsAbove_(settings.keepAbove), owner_(settings.owner),
      translucent_(settings.translucent) {}

OffscreenWindow::~OffscreenWindow() {
    backend_.closed(*this);
}

void OffscreenWindow::show() {
    if (shown_) return;
    shown_ = true;
    if (kind_ == NativeWindowSettings::Kind::ordinary) backend_.activate(id_);
}

void OffscreenWindow::hide() {
    if (!shown_) return;
    shown_ = false;
    if (backend_.active_ == id_) backend_.deactivateAll();
}

void OffscreenWindow::resize(XY<int> size) {
    if (size == size_) return;
    size_ = size;
    // Only the newest size is told, as by a window system that is asked twice.
    std::erase_if(backend_.input_, [&](InputEvent const& input) {
        return input.kind == InputEvent::Kind::windowResized && input.window == id_;
    });
    InputEvent event = windowEvent(InputEvent::Kind::windowResized, id_, backend_.clock_.msecs());
    event.size = size;
    backend_.inject(event);
}

void OffscreenWindow::moveTo(XY<int> place) {
    if (place == place_) return;
    place_ = place;
    InputEvent event = windowEvent(InputEvent::Kind::windowMoved, id_, backend_.clock_.msecs());
    event.place = place;
    backend_.inject(event);
}

void OffscreenWindow::raise() {
    if (kind_ == NativeWindowSettings::Kind::ordinary) backend_.activate(id_);
}

void OffscreenWindow::setModal(bool modal, NativeWindowId owner) {
    modal_ = modal;
    if (owner != 0) owner_ = owner;
}

void OffscreenWindow::present(Surface const& surface, std::vector<IntBox> const& boxes) {
    lastPresented_ = boxes;
    numPresented_ += boxes.size();
    scale_ = surface.scale();
    if (deviceSize_ != surface.deviceSize()) {
        deviceSize_ = surface.deviceSize();
        pixels_.reset();
        pixels_ = makePixelMemory(static_cast<std::size_t>(deviceSize_.x) *
                                  static_cast<std::size_t>(deviceSize_.y));
    }
    for (IntBox const& box : boxes) {
        IntBox const part = surface.deviceBox(box);
        // Whole rows follow each other: many go at once.
        bool const areWhole = part.width() == deviceSize_.x;
        int const rowsAtOnce = areWhole ? part.height() : 1;
        std::ptrdiff_t const count = static_cast<std::ptrdiff_t>(part.width()) * rowsAtOnce;
        for (int y = part.y1; y < part.y2; y += rowsAtOnce) {
            std::ptrdiff_t const start = static_cast<std::ptrdiff_t>(y) * deviceSize_.x + part.x1;
            std::copy_n(surface.pixels() + start, count, pixels_.get() + start);
        }
    }
}

std::uint32_t OffscreenWindow::pixelAt(XY<int> place) const {
    int const x = static_cast<int>(std::lround(place.x * scale_));
    int const y = deviceSize_.y - 1 - static_cast<int>(std::lround(place.y * scale_));
    if (place.x < 0 || place.y < 0 || x >= deviceSize_.x || y < 0) return 0;
    return pixels_[static_cast<std::size_t>(y) * static_cast<std::size_t>(deviceSize_.x) +
                   static_cast<std::size_t>(x)];
}

} // namespace wainscot
