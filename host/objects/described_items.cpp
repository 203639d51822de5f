#include "host/objects/described_items.h"

namespace wainscot {

DescribedItems::~DescribedItems() = default;

bool DescribedItems::performItemAction(ItemKey, std::uint32_t) {
    return false;
}

} // namespace wainscot
