#pragma once

#include "foundation/press.h"
#include "tables/tree_view.h"

namespace wainscot {

/// The area of the rows. It draws what the tree tells it, and hands it what the pointer does.
class TreeBody final : public Pressable<Glob> {
public:
    explicit TreeBody(TreeView& tree);

    bool react(Event const& event) override;
    void draw() override;
    bool getTooltipDetails(XY<int> const& place, TooltipDetails& details) const override;
    bool canAccept(DragDropItem const& item, XY<int> const& place, eDropReason reason) override;
    bool acceptDrop(DragDropItem& item, XY<int> const& place, eDropReason reason) override;
    MouseCursorID getDropCursor(DragDropItem const& item, XY<int> const& place) const override;
    void handleDragHover(DragDropItem const& item, XY<int> const& place, bool inside) override;
    void handleDragEnd(DragDropItem& item, bool taken) override;

protected:
    bool pressBegan(Event const& event) override;
    void pressMoved(Event const& event) override;
    void pressEnded(PressEnd how) override;

private:
    XY<int> inTree(XY<int> const& place) const { return place + box().bottomLeft(); }

    HandlerRef<TreeView> tree_;
};

} // namespace wainscot
