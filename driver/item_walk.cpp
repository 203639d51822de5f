#include "driver/item_walk_p.h"

#include "host/objects/description.h"

namespace wainscot {

void ItemWalk::enter(ItemKey item) {
    DescribedItems::Range range{0, 0};
    if (reach_ == Reach::inSight)
        range = items_.itemsInSight(item);
    else
        range.count = items_.numItems(item);
    if (range.count > 0) levels_.push_back({item, range.first, range.first + range.count});
}

bool ItemWalk::next() {
    // The items in the last item are next. They are asked for only now, since many walks end before.
    if (!key_.isEmpty()) enter(key_);
    while (!levels_.empty() && levels_.back().next == levels_.back().end) levels_.pop_back();
    if (levels_.empty()) return false;
    Level& level = levels_.back();
    index_ = level.next++;
    around_ = level.in;
    key_ = items_.itemAt(around_, index_);
    depth_ = levels_.size() - 1;
    return true;
}

bool ItemWalk::describe(GlobDescription& description) const {
    if (key_.isEmpty() || !items_.describeItem(key_, description)) return false;
    if (description.wants(GlobDescription::relations)) {
        description.position = index_ + 1;
        description.setSize = items_.numItems(around_);
    }
    return true;
}

} // namespace wainscot
