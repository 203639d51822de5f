#pragma once

#include "host/objects/described_items.h"

#include <vector>

namespace wainscot {

/// Walks the items in a widget, or in one item, in order; an item comes before the items in it.
class ItemWalk {
public:
    enum class Reach { inSight, all };

    ItemWalk(DescribedItems const& items, ItemKey in, Reach reach) : items_(items), reach_(reach) {
        enter(in);
    }

    /// Goes to the next item, at first to the first item. False when there are no more.
    bool next();
    ItemKey key() const { return key_; }
    /// How many items it lies in.
    std::size_t depth() const { return depth_; }
    /// Its description, with its place among the items beside it. False when the widget does not know the
    /// item.
    bool describe(GlobDescription& description) const;

private:
    /// Items beside each other, and how far they have been walked.
    struct Level {
        ItemKey in;
        std::size_t next;
        std::size_t end;
    };
    void enter(ItemKey item);

    DescribedItems const& items_;
    Reach reach_;
    /// No recursion: data may be of any depth.
    std::vector<Level> levels_;
    ItemKey key_;
    ItemKey around_;
    std::size_t index_ = 0;
    std::size_t depth_ = 0;
};

} // namespace wainscot
