#include "host/windows/glob_manager.h"

#include "host/base/convert.h"
#include "host/base/diagnostics.h"
#include "host/drawing/path.h"
#include "host/events/dispatch_scope.h"
#include "host/events/event_system.h"
#include "host/events/messages.h"
#include "host/objects/kbd_focus.h"
#include "host/objects/tree.h"
#include "host/windows/glob_manager_p.h"
#include "host/windows/screen_places_p.h"

#include <algorithm>
#include <stdexcept>

namespace wainscot {

namespace {

constinit GlobManager* liveManager = nullptr;
/// How often closing may go on while handlers open new windows.
constexpr int maxRounds = 64;

void freeWindow(void* window) {
    delete static_cast<TopLevelWindow*>(window);
}

} // namespace

GlobManager::GlobManager(Backend& backend)
    : backend_(backend), parts_(std::make_unique<Parts>(*this, backend)) {
    liveManager = this;
    iRootHost::install(this);
    Drawable::setPainter(this);
}

GlobManager::~GlobManager() {
    closeAll();
    Drawable::setPainter(nullptr);
    iRootHost::install(nullptr);
    liveManager = nullptr;
}

GlobManager& GlobManager::instance() {
    if (!liveManager) throw std::logic_error("wainscot: no host lives");
    return *liveManager;
}

GlobManager* GlobManager::current() {
    return liveManager;
}

PopUpChain& GlobManager::popUps() {
    return parts_->popUps;
}

PopUpChain const& GlobManager::popUps() const {
    return parts_->popUps;
}

Modality const& GlobManager::modality() const {
    return parts_->modality;
}

bool GlobManager::isModal(Glob const& glob) const {
    return parts_->modality.isModal(glob);
}

bool GlobManager::isBlocked(Glob const& glob) const {
    return parts_->modality.blockerOf(glob) != nullptr;
}

// Windows

TopLevelWindow* GlobManager::windowOf(Glob const* root) const {
    return parts_->windows.of(root);
}

TopLevelWindow* GlobManager::windowOf(NativeWindowId id) const {
    return parts_->windows.of(id);
}

TopLevelWindow* GlobManager::windowOfStamp(IdStamp root) const {
    return parts_->windows.ofStamp(root);
}

std::size_t GlobManager::numWindows() const {
    return parts_->windows.size();
}

TopLevelWindow* GlobManager::topmost() const {
    return parts_->windows.topmost();
}

void GlobManager::broughtToFront(TopLevelWindow& window) {
    parts_->windows.bringToFront(window);
}

NativeWindowSettings GlobManager::settingsFor(Glob const& root, Wish const& wish) const {
    NativeWindowSettings settings;
    settings.title = fromUTF8(root.name());
    settings.size = {std::max(root.width(), 1), std::max(root.height(), 1)};
    settings.minSize = TopLevelWindow::leastSizeOf(root, false);
    settings.place = wish.place;
    settings.resizable = root.isResizable();
    settings.owner = wish.owner ? wish.owner->native().id() : 0;
    if (wish.kind == TopLevelWindow::Kind::ordinary) return settings;
    settings.kind = wish.kind == TopLevelWindow::Kind::note ? NativeWindowSettings::Kind::toolTip
                                                            : NativeWindowSettings::Kind::popUp;
    settings.keepAbove = true;
    settings.translucent = root.hasSurround() && backend_.isComposited();
    WindowMargins const margins = WindowMargins::forRoot(root, settings.translucent);
    settings.size += margins.total();
    settings.minSize += margins.total();
    if (settings.place) *settings.place -= margins.lower();
    return settings;
}

/// Makes a window that would be larger than its monitor smaller, if it is resizable.
void GlobManager::shrinkToFit(Glob& root, Wish const& wish) const {
    IntBox const near = wish.place   ? IntBox::sized(*wish.place, root.size())
                        : wish.owner ? wish.owner->root().box()
                                     : monitors().front();
    XY<int> const most = monitorFor(near).size();
    bool const isTooLarge = root.width() > most.x || root.height() > most.y;
    if (isTooLarge && root.isResizable())
        root.resize(std::min(root.width(), most.x), std::min(root.height(), most.y));
}

bool GlobManager::mayOpen(Glob const* root) const {
    bool const isRoot =
        !refusesWindows_ && is_good_glob_ptr(root) && !root->isChildGlob() && !root->isDying();
    if (isRoot && root->ownsCanvas()) return true;
    Diagnostics::count("window refused", "not a root with a canvas of its own");
    return false;
}

bool GlobManager::open(Glob& root, Wish const& wanted) {
    DispatchScope const keepsWindow;
    Wish wish = wanted;
    LifeGuard const life = root.guard();
    IdStamp const owner = wish.owner ? wish.owner->rootStamp() : IdStamp();
    if (wish.kind == TopLevelWindow::Kind::ordinary) shrinkToFit(root, wish);
    // Laying out may have destroyed it, or opened its window.
    if (!life.alive() || windowOf(&root)) return true;
    if (!mayOpen(&root)) return false;
    wish.owner = windowOfStamp(owner);
    NativeWindowSettings const settings = settingsFor(root, wish);
    std::unique_ptr<NativeWindow> native = backend_.createWindow(settings);
    if (!native) {
        LogBoth("wainscot: the window system refused a window");
        return false;
    }
    WindowMargins const margins =
        settings.isPopUp() ? WindowMargins::forRoot(root, settings.translucent) : WindowMargins();
    TopLevelWindow& window = parts_->windows.add(
        std::make_unique<TopLevelWindow>(root, std::move(native), backend_.deviceScale(), wish.kind, margins),
        owner);
    window.surface().setTranslucent(settings.translucent);
    window.nativeMoved(window.native().place());
    if (!life.alive()) return true;
    KbdFocus::startIn(root);
    if (!window.isPopUp() && !EventSystem::live().focus.activeWindow().valid()) activated(window);
    // The window manager wants to know before it shows it.
    if (wish.isModal) window.setModal(true, wish.owner);
    if (root.isVisible()) window.native().show();
    return true;
}

bool GlobManager::realize(Glob* root, std::optional<XY<int>> place) {
    if (!mayOpen(root)) return false;
    TopLevelWindow* const known = windowOf(root);
    if (!known) return open(*root, {place});
    known->native().raise();
    broughtToFront(*known);
    return true;
}

bool GlobManager::realizeOwned(Glob* root, Glob* owner, std::optional<XY<int>> place) {
    return realizeFor(root, owner, place, false);
}

bool GlobManager::realizeFor(Glob* root, Glob* owner, std::optional<XY<int>> place, bool isModal) {
    if (!mayOpen(root)) return false;
    TopLevelWindow* const known = windowOf(root);
    TopLevelWindow const* const ownerWindow =
        windowOf(Glob::getRootParent(is_good_glob_ptr(owner) ? owner : nullptr));
    if (known || !ownerWindow) return realize(root, place);
    IntBox const around = ownerWindow->root().box();
    XY<int> const middle = around.centre() - XY<int>{root->width() / 2, root->height() / 2};
    IntBox const wanted = IntBox::sized(place.value_or(middle), root->size());
    XY<int> const corner = ScreenPlaces::movedOnto(monitorFor(place ? wanted : around), wanted).bottomLeft();
    return open(*root, {corner, ownerWindow, TopLevelWindow::Kind::ordinary, isModal});
}

Glob* GlobManager::find(char const* name) const {
    if (!name || !*name) return nullptr;
    Glob* found = nullptr;
    for (auto const& window : parts_->windows)
        if (window->root().name() == name) return &window->root();
    for (auto const& window : parts_->windows) {
        window->root().visitSubtree([&](Glob& glob) {
            if (glob.name() == name) found = &glob;
            return !found;
        });
        if (found) break;
    }
    return found;
}

void GlobManager::setWindowTitle(Glob& root, LightweightString<wchar_t> const& title) {
    if (TopLevelWindow* window = windowOf(&root)) window->native().setTitle(title);
}

void GlobManager::closeRequested(Glob& root) {
    DispatchScope const scope;
    LifeGuard const life = root.guard();
    if (!root.canBeDestroyed(0) || !life.alive()) return;
    // What is being edited in it is not lost.
    HandlerRef<Glob> const holder(KbdFocus::holderIn(root));
    if (holder.get() && holder.get() != &root) KbdFocus::giveUp(*holder.get());
    if (!life.alive()) return;
    bool const handled = callMessage(Glob::pootMsg, &root, &root) == 1;
    if (!life.alive()) return;
    if (!handled) return destroy(&root);
    bool const goesOn = root.isShown() && KbdFocus::holderIn(root) == &root;
    if (goesOn && holder.get() && holder.get()->isShown()) set_kbd_focus(holder.get());
}

TopLevelWindow* GlobManager::activeWindow() const {
    EventSystem const* const system = EventSystem::current();
    return system ? windowOfStamp(system->focus.activeWindow()) : nullptr;
}

TopLevelWindow* GlobManager::foremost() const {
    return parts_->windows.foremost([](TopLevelWindow const& window) {
        return !window.isPopUp() && !window.isHidden() && window.root().isVisible();
    });
}

TopLevelWindow* GlobManager::windowAt(XY<int> place) const {
    return parts_->windows.foremost([place](TopLevelWindow const& window) {
        return !window.isHidden() && !window.isNote() && window.root().isVisible() &&
               window.root().box().contains(place);
    });
}

void GlobManager::activated(TopLevelWindow& window) {
    EventSystem::live().focus.setActiveWindow(window.rootStamp());
    glib_setrootcanvas(window.root().canvas());
    broughtToFront(window);
}

void GlobManager::rootResized(Glob& root) {
    if (TopLevelWindow* window = windowOf(&root)) window->rootResized();
    parts_->popUps.windowChanged(root);
}

void GlobManager::rootMoved(Glob& root) {
    if (TopLevelWindow* window = windowOf(&root)) window->rootMoved();
    parts_->popUps.windowChanged(root);
}

void GlobManager::rootVisibilityChanged(Glob& root) {
    TopLevelWindow* const window = windowOf(&root);
    if (!window) return;
    if (root.isVisible())
        window->native().show();
    else
        hideNative(*window);
    parts_->popUps.windowChanged(root);
}

/// The release of a button that was pressed in it may never be reported.
void GlobManager::hideNative(TopLevelWindow& window) {
    window.native().hide();
    PointerState& pointer = EventSystem::live().pointer;
    if (pointer.pressedWindow == window.rootStamp()) pointer.forgetPress();
}

void GlobManager::rootSurroundChanged(Glob& root) {
    TopLevelWindow* const window = windowOf(&root);
    if (!window || !window->isPopUp()) return;
    window->setMargins(WindowMargins::forRoot(root, window->surface().isTranslucent()));
}

void GlobManager::rootToTop(Glob& root, bool activate) {
    TopLevelWindow* const window = windowOf(&root);
    if (!window) return;
    if (activate)
        window->native().raise();
    else
        window->native().toFront();
    broughtToFront(*window);
}

void GlobManager::constrainRoot(Glob& root) {
    TopLevelWindow const* const window = windowOf(&root);
    IntBox const room = window ? roomFor(*window, root.box()) : monitorFor(root.box());
    root.setScreenPos(ScreenPlaces::movedOnto(room, root.box()).bottomLeft());
}

IntBox GlobManager::roomFor(TopLevelWindow const& window, IntBox const& box) const {
    IntBox const monitor = monitorFor(box);
    WindowMargins const frame = window.native().frame();
    IntBox const room(monitor.x1 + frame.left, monitor.y1 + frame.bottom, monitor.x2 - frame.right,
                      monitor.y2 - frame.top);
    return room.isEmpty() ? monitor : room;
}

void GlobManager::fitOnScreen(Glob& root) {
    TopLevelWindow const* const window = windowOf(&root);
    if (!window) return;
    XY<int> const most = roomFor(*window, root.box()).size();
    LifeGuard const life = root.guard();
    bool const isTooLarge = root.width() > most.x || root.height() > most.y;
    if (isTooLarge && root.isResizable() && !window->isPopUp())
        root.resize(std::min(root.width(), most.x), std::min(root.height(), most.y));
    if (life.alive()) root.constrainWithinScreen();
}

/// The pixels stay until nobody can be drawing on them any more.
void GlobManager::rootDying(Glob& root) {
    TopLevelWindow* const window = parts_->windows.take(root).release();
    if (!window) return;
    // The object under the pointer has gone.
    Tree::noteChange();
    window->close();
    parts_->flash.forget(root);
    parts_->popUps.rootDying(root);
    destroyOwned(root);
    if (glib_rootcanvas() == root.canvas()) glib_setrootcanvas(nullptr);
    if (EventSystem* system = EventSystem::current()) {
        bool const wasActive = system->focus.activeWindow() == root.idStamp();
        if (wasActive) system->focus.setApplicationHasFocus(false);
        // The release of a button that was pressed in it may never be reported.
        if (system->pointer.pressedWindow == root.idStamp()) system->pointer.forgetPress();
    }
    DispatchScope::freeWhenUnwound(freeWindow, window);
}

/// Windows that belong to a window are destroyed with it. The open chain closes its pop-ups itself.
void GlobManager::destroyOwned(Glob const& root) {
    std::vector<HandlerRef<Glob>> owned;
    for (TopLevelWindow const* window : parts_->windows.ownedBy(root.idStamp()))
        if (!parts_->popUps.contains(&window->root())) owned.emplace_back(&window->root());
    for (HandlerRef<Glob> const& ref : owned)
        if (Glob* const glob = ref.get()) destroy(glob);
}

std::vector<Glob*> GlobManager::roots() const {
    std::vector<Glob*> found;
    for (auto const& window : parts_->windows) found.push_back(&window->root());
    return found;
}

Glob* GlobManager::rootAfter(Glob const* root) const {
    TopLevelWindow const* const window = parts_->windows.of(root);
    TopLevelWindow const* const next = root && !window ? nullptr : parts_->windows.after(window);
    return next ? &next->root() : nullptr;
}

template <class Visit>
void GlobManager::visitDamaged(Visit visit) {
    DispatchScope const keepsWindows;
    for (Glob* root : parts_->windows.damaged())
        if (TopLevelWindow* window = windowOf(root)) visit(*window);
}

bool GlobManager::hasPaintWork() const {
    return !Drawable::isHeld() && parts_->windows.hasPaintWork();
}

void GlobManager::paintPending() {
    visitDamaged([](TopLevelWindow& window) { window.paint(); });
    visitDamaged([](TopLevelWindow& window) { window.present(); });
}

void GlobManager::dropPending() {
    visitDamaged([](TopLevelWindow& window) { window.surface().toPaint().clear(); });
}

/// Handlers may open further windows meanwhile, again and again.
void GlobManager::closeAll() {
    DispatchScope const scope;
    for (int round = 0; !parts_->windows.empty(); ++round) {
        if (round == maxRounds) {
            Diagnostics::count("window refused", "windows keep opening while all are closed");
            refusesWindows_ = true;
        }
        std::vector<HandlerRef<Glob>> doomed;
        for (auto const& window : parts_->windows) doomed.emplace_back(&window->root());
        bool isProgress = false;
        for (auto next = doomed.rbegin(); next != doomed.rend(); ++next) {
            Glob* const root = next->get();
            if (!root || root->isDying()) continue;
            destroy(root);
            isProgress = true;
        }
        if (!isProgress) break;
    }
    refusesWindows_ = false;
}

} // namespace wainscot
