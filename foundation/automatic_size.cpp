#include "foundation/automatic_size.h"

#include "host/objects/glob.h"

namespace wainscot {

void AutomaticSize::apply(Glob& glob, XY<int> needed) {
    XY<int> size = glob.size();
    bool const isFirst = given_.x < 0;
    if (width_ && (isFirst || size.x == given_.x)) size.x = needed.x;
    if (height_ && (isFirst || size.y == given_.y)) size.y = needed.y;
    given_ = size;
    if (size != glob.size()) glob.resize(size.x, size.y);
}

} // namespace wainscot
