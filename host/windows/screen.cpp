#include "host/windows/screen.h"

#include "host/events/event.h"
#include "host/events/event_system.h"
#include "host/objects/tree.h"
#include "host/windows/glob_manager.h"
#include "host/windows/popup_chain.h"
#include "host/windows/screen_places_p.h"
#include "host/windows/top_level_window.h"

namespace wainscot {

namespace {

IntBox activeMonitor() {
    GlobManager const* const windows = GlobManager::current();
    return windows ? windows->activeMonitor() : IntBox();
}

IntBox allMonitors() {
    IntBox all;
    if (GlobManager const* windows = GlobManager::current())
        for (IntBox const& monitor : windows->monitors()) all = all.unitedWith(monitor);
    return all;
}

Glob* globAt(XY<int> place) {
    GlobManager const* const windows = GlobManager::current();
    TopLevelWindow const* const window = windows ? windows->windowAt(place) : nullptr;
    if (!window || !window->root().isShown()) return nullptr;
    return Tree::globAt(window->root(), window->root().screenXYToGlobXY(place));
}

} // namespace

int glib_getMonitorWidth() {
    return activeMonitor().width();
}

int glib_getMonitorHeight() {
    return activeMonitor().height();
}

int glib_getRootWindowWidth() {
    return allMonitors().x2;
}

int glib_getRootWindowHeight() {
    return allMonitors().y2;
}

IntBox glib_getMonitorBox(IntBox const& box) {
    GlobManager const* const windows = GlobManager::current();
    return windows ? windows->monitorFor(box) : IntBox();
}

XY<int> glib_getPosForWindow(XY<int> const& size) {
    GlobManager const* const windows = GlobManager::current();
    if (!windows) return {};
    TopLevelWindow const* const window = windows->activeWindow();
    IntBox const monitor = windows->activeMonitor();
    XY<int> const middle = window ? window->root().box().centre() : monitor.centre();
    IntBox const wanted = IntBox::sized(middle - XY<int>{size.x / 2, size.y / 2}, size);
    return ScreenPlaces::movedOnto(monitor, wanted).bottomLeft();
}

XY<int> glib_getConstrainedPosForWindow(Canvas* canvas, XY<int> const& place, XY<int> const& size) {
    GlobManager const* const windows = GlobManager::current();
    if (!windows) return place;
    IntBox const wanted = IntBox::sized(place, size);
    TopLevelWindow const* const window = windows->windowOf(Glob::getRootParent(canvas_to_glob(canvas)));
    bool const isSeen = windows->monitorFor(wanted).intersects(wanted);
    IntBox const monitor = windows->monitorFor(isSeen || !window ? wanted : window->root().box());
    return ScreenPlaces::movedOnto(monitor, wanted).bottomLeft();
}

void setupRootPos(Canvas* canvas, XY<int> const& place) {
    Glob* const root = Glob::getRootParent(canvas_to_glob(canvas));
    if (root) root->setScreenPos(glib_getConstrainedPosForWindow(canvas, place, root->size()));
}

Glob* event_to_glob(Event const& event) {
    return globAt(event.place());
}

Canvas* glib_getCurrentMouseCanvas() {
    Glob* const glob = globAt(glib_getMousePos());
    return glob ? glob->canvas() : nullptr;
}

bool canvas_is_topmost(Canvas const* canvas) {
    GlobManager const* const windows = GlobManager::current();
    TopLevelWindow const* const window =
        windows ? windows->windowOf(Glob::getRootParent(canvas_to_glob(canvas))) : nullptr;
    if (!window) return false;
    return window == windows->foremost() || (window->isPopUp() && window == windows->topmost());
}

} // namespace wainscot
