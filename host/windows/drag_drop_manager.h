#pragma once

#include "host/base/ptr.h"
#include "host/events/mouse_cursor.h"
#include "host/messages/handler_ref.h"
#include "host/objects/drag_drop_item.h"
#include "host/objects/glob.h"

#include <memory>
#include <vector>

namespace wainscot {

class EventSystem;
class FloatingNote;
class GlobManager;

/// Carries an item from one object to another with the pointer. The object under the pointer that accepts the
/// item, or its nearest ancestor that does, hears of it through `Glob::handleDragHover` and takes it through
/// `Glob::acceptDrop`; the object where the drag began hears the end through `Glob::handleDragEnd`. Any of
/// them may die meanwhile.
class WAINSCOT_API DragDropManager {
public:
    DragDropManager(GlobManager& windows, EventSystem& events);
    ~DragDropManager();
    DragDropManager(DragDropManager const&) = delete;
    DragDropManager& operator=(DragDropManager const&) = delete;

    /// The manager of the live host; throws when no host lives.
    static DragDropManager& instance();

    /// Begins to carry an item, from inside the handler of a press or of a move with a held button. Until the
    /// release the pointer is the manager's: `source` gets no further moves and no release. False when
    /// nothing is held, no item is given, or a drag is under way.
    bool beginDrag(Qv::Ptr<DragDropItem> item, Glob* source);
    bool isDragging() const { return item_ != nullptr && !isFromOutside_; }
    /// Null while nothing is dragged.
    DragDropItem* getCurrentItem() const { return item_.get(); }
    /// The pointer has moved: finds the object that would take the item now, and tells it. False while
    /// nothing is dragged.
    bool handleMouseMove(Event const& event);
    /// The object that would take the item at a place in root coordinates; null when there is none.
    Glob* getDestinationUnder(XY<int> const& place);
    /// Lets the item go at a place in root coordinates. True when somebody took it.
    bool drop(XY<int> const& place);
    /// Ends the drag; nobody takes the item.
    void cancel();
    /// The shape that says whether the item may be let go here; `inheritCursor` while nothing is dragged.
    MouseCursorID cursor() const;

    /// Another program drags files over a place in root coordinates: the object that would take them hears of
    /// it. The item names no files yet.
    void dragFiles(XY<int> const& place);
    /// The files have left, or were dropped.
    void filesLeft();
    /// Another program has dropped files at a place in root coordinates. True when an object took them.
    bool dropFiles(std::vector<LightweightString<wchar_t>> paths, XY<int> const& place);

private:
    /// The item's label follows the pointer.
    void showLabel(XY<int> const& place);
    Glob* destinationFor(DragDropItem const& item, XY<int> const& place, Glob::eDropReason reason);
    bool offer(DragDropItem& item, XY<int> const& place);
    void hoverOver(Glob* destination, XY<int> const& place);
    /// Ends the drag, then tells the source.
    void end(Qv::Ptr<DragDropItem> const& item, bool taken);

    GlobManager& windows_;
    EventSystem& events_;
    Qv::Ptr<DragDropItem> item_;
    /// Whether the item stands for files of another program.
    bool isFromOutside_ = false;
    HandlerRef<Glob> source_;
    HandlerRef<Glob> hovered_;
    MouseCursorID cursor_ = inheritCursor;
    std::unique_ptr<FloatingNote> label_;
};

} // namespace wainscot
