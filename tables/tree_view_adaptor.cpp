#include "tables/tree_view_adaptor.h"

#include "host/objects/drag_drop_item.h"
#include "menus/model/menu_item.h"

namespace wainscot {

iTreeViewAdaptor::~iTreeViewAdaptor() = default;

TreeSource::Text iTreeViewAdaptor::getDisplayText(Item const& item) const {
    return item.name;
}

TreeSource::Text iTreeViewAdaptor::getIcon(Item const&, bool) const {
    return {};
}

std::optional<Colour> iTreeViewAdaptor::getTextColour(Item const&) const {
    return std::nullopt;
}

TreeSource::Text iTreeViewAdaptor::contextString(Item const&) const {
    return {};
}

bool iTreeViewAdaptor::canTag(Item const&) const {
    return true;
}

bool iTreeViewAdaptor::canRename(Item const&) const {
    return false;
}

bool iTreeViewAdaptor::rename(Item const&, Text const&) {
    return false;
}

std::vector<MenuItem> iTreeViewAdaptor::getMenuItems(std::vector<Item> const&) {
    return {};
}

LightweightString<char> iTreeViewAdaptor::getDragType(Item const&) const {
    return {};
}

Qv::Ptr<DragDropItem> iTreeViewAdaptor::createDragDropItem(Item const&, XY<int> const&) {
    return nullptr;
}

bool iTreeViewAdaptor::canAcceptDrop(Text const&, DragDropItem const*, Glob::eDropReason) {
    return false;
}

bool iTreeViewAdaptor::acceptDrop(Text const&, DragDropItem*, Glob::eDropReason) {
    return false;
}

MouseCursorID iTreeViewAdaptor::getDropCursor(Text const&, DragDropItem const*) const {
    return inheritCursor;
}

bool iTreeViewAdaptor::canInsertDrop(Text const&, Text const&, DragDropItem const*) {
    return false;
}

bool iTreeViewAdaptor::insertDrop(Text const&, Text const&, DragDropItem*) {
    return false;
}

} // namespace wainscot
