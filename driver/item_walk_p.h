#pragma once

#include "host/objects/described_items.h"

#include <vector>

namespace wainscot {

/// Goes through the items in a widget, or in one item: each before those in it, in their order.
class ItemWalk {
public:
    enum class Reach { inSight, all };

    ItemWalk(DescribedItems const& items, ItemKey in, Reach reach) : items_(items), reach_(reach) {
        enter(in);
    }

    /// Goes on to the next one, at first to the first. False when there are no more.
    bool next();
    ItemKey key() const { return key_; }
    /// How many items it lies in.
    std::size_t depth() const { return depth_; }
    /// What it says of itself, its place among those beside it included. False when the widget does not know
    /// it.
    bool describe(GlobDescription& description) const;

private:
    /// Items that lie beside each other, and how far they have been gone through.
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
