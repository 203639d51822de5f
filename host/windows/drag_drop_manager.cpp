#include "host/windows/drag_drop_manager.h"

#include "host/drawing/uif_std.h"
#include "host/events/dispatch_scope.h"
#include "host/events/event_system.h"
#include "host/messages/handler_ref.h"
#include "host/objects/tree.h"
#include "host/windows/floating_note_p.h"
#include "host/windows/glob_manager.h"
#include "host/windows/modality_p.h"
#include "host/windows/top_level_window.h"

#include <stdexcept>
#include <utility>

namespace wainscot {

namespace {

constinit DragDropManager* liveManager = nullptr;

/// The part of the screen that the pointer's shapes cover.
constexpr int pointerExtent = 18;

} // namespace

DragDropManager::DragDropManager(GlobManager& windows, EventSystem& events)
    : windows_(windows), events_(events), label_(std::make_unique<FloatingNote>()) {
    liveManager = this;
}

DragDropManager::~DragDropManager() {
    liveManager = nullptr;
}

DragDropManager& DragDropManager::instance() {
    if (!liveManager) throw std::logic_error("wainscot: no host lives");
    return *liveManager;
}

bool DragDropManager::beginDrag(Qv::Ptr<DragDropItem> item, Glob* source) {
    if (!item || isDragging() || events_.pointer.heldButtons == 0) return false;
    filesLeft();
    EventHandler* const captured = events_.pointer.captureHolder();
    events_.pointer.releaseCapture();
    item_ = std::move(item);
    source_ = HandlerRef<Glob>(is_good_glob_ptr(source) ? source : nullptr);
    hovered_ = HandlerRef<Glob>();
    cursor_ = forbiddenCursor;
    // The former holder of the pointer does not hear of the release.
    Glob::tellCaptureLost(HandlerRef<Glob>(captured ? captured->asGlob() : nullptr));
    return true;
}

Glob* DragDropManager::destinationFor(DragDropItem const& item, XY<int> const& place,
                                      Glob::eDropReason reason) {
    TopLevelWindow* const window = windows_.windowAt(place);
    if (!window || !window->root().isShown()) return nullptr;
    Glob* glob = Tree::globAt(window->root(), window->root().screenXYToGlobXY(place));
    if (glob && windows_.modality().blockerOf(*glob)) return nullptr;
    XY<int> inside = glob ? glob->screenXYToGlobXY(place) : XY<int>();
    DispatchScope const scope;
    while (glob) {
        LifeGuard const life = glob->guard();
        bool takes = false;
        runHandler("canAccept", [&] { takes = glob->canAccept(item, inside, reason); });
        if (!life.alive()) return nullptr;
        if (takes) return glob;
        inside += glob->box().bottomLeft();
        glob = glob->parent();
    }
    return nullptr;
}

Glob* DragDropManager::getDestinationUnder(XY<int> const& place) {
    Qv::Ptr<DragDropItem> const item = item_;
    return item ? destinationFor(*item, place, Glob::dropHover) : nullptr;
}

void DragDropManager::hoverOver(Glob* destination, XY<int> const& place) {
    Qv::Ptr<DragDropItem> const item = item_;
    DispatchScope const scope;
    HandlerRef<Glob> const next(destination);
    Glob* const last = hovered_.get();
    hovered_ = next;
    if (last && last != destination)
        runHandler("handleDragHover",
                   [&] { last->handleDragHover(*item, last->screenXYToGlobXY(place), false); });
    // The object that was left may have ended the drag, or destroyed the destination.
    if (item_ != item || !next) return;
    runHandler("handleDragHover",
               [&] { destination->handleDragHover(*item, destination->screenXYToGlobXY(place), true); });
    if (item_ != item) return;
    cursor_ = forbiddenCursor;
    if (!next) return;
    MouseCursorID wish = inheritCursor;
    runHandler("getDropCursor",
               [&] { wish = destination->getDropCursor(*item, destination->screenXYToGlobXY(place)); });
    cursor_ = wish == inheritCursor ? handCursor : wish;
}

bool DragDropManager::handleMouseMove(Event const& event) {
    if (!isDragging()) return false;
    Qv::Ptr<DragDropItem> const item = item_;
    Glob* const destination = getDestinationUnder(event.place());
    if (item_ != item) return true;
    cursor_ = forbiddenCursor;
    hoverOver(destination, event.place());
    if (item_ == item) showLabel(event.place());
    return true;
}

void DragDropManager::showLabel(XY<int> const& place) {
    Glob* const owner = source_.get() ? source_.get() : hovered_.get();
    if (!owner) return label_->hide();
    IntBox const pointer(place.x, place.y - pointerExtent, place.x + pointerExtent, place.y + 1);
    label_->showBeside(pointer, {item_->label(), {}, UifStd::getFont()}, *owner);
}

bool DragDropManager::offer(DragDropItem& item, XY<int> const& place) {
    Glob* const destination = destinationFor(item, place, Glob::dropFinal);
    if (!destination) return false;
    bool taken = false;
    DispatchScope const scope;
    runHandler("acceptDrop", [&] {
        taken = destination->acceptDrop(item, destination->screenXYToGlobXY(place), Glob::dropFinal);
    });
    return taken;
}

bool DragDropManager::drop(XY<int> const& place) {
    Qv::Ptr<DragDropItem> const item = item_;
    if (!isDragging()) return false;
    hoverOver(nullptr, place);
    if (item_ != item) return false;
    item_ = nullptr;
    bool const taken = offer(*item, place);
    end(item, taken);
    return taken;
}

void DragDropManager::cancel() {
    Qv::Ptr<DragDropItem> const item = item_;
    if (!isDragging()) return;
    hoverOver(nullptr, events_.pointer.place);
    if (item_ != item) return;
    item_ = nullptr;
    end(item, false);
}

void DragDropManager::end(Qv::Ptr<DragDropItem> const& item, bool taken) {
    cursor_ = inheritCursor;
    label_->hide();
    Glob* const source = std::exchange(source_, {}).get();
    DispatchScope const scope;
    if (source) runHandler("handleDragEnd", [&] { source->handleDragEnd(*item, taken); });
}

MouseCursorID DragDropManager::cursor() const {
    return isDragging() ? cursor_ : inheritCursor;
}

void DragDropManager::dragFiles(XY<int> const& place) {
    if (isDragging()) return;
    if (!item_) item_ = Qv::Ptr<DragDropItem>(new DroppedFiles({}));
    isFromOutside_ = true;
    hoverOver(getDestinationUnder(place), place);
}

void DragDropManager::filesLeft() {
    if (!isFromOutside_) return;
    hoverOver(nullptr, events_.pointer.place);
    item_ = nullptr;
    isFromOutside_ = false;
}

bool DragDropManager::dropFiles(std::vector<LightweightString<wchar_t>> paths, XY<int> const& place) {
    filesLeft();
    if (paths.empty()) return false;
    Qv::Ptr<DragDropItem> const item(new DroppedFiles(std::move(paths)));
    return offer(*item, place);
}

} // namespace wainscot
