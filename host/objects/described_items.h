#pragma once

#include "host/base/export.h"

#include <cstddef>
#include <cstdint>

namespace wainscot {

struct GlobDescription;

/// Names an item in a widget: a row, a cell, a node, an entry of a menu. Items are not widgets. The widget
/// gives out the keys and knows what they mean; the empty key stands for the widget itself.
struct ItemKey {
    std::uint64_t value = 0;

    bool isEmpty() const { return value == 0; }
    friend bool operator==(ItemKey const&, ItemKey const&) = default;
};

/// The items in a widget, as a tree of any size. Nothing is made before it is asked for, and only what
/// somebody looks at is asked for. Implemented by the widget, or by a part of it, and handed out by
/// `Glob::describedItems`.
///
/// Keys are valid until the widget tells of `DescriptionChange::children`. An unknown key has no items and no
/// description.
class WAINSCOT_API DescribedItems {
public:
    /// Items that follow each other.
    struct Range {
        std::size_t first = 0;
        std::size_t count = 0;
    };

    virtual ~DescribedItems();

    /// How many items lie directly in an item, in sight or not.
    virtual std::size_t numItems(ItemKey in) const = 0;
    /// The range of them that is in sight, or has items in sight. The cost depends on what is in sight.
    virtual Range itemsInSight(ItemKey in) const = 0;
    /// An item by its index; empty when out of range.
    virtual ItemKey itemAt(ItemKey in, std::size_t index) const = 0;
    /// Fills in what an item says about itself. False for an unknown item.
    virtual bool describeItem(ItemKey item, GlobDescription& description) const = 0;
    /// Does one of the actions (`GlobDescription::Action`) in the item's description. False when it was not
    /// done, as here. May destroy everything.
    virtual bool performItemAction(ItemKey item, std::uint32_t action);
};

} // namespace wainscot
