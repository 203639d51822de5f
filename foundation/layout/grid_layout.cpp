#include "foundation/layout/grid_layout.h"

#include "foundation/layout/tracks_p.h"
#include "host/base/diagnostics.h"

#include <algorithm>

namespace wainscot {

Layout::Cell GridLayout::inner(GridCell const& cell) {
    bool const inside = cell.row >= 0 && cell.row < maxTracks;
    if (inside) nextRow_ = std::max(nextRow_, cell.row + std::clamp(cell.rows, 1, maxTracks - cell.row));
    return {cell.column, cell.row, cell.columns, cell.rows};
}

bool GridLayout::setStretch(std::map<int, int>& stretches, int track, int stretch) {
    if (track < 0 || track >= maxTracks) {
        Diagnostics::count("layout item refused", "no such cell");
        return false;
    }
    stretches[track] = stretch;
    changed();
    return true;
}

void GridLayout::setEqualColumns(bool equal) {
    if (equal == equalColumns_) return;
    equalColumns_ = equal;
    changed();
}

bool GridLayout::setColumnStretch(int column, int stretch) {
    return setStretch(columnStretch_, column, stretch);
}

bool GridLayout::setRowStretch(int row, int stretch) {
    return setStretch(rowStretch_, row, stretch);
}

Layout::Cell GridLayout::cellOf(Cell const& given, int) const {
    return given;
}

void GridLayout::stretch(Tracks& columns, Tracks& rows) const {
    auto const give = [](Tracks& tracks, std::map<int, int> const& stretches) {
        for (auto const& [track, stretch] : stretches)
            if (static_cast<std::size_t>(track) < tracks.size())
                tracks.stretchAtLeast(static_cast<std::size_t>(track), stretch);
    };
    give(columns, columnStretch_);
    give(rows, rowStretch_);
}

} // namespace wainscot
