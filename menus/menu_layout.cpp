#include "menus/menu_layout_p.h"

#include "host/drawing/uif_std.h"

#include <algorithm>

namespace wainscot {

namespace {

/// Of long menus so many of the longest texts are measured.
constexpr std::size_t numMeasured = 16;

} // namespace

std::vector<unsigned short> MenuLayout::longestItems(MenuData const& data) {
    auto const items = data.items();
    using Entry = std::pair<std::size_t, unsigned short>;
    std::vector<Entry> heap;
    for (std::size_t i = 0; i < items.size(); ++i) {
        std::size_t const length = items[i].label().size();
        if (heap.size() == numMeasured && length <= heap.front().first) continue;
        if (heap.size() == numMeasured) {
            std::ranges::pop_heap(heap, std::greater<>());
            heap.pop_back();
        }
        heap.emplace_back(length, static_cast<unsigned short>(i));
        std::ranges::push_heap(heap, std::greater<>());
    }
    std::vector<unsigned short> longest;
    for (Entry const& entry : heap) longest.push_back(entry.second);
    return longest;
}

int MenuLayout::rowHeight() {
    return UifStd::getTableRowHeight();
}

int MenuLayout::heightOf(MenuItem const& item) {
    if (isSeparator(item)) return UifStd::getWidgetGap();
    auto const formatted = item.formattedLabel();
    if (!formatted) return rowHeight();
    int const text = HTMLRenderer::calcHeight(*formatted, item.getFont(), -1);
    return std::max(rowHeight(), text + UifStd::getIndentWidth());
}

void MenuLayout::build(MenuData const& items) {
    MenuRows const& rows = items.rows();
    tops_.clear();
    tops_.reserve(rows.numRows() + 1);
    int top = 0;
    for (std::size_t row = 0; row < rows.numRows(); ++row) {
        tops_.push_back(top);
        top += heightOf(items.getItem(rows.itemOfRow(row)));
    }
    tops_.push_back(top);
}

std::size_t MenuLayout::rowAt(int y) const {
    auto const behind = std::upper_bound(tops_.begin(), tops_.end(), y);
    return static_cast<std::size_t>(behind - tops_.begin()) - (behind == tops_.begin() ? 0 : 1);
}

} // namespace wainscot
