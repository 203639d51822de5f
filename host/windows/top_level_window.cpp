#include "host/windows/top_level_window.h"

#include "host/events/dispatch_scope.h"
#include "host/objects/painting.h"

#include <algorithm>

namespace wainscot {

namespace {

XY<int> atLeastOne(XY<int> size) {
    return {std::max(size.x, 1), std::max(size.y, 1)};
}

} // namespace

TopLevelWindow::TopLevelWindow(Glob& root, std::unique_ptr<NativeWindow> native, double scale)
    : root_(&root), rootStamp_(root.idStamp()), native_(std::move(native)),
      surface_(atLeastOne(root.size()), scale) {
    root.canvas()->attach(&surface_);
    surface_.toPaint().add(surface_.bounds());
}

void TopLevelWindow::setHidden(bool hidden) {
    hidden_ = hidden;
    if (!hidden) surface_.toPresent().add(surface_.bounds());
}

void TopLevelWindow::nativeResized(XY<int> size) {
    if (size == root_->size() && size == surface_.size()) return;
    LifeGuard const life = root_->guard();
    DispatchScope const scope;
    surface_.resize(atLeastOne(size), surface_.scale());
    following_ = true;
    runHandler("resize", [&] { root_->resize(size.x, size.y); });
    if (!life.alive()) return;
    following_ = false;
    surface_.toPaint().add(surface_.bounds());
}

void TopLevelWindow::nativeMoved(XY<int> place) {
    DispatchScope const scope;
    LifeGuard const life = root_->guard();
    following_ = true;
    runHandler("move", [&] { root_->setScreenPos(place); });
    if (life.alive()) following_ = false;
}

void TopLevelWindow::rootResized() {
    if (following_ || !native_) return;
    XY<int> const size = atLeastOne(root_->size());
    surface_.resize(size, surface_.scale());
    native_->setMinSize(atLeastOne(root_->getMinSize()));
    native_->resize(size);
}

void TopLevelWindow::rootMoved() {
    if (!following_ && native_) native_->moveTo(root_->box().bottomLeft());
}

bool TopLevelWindow::hasPaintWork() {
    bool const paints = !surface_.toPaint().empty() && !surface_.isPaintingHeld();
    return native_ && !hidden_ && (paints || !surface_.toPresent().empty());
}

void TopLevelWindow::paint() {
    if (native_ && !hidden_) Painting::paint(*root_, surface_);
}

void TopLevelWindow::present() {
    if (native_ && !hidden_ && !surface_.toPresent().empty())
        native_->present(surface_, surface_.toPresent().take());
}

void TopLevelWindow::close() {
    native_.reset();
}

} // namespace wainscot
