#include "host/objects/drag_drop_item.h"

namespace wainscot {

DragDropItem::DragDropItem(LightweightString<char> type, LightweightString<wchar_t> label)
    : type_(std::move(type)), label_(std::move(label)) {}

DragDropItem::~DragDropItem() = default;

DroppedFiles::DroppedFiles(std::vector<LightweightString<wchar_t>> paths)
    : DragDropItem(filesType), paths_(std::move(paths)) {}

DroppedFiles::~DroppedFiles() = default;

} // namespace wainscot
