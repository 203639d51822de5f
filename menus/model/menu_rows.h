#pragma once

#include "menus/model/menu_item.h"

#include <cstdint>
#include <span>
#include <vector>

namespace wainscot {

/// Where the items of a list stand: which rows they take while members of compressed groups are hidden, and
/// their logical indices, which count only what can be chosen. Made in one walk; each question takes constant
/// time. Members are hidden, other items never are.
class WAINSCOT_API MenuRows {
public:
    static constexpr unsigned short none = 0xFFFF;

    MenuRows() = default;
    /// Of at most 65,535 items.
    explicit MenuRows(std::span<MenuItem const> items);

    std::size_t numItems() const { return rowOfItem_.size(); }
    std::size_t numRows() const { return itemOfRow_.size(); }
    std::size_t numGroups() const { return numGroups_; }
    /// How many items have a logical index.
    std::size_t numLogical() const { return itemOfLogical_.size(); }

    // `none` when there is no such item or row.
    /// The item's row; of a hidden item the row of its header.
    unsigned short rowOfItem(std::size_t item) const { return at(rowOfItem_, item); }
    unsigned short itemOfRow(std::size_t row) const { return at(itemOfRow_, row); }
    /// Of a header: that of the next item.
    unsigned short logicalOfItem(std::size_t item) const { return at(logicalOfItem_, item); }
    unsigned short itemOfLogical(std::size_t logical) const { return at(itemOfLogical_, logical); }
    bool isHidden(std::size_t item) const;

private:
    using Indices = std::vector<unsigned short>;

    static unsigned short at(Indices const& indices, std::size_t index) {
        return index < indices.size() ? indices[index] : none;
    }

    Indices rowOfItem_;
    Indices itemOfRow_;
    Indices logicalOfItem_;
    Indices itemOfLogical_;
    std::size_t numGroups_ = 0;
};

} // namespace wainscot
