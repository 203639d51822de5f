#include "foundation/border.h"

#include "host/drawing/uif_std.h"

namespace wainscot {

Border::Border(eType type, unsigned short size) : type_(type <= group ? type : none), size_(size) {
    if (type_ == none) size_ = 0;
}

unsigned short Border::calcSize(eType type) {
    if (type == none || type > group) return 0;
    return type == line ? 1 : UifStd::getBorder();
}

} // namespace wainscot
