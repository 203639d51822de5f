#pragma once

#include "host/base/export.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace wainscot {

/// From row to pixel and back; pixels count downwards from the top edge of row 0. Rows of one height need no
/// memory. Rows with heights of their own are asked once and kept in 2 bytes each, so that no question calls
/// out and answers always fit the sums; sums of blocks of rows are kept beside them.
class WAINSCOT_API RowHeights {
public:
    /// The height of a row in pixels; 0 stands for the default height.
    using HeightOf = std::function<unsigned short(unsigned int row)>;

    /// Row numbers with fractions: 2.25 lies a quarter below the top edge of row 2.
    struct Visible {
        double first = 0.0;
        double last = 0.0;
    };

    /// Rows of one height. A default height of 0 counts as 1.
    void reset(unsigned int count, unsigned short defaultHeight);
    /// Rows with heights of their own. `heightOf` is asked for every row now, and again for rows that change.
    /// It must not change this object. When it throws, nothing has changed.
    void reset(unsigned int count, unsigned short defaultHeight, HeightOf heightOf);
    /// Asks no row again.
    void setDefaultHeight(unsigned short height);

    // These ask the rows concerned. When the function throws, nothing has changed.
    void changed(unsigned int first, unsigned int count);
    /// `first` beyond the last row appends.
    void inserted(unsigned int first, unsigned int count);
    void removed(unsigned int first, unsigned int count);

    unsigned int count() const { return count_; }
    unsigned short defaultHeight() const { return defaultHeight_; }
    /// Whether some row has a height of its own.
    bool isVariable() const { return numOwn_ > 0; }
    /// Beyond the last row the default height.
    unsigned short heightOf(unsigned int row) const;
    /// The pixel of the row's top edge; beyond the last row `total()`.
    std::int64_t topOf(unsigned int row) const;
    std::int64_t total() const { return topOf(count_); }
    /// The row in which a pixel lies; nothing above row 0 and below the last row.
    std::optional<unsigned int> rowAt(std::int64_t pixel) const;
    /// The rows in a window that begins at pixel `top`. Rows of one height go on beyond the last row;
    /// otherwise both numbers end at `count()`. A negative height counts as 0.
    Visible visibleRows(std::int64_t top, std::int64_t height) const;

private:
    unsigned short resolved(unsigned short own) const { return own ? own : defaultHeight_; }
    std::vector<unsigned short> asked(unsigned int first, unsigned int count) const;
    std::int64_t sum(std::size_t first, std::size_t end) const;
    /// Adds up the blocks from the one with `row` on.
    void addUpFrom(unsigned int row);

    unsigned int count_ = 0;
    unsigned short defaultHeight_ = 1;
    HeightOf heightOf_;
    /// The answers; empty when there is no function or all answers are 0.
    std::vector<unsigned short> own_;
    unsigned int numOwn_ = 0;
    /// The top of each block, and the total behind the last.
    std::vector<std::int64_t> tops_;
};

} // namespace wainscot
