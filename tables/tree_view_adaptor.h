#pragma once

#include "host/drawing/colour.h"
#include "host/objects/glob.h"
#include "tables/model/tree_source.h"

#include <optional>

namespace wainscot {

class MenuItem;

/// The data of a tree: the application derives from it and overrides `listChildren` at least. The tree holds
/// a plain pointer and never deletes it; an adaptor that has died is not asked any more. One that throws is
/// counted in the diagnostics; what it was asked then has its default answer.
class WAINSCOT_API iTreeViewAdaptor : public TreeSource {
public:
    using Item = TreeItem;

    ~iTreeViewAdaptor() override;

    // --- Look
    /// What is shown of an item; its name here. Trees whose names are full paths show the last part.
    virtual Text getDisplayText(Item const& item) const;
    /// The file name of an icon before the text ("folder.png"); empty = none, as here.
    virtual Text getIcon(Item const& item, bool isExpanded) const;
    /// Nothing = that of the palette, as here.
    virtual std::optional<Colour> getTextColour(Item const& item) const;
    /// The tool tip of an item.
    virtual Text contextString(Item const& item) const;

    // --- Tags and names
    /// Whether the user may pick it together with others. True here.
    virtual bool canTag(Item const& item) const;
    /// Whether the user may rename it. False here.
    virtual bool canRename(Item const& item) const;
    /// The user has given an item another name. False = it keeps its own, as here. Otherwise the tree lists
    /// the branch again.
    virtual bool rename(Item const& item, Text const& name);
    /// What the context menu of these items offers; of no items = that of the tree itself. Nothing here.
    virtual std::vector<MenuItem> getMenuItems(std::vector<Item> const& items);

    // --- Dragging
    /// The type under which an item is dragged away; empty = it stays, as here.
    virtual LightweightString<char> getDragType(Item const& item) const;
    /// What is dragged when the user drags an item, or the tagged items, taken at a place of the row from its
    /// lower-left corner. Null = nothing, as here.
    virtual Qv::Ptr<DragDropItem> createDragDropItem(Item const& item, XY<int> const& place);
    /// Whether an item may be dropped on a row, by its name; an empty name stands for the tree itself. False
    /// here.
    virtual bool canAcceptDrop(Text const& target, DragDropItem const* item, Glob::eDropReason reason);
    /// An item was dropped there. False = refused after all, as here. It may rebuild the tree.
    virtual bool acceptDrop(Text const& target, DragDropItem* item, Glob::eDropReason reason);
    /// The pointer's shape over a row that takes the item. `inheritCursor` here.
    virtual MouseCursorID getDropCursor(Text const& target, DragDropItem const* item) const;
    /// The same between two rows: in a branch (empty = the uppermost), before one of its items (empty =
    /// behind the last one). False here.
    virtual bool canInsertDrop(Text const& parent, Text const& before, DragDropItem const* item);
    virtual bool insertDrop(Text const& parent, Text const& before, DragDropItem* item);
};

} // namespace wainscot
