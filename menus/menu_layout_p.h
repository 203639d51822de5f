#pragma once

#include "menus/model/menu_data.h"

#include <vector>

namespace wainscot {

/// Where the rows of a menu lie, in pixels from the top of the first one.
class MenuLayout {
public:
    /// Measures all rows anew.
    void build(MenuData const& items);
    void clear() { tops_.assign(1, 0); }

    std::size_t numRows() const { return tops_.size() - 1; }
    int top(std::size_t row) const { return tops_[row]; }
    int bottom(std::size_t row) const { return tops_[row + 1]; }
    int height() const { return tops_.back(); }
    /// The row at a distance from the top; the number of rows behind the last one.
    std::size_t rowAt(int y) const;

    /// The items with the longest texts: those that have to be measured.
    static std::vector<unsigned short> longestItems(MenuData const& items);

    static int rowHeight();
    static int heightOf(MenuItem const& item);
    static bool isSeparator(MenuItem const& item) { return item.label().empty() && !item.isHeader(); }

private:
    std::vector<int> tops_{0};
};

} // namespace wainscot
