// Pop-ups, modal windows and places of GlobManager.

#include "host/base/diagnostics.h"
#include "host/events/dispatch_scope.h"
#include "host/events/event_system.h"
#include "host/objects/kbd_focus.h"
#include "host/objects/placement_p.h"
#include "host/objects/tree.h"
#include "host/windows/glob_manager_p.h"
#include "host/windows/screen_places_p.h"

#include <cmath>

namespace wainscot {

namespace {

/// How often a change of the look may answer another one.
constexpr int maxLookRounds = 64;

/// The place of a root of that size one of whose corners lies at `place`.
XY<int> lowerLeft(XY<int> place, CoordinateOrigin origin, XY<int> size) {
    switch (origin) {
    case CoordinateOrigin::bottomLeft:
        return place;
    case CoordinateOrigin::bottomRight:
        return {place.x - size.x, place.y};
    case CoordinateOrigin::centre:
        return {place.x - size.x / 2, place.y - size.y / 2};
    case CoordinateOrigin::topLeft:
        return {place.x, place.y - size.y};
    case CoordinateOrigin::topRight:
        return {place.x - size.x, place.y - size.y};
    case CoordinateOrigin::leftCentre:
        return {place.x, place.y - size.y / 2};
    case CoordinateOrigin::rightCentre:
        break;
    }
    return {place.x - size.x, place.y - size.y / 2};
}

XY<int> sizeOf(GlobCreationInfo const& info) {
    return {info.width, info.height};
}

Glob* liveOrNull(Glob* glob) {
    return is_good_glob_ptr(glob) ? glob : nullptr;
}

} // namespace

// Monitors

std::vector<IntBox> GlobManager::monitors() const {
    return backend_.monitors();
}

double GlobManager::deviceScale() const {
    return backend_.deviceScale();
}

IntBox GlobManager::monitorFor(IntBox const& box) const {
    return ScreenPlaces::monitorOf(monitors(), box);
}

IntBox GlobManager::activeMonitor() const {
    TopLevelWindow const* const window = activeWindow();
    return window ? monitorFor(window->root().box()) : monitors().front();
}

// Places

XY<int> GlobManager::placeBy(GlobCreationInfo const& info, WidgetPosition const& position) const {
    XY<int> const size = sizeOf(info);
    if (!position.isRelative()) return Placement::inCorner(position, activeMonitor(), size);
    Glob const* const sibling = position.sibling();
    if (!sibling) return glib_getMousePos();
    return ScreenPlaces::beside(sibling->screenBox(), size, position.relativity(), position.gap(),
                                position.alignment())
        .bottomLeft();
}

XY<int> GlobManager::getPosForGlob(GlobCreationInfo const& info, WidgetPosition const& position) const {
    return placeBy(info, position);
}

XY<int> GlobManager::getSafePosForGlob(GlobCreationInfo const& info, WidgetPosition const& position,
                                       bool* opposite) const {
    Glob const* const sibling = position.isRelative() ? position.sibling() : nullptr;
    if (sibling)
        return getSafePosForGlob(info, sibling->screenBox(), position.relativity(), position.gap(),
                                 position.alignment(), opposite);
    if (opposite) *opposite = false;
    IntBox const wanted = IntBox::sized(placeBy(info, position), sizeOf(info));
    return ScreenPlaces::movedOnto(monitorFor(wanted), wanted).bottomLeft();
}

XY<int> GlobManager::getSafePosForGlob(GlobCreationInfo const& info, IntBox const& anchor,
                                       WidgetRelativity side, int gap, WidgetAlignment alignment,
                                       bool* opposite) const {
    auto const found = ScreenPlaces::besideOn(monitorFor(anchor), anchor, sizeOf(info), side, gap, alignment);
    if (opposite) *opposite = found.opposite;
    return found.box.bottomLeft();
}

XY<int> GlobManager::calcPosForGlob(XY<int> const& size, IntBox const& anchor, WidgetRelativity side,
                                    WidgetAlignment alignment) const {
    IntBox const monitor = monitorFor(anchor);
    IntBox const wanted = ScreenPlaces::beside(anchor, size, side, 0, alignment);
    IntBox const moved = ScreenPlaces::movedOnto(monitor, wanted);
    bool const alongX = side == WidgetRelativity::above || side == WidgetRelativity::below;
    bool const touches = alongX ? moved.y1 == wanted.y1 : moved.x1 == wanted.x1;
    bool const hasRoom = touches && monitor.contains(moved);
    return {moved.x1, hasRoom ? moved.y1 : -1};
}

bool GlobManager::redisplay(Glob* root, XY<int> const& place, CoordinateOrigin origin, bool toTop) {
    if (!mayOpen(root)) return false;
    IntBox const wanted =
        IntBox::sized(lowerLeft(Placement::clampPlace(place), origin, root->size()), root->size());
    XY<int> const corner = ScreenPlaces::movedOnto(monitorFor(wanted), wanted).bottomLeft();
    LifeGuard const life = root->guard();
    if (!windowOf(root)) return realize(root, corner);
    root->setScreenPos(corner);
    if (life.alive()) root->setVisible(true);
    if (life.alive() && toTop) root->popToTop();
    return life.alive();
}

void GlobManager::canvasKeepTopmost(Canvas* canvas, bool keep) {
    TopLevelWindow* const window = windowOf(Glob::getRootParent(canvas_to_glob(canvas)));
    if (!window) return;
    window->setKeepAbove(keep);
    broughtToFront(*window);
}

// Pop-ups

/// Pop-ups come and go: a window that is opened from a pop-up belongs to the window behind it.
TopLevelWindow* GlobManager::ordinaryWindowFor(Glob* context) const {
    TopLevelWindow* window = windowOf(Glob::getRootParent(context));
    while (window && window->isPopUp()) window = windowOfStamp(window->ownerStamp());
    return window ? window : activeWindow();
}

/// An opaque edge round it lies on the monitor too; a shadow need not.
IntBox GlobManager::roomForPopUp(Glob const& root, IntBox const& anchor) const {
    IntBox const monitor = monitorFor(anchor);
    if (root.hasSurround() && backend_.isComposited()) return monitor;
    WindowMargins const edge = WindowMargins::forRoot(root, false);
    return {monitor.x1 + edge.left, monitor.y1 + edge.bottom, monitor.x2 - edge.right, monitor.y2 - edge.top};
}

bool GlobManager::openPopUp(Glob* root, PopUpOptions const& options) {
    if (!mayOpen(root) || windowOf(root)) return false;
    if (!EventSystem::live().focus.applicationHasFocus()) {
        Diagnostics::count("pop-up refused", "no window of the program is the active one");
        return false;
    }
    DispatchScope const scope;
    Glob* const opener = liveOrNull(options.opener);
    Glob* const parent = parts_->popUps.contains(options.parent) ? options.parent : nullptr;
    Glob* const context = parent ? parent : opener;
    LifeGuard const contextLife = context ? context->guard() : root->guard();
    TopLevelWindow const* const owner = ordinaryWindowFor(context);
    IdStamp const ownerStamp = owner ? owner->rootStamp() : IdStamp();
    IntBox const wanted =
        IntBox::sized(Placement::clampPlace(options.place.value_or(root->box().bottomLeft())), root->size());
    IntBox const anchor = options.anchor ? *options.anchor
                          : opener       ? opener->screenBox()
                                         : IntBox::sized(glib_getMousePos(), {1, 1});
    XY<int> const corner = ScreenPlaces::movedOnto(roomForPopUp(*root, anchor), wanted).bottomLeft();
    LifeGuard const life = root->guard();
    if (!parts_->popUps.add(*root, parent, opener, owner ? &owner->root() : nullptr)) return true;
    // Closing other pop-ups may have opened it.
    if (windowOf(root)) return true;
    // Or may have given it a parent.
    if (!mayOpen(root)) {
        parts_->popUps.leave(*root);
        return false;
    }
    if (context && contextLife.alive()) parts_->modality.setContext(*root, *context);
    TopLevelWindow const* const ownerNow = windowOfStamp(ownerStamp);
    if (open(*root, {corner, ownerNow, TopLevelWindow::Kind::popUp})) return true;
    if (life.alive()) parts_->popUps.leave(*root);
    return !life.alive();
}

bool GlobManager::openNote(Glob* root, XY<int> place, Glob& owner) {
    if (!mayOpen(root) || windowOf(root)) return false;
    DispatchScope const scope;
    return open(*root, {place, windowOf(Glob::getRootParent(&owner)), TopLevelWindow::Kind::note});
}

void GlobManager::pinPopUp(Glob* root) {
    if (is_good_glob_ptr(root)) parts_->popUps.leave(*root);
}

bool GlobManager::isFree(Glob const* glob) const {
    return is_good_glob_ptr(glob) && !glob->parent() && !windowOf(glob);
}

bool GlobManager::isPopUp(Glob const* root) const {
    TopLevelWindow const* const window = windowOf(root);
    return window && window->isPopUp();
}

// Modal objects

bool GlobManager::addModalGlob(Glob* glob, Glob* context) {
    if (!is_good_glob_ptr(glob)) {
        Diagnostics::count("modal object refused", "not a live object");
        return false;
    }
    LifeGuard const life = glob->guard();
    TopLevelWindow const* const before = ordinaryWindowFor(liveOrNull(context));
    IdStamp const owner = before ? before->rootStamp() : IdStamp();
    parts_->popUps.closeAll();
    if (!life.alive()) return true;
    TopLevelWindow const* const now = windowOfStamp(owner);
    bool const needsWindow = !glob->isChildGlob() && !windowOf(glob);
    if (needsWindow && !realizeFor(glob, now ? &now->root() : nullptr, {}, true)) return false;
    if (!life.alive()) return true;
    parts_->modality.addModal(*glob);
    if (TopLevelWindow* window = windowOf(glob)) window->setModal(true, windowOfStamp(owner));
    modalityChanged();
    return true;
}

/// The mark of the focus is hidden when a modal object keeps keys from the holder.
void GlobManager::modalityChanged() {
    Tree::noteChange();
    if (Glob* holder = get_kbd_focus()) holder->makeDirty();
}

void GlobManager::setModalContextGlob(Glob* glob, Glob* context) {
    if (liveOrNull(glob) && liveOrNull(context)) parts_->modality.setContext(*glob, *context);
}

void GlobManager::unsetModalContextGlob(Glob* glob) {
    if (glob) parts_->modality.remove(*glob);
    if (TopLevelWindow* window = windowOf(glob)) window->setModal(false, nullptr);
    modalityChanged();
}

void GlobManager::showModal(Glob& modal) {
    modal.popToTop();
    if (TopLevelWindow* window = windowOf(Glob::getRootParent(&modal))) parts_->flash.start(*window);
}

// Changes of screen and look

void GlobManager::screenChanged() {
    parts_->popUps.closeAll();
    setDeviceScale(backend_.deviceScale());
    DispatchScope const keepsWindows;
    for (Glob* root : roots())
        if (windowOf(root)) runHandler("screen change", [&] { fitOnScreen(*root); });
}

void GlobManager::setDeviceScale(double scale) {
    if (!std::isfinite(scale) || scale <= 0.0) {
        Diagnostics::count("scale refused", "not a positive number");
        return;
    }
    backend_.setDeviceScale(scale);
    bool changed = false;
    for (auto const& window : parts_->windows) {
        changed = changed || window->surface().scale() != backend_.deviceScale();
        window->setScale(backend_.deviceScale());
    }
    if (!changed) return;
    lookChanged(LookChange::deviceScale);
    DispatchScope const keepsWindows;
    for (Glob* root : roots())
        if (windowOf(root)) runHandler("change of the scale", [&] { fitOnScreen(*root); });
}

/// A change that is made in answer to a change is told after it.
void GlobManager::lookChanged(LookChange changes) {
    lookChanges_ = lookChanges_ | changes;
    if (tellsLook_) return;
    tellsLook_ = true;
    for (int round = 0; current() == this && lookChanges_ != LookChange::none; ++round) {
        LookChange const told = std::exchange(lookChanges_, LookChange::none);
        if (round == maxLookRounds) {
            Diagnostics::count("look change not told", "handlers keep changing the look");
            break;
        }
        tellLookChanged(told);
    }
    if (current() == this) tellsLook_ = false;
}

void GlobManager::tellLookChanged(LookChange changes) {
    DispatchScope const keepsWindows;
    for (Glob* root : roots()) {
        if (!windowOf(root)) continue;
        LifeGuard const life = root->guard();
        root->visitSubtree([changes](Glob& glob) {
            runHandler("handleLookChange", [&] { glob.handleLookChange(changes); });
            return true;
        });
        if (!life.alive()) continue;
        root->visitSubtree([](Glob& glob) {
            runHandler("reshape", [&] { glob.forceReshape(); });
            return true;
        });
        if (life.alive()) root->makeDirty();
    }
}

} // namespace wainscot
