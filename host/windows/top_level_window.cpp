#include "host/windows/top_level_window.h"

#include "host/drawing/uif_std.h"
#include "host/events/dispatch_scope.h"
#include "host/objects/painting_p.h"

#include <algorithm>

namespace wainscot {

namespace {

XY<int> atLeastOne(XY<int> size) {
    return {std::max(size.x, 1), std::max(size.y, 1)};
}

} // namespace

TopLevelWindow::TopLevelWindow(Glob& root, std::unique_ptr<NativeWindow> native, double scale, Kind kind,
                               WindowMargins const& margins)
    : root_(&root), rootStamp_(root.idStamp()), native_(std::move(native)),
      surface_(atLeastOne(root.size()) + margins.total(), scale), margins_(margins), kind_(kind) {
    surface_.setContentPlace(margins.lower());
    root.canvas()->attach(&surface_);
    surface_.toPaint().add(surface_.bounds());
    surface_.toPaint().watch(this);
    surface_.toPresent().watch(this);
}

XY<int> TopLevelWindow::outerSize() const {
    return atLeastOne(root_->size()) + margins_.total();
}

XY<int> TopLevelWindow::outerPlace() const {
    return root_->box().bottomLeft() - margins_.lower();
}

void TopLevelWindow::setKeepAbove(bool keep) {
    keepsAbove_ = keep;
    if (native_) native_->setKeepAbove(keep);
}

XY<int> TopLevelWindow::leastSizeOf(Glob const& root, bool isModal) {
    XY<int> const stated = root.getMinSize();
    constexpr int buttonsWide = 8, buttonsHigh = 3;
    int const unit = isModal ? UifStd::getButtonHeight() : 0;
    return {std::max({stated.x, std::min(root.width(), buttonsWide * unit), 1}),
            std::max({stated.y, std::min(root.height(), buttonsHigh * unit), 1})};
}

void TopLevelWindow::setModal(bool modal, TopLevelWindow const* context) {
    if (isModal_ == modal || !native_) return;
    isModal_ = modal;
    native_->setMinSize(leastSizeOf(*root_, modal) + margins_.total());
    native_->setModal(modal, context && context != this ? context->native().id() : 0);
}

void TopLevelWindow::setMargins(WindowMargins const& margins) {
    if (margins == margins_ || !native_) return;
    margins_ = margins;
    surface_.setContentPlace(margins.lower());
    surface_.resize(outerSize(), surface_.scale());
    surface_.toPaint().add(surface_.bounds());
    native_->resize(outerSize());
    native_->moveTo(outerPlace());
}

void TopLevelWindow::setMarked(bool marked) {
    if (surface_.isMarked() == marked) return;
    surface_.setMarked(marked);
    surface_.toPaint().add(surface_.bounds());
}

void TopLevelWindow::setScale(double scale) {
    surface_.resize(surface_.size(), scale);
    surface_.toPaint().add(surface_.bounds());
}

void TopLevelWindow::setHidden(bool hidden) {
    hidden_ = hidden;
    if (!hidden) surface_.toPresent().add(surface_.bounds());
}

void TopLevelWindow::nativeResized(XY<int> size) {
    if (size == outerSize() && size == surface_.size()) return;
    LifeGuard const life = root_->guard();
    DispatchScope const scope;
    surface_.resize(atLeastOne(size), surface_.scale());
    following_ = true;
    XY<int> const inner = atLeastOne(size - margins_.total());
    runHandler("resize", [&] { root_->resize(inner.x, inner.y); });
    if (!life.alive()) return;
    following_ = false;
    surface_.toPaint().add(surface_.bounds());
}

void TopLevelWindow::nativeMoved(XY<int> place) {
    DispatchScope const scope;
    LifeGuard const life = root_->guard();
    following_ = true;
    runHandler("move", [&] { root_->setScreenPos(place + margins_.lower()); });
    if (life.alive()) following_ = false;
}

void TopLevelWindow::rootResized() {
    if (following_ || !native_) return;
    surface_.resize(outerSize(), surface_.scale());
    native_->setMinSize(leastSizeOf(*root_, isModal_) + margins_.total());
    native_->resize(outerSize());
}

void TopLevelWindow::rootMoved() {
    if (!following_ && native_) native_->moveTo(outerPlace());
}

void TopLevelWindow::watchDamage(DamageWatcher* watcher, std::uint64_t number) {
    watcher_ = watcher;
    number_ = number;
    if (hasDamage()) damageAdded();
}

bool TopLevelWindow::hasDamage() const {
    return !surface_.toPaint().empty() || !surface_.toPresent().empty();
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
