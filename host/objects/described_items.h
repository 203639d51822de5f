#pragma once

#include "host/base/export.h"

#include <cstddef>
#include <cstdint>

namespace wainscot {

struct GlobDescription;

/// Stands for a thing in a widget that is no widget of its own: a row, a cell, a node, an item of a menu. The
/// widget gives the keys out and knows what they mean; the empty key stands for the widget itself.
struct ItemKey {
    std::uint64_t value = 0;

    bool isEmpty() const { return value == 0; }
    friend bool operator==(ItemKey const&, ItemKey const&) = default;
};

/// The things in a widget that are no widgets, as a tree of any size: nothing is made before it is asked for,
/// and nothing is asked for but what somebody looks at. Implemented by the widget, or by a part of it, and
/// handed out by `Glob::describedItems`.
///
/// Keys hold until the widget tells of `DescriptionChange::children`. One that is not known, or not any more,
/// stands for nothing: it has no items, and is not described.
class WAINSCOT_API DescribedItems {
public:
    /// Items that follow each other.
    struct Range {
        std::size_t first = 0;
        std::size_t count = 0;
    };

    virtual ~DescribedItems();

    /// How many lie directly in an item, in sight or not.
    virtual std::size_t numItems(ItemKey in) const = 0;
    /// Those of them that are in sight, or have items that are. The cost depends on what is in sight.
    virtual Range itemsInSight(ItemKey in) const = 0;
    /// One of them; empty when out of range.
    virtual ItemKey itemAt(ItemKey in, std::size_t index) const = 0;
    /// Fills in what an item says of itself. False when it is not known.
    virtual bool describeItem(ItemKey item, GlobDescription& description) const = 0;
    /// Does one of the `GlobDescription::Action`s that the description of the item names. False when it was
    /// not done, as here. May destroy everything.
    virtual bool performItemAction(ItemKey item, std::uint32_t action);
};

} // namespace wainscot
