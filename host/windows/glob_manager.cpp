#include "host/windows/glob_manager.h"

#include "host/base/convert.h"
#include "host/base/diagnostics.h"
#include "host/drawing/path.h"
#include "host/events/dispatch_scope.h"
#include "host/events/event_system.h"
#include "host/events/messages.h"
#include "host/objects/kbd_focus.h"

#include <algorithm>
#include <stdexcept>

namespace wainscot {

namespace {

constinit GlobManager* liveManager = nullptr;

void freeWindow(void* window) {
    delete static_cast<TopLevelWindow*>(window);
}

} // namespace

GlobManager::GlobManager(Backend& backend) : backend_(backend) {
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

NativeWindowSettings GlobManager::settingsFor(Glob const& root, std::optional<XY<int>> place) const {
    NativeWindowSettings settings;
    settings.title = fromUTF8(root.name());
    settings.size = {std::max(root.width(), 1), std::max(root.height(), 1)};
    settings.minSize = {std::max(root.getMinSize().x, 1), std::max(root.getMinSize().y, 1)};
    settings.place = place;
    settings.resizable = root.isResizable();
    return settings;
}

bool GlobManager::realize(Glob* root, std::optional<XY<int>> place) {
    bool const isRoot = is_good_glob_ptr(root) && !root->isChildGlob() && !root->isDying();
    if (!isRoot || !root->ownsCanvas()) {
        Diagnostics::count("window refused", "not a root with a canvas of its own");
        return false;
    }
    DispatchScope const keepsWindow;
    LifeGuard const life = root->guard();
    if (TopLevelWindow* known = windowOf(root)) {
        known->native().raise();
        broughtToFront(*known);
        return true;
    }
    std::unique_ptr<NativeWindow> native = backend_.createWindow(settingsFor(*root, place));
    if (!native) {
        LogBoth("wainscot: the window system refused a window");
        return false;
    }
    windows_.push_back(std::make_unique<TopLevelWindow>(*root, std::move(native), backend_.deviceScale()));
    TopLevelWindow& window = *windows_.back();
    stacking_.push_back(&window);
    window.nativeMoved(window.native().place());
    if (!life.alive()) return false;
    KbdFocus::startIn(*root);
    if (!EventSystem::live().focus.activeWindow().valid()) activated(window);
    if (root->isVisible()) window.native().show();
    return true;
}

Glob* GlobManager::find(char const* name) const {
    if (!name || !*name) return nullptr;
    Glob* found = nullptr;
    for (auto const& window : windows_)
        if (window->root().name() == name) return &window->root();
    for (auto const& window : windows_) {
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
    bool const handled = callMessage(Glob::pootMsg, &root, &root);
    if (!handled && life.alive()) destroy(&root);
}

TopLevelWindow* GlobManager::windowOf(Glob const* root) const {
    for (auto const& window : windows_)
        if (&window->root() == root) return window.get();
    return nullptr;
}

TopLevelWindow* GlobManager::windowOf(NativeWindowId id) const {
    for (auto const& window : windows_)
        if (window->isOpen() && window->native().id() == id) return window.get();
    return nullptr;
}

TopLevelWindow* GlobManager::windowAt(XY<int> place) const {
    for (auto window = stacking_.rbegin(); window != stacking_.rend(); ++window)
        if (!(*window)->isHidden() && (*window)->root().isVisible() &&
            (*window)->root().box().contains(place))
            return *window;
    return nullptr;
}

void GlobManager::broughtToFront(TopLevelWindow& window) {
    std::erase(stacking_, &window);
    stacking_.push_back(&window);
}

void GlobManager::activated(TopLevelWindow& window) {
    EventSystem::live().focus.setActiveWindow(window.rootStamp());
    glib_setrootcanvas(window.root().canvas());
    broughtToFront(window);
}

void GlobManager::rootResized(Glob& root) {
    if (TopLevelWindow* window = windowOf(&root)) window->rootResized();
}

void GlobManager::rootMoved(Glob& root) {
    if (TopLevelWindow* window = windowOf(&root)) window->rootMoved();
}

void GlobManager::rootVisibilityChanged(Glob& root) {
    TopLevelWindow* const window = windowOf(&root);
    if (!window) return;
    if (root.isVisible())
        window->native().show();
    else
        window->native().hide();
}

/// The pixels stay until nobody can be drawing on them any more.
void GlobManager::rootDying(Glob& root) {
    auto const isIts = [&](auto const& window) { return &window->root() == &root; };
    auto const found = std::find_if(windows_.begin(), windows_.end(), isIts);
    if (found == windows_.end()) return;
    TopLevelWindow* const window = found->release();
    windows_.erase(found);
    std::erase(stacking_, window);
    window->close();
    if (glib_rootcanvas() == root.canvas()) glib_setrootcanvas(nullptr);
    if (EventSystem* system = EventSystem::current()) {
        bool const wasActive = system->focus.activeWindow() == root.idStamp();
        if (wasActive) system->focus.setApplicationHasFocus(false);
        // The release of a button that was pressed in it may never be reported.
        if (system->pointer.pressedWindow == root.idStamp()) system->pointer.forgetPress();
    }
    DispatchScope::freeWhenUnwound(freeWindow, window);
}

std::vector<Glob*> GlobManager::roots() const {
    std::vector<Glob*> found;
    for (auto const& window : windows_) found.push_back(&window->root());
    return found;
}

template <class Visit>
void GlobManager::visitWindows(Visit visit) {
    DispatchScope const keepsWindows;
    for (Glob* root : roots())
        if (TopLevelWindow* window = windowOf(root)) visit(*window);
}

bool GlobManager::hasPaintWork() const {
    bool const held = Drawable::holdCount() > 0;
    return !held &&
           std::any_of(windows_.begin(), windows_.end(), [](auto const& w) { return w->hasPaintWork(); });
}

void GlobManager::paintPending() {
    visitWindows([](TopLevelWindow& window) { window.paint(); });
    visitWindows([](TopLevelWindow& window) { window.present(); });
}

void GlobManager::dropPending() {
    visitWindows([](TopLevelWindow& window) { window.surface().toPaint().clear(); });
}

void GlobManager::closeAll() {
    DispatchScope const scope;
    auto const living = [this] {
        std::vector<Glob*> found = roots();
        std::erase_if(found, [](Glob* root) { return root->isDying(); });
        return found;
    };
    // Handlers may open further windows meanwhile.
    for (std::vector<Glob*> left = living(); !left.empty(); left = living()) destroy(left.back());
}

} // namespace wainscot
